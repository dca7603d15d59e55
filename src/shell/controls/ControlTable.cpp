#include "shell/controls/MainControls.h"

#include "platform/FileListBox.h"
#include "platform/FolderTreeview.h"
#include "platform/PictureBox.h"
#include "shell/controls/Icons.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>

#include <type_traits>

namespace tarn {

namespace {

template <typename Widget> Widget* MakeWidget(const Files& files) {
    if constexpr (std::is_constructible_v<Widget, const Files&>)
        return new Widget(files);
    else
        return new Widget();
}

void SetCaption(QWidget* widget, const QString& caption) {
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(caption);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setTextFormat(Qt::PlainText);
        label->setText(caption);
    } else if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        line->setText(caption);
    }
}

void Dress(QWidget* widget, const ControlRow& row) {
    widget->setObjectName(QString::fromLatin1(row.name));
    SetCaption(widget, QString::fromUtf8(row.caption));
    // A tooltip is read as rich text where it looks like it; names with "<" shall stay names.
    widget->setToolTip(QString::fromUtf8(row.tooltip).toHtmlEscaped());
    const QString caption = QString::fromUtf8(row.caption);
    const bool readable = caption.size() > 2;
    widget->setAccessibleName(readable       ? caption
                              : *row.tooltip ? QString::fromUtf8(row.tooltip)
                                             : QString::fromLatin1(row.name));
    if (qobject_cast<QAbstractButton*>(widget)) widget->setEnabled(false);
    if (auto* button = qobject_cast<QPushButton*>(widget)) {
        button->setAutoDefault(false);
        // Styles give a button room for longer words than these: it may be as narrow as its text.
        const int text = button->fontMetrics().size(Qt::TextShowMnemonic, caption).width();
        button->setMinimumWidth(text + (*row.icon ? 38 : 16));
        if (*row.icon) SetButtonIcon(*button, row.icon);
    }
}

} // namespace

const std::vector<ControlRow>& ControlRows() {
    static const std::vector<ControlRow> rows{
#define TARN_CONTROL(type, name, caption, tooltip, place, icon)                                    \
    {#name,                                                                                        \
     caption,                                                                                      \
     tooltip,                                                                                      \
     Place::place,                                                                                 \
     icon,                                                                                         \
     [](MainControls& c, const Files& files) -> QWidget* {                                         \
         return c.name = MakeWidget<type>(files);                                                  \
     }},
#define TARN_CONTROL_ROW(type, name, index, caption, tooltip, place, icon)                         \
    {#name "_" #index,                                                                             \
     caption,                                                                                      \
     tooltip,                                                                                      \
     Place::place,                                                                                 \
     icon,                                                                                         \
     [](MainControls& c, const Files& files) -> QWidget* {                                         \
         return c.name[index] = MakeWidget<type>(files);                                           \
     }},
#include "shell/controls/controls.def"
#undef TARN_CONTROL
#undef TARN_CONTROL_ROW
    };
    return rows;
}

void MakeControls(MainControls& controls, const Files& files,
                  const std::function<void(QWidget*, Place)>& put) {
    for (const ControlRow& row : ControlRows()) {
        QWidget* widget = row.make(controls, files);
        Dress(widget, row);
        put(widget, row.place);
    }
}

} // namespace tarn

#include "desk/controls/MainControls.h"

#include "desk/controls/Icons.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include <QToolTip>

#include <cstring>
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
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        if (!caption.isEmpty()) combo->addItems(caption.split(QLatin1Char('|')));
    }
}

// Keys that do what a button does, told behind its tooltip.
struct ButtonKeys {
    const char* name;
    const char* keys;
};
constexpr ButtonKeys kButtonKeys[] = {
    {"NextButton", "N, Space, Down"},
    {"PrevButton", "P, Up"},
    {"FileBackButton", ","},
    {"FileFwdButton", "."},
    {"RotateRightButton", "R, Right"},
    {"RotateLeftButton", "L, Left"},
    {"MirrorButton", "M"},
    {"FlipButton", "I"},
    {"ViewButton", "V"},
    {"OneToOneButton", "F, 1"},
    {"SlideButton", "S, F11"},
    {"Slides2Button", "2"},
    {"Slides4Button", "4"},
    {"SlidesC2Button", "C"},
    {"CopyImageButton3", "Y"},
    {"CJMButton", "U, Z"},
    {"QuickDirButton", "F5"},
    {"SaveNotesButton", "Ctrl+S"},
    {"SaveNotes2Button", "Ctrl+Return"},
    {"SaveNotes3Button", "Ctrl+Shift+Return"},
};

// What a screen reader calls the controls that bear no text of their own.
constexpr struct {
    const char* name;
    const char* spoken;
} kSpoken[] = {
    {"FolderTreeview1", "Folders"},      {"FileListBox", "Files of the folder"},
    {"FindLine", "Find in list"},        {"Picture1", "Picture"},
    {"Picture2", "Frame of the clip"},   {"WebBrowser1", "Page"},
    {"LogText", "Text of the file"},     {"List1", "Camera data"},
    {"SkyList", "Sky at the exposure"},  {"NotesBox", "Note of the picture"},
    {"FileDateText", "Message"},         {"NoteFilterCombo", "Notes and marks filter"},
    {"SortCombo", "Order of the list"},  {"NotesPrevButton", "Previous picture"},
    {"NotesNextButton", "Next picture"},
};

// Its own text where it has one that can be read out.
QString SpokenName(const QWidget& widget, const ControlRow& row) {
    for (const auto& each : kSpoken)
        if (std::strcmp(each.name, row.name) == 0) return QString::fromLatin1(each.spoken);
    const QString caption = QString::fromUtf8(row.caption);
    const bool readable = caption.size() > 2 && !qobject_cast<const QComboBox*>(&widget);
    return readable ? QString() : QString::fromUtf8(row.tooltip);
}

// The tooltip itself stays what the program set; only what pops up has the keys.
class KeysInToolTip : public QObject {
public:
    KeysInToolTip(QWidget* widget, const char* keys) : QObject(widget), m_keys(keys) {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return false;
        auto* widget = static_cast<QWidget*>(watched);
        const QString text = widget->toolTip() + QStringLiteral("  [%1]").arg(m_keys);
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text.trimmed(), widget);
        return true;
    }

private:
    QString m_keys;
};

void Dress(QWidget* widget, const ControlRow& row) {
    widget->setObjectName(QString::fromLatin1(row.name));
    SetCaption(widget, QString::fromUtf8(row.caption));
    widget->setToolTip(ToToolTip(row.tooltip));
    widget->setAccessibleName(SpokenName(*widget, row));
    for (const ButtonKeys& each : kButtonKeys)
        if (std::strcmp(each.name, row.name) == 0) new KeysInToolTip(widget, each.keys);
    if (qobject_cast<QAbstractButton*>(widget)) widget->setEnabled(false);
    if (auto* button = qobject_cast<QPushButton*>(widget)) {
        button->setAutoDefault(false);
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
#include "desk/controls/controls.def"
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

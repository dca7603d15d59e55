#include "desk/controls/MainControls.h"

#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

namespace tarn {

namespace {

enum Flags { kCheck = 1, kOneOf = 2, kHidden = 4, kDisabled = 8, kInPanes = 16, kRepeats = 32 };

QAction* AddEntry(QWidget& to, const char* name, const char* caption, const char* key,
                  const char* shortcut, int flags) {
    QString text = QString::fromUtf8(caption);
    // A key of the picture pane is told, not bound: it acts in the pane alone.
    if (*key && *shortcut)
        text += QStringLiteral("\t%1, %2").arg(QLatin1String(shortcut), QLatin1String(key));
    else if (*key)
        text += QLatin1Char('\t') + QString::fromLatin1(key);
    auto* entry = new QAction(text, &to);
    entry->setObjectName(QString::fromLatin1(name));
    if (*shortcut) entry->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    entry->setAutoRepeat(flags & kRepeats); // most commands are for one press
    entry->setCheckable(flags & (kCheck | kOneOf));
    entry->setVisible(!(flags & kHidden));
    entry->setEnabled(false);
    entry->setProperty("startsEnabled", !(flags & kDisabled));
    if (flags & kOneOf) {
        auto* group = to.findChild<QActionGroup*>(QString(), Qt::FindDirectChildrenOnly);
        (group ? group : new QActionGroup(&to))->addAction(entry);
    }
    to.addAction(entry);
    return entry;
}

// In a box the same keys belong to its text.
void BindInPanes(const MainControls& c, QAction* entry) {
    entry->setShortcutContext(Qt::WidgetShortcut);
    for (QWidget* pane : std::initializer_list<QWidget*>{c.FileListBox, c.Picture1, c.Picture2})
        pane->addAction(entry);
}

void NameMenu(QMenu* menu, const char* name) {
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    menu->setToolTipsVisible(true);
}

} // namespace

void MakeMenus(MainControls& c, QMenuBar& menuBar, QWidget& window) {
    QMenuBar* const bar = &menuBar;
#define TARN_MENU(in, name, caption)                                                               \
    c.name = (in)->addMenu(QString::fromUtf8(caption));                                            \
    NameMenu(c.name, #name);
#define TARN_POPUP(name)                                                                           \
    c.name = new QMenu(&window);                                                                   \
    NameMenu(c.name, #name);
#define TARN_ENTRY(in, name, caption, key, shortcut, flags)                                        \
    c.name = AddEntry(*(in), #name, caption, key, shortcut, flags);                                \
    if ((flags)&kInPanes) BindInPanes(c, c.name);
#define TARN_ROW(in, name, index, caption, flags)                                                  \
    c.name[index] = AddEntry(*(in), #name "_" #index, caption, "", "", flags);
#define TARN_LINE(in) (in)->addSeparator();
#include "desk/controls/menus.def"
#undef TARN_MENU
#undef TARN_POPUP
#undef TARN_ENTRY
#undef TARN_ROW
#undef TARN_LINE
}

} // namespace tarn

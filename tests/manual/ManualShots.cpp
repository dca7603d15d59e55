// The whole program, worked by lines on the standard input, for the pictures of the manual.
// Controls are called by their names, so that a picture needs no place on the screen:
//
//   click [WINDOW/]NAME     a button, a box or a menu entry
//   text [WINDOW/]NAME TEXT a line of text or a text box
//   choose [WINDOW/]NAME N  a row of a list or combo box, a page of tabs, a slider's value
//   key [WINDOW/]NAME KEY   "S", "Ctrl+Down"
//   file NAME               a row of the file list, by its name
//   answer PATH             the file dialog that is open; `accept` any other question
//   wait MILLISECONDS
//   shot [WINDOW/]NAME FILE the window, or a part of it, as PNG
//   close WINDOW
//
// A line that cannot be done ends the run with status 1.
#include "app/House.h"
#include "platform/Clipboard.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/SettingsStore.h"
#include "platform/Sound.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QKeySequence>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

constexpr int kBetween = 120; // milliseconds, so that each step is painted

[[noreturn]] void Fail(const QString& line, const char* why) {
    std::fprintf(stderr, "manual_shots: %s: %s\n", line.toUtf8().constData(), why);
    std::_Exit(1);
}

QWidget* Window(const QString& name) {
    for (QWidget* each : QApplication::topLevelWidgets())
        if (each->objectName() == name && each->isVisible()) return each;
    return nullptr;
}

// "frmFilter/TextFilter"; without a window, the main one's.
template <typename T> T* Find(const QString& path) {
    const auto slash = path.indexOf(QLatin1Char('/'));
    QWidget* window = Window(slash < 0 ? QStringLiteral("frmMain") : path.left(slash));
    return window ? window->findChild<T*>(path.mid(slash + 1)) : nullptr;
}

class Script {
public:
    explicit Script(tarn::House& house) : m_house(house) {}

    // The next line is on its way before this one is done: a step may open a window that waits.
    void Next() {
        std::string line;
        if (!std::getline(std::cin, line)) {
            m_house.controls.QuitButton->trigger();
            return;
        }
        m_line = QString::fromStdString(line).trimmed();
        const QStringList words = m_line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const bool waits = words.value(0) == QLatin1String("wait");
        QTimer::singleShot(waits ? words.value(1).toInt() : kBetween, [this] { Next(); });
        if (waits || words.isEmpty() || words[0].startsWith(QLatin1Char('#'))) return;
        if (!Do(words[0], words.value(1), m_line.section(QLatin1Char(' '), 2)))
            Fail(m_line, "nothing of that name");
    }

private:
    bool Do(const QString& what, const QString& on, const QString& with) {
        if (what == QLatin1String("click")) return Click(on);
        if (what == QLatin1String("text")) return Type(on, with);
        if (what == QLatin1String("choose")) return Choose(on, with.toInt());
        if (what == QLatin1String("key")) return Press(on, with);
        if (what == QLatin1String("file")) return SelectFile(on);
        if (what == QLatin1String("answer") || what == QLatin1String("accept")) return Answer(on);
        QWidget* window = Window(on);
        if (what == QLatin1String("close")) return window && window->close();
        if (!window) window = Find<QWidget>(on);
        return what == QLatin1String("shot") && window && window->grab().save(with);
    }

    bool Click(const QString& on) {
        if (auto* action = Find<QAction>(on); action && action->isEnabled())
            return action->trigger(), true;
        auto* button = Find<QAbstractButton>(on);
        return button && button->isEnabled() && (button->click(), true);
    }

    bool Type(const QString& on, const QString& text) {
        if (auto* line = Find<QLineEdit>(on)) return line->setText(text), true;
        if (auto* box = Find<QPlainTextEdit>(on)) return box->setPlainText(text), true;
        auto* combo = Find<QComboBox>(on);
        return combo && (combo->setEditText(text), true);
    }

    bool Choose(const QString& on, int row) {
        if (auto* combo = Find<QComboBox>(on)) return combo->setCurrentIndex(row), true;
        if (auto* list = Find<QListWidget>(on)) return list->setCurrentRow(row), true;
        if (auto* slider = Find<QSlider>(on)) return slider->setValue(row), true;
        auto* tabs = Find<QTabWidget>(on);
        return tabs && (tabs->setCurrentIndex(row), true);
    }

    bool Press(const QString& on, const QString& key) {
        QWidget* widget = Window(on);
        if (!widget) widget = Find<QWidget>(on);
        const QKeySequence keys(key);
        if (!widget || keys.isEmpty()) return false;
        QTest::keyClick(widget, keys[0].key(), keys[0].keyboardModifiers());
        return true;
    }

    bool SelectFile(const QString& name) {
        auto& list = *m_house.controls.FileListBox;
        const int row = list.RowOf(name.toStdString());
        if (row < 0) return false;
        list.UnselectAll();
        list.Select(row);
        return true;
    }

    bool Answer(const QString& path) {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog) return false;
        if (qobject_cast<QFileDialog*>(dialog)) dialog->findChild<QLineEdit*>()->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
        return true;
    }

    tarn::House& m_house;
    QString m_line;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarn-view"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setQuitOnLastWindowClosed(false);
    const auto files = tarn::MakeFiles();
    const auto settings = tarn::MakeUserSettingsStore();
    const auto events = tarn::MakeEventPump();
    const auto dialogs = tarn::MakeDialogs();
    const auto sound = tarn::MakeSound();
    const auto printing = tarn::MakePrinting(*files);
    const auto desktop = tarn::MakeDesktop();
    const auto clipboard = tarn::MakeClipboard();
    tarn::House house(
        {*files, *settings, *events, *dialogs, *sound, *desktop, *clipboard, *printing});
    if (!house.Start(argc > 1 ? argv[1] : "", {})) return 1;
    Script script(house);
    QTimer::singleShot(kBetween, [&script] { script.Next(); });
    return QApplication::exec();
}

// What the user can send: "About", and the note of a crash.
#include "AllWindows.h"

#include "shell/about/AboutText.h"

#include <QPlainTextEdit>

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

std::string Shown(const char* window) {
    const QWidget* up = WindowsDesk::Up(window);
    return up ? up->findChild<QPlainTextEdit*>()->toPlainText().toStdString() : "none";
}

void Press(const QWidget* window, const char* name) {
    ASSERT_TRUE(window);
    window->findChild<QPushButton*>(QString::fromLatin1(name))->click();
}

TEST(About, NamesEveryLibraryAndTheSystemAndIsCopied) {
    AppDesk d;
    d.Start();
    d.house.controls.VersionButton->trigger();
    const std::string text = Shown("frmAbout");
    std::set<std::string> names;
    for (const Library& library : Libraries()) {
        names.insert(library.name);
        EXPECT_NE(text.find("\n" + library.name + " "), std::string::npos) << text;
        EXPECT_FALSE(library.built.empty()) << library.name;
        EXPECT_EQ(library.built.find_first_not_of("0123456789."), std::string::npos)
            << library.name << " " << library.built;
    }
    for (const char* name : {"Qt", "libjpeg", "libmpv (interface)", "libavformat"})
        EXPECT_TRUE(names.count(name)) << name;
    for (const std::string& part :
         {d.house.state.Version, std::string(qVersion()), std::string("\nKernel "),
          std::string("\nSession "), std::string("\nScreen 1 ")})
        EXPECT_NE(text.find(part), std::string::npos) << part;
    EXPECT_EQ(text.find(d.folder.Path()), std::string::npos);
    Press(WindowsDesk::Up("frmAbout"), "TextCopyButton");
    EXPECT_EQ(d.clipboard->Text(), text);
}

TEST(Crash, TheNextStartOffersTheNoteOnce) {
    const TestFolder home;
    {
        AppDesk d;
        d.files.home = home.Path();
        d.Start();
        EXPECT_FALSE(d.house.window.findChild<QWidget*>("CrashStrip"));
    }
    home.Write("crash-note.txt", "Signal   SIGSEGV\n");
    {
        AppDesk d;
        d.files.home = home.Path();
        d.AddPicture("a.jpg");
        d.AddPicture("b.jpg");
        d.Start();
        const QWidget* strip = d.house.window.findChild<QWidget*>("CrashStrip");
        ASSERT_TRUE(strip && strip->isVisible());
        EXPECT_TRUE(d.dialogs.shown.empty());
        d.Key(Qt::Key_N); // it is in nobody's way
        EXPECT_EQ(d.Current(), "b.jpg");
        Press(strip, "CrashShowButton");
        EXPECT_EQ(Shown("frmCrashNote"), "Signal   SIGSEGV\n");
        Press(WindowsDesk::Up("frmCrashNote"), "TextCopyButton");
        EXPECT_EQ(d.clipboard->Text(), "Signal   SIGSEGV\n");
        Press(strip, "CrashDismissButton");
        EXPECT_FALSE(strip->isVisible());
    }
    EXPECT_FALSE(std::filesystem::exists(home.Path() + "/crash-note.txt"));
    std::string kept;
    for (const auto& each : std::filesystem::directory_iterator(home.Path()))
        kept += each.path().filename().string().substr(0, 6);
    EXPECT_EQ(kept, "crash-");
    AppDesk d;
    d.files.home = home.Path();
    d.Start();
    EXPECT_FALSE(d.house.window.findChild<QWidget*>("CrashStrip"));
}

} // namespace
} // namespace tarn::testing

// What the user can send: "About", and the note of a crash.
#include "AppDesk.h"

#include "app/about/AboutText.h"

#include <set>

namespace tarn::testing {
namespace {

std::string Shown(const char* window) {
    const QWidget* up = AppDesk::Up(window);
    return up ? up->findChild<QPlainTextEdit*>()->toPlainText().toStdString() : "none";
}

TEST(About, NamesEveryLibraryAndTheSystemAndIsCopied) {
    AppDesk d;
    d.Start();
    d.c.VersionButton->trigger();
    const std::string text = Shown("frmAbout");
    std::set<std::string> names;
    for (const Library& library : Libraries(Versions::Running)) {
        names.insert(library.name);
        EXPECT_NE(text.find("\n" + library.name + " "), std::string::npos) << text;
        EXPECT_FALSE(library.built.empty()) << library.name;
        EXPECT_EQ(library.built.find_first_not_of("0123456789."), std::string::npos)
            << library.name << " " << library.built;
    }
    for (const char* name : {"Qt", "libjpeg", "libmpv (interface)", "libavformat"})
        EXPECT_TRUE(names.count(name)) << name;
    for (const std::string& part : {d.s.Version, std::string(qVersion()), std::string("\nKernel "),
                                    std::string("\nSession "), std::string("\nScreen 1 ")})
        EXPECT_NE(text.find(part), std::string::npos) << part;
    EXPECT_EQ(text.find(d.folder.Path()), std::string::npos);
    d.Press("frmAbout", "TextCopyButton");
    EXPECT_EQ(d.clipboard->Text(), text);
}

TEST(Crash, TheNextStartOffersTheNoteOnce) {
    const TestFolder home;
    home.Write("crash-note.txt", "Signal   SIGSEGV\n");
    {
        AppDesk d;
        d.files.home = home.Path();
        d.AddPictures({"a.jpg", "b.jpg"});
        d.Start();
        const QWidget* strip = d.house.window.findChild<QWidget*>("CrashStrip");
        ASSERT_TRUE(strip);
        ASSERT_TRUE(strip->isVisible());
        EXPECT_TRUE(d.dialogs.shown.empty());
        d.Key(Qt::Key_N); // it is in nobody's way
        EXPECT_EQ(d.Current(), "b.jpg");
        d.Press("CrashStrip", "CrashShowButton");
        EXPECT_EQ(Shown("frmCrashNote"), "Signal   SIGSEGV\n");
        d.Press("frmCrashNote", "TextCopyButton");
        EXPECT_EQ(d.clipboard->Text(), "Signal   SIGSEGV\n");
        d.Press("CrashStrip", "CrashDismissButton");
        EXPECT_FALSE(strip->isVisible());
    }
    EXPECT_FALSE(std::filesystem::exists(home.Path() + "/crash-note.txt"));
    EXPECT_EQ(ReadTree(home.Path()).size(), 1U); // kept under another name
    AppDesk d;
    d.files.home = home.Path();
    d.Start();
    EXPECT_FALSE(d.house.window.findChild<QWidget*>("CrashStrip"));
}

} // namespace
} // namespace tarn::testing

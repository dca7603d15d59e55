// A small world in which one call of the outside fails: pictures, notes, a copy-to folder and
// pages, with an eye on every byte and every word.
#pragma once

#include "FilesDesk.h"
#include "FitsFiles.h"
#include "MadeNight.h"
#include "clips/MadeDiscs.h"
#include "clips/MadeSer.h"

#include "marks/Sidecar.h"

#include <QGroupBox>

#include <pthread.h>

#include <array>
#include <atomic>

#include <map>
#include <regex>
#include <string>

namespace tarn::testing {

// Which calls are counted, and which of them fails. Decoders call from threads of their own.
struct FaultPoint {
    enum Kind { None, Change, Ask, Settings, Open, Full };

    std::atomic<int> kind{None};
    std::atomic<int> failing{0}; // the number of the call; 0: all are only counted
    std::atomic<int> calls{0};
    std::string what; // the call that failed; empty: none has
    std::string root; // files below it count as pictures to be opened

    bool Fails(Kind asked, const std::string& verb, const std::string& path) {
        if (kind != asked || IsMarksReader() || ++calls != failing) return false;
        what = verb + " " + path;
        return true;
    }
    // Marks are read at any time, whatever the command; what cannot be read has none.
    static bool IsMarksReader() {
        std::array<char, 16> name{};
        ::pthread_getname_np(::pthread_self(), name.data(), name.size());
        return std::string(name.data()) == "marks-reader";
    }
    void Arm(Kind which, int number) {
        failing = number;
        calls = 0;
        what.clear();
        kind = which;
    }
    void Disarm() { kind = None; }
};
extern FaultPoint theFault;

inline std::string FrameOfField(int number) {
    return FrameBytes({.stars = 12, .shiftX = 1.3 * number}, 160, 120, unsigned(number));
}

inline std::string ClipOfDisc() {
    SerClip clip{.width = kDiscSide, .height = kDiscSide};
    for (const double blur : {3.0, 1.0, 2.0}) clip.frames.push_back(Disc(32, 32, blur, 255));
    return SerBytes(clip);
}

struct FaultWorld : FilesDesk {
    TestFolder target;
    TestFolder other{std::filesystem::exists("/dev/shm") ? "/dev/shm" : ""}; // on another disk
    TestFolder frames; // of one field, and a clip: for what is made of series
    std::string paper = target.Path() + "/out.pdf";
    std::string said; // everything on the message line

    FaultWorld() {
        for (const char* name : {"a.jpg", "b.jpg"})
            folder.Write(name, Dated("2004:06:22 20:15:3" + std::to_string(*name % 10),
                                     TellTale(60 + *name % 10, 40)));
        folder.Write("b.jpg.xmp", XmpWithMark("", Rate(2), nullptr).value_or(""));
        folder.Write("cube.fits", FitsBytes(16, {30, 20, 2}, [](auto i) { return double(i); }));
        for (const char* name : {"1.fit", "x.html", "t.txt"})
            folder.Write(name, std::string("the ") + name);
        for (const char* name : {"a.enf", "b.enf"}) notes.Write(name, std::string("of ") + name);
        notes.Write("Note_Formats.txt", "formats");
        int width = 90;
        for (const char* name : {"a.jpg", "a-CM.jpg", "b.jpg"})
            target.Write(name, JpegBytes(TellTale(width++, 40)));
        target.Write("b.enf", "stood in the target");
        static const std::array<std::string, 3> kFrames{FrameOfField(0), FrameOfField(1),
                                                        FrameOfField(2)};
        for (std::size_t i = 0; i < kFrames.size(); ++i)
            frames.Write("L" + std::to_string(i) + ".fits", kFrames[i]);
        static const std::string kClip = ClipOfDisc();
        frames.Write("m.ser", kClip);
        settings->Write("copy_folder", target.Path());
        settings->Write("convert_jpg_add_filename", "False");
        settings->Write("filedate_auto", "False");
        for (const std::string& place : {folder.Path(), notes.Path(), target.Path()})
            for (const auto& [name, bytes] : ReadTree(place))
                SetFileTime(place + "/" + name, 2001, 2, 3, 4, 5, 6);
        theFault.root = folder.Path();
        files.onChange = [](const std::string& verb, const std::string& path) {
            return theFault.Fails(FaultPoint::Change, verb, path) ? "fault" : "";
        };
        files.onAsk = [](const std::string& verb, const std::string& path) {
            return theFault.Fails(FaultPoint::Ask, verb, path) ? "fault" : "";
        };
        settings->onCall = [](const std::string& verb, const std::string& key) {
            return theFault.Fails(FaultPoint::Settings, verb, key);
        };
        QObject::connect(c.FileDateText, &QLineEdit::textChanged, c.FileDateText,
                         [this](const QString& text) { said += text.toStdString() + "\n"; });
    }

    // Where a fault kept the window from coming up, there is nothing to use.
    template <class Widget> Widget* In(const char* form, const char* name) const {
        return Up(form) ? AppDesk::In<Widget>(form, name) : nullptr;
    }
    void Press(const char* form, const char* name, std::vector<std::string> answers = {}) {
        dialogs.answers = std::move(answers);
        if (auto* button = In<QPushButton>(form, name)) button->click();
    }
    void Type(const char* text) {
        c.NotesBox->selectAll();
        c.NotesBox->insertPlainText(QString::fromUtf8(text));
    }

    // As another program does.
    void ChangeNote() const {
        std::filesystem::rename(target.Path() + "/b.enf", notes.Path() + "/a.enf");
    }

    // All files of the user's by short names: "pictures/a.jpg", "trash/b.enf".
    Tree Everything() const {
        Tree all;
        for (const auto& [name, path] : Places()) {
            std::error_code none;
            for (const auto& entry : std::filesystem::recursive_directory_iterator(path, none))
                if (entry.is_regular_file())
                    all[name + entry.path().string().substr(path.size())] =
                        BytesOf(entry.path().string());
        }
        return all;
    }

    // What the user was told, without what differs from run to run.
    std::string Told() const {
        std::string told = said + "|" + Error() + "|";
        for (const QLabel* label : house.window.statusBar()->findChildren<QLabel*>())
            told += label->text().toStdString() + "|";
        for (const std::string& box : dialogs.shown) told += box + "|";
        for (QWidget* form : QApplication::topLevelWidgets()) {
            if (!form->isVisible() || form == &house.window) continue;
            told += form->windowTitle().toStdString() + "|";
            for (const QLabel* label : form->findChildren<QLabel*>())
                if (label->isVisible()) told += label->text().toStdString() + "|";
            for (const QGroupBox* box : form->findChildren<QGroupBox*>())
                told += box->title().toStdString() + "|";
        }
        return Short(told);
    }
    std::string Short(std::string text) const {
        for (const auto& [name, path] : Places())
            for (auto at = text.find(path); at != std::string::npos; at = text.find(path))
                text.replace(at, path.size(), name);
        static const std::regex date(R"(\d\d/\d\d/\d{4} \d+:\d\d:\d\d [AP]M)");
        return std::regex_replace(text, date, "(date)");
    }

    // The program still does its work: another picture is selected, all places agree.
    std::string GoesOn() {
        if (events.ProgramEnds()) return {};
        if (s.BatchRuns) return "a batch still runs";
        house.navigation.OpenFolder(folder.Path(), {});
        house.navigation.RefreshDirButton_Click();
        for (const char* name : {"c.jpg", "a.jpg", "c.jpg"}) {
            if (c.FileListBox->RowOf(name) < 0) continue;
            GoTo(name);
            if (Current() != name) return Current();
            if (c.Picture1->Picture().isNull()) return std::string(name) + " is not shown";
        }
        return {};
    }

private:
    std::vector<std::pair<std::string, std::string>> Places() const {
        return {{"pictures", folder.Path()},      {"notes", notes.Path()},
                {"target", target.Path()},        {"other", other.Path()},
                {"state", settingsFolder.Path()}, {"trash", Wastebasket() + "/files"}};
    }
};

} // namespace tarn::testing

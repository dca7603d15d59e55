// The folders of a run with pictures of many kinds, and the program on them; it can end and be
// started again, as its user does.
#pragma once

#include "Dice.h"
#include "app/AppDesk.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace tarn::testing {

namespace fs = std::filesystem;

// Answers questions at random, with files and folders of the world alone.
class RandomDialogs : public Dialogs {
public:
    RandomDialogs(Dice& dice, const std::string& root) : m_dice(dice), m_root(root) {}

    void Message(Icon, const std::string&, const std::string&) override {}
    bool Confirm(Icon, const std::string&, const std::string&) override { return m_dice.OneIn(2); }
    int Choose(Icon, const std::string&, const std::string&,
               const std::vector<std::string>& buttons) override {
        const int choice = m_dice.Below(static_cast<int>(buttons.size()));
        if (buttons[std::size_t(choice)] == "Delete for good") deletedForGood = true;
        return choice;
    }

    std::string AskText(const std::string&, const std::string&, const std::string&) override {
        const char* const names[] = {"new", "M 31.jpg", "\xC3\xA9toile", "B.JPG",
                                     "",    "IMG_0003", "a/b",           "CON"};
        return m_dice.Of(names);
    }

    std::string OpenFile(const std::string&, const std::string& folder,
                         const std::string& filter) override {
        if (m_dice.OneIn(4)) return {};
        if (filter.find("htm") != std::string::npos)
            return folder + "/made-" + std::to_string(m_dice.Below(3)) + ".html";
        std::vector<std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(m_root))
            if (entry.is_regular_file()) all.push_back(entry.path().string());
        std::sort(all.begin(), all.end());
        return m_dice.Of(all);
    }

    std::string ChooseFolder(const std::string&, const std::string&) override {
        const char* const folders[] = {"",         "pictures", "pictures/\xC3\x89vening one",
                                       "copies",   "notes",    "pictures/UPPER",
                                       "not there"};
        const std::string folder = m_dice.Of(folders);
        return folder.empty() ? folder : m_root + "/" + folder;
    }

    std::string SaveFile(const std::string& title, const std::string& path,
                         const std::string& filter) override {
        const auto dot = path.rfind('.');
        return ChooseTarget(title, path.substr(0, path.rfind('/') + 1), filter,
                            dot == std::string::npos ? "bin" : path.substr(dot + 1));
    }

    std::string ChooseTarget(const std::string&, const std::string& start, const std::string&,
                             const std::string& ending) override {
        if (m_dice.OneIn(4)) return {};
        const std::string folder =
            fs::is_directory(start) ? start : start.substr(0, start.rfind('/'));
        return folder + "/made-" + std::to_string(m_dice.Below(3)) + "." + ending;
    }

    std::optional<int> ChooseColor(const std::string&, int) override {
        constexpr int kColors = 0x1000000;
        if (m_dice.OneIn(3)) return {};
        return m_dice.Below(kColors);
    }

    bool ChooseFont(const std::string&, std::string& name, int& size) override {
        name = m_dice.OneIn(2) ? "DejaVu Sans" : "No such face";
        size = 6 + m_dice.Below(20);
        return !m_dice.OneIn(3);
    }

    bool ChoosePrinter(PrintQuestion& question) override {
        question.choice.toFile = m_dice.OneIn(2);
        question.choice.pdf = m_root + "/paper/made-" + std::to_string(m_dice.Below(2)) + ".pdf";
        if (!question.choice.toFile) question.choice.printer = "a printer";
        question.from = question.least;
        question.to = m_dice.OneIn(2) ? question.most : question.least;
        return !m_dice.OneIn(3);
    }

    bool deletedForGood = false; // the user has said so, in this act

private:
    Dice& m_dice;
    std::string m_root;
};

class World {
public:
    explicit World(Dice& dice);

    void Start(const std::string& path);
    void Restart(); // on what the last run saved; files that have gone are there again
    House& house() { return *m_house; }

    std::string Folder(const char* name) const { return root.Path() + "/" + name; }
    std::vector<std::string> PictureFolders() const; // the first one above the others
    bool IsOurs(const std::string& path) const;      // in the run's folders, or the wastebasket

    TestFolder root;
    RandomDialogs dialogs;
    std::unique_ptr<QuickPump> events;
    Calls calls;
    std::string trespass; // the first change outside the run's folders

private:
    void Fill() const; // what is not there

    OwnFiles m_files;
    std::unique_ptr<SettingsStore> m_settings;
    RecordingSound m_sound{calls};
    RecordingDesktop m_desktop{calls};
    RecordingPrinting m_printing{m_files};
    std::unique_ptr<Clipboard> m_clipboard = MakeClipboard();
    std::unique_ptr<House> m_house;
};

// A picture of one colour, another one for each number: it looks the same however it is scaled, cut
// and turned, and tells of which file it is.
QImage Plain(int number);

// Another one after each change of the file.
std::string StampOf(const std::string& path);

} // namespace tarn::testing

// The folders of a run with pictures of many kinds, and the program on them; it can end and be
// started again, as its user does.
#pragma once

#include "Dice.h"
#include "app/AppDesk.h"

#include <memory>
#include <string>
#include <vector>

namespace tarn::testing {

// Answers questions at random, with files and folders of the world alone.
class RandomDialogs : public Dialogs {
public:
    RandomDialogs(Dice& dice, const std::string& root) : m_dice(dice), m_root(root) {}

    void Message(Icon, const std::string&, const std::string&) override {}
    bool Confirm(Icon, const std::string&, const std::string&) override { return m_dice.OneIn(2); }
    int Choose(Icon, const std::string&, const std::string&,
               const std::vector<std::string>& buttons) override;
    std::string AskText(const std::string&, const std::string&, const std::string&) override;
    std::string OpenFile(const std::string&, const std::string&, const std::string&) override;
    std::string ChooseFolder(const std::string&, const std::string&) override;
    std::string SaveFile(const std::string&, const std::string&, const std::string&) override;
    std::string ChooseTarget(const std::string& title, const std::string& start,
                             const std::string& filter, const std::string& ending) override;
    std::optional<int> ChooseColor(const std::string&, int) override;
    bool ChooseFont(const std::string&, std::string& name, int& size) override;
    bool ChoosePrinter(PrintQuestion& question) override;

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
    static std::string Wastebasket();
    bool IsOurs(const std::string& path) const; // in the run's folders, or the wastebasket

    TestFolder root;
    RandomDialogs dialogs;
    std::unique_ptr<QuickPump> events;
    Calls calls;
    std::string trespass; // the first change outside the run's folders

private:
    struct OwnFiles : ForwardingFiles {
        std::string home;
        std::string HomeFolder() const override { return home; }
        std::string PicturesFolder() const override { return {}; }
        std::string StateFolder() const override { return home; }
    };
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

} // namespace tarn::testing

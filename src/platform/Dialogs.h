// Questions to the user. The scripted one of the tests answers from a list and records the texts.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class Dialogs {
public:
    enum class Icon { Information, Exclamation, Critical };

    virtual ~Dialogs() = default;

    // A box with one OK.
    virtual void Message(Icon icon, const std::string& title, const std::string& text) = 0;

    // A box with OK and Cancel; true for OK.
    virtual bool Confirm(Icon icon, const std::string& title, const std::string& text) = 0;

    // A box with these buttons; the index of the one pressed, that of the last when it is closed.
    virtual int Choose(Icon icon, const std::string& title, const std::string& text,
                       const std::vector<std::string>& buttons) = 0;

    // A line of text; empty when cancelled.
    virtual std::string AskText(const std::string& title, const std::string& label,
                                const std::string& text) = 0;

    // An existing file or folder; empty when cancelled.
    virtual std::string OpenFile(const std::string& title, const std::string& folder,
                                 const std::string& filter) = 0;
    virtual std::string ChooseFolder(const std::string& title, const std::string& folder) = 0;
};

// Boxes stand above the topmost window of ours.
std::unique_ptr<Dialogs> MakeDialogs();

} // namespace tarn

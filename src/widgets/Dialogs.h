// Questions to the user. The scripted one of the tests answers from a list and records the texts.
#pragma once

#include "widgets/printing/Printer.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

// What the print dialog is asked, and what it answers.
struct PrintQuestion {
    bool setup = false; // the printer alone, nothing is printed
    int least = 1;      // pages
    int most = 1;
    int from = 1;
    int to = 1;
    PrinterChoice choice;
};

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

    // A file to be written, asked again where one stands; empty when cancelled. A name without an
    // ending gets that of `path`.
    virtual std::string SaveFile(const std::string& title, const std::string& path,
                                 const std::string& filter) = 0;

    // The same without a question of its own about what stands there; a name without an ending gets
    // `ending`. `start` is the folder shown first, or a file of it that is proposed.
    virtual std::string ChooseTarget(const std::string& title, const std::string& start,
                                     const std::string& filter, const std::string& ending) = 0;

    // A colour, red in its lowest byte; none when cancelled.
    virtual std::optional<int> ChooseColor(const std::string& title, int from) = 0;

    // Name and size in points; false when cancelled.
    virtual bool ChooseFont(const std::string& title, std::string& name, int& size) = 0;

    // The system's print dialog; false when cancelled or when it cannot be shown.
    virtual bool ChoosePrinter(PrintQuestion& question) = 0;
};

// Boxes stand above the topmost window of ours.
std::unique_ptr<Dialogs> MakeDialogs();

} // namespace tarn

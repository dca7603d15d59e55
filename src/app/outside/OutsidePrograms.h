// Programs outside: the file manager, the text editor, the programs that the user has chosen. What
// cannot be started is named in the message line.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"

#include <string>

namespace tarn {

class OutsidePrograms : public Room {
public:
    explicit OutsidePrograms(Context& context) : m(context) {}

    void ConnectControls() override;
    void ShowSettings() override { ShowChosenPrograms(); }

    // Buttons and entries of the chosen programs: hidden where none is chosen, else with its name.
    void ShowChosenPrograms();

    void OpenWindowsExplorerButton_Click();
    void OpenNotepadButton_Click();
    void OpenButton_Click();  // the folder to the chosen program
    void OpenButton2_Click(); // the picture
    void OpenImagesPlusButton_Click();
    void PopupOpenButton_Click(); // the program that the desktop has for the file
    void EditButton2_Click();     // the user's own for pictures, else the desktop's

    void SetOpenButton_Click();
    void ClearOpenButton_Click();

private:
    void ChooseProgram(std::string& program, const char* title);
    bool HasFile();
    void OpenFileIn(const std::string& program);
    void Say(const std::string& failure, const std::string& done);

    Context& m;
};

} // namespace tarn

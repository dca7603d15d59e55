// Start and end of a run, step by step.
#pragma once

#include "shell/Context.h"
#include "shell/start/StartPath.h"

#include <functional>
#include <memory>
#include <string>

namespace tarn {

class frmMain;
class frmSplash;
class NavigationRoom;
class NotesRoom;
class OutsidePrograms;

class Lifecycle {
public:
    Lifecycle(Context& context, frmMain& window, NavigationRoom& navigation, NotesRoom& notes,
              OutsidePrograms& programs);
    ~Lifecycle();

    // Before any window: false, after a message, when pictures cannot be read at all.
    // `imagingError` is empty when they can.
    bool Form_Initialize(const std::string& imagingError);

    // From the settings to the first picture on screen. `argument` is the command line's path.
    void Form_Load(const std::string& argument);

    // Saves, unless told not to, and ends the program; not when text would be lost with it and the
    // user goes on working.
    void Form_Unload();

    void Exit_Click();
    void QuitButton_Click();
    void SaveSettingsButton_Click();
    void RemoveRegButton_Click();
    void HelpRegistryEntriesButton_Click();
    void HelpInitPictureButton_Click(); // the splash once more

    std::function<void()> onUnload; // the end, before the settings are written
    std::function<void()> onKeep;   // values of other windows onto the desk

    const frmSplash* Splash() const { return m_splash.get(); }

private:
    void MeasureWindow();
    void MeasurePane();
    void ReadSettings();
    void ShowFolderSettings();
    void ShowListSettings();
    void RestorePlace();
    void ClearTexts();
    void SelectStartFile();
    void SayWhatIsAmiss();
    void KeepPlaces();
    bool MayClose();
    void Save();

    Context& m;
    frmMain& m_window;
    NavigationRoom& m_navigation;
    NotesRoom& m_notes;
    OutsidePrograms& m_programs;
    std::unique_ptr<frmSplash> m_splash;
    StartPath m_start;
};

} // namespace tarn

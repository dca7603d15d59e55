// Start and end of a run, step by step.
#pragma once

#include "app/start/StartPath.h"
#include "desk/Context.h"
#include "desk/Room.h"

#include <QRect>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class frmMain;
class frmSplash;
class ShownWindows;

class Lifecycle {
public:
    // Each step of their life comes to the rooms in the order given.
    Lifecycle(Context& context, frmMain& window, ShownWindows& windows, std::vector<Room*> rooms);
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

    const frmSplash* Splash() const { return m_splash.get(); }

private:
    void MeasurePane();
    void ReadSettings();
    void RestorePlace();
    void ShowWindow();
    void ClearTexts();
    void SelectStartFile();
    void SayWhatIsAmiss();
    void KeepPlaces();
    bool MayClose();
    void Save();

    Context& m;
    frmMain& m_window;
    ShownWindows& m_windows;
    std::vector<Room*> m_rooms;
    std::unique_ptr<frmSplash> m_splash;
    StartPath m_start;
    std::string m_thrown; // by the first picture
    QRect m_normal;       // of a window that comes back maximised
};

} // namespace tarn

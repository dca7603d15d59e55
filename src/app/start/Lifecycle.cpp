#include "app/start/Lifecycle.h"

#include "app/start/frmSplash.h"
#include "app/window/MenuSwitches.h"
#include "app/window/frmMain.h"
#include "common/paths.h"
#include "common/worker.h"
#include "desk/settings/Settings.h"
#include "platform/DecodeBudget.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PictureBox.h"
#include "widgets/ShownWindows.h"
#include "widgets/Themes.h"
#include "widgets/WindowPlaces.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace tarn {

Lifecycle::Lifecycle(Context& context, frmMain& window, ShownWindows& windows,
                     std::vector<Room*> rooms)
    : m(context), m_window(window), m_windows(windows), m_rooms(std::move(rooms)) {}

Lifecycle::~Lifecycle() = default;

bool Lifecycle::Form_Initialize(const std::string& imagingError) {
    if (!imagingError.empty()) {
        m.dialogs.Message(Dialogs::Icon::Critical, "ImgX4.dll missing error", imagingError);
        return false;
    }
    ApplyTheme(static_cast<Theme>(LoadTheme(m.settings))); // the splash has it already
    m.state.Version_Detail = "Built " __DATE__ " by the Tarn View team";
    m_splash = std::make_unique<frmSplash>(m.state.Version, m.state.Version_Detail);
    m_splash->show();
    m.events.Pump();
    return true;
}

void Lifecycle::MeasurePane() {
    const QSize pane = m.controls.Picture1->PixelSize();
    m.state.PreviewWidth = pane.width();
    m.state.PreviewHeight = pane.height();
}

void Lifecycle::Form_Load(const std::string& argument) {
    ProgramState& s = m.state;
    m_window.resize(m_window.DesignSize());
    m_window.LayOutNow();
    MeasurePane();
    ReadSettings();
    m_start = WorkOutStart(argument, LoadStartPath(m.settings, {}), m.files);
    s.StartFolder = m_start.folder;

    // The tree answers with its event, which opens the start folder while the program loads.
    m.controls.FolderTreeview1->SetSelectedPath(std::string(kRoot));
    m.events.Pump();
    // The window comes up whatever the first picture does.
    Guarded(m_thrown, [this] { return SelectStartFile(), true; });
    s.SlideDelay = 0;
    s.SlideCompare = false;
    m.events.Pump();
    m.controls.FolderTreeview1->SetSelectedPath(s.StartFolder);
    m.controls.FolderTreeview1->Reveal(s.StartFolder);
    s.FilterActive = false;
    s.FormLoadDone = true;
    // Before it is shown: it has the size of the maximised window now, and gets it back late.
    s.MainStartWidth = m_window.width() * kTwipsPerPixel;
    s.MainStartHeight = m_window.height() * kTwipsPerPixel;
    ShowWindow();
    m_splash->LeaveInTime();
    m_window.setWindowTitle(m_window.windowTitle() + QStringLiteral(" - ") + ToQt(s.Version));
    s.ThumbUpdate = false;
    if (s.VideoPending) {
        m.events.Pump();
        m.video.ShowVideoFile();
    }
    m.navigation.ResetFileHistory(true);
    m.shell.SetListCommands(m.controls.FileListBox->Count() > 0 && s.Kind == FileKind::Picture);
    m.shell.FocusPane();
    SayWhatIsAmiss();
    for (Room* room : m_rooms) room->Started();
}

void Lifecycle::SayWhatIsAmiss() {
    if (!m_start.missing.empty())
        m.shell.ShowMessage("'" + m_start.missing + "' does not exist");
    else if (const std::string path = JoinPath(m_start.folder, m_start.name);
             m.controls.FileListBox->RowOf(m_start.name) < 0 && m.files.Exists(path))
        m.shell.ShowMessage("'" + path + "' is not among the files listed");
    else if (!m_thrown.empty())
        m.shell.ShowMessage("ERROR - '" + LastPart(m.state.Filename) + "': " + m_thrown);
    else if (!m.settings.IsWritable())
        m.shell.ShowMessage("Settings cannot be written to " + m.settings.Location());
}

void Lifecycle::ReadSettings() {
    ProgramState& s = m.state;
    LoadSettings(s, m.settings);
    SetDecodeMemory(s.PictureMemory);
    RestorePlace();
    for (Room* room : m_rooms) room->ShowSettings();
    ShowSwitches(m);
    ClearTexts();
    s.ImageLoaded = s.NoSaveOnExit = false;
    m.display.SetPictureCommands(false);
}

void Lifecycle::RestorePlace() {
    ProgramState& s = m.state;
    QSize size = m_window.DesignSize();
    if (s.MainWidth >= 1) size.setWidth(s.MainWidth / kTwipsPerPixel);
    if (s.MainHeight >= 1) size.setHeight(s.MainHeight / kTwipsPerPixel);
    const auto pixels = [](float twips) { // a hand-edited number may be beyond every whole one
        return static_cast<int>(std::clamp(twips, -1e6F, 1e6F)) / kTwipsPerPixel;
    };
    const QPoint place(pixels(s.MainLeft), pixels(s.MainTop));
    if (s.MainMaximised) {
        QSize normal = size;
        if (s.MainNormalWidth >= 1) normal.setWidth(s.MainNormalWidth / kTwipsPerPixel);
        if (s.MainNormalHeight >= 1) normal.setHeight(s.MainNormalHeight / kTwipsPerPixel);
        m_normal = OnScreen(QRect(place, normal), ToQt(s.MainScreen));
        PlaceOnScreen(m_window, m_normal, Seen::Whole);
        m_window.resize(size.boundedTo(m_window.screen()->availableSize()));
    } else {
        // The size may be that of the whole screen, and the place that of the window before.
        PlaceOnScreen(m_window, QRect(place, size), Seen::Whole);
    }
    // The first picture is fitted into the pane that the window will show.
    m_window.SetPanes({.tree = s.TreeWidth / kTwipsPerPixel,
                       .strip = s.StripHeight / kTwipsPerPixel,
                       .notes = s.NotesWidth / kTwipsPerPixel});
    m_window.SetSplitterTop(s.SplitterTop >= 1 ? s.SplitterTop : m_window.DesignSplitterTop());
    MeasurePane();
}

// It has the size of the maximised window by now, for the first picture; what it goes back to is
// told to the window system at the last moment.
void Lifecycle::ShowWindow() {
    if (!m.state.MainMaximised) return m_window.show();
    PlaceOnScreen(m_window, m_normal, Seen::Whole);
    m_window.showMaximized();
}

void Lifecycle::ClearTexts() {
    m.shell.ShowFileTexts();
    m.shell.ShowMessage({});
    m.shell.ShowError({});
}

void Lifecycle::SelectStartFile() {
    const FileListBox& list = *m.controls.FileListBox;
    m.navigation.Update_Num_Files(0);
    if (m_start.name == kFirstRow) {
        m.navigation.SelectRow(0);
        return;
    }
    if (list.RowOf(m_start.name) < 0)
        m.navigation.ListClassOf(JoinPath(m.state.StartFolder, m_start.name));
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(list.RowOf(m_start.name));
}

void Lifecycle::Exit_Click() {
    Form_Unload();
}

void Lifecycle::QuitButton_Click() {
    m.state.NoSaveOnExit = true;
    Form_Unload();
}

void Lifecycle::KeepPlaces() {
    ProgramState& s = m.state;
    s.MainNormal = !m_window.isMinimized() && !m_window.isMaximized() && !m_window.isFullScreen();
    const QRect place = PlaceOf(m_window);
    if (s.MainNormal && PlacesAreKnown()) {
        s.MainLeft = static_cast<float>(place.left() * kTwipsPerPixel);
        s.MainTop = static_cast<float>(place.top() * kTwipsPerPixel);
    }
    s.MainWidth = m_window.width() * kTwipsPerPixel;
    s.MainHeight = m_window.height() * kTwipsPerPixel;
    s.MainMaximised = m_window.isMaximized();
    s.MainScreen = FromQt(m_window.screen()->name());
    const QSize normal = s.MainNormal ? m_window.size() : m_window.normalGeometry().size();
    if (!normal.isEmpty()) {
        s.MainNormalWidth = normal.width() * kTwipsPerPixel;
        s.MainNormalHeight = normal.height() * kTwipsPerPixel;
    }
    s.SplitterTop = m_window.SplitterTop();
    s.TreeWidth = m_window.Panes().tree * kTwipsPerPixel;
    s.StripHeight = m_window.Panes().strip * kTwipsPerPixel;
    s.NotesWidth = m_window.Panes().notes * kTwipsPerPixel;
    for (Room* room : m_rooms) room->KeepValues();
}

// Text that no file has got would be gone with the window. In a batch no box can be answered.
bool Lifecycle::MayClose() {
    if (m.state.BatchRuns) return true;
    for (Room* room : m_rooms)
        if (std::string why;
            !room->MayEnd(why) && m.dialogs.Choose(Dialogs::Icon::Exclamation, "Tarn_View",
                                                   why + "\nIt is lost when the program ends now.",
                                                   {"End", "Go on working"}) != 0)
            return false;
    return true;
}

void Lifecycle::Save() {
    m.shell.SetBusy(true);
    const bool saved = SaveSettings(m.state, m.settings);
    m.shell.SetBusy(false);
    if (!saved && !m.state.BatchRuns)
        m.dialogs.Message(Dialogs::Icon::Exclamation, "Tarn_View",
                          "Settings cannot be written to " + m.settings.Location());
}

void Lifecycle::Form_Unload() {
    if (m.state.Closing) return;
    if (!MayClose()) {
        m.state.NoSaveOnExit = false;
        return;
    }
    m.state.Closing = true;
    for (Room* room : m_rooms) room->BreakOff();
    if (!m.state.BatchFilename.empty()) { // what a batch selects is not what comes back
        m.current.Choose(m.state.BatchFilename);
        if (auto* row = m.state.HistRow()) *row = m.state.BatchRow;
    }
    KeepPlaces();
    Save();
    for (Room* room : m_rooms) room->End();
    m_windows.HideAll();
    m.events.EndProgram();
}

void Lifecycle::SaveSettingsButton_Click() {
    KeepPlaces();
    m.shell.SetBusy(true);
    const bool saved = SaveSettings(m.state, m.settings);
    m.shell.SetBusy(false);
    m.shell.ShowMessage(saved ? "Settings saved"
                              : "Settings cannot be written to " + m.settings.Location());
}

void Lifecycle::RemoveRegButton_Click() {
    m.settings.Delete();
    if (m.settings.Flush())
        m.dialogs.Message(Dialogs::Icon::Information, "Tarn_View",
                          "Registry entries for Tarn_View have been removed.");
    else
        m.dialogs.Message(Dialogs::Icon::Exclamation, "Tarn_View",
                          "Registry entries for Tarn_View cannot be removed from " +
                              m.settings.Location());
}

void Lifecycle::HelpRegistryEntriesButton_Click() {
    m.dialogs.Message(Dialogs::Icon::Information, "Registry entries",
                      "Registry entires are located in:\n" + m.settings.Location() +
                          ", section Defaults");
}

void Lifecycle::HelpInitPictureButton_Click() {
    m_splash->ShowOnTop();
}

} // namespace tarn

#include "shell/start/Lifecycle.h"

#include "common/paths.h"
#include "navigation/ClassFilter.h"
#include "navigation/NavigationRoom.h"
#include "notes/NotesRoom.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/FileListBox.h"
#include "platform/Files.h"
#include "platform/FolderTreeview.h"
#include "platform/PictureBox.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "platform/WindowPlaces.h"
#include "shell/controls/SheetEntries.h"
#include "shell/outside/OutsidePrograms.h"
#include "shell/settings/Settings.h"
#include "shell/start/frmSplash.h"
#include "shell/window/MenuSwitches.h"
#include "shell/window/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace tarn {

namespace {

// In this order they go at the end; the main window last.
constexpr const char* kWindows[] = {
    "frmFilter",       "FrmNewNotes",  "frmDate",        "frmFileTypes", "frmHelp",
    "frmHtmlLayout",   "frmHtmlThumb", "frmNotesFolder", "frmOnetoOne",  "frmSlideDelay",
    "frmSlideShow",    "frmSplash",    "frmThumbFolder", "frmRename",    "frmRenameFiles",
    "frmBrightness",   "frmLogs",      "frmCaption",     "FrmPic",       "frmExpCalc",
    "frmPrintPreview", "frmStretch",   "frmAbout",       "frmCrashNote"};

void HideWindows() {
    const QWidgetList all = QApplication::topLevelWidgets();
    for (const char* name : kWindows)
        for (QWidget* window : all)
            if (window->objectName() == QLatin1String(name)) window->hide();
}

} // namespace

Lifecycle::Lifecycle(Context& context, frmMain& window, NavigationRoom& navigation,
                     NotesRoom& notes, OutsidePrograms& programs)
    : m(context), m_window(window), m_navigation(navigation), m_notes(notes), m_programs(programs) {
}

Lifecycle::~Lifecycle() = default;

bool Lifecycle::Form_Initialize(const std::string& imagingError) {
    if (!imagingError.empty()) {
        m.dialogs.Message(Dialogs::Icon::Critical, "ImgX4.dll missing error", imagingError);
        return false;
    }
    m.state.Version_Detail = "Built " __DATE__ " by the Tarn View team";
    m_splash = std::make_unique<frmSplash>(m.state.Version, m.state.Version_Detail);
    m_splash->show();
    m.events.Pump();
    m.events.Sleep(250);
    return true;
}

void Lifecycle::MeasureWindow() {
    const QSize screen = ScreenPixels(m_window);
    m.state.ScreenWidthPx = screen.width() - 8;
    m.state.ScreenHeightPx = screen.height() - 8;
    MeasurePane();
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
    MeasureWindow();
    ReadSettings();
    m_start = WorkOutStart(argument, LoadStartPath(m.settings, {}), m.files);
    s.StartSpec = m_start.spec;
    s.StartFolder = m_start.folder;
    s.StartName = m_start.name;

    // The tree answers with its event, which opens the start folder while the program loads.
    m.controls.FolderTreeview1->SetSelectedPath(std::string(kRoot));
    m.events.Pump();
    SelectStartFile();
    s.SlideDelay = 0;
    s.SlideCompare = false;
    m_splash->hide();
    m.events.Pump();
    m.controls.FolderTreeview1->SetSelectedPath(s.StartFolder);
    m.controls.FolderTreeview1->Reveal(s.StartFolder);
    s.FilterActive = false;
    s.FormLoadDone = true;
    m_window.show();
    s.MainStartWidth = m_window.width() * kTwipsPerPixel;
    s.MainStartHeight = m_window.height() * kTwipsPerPixel;
    m_window.setWindowTitle(m_window.windowTitle() + QStringLiteral(" - ") + ToQt(s.Version));
    s.ThumbUpdate = false;
    if (s.VideoPending) {
        m.events.Pump();
        m.video.ShowVideoFile();
    }
    m.navigation.ResetFileHistory(true);
    m_navigation.ShowHint();
    m.shell.SetListCommands(m.controls.FileListBox->Count() > 0 && !s.VideoImage && !s.WebImage);
    m.shell.FocusPane();
    SayWhatIsAmiss();
    m_notes.TakeUpDrafts();
}

void Lifecycle::SayWhatIsAmiss() {
    if (!m_start.missing.empty())
        m.shell.ShowMessage("'" + m_start.missing + "' does not exist");
    else if (const std::string path = JoinPath(m_start.folder, m_start.name);
             m.controls.FileListBox->RowOf(m_start.name) < 0 && m.files.Exists(path))
        m.shell.ShowMessage("'" + path + "' is not among the files listed");
    else if (!m.settings.IsWritable())
        m.shell.ShowMessage("Settings cannot be written to " + m.settings.Location());
}

void Lifecycle::ReadSettings() {
    ProgramState& s = m.state;
    LoadSettings(s, m.settings);
    RestorePlace();
    ShowFolderSettings();
    ShowListSettings();
    m_notes.ShowSettings();
    ShowSwitches(m);
    ClearTexts();
    s.ImageLoaded = s.NoSaveOnExit = s.OneToOneNav = false;
    m.display.SetPictureCommands(false);
    s.FileTypes = StartFileTypes(s);
    m.controls.FileListBox->SetPattern(s.FileTypes);
    SetEnabled(m.controls.FolderBackButton, s.HistHigh >= 1 && s.HistCur > 1);
    SetEnabled(m.controls.FolderFwdButton, s.HistHigh >= 1 && s.HistCur < s.HistHigh);
}

void Lifecycle::RestorePlace() {
    ProgramState& s = m.state;
    QSize size = m_window.DesignSize();
    if (s.MainWidth >= 1) size.setWidth(s.MainWidth / kTwipsPerPixel);
    if (s.MainHeight >= 1) size.setHeight(s.MainHeight / kTwipsPerPixel);
    const auto pixels = [](float twips) { // a hand-edited number may be beyond every whole one
        return static_cast<int>(std::clamp(twips, -1e6F, 1e6F)) / kTwipsPerPixel;
    };
    // The size may be that of the whole screen, and the place that of the window before.
    PlaceOnScreen(m_window, QRect(QPoint(pixels(s.MainLeft), pixels(s.MainTop)), size),
                  Seen::Whole);
    // The first picture is fitted into the pane that the window will show.
    m_window.LayOutNow();
    m_window.SetSplitterTop(s.SplitterTop >= 1 ? s.SplitterTop : m_window.DesignSplitterTop());
    MeasurePane();
}

void Lifecycle::ShowFolderSettings() {
    const ProgramState& s = m.state;
    const MainControls& c = m.controls;
    c.GenerateThumbButton->setProperty("baseCaption", c.GenerateThumbButton->text());
    for (const SheetEntry& sheet : SheetEntries(c))
        sheet.entry->setProperty("baseCaption", sheet.entry->text());
    c.GenerateThumbButton->setText(c.GenerateThumbButton->text() + ToCaption(s.ThumbSubFolder));
    m_programs.ShowChosenPrograms();
}

void Lifecycle::ShowListSettings() {
    const ProgramState& s = m.state;
    const MainControls& c = m.controls;
    const auto set = [](QCheckBox* box, int value) {
        const QSignalBlocker silent(box);
        box->setChecked(value != 0);
    };
    set(c.PCheck, s.PictureListCheck);
    set(c.VCheck, s.VideoListCheck);
    set(c.WCheck, s.WebListCheck);
}

void Lifecycle::ClearTexts() {
    const MainControls& c = m.controls;
    for (QLabel* label : {c.MpixelText, c.FileSizeText, c.SizeText}) label->clear();
    m.shell.ShowMessage({});
    m.shell.ShowError({});
}

void Lifecycle::SelectStartFile() {
    const FileListBox& list = *m.controls.FileListBox;
    m.navigation.Update_Num_Files(0);
    if (m.state.StartName == kFirstRow) {
        m.navigation.SelectRow(0);
        return;
    }
    if (list.RowOf(m.state.StartName) < 0)
        m_navigation.ListClassOf(JoinPath(m.state.StartFolder, m.state.StartName));
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(list.RowOf(m.state.StartName));
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
    s.SplitterTop = m_window.SplitterTop();
    s.PictureListCheck = m.controls.PCheck->isChecked();
    s.VideoListCheck = m.controls.VCheck->isChecked();
    s.WebListCheck = m.controls.WCheck->isChecked();
    m_notes.KeepValues();
    if (onKeep) onKeep();
}

// Text that no file has got would be gone with the window. In a batch no box can be answered.
bool Lifecycle::MayClose() {
    std::string why;
    if (m.state.BatchRuns || m_notes.KeepUnsaved(&why)) return true;
    return m.dialogs.Choose(Dialogs::Icon::Exclamation, "Tarn_View",
                            "Unsaved text is not kept in " + m.files.StateFolder() + ": " + why +
                                "\nIt is lost when the program ends now.",
                            {"End", "Go on working"}) == 0;
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
    m.slides.SlideDone(); // what a show changed is not what is saved
    m.thumbnails.ThumbnailsDone();
    if (!m.state.BatchFilename.empty()) { // what a batch selects is not what comes back
        m.state.Filename = m.state.BatchFilename;
        if (auto* row = m.state.HistRow()) *row = m.state.BatchRow;
    }
    if (onUnload) onUnload();
    if (m.state.VideoShown) m.video.CloseVideoClip();
    KeepPlaces();
    Save();
    m_notes.Form_Unload();
    HideWindows();
    m_window.hide();
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
    m_splash->show();
}

} // namespace tarn

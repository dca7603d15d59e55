#include "app/House.h"

#include "app/about/AboutText.h"
#include "app/help/HelpPages.h"
#include "app/window/MenuSwitches.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "platform/SettingsStore.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

namespace tarn {

namespace {

constexpr int kResizeRest = 250; // milliseconds after the last change of size
constexpr int kSettles = 1000;   // milliseconds in which a new window gets its size
constexpr int kBatchRest = 300;  // milliseconds until a batch or a question is looked at again

} // namespace

House::House(const Platform& p)
    : context{.state = state,
              .current = current,
              .controls = controls,
              .navigation = navigation,
              .display = display,
              .info = info,
              .notes = notes,
              .marks = marks,
              .night = night,
              .slides = slides,
              .copies = copies,
              .fileops = fileops,
              .thumbnails = thumbnails,
              .video = video,
              .shell = shell,
              .ahead = ahead,
              .clipboard = p.clipboard,
              .files = p.files,
              .history = history,
              .settings = p.settings,
              .events = p.events,
              .dialogs = p.dialogs,
              .sound = p.sound,
              .desktop = p.desktop,
              .printing = p.printing},
      history(p.files), window(controls, p.files), shell(context, window), navigation(context),
      display(context), info(context), notes(context), marks(context), slides(context),
      copies(context), fileops(context), print(context), thumbnails(context), web(context),
      video(context, [] { return MakeMci(); }), night(context), blink(context), follow(context),
      importExport(context), programs(context), keys(context),
      lifecycle(context, window, screens, Rooms()), crash(window, p.files, p.clipboard) {
    for (Room* room : Rooms()) room->ConnectControls();
    ConnectSwitches(context);
    WireFile();
    WireHelp();
    WireWindow();
    window.OrderTabs();
    m_strip = std::make_unique<DateStrip>(context, window);
    m_card = std::make_unique<StartCard>(context);
    m_card->onAnswer = [this] { m_strip->Follow(); };
}

// In this order each step of a room's life comes to them.
std::vector<Room*> House::Rooms() {
    return {&navigation, &display, &info,  &notes, &marks, &slides, &copies,       &fileops, &print,
            &thumbnails, &web,     &video, &night, &blink, &follow, &importExport, &programs};
}

void House::WireFile() {
    MainControls& c = controls;
    Connect(c.OpenFileButton, [this] { AskForFile(); });
    Connect(c.OpenFolderButton, [this] { AskForFolder(); });
    Connect(c.SaveSettingsButton, [this] { lifecycle.SaveSettingsButton_Click(); });
    Connect(c.QuitButton, [this] { lifecycle.QuitButton_Click(); });
    Connect(c.Exit, [this] { lifecycle.Exit_Click(); });
    Connect(c.RemoveRegButton, [this] { lifecycle.RemoveRegButton_Click(); });
    Connect(c.VersionButton, [this] { VersionButton_Click(); });
    Connect(c.ShowLogsButton, [this] { ShowLogsButton_Click(); });
}

void House::WireHelp() {
    const MainControls& c = controls;
    Connect(c.HelpInitPictureButton, [this] { lifecycle.HelpInitPictureButton_Click(); });
    Connect(c.HelpRegistryEntriesButton, [this] { lifecycle.HelpRegistryEntriesButton_Click(); });
    Connect(c.FirstStepsButton, [this] { FirstStepsButton_Click(); });
    struct Entry {
        QAction* entry;
        int page;
    };
    for (const Entry& help :
         {Entry{c.HelpContentsButton, kHelpContents}, Entry{c.HelpTourButton, kHelpTour},
          Entry{c.HelpKeysButton, kHelpKeys}, Entry{c.HelpPicNavButton, kHelpNavigation},
          Entry{c.HelpSlideButton, kHelpSlides}, Entry{c.HelpSizeButton, kHelpSizeWindow},
          Entry{c.HelpOneButton, kHelpOneToOne}, Entry{c.HelpNotesFolderButton, kHelpFolders},
          Entry{c.HelpPictureFileDateButton, kHelpFileDate},
          Entry{c.HelpThumbFolderButton, kHelpThumbFolder},
          Entry{c.HelpThumbSizeButton, kHelpThumbSizes},
          Entry{c.HelpPrintCButton, kHelpPrintLayouts}})
        Connect(help.entry, [this, page = help.page] { shell.ShowHelpPage(page); });
}

void House::FirstStepsButton_Click() {
    if (!m_firstSteps) m_firstSteps = std::make_unique<frmFirstSteps>(context);
    m_firstSteps->steps().onAnswer = [this] { m_strip->Follow(); };
    m_firstSteps->ShowSteps();
}

void House::ShowLogsButton_Click() {
    if (!m_logs) m_logs = std::make_unique<frmLogs>(context);
    m_logs->ShowFolder();
}

void House::VersionButton_Click() {
    if (!m_about)
        m_about = std::make_unique<frmText>("frmAbout", "Tarn_View - About", context.clipboard);
    m_about->ShowText("Tarn_View - Digital Camera Picture program",
                      AboutText(state.Version, state.Version_Detail, Versions::Running));
}

void House::WireWindow() {
    window.onClose = [this] { lifecycle.Exit_Click(); };
    window.onOpen = [this](const std::string& path) { Open(path); };
    window.onResize = [this] { WindowResized(); };
    window.onRefit = [this] { PaneResized(); };
    // The size that the window system gives a new window is no dragging by hand.
    window.onSizedBySystem = [this] {
        if (m_resizeTimer.isActive() && !(m_started.isValid() && m_started.hasExpired(kSettles)))
            m_resizeTimer.start(0);
    };
    m_resizeTimer.setObjectName(QStringLiteral("ResizeTimer"));
    m_resizeTimer.setSingleShot(true);
    QObject::connect(&m_resizeTimer, &QTimer::timeout, [this] { ResizeTimer_Timer(); });
    QObject::connect(controls.FileListBox, &FileListBox::diskChanged, controls.FolderChangedLabel,
                     &QLabel::setVisible);
    Connect(controls.PictureOnlyButton, [this] {
        shell.FocusPane(); // before what has the keyboard goes
        window.SetPictureOnly(controls.PictureOnlyButton->isChecked());
    });
    window.onEscape = [this] {
        if (state.BatchRuns)
            state.BatchCancelled = true;
        else
            controls.PictureOnlyButton->trigger();
    };
    Connect(controls.BatchCancelButton, [this] { state.BatchCancelled = true; });
    const auto font = [this](double by) {
        const double size = window.ChangeListFont(by);
        shell.ShowMessage("FileListBox font set to " + ShortestSingle(static_cast<float>(size)));
    };
    Connect(controls.FileListFontIncButton, [font] { font(0.5); });
    Connect(controls.FileListFontRedButton, [font] { font(-0.5); });
}

void House::MeasurePane() {
    const QSize pane = controls.Picture1->PixelSize();
    state.PreviewWidth = pane.width();
    state.PreviewHeight = pane.height();
}

void House::WindowResized() {
    if (!state.FormLoadDone) return;
    MeasurePane();
    m_resizeTimer.start(kResizeRest);
}

// Nothing that the user did: keyboard, turns, views and message stay.
void House::PaneResized() {
    if (!state.FormLoadDone) return;
    MeasurePane();
    if (state.Kind == FileKind::Picture && state.ImageLoaded && !state.SlideViewing)
        display.ShowPreview();
}

void House::ResizeTimer_Timer() {
    if (state.BatchRuns || state.SlideViewing)
        m_resizeTimer.start(kResizeRest);
    else
        display.Redraw();
}

bool House::Start(const std::string& path, const std::string& imagingError) {
    if (!lifecycle.Form_Initialize(imagingError)) return false;
    lifecycle.Form_Load(path);
    m_started.start();
    // Another screen may have finer pixels at the same size of the window.
    QObject::connect(window.windowHandle(), &QWindow::screenChanged, &m_resizeTimer,
                     [this] { WindowResized(); });
    crash.Offer();
    if (!m_handedEarly.empty()) Open(m_handedEarly);
    if (path.empty() && !context.settings.Contains("filespec_default")) m_card->Welcome();
    m_card->Follow();
    m_strip->Follow();
    return true;
}

void House::TellThrown(const std::string& fault) {
    shell.ShowMessage("ERROR - '" + LastPart(state.Filename) + "': " + fault);
}

void House::Open(const std::string& path) {
    if (!state.FormLoadDone) {
        m_handedEarly = path; // the start folder comes first
        return;
    }
    slides.SlideDone();
    // A batch goes on with the folder that it began in, a show leaves at its next round, and a
    // question that is open was asked of the current file.
    if (state.BatchRuns || state.SlideViewing || QApplication::activeModalWidget()) {
        QTimer::singleShot(kBatchRest, &m_resizeTimer, [this, path] { Open(path); });
        return;
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
    if (path.empty()) return;
    const StartPath place = WorkOutStart(path, {}, context.files);
    navigation.OpenFolder(place.folder, place.name == kFirstRow ? std::string() : place.name);
    if (!place.missing.empty()) shell.ShowMessage("'" + place.missing + "' does not exist");
}

void House::AskForFile() {
    const std::string file =
        context.dialogs.OpenFile("Open File", controls.FileListBox->Path(), {});
    if (!file.empty()) Open(file);
}

void House::AskForFolder() {
    const std::string folder =
        context.dialogs.ChooseFolder("Open Folder", controls.FileListBox->Path());
    if (!folder.empty()) Open(folder);
}

} // namespace tarn

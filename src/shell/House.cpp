#include "shell/House.h"

#include "common/numbers.h"
#include "platform/Dialogs.h"
#include "platform/FileListBox.h"
#include "platform/PictureBox.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>

#include "shell/window/MenuSwitches.h"

namespace tarn {

namespace {

constexpr int kResizeRest = 250; // milliseconds after the last change of size

} // namespace

House::House(const Platform& p)
    : context{state, controls, navigation, display,  info,      notes,  video,
              shell, p.files,  p.settings, p.events, p.dialogs, p.sound},
      window(controls, p.files), shell(context, *window.statusBar()), navigation(context),
      display(context), info(context), video(context), keys(context, navigation),
      lifecycle(context, window, navigation) {
    navigation.ConnectControls();
    display.ConnectControls();
    ConnectSwitches(context);
    WireFile();
    WireWindow();
}

void House::WireFile() {
    MainControls& c = controls;
    Connect(c.OpenFileButton, [this] { AskForFile(); });
    Connect(c.OpenFolderButton, [this] { AskForFolder(); });
    Connect(c.SaveSettingsButton, [this] { lifecycle.SaveSettingsButton_Click(); });
    Connect(c.QuitButton, [this] { lifecycle.QuitButton_Click(); });
    Connect(c.Exit, [this] { lifecycle.Exit_Click(); });
    Connect(c.RemoveRegButton, [this] { lifecycle.RemoveRegButton_Click(); });
    Connect(c.VersionButton, [this] { lifecycle.VersionButton_Click(); });
    Connect(c.HelpInitPictureButton, [this] { lifecycle.VersionButton_Click(); });
    Connect(c.HelpRegistryEntriesButton, [this] { lifecycle.HelpRegistryEntriesButton_Click(); });
}

void House::WireWindow() {
    window.onClose = [this] { lifecycle.Exit_Click(); };
    window.onOpen = [this](const std::string& path) { Open(path); };
    window.onResize = [this] { WindowResized(); };
    m_resizeTimer.setSingleShot(true);
    m_resizeTimer.setInterval(kResizeRest);
    QObject::connect(&m_resizeTimer, &QTimer::timeout, [this] { display.Redraw(); });
    QObject::connect(controls.FileListBox, &FileListBox::diskChanged, controls.FolderChangedLabel,
                     &QLabel::setVisible);
    const auto font = [this](double by) {
        const double size = window.ChangeListFont(by);
        shell.ShowMessage("FileListBox font set to " + ShortestSingle(static_cast<float>(size)));
    };
    Connect(controls.FileListFontIncButton, [font] { font(0.5); });
    Connect(controls.FileListFontRedButton, [font] { font(-0.5); });
}

void House::WindowResized() {
    if (!state.FormLoadDone) return;
    const qreal ratio = window.devicePixelRatioF();
    state.PreviewWidth = qRound(window.PaneSize().width() * ratio);
    state.PreviewHeight = qRound(window.PaneSize().height() * ratio);
    m_resizeTimer.start();
}

bool House::Start(const std::string& path, const std::string& imagingError) {
    if (!lifecycle.Form_Initialize(imagingError)) return false;
    lifecycle.Form_Load(path);
    return true;
}

void House::Open(const std::string& path) {
    if (path.empty()) return;
    navigation.OpenPath(path);
    window.raise();
    window.activateWindow();
}

void House::AskForFile() {
    Open(context.dialogs.OpenFile("Open File", controls.FileListBox->Path(), {}));
}

void House::AskForFolder() {
    Open(context.dialogs.ChooseFolder("Open Folder", controls.FileListBox->Path()));
}

} // namespace tarn

#include "video/VideoRoom.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "common/text.h"
#include "pictureinfo/PictureFile.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "video/frmBestFrames.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"
#include "widgets/PictureBox.h"
#include "widgets/TextPane.h"
#include "widgets/webpane/PageBrowser.h"

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>

#include <utility>

namespace tarn {

namespace {

constexpr int kTimerInterval = 500;  // milliseconds
constexpr int kQuick = 300;          // the same, of an answer that nobody waits for
constexpr char kPaneHandle[] = "2";  // Picture2, as a number of our own
constexpr float kRateSeconds = 1000; // in which the player counts the frames of its rate

} // namespace

VideoRoom::VideoRoom(Context& context, std::function<std::unique_ptr<Mci>()> makeMci)
    : m(context), m_makeMci(std::move(makeMci)), m_text(context.files) {
    m_timer.setInterval(kTimerInterval);
    connect(&m_timer, &QTimer::timeout, this, [this] { VideoTimer_Timer(); });
}

VideoRoom::~VideoRoom() = default;

void VideoRoom::ConnectControls() {
    const MainControls& c = m.controls;
    for (const int index : {0, 1, 3, 4, 5, 6})
        Connect(c.VideoButton[std::size_t(index)], [this, index] { VideoButton_Click(index); });
    Connect(c.QTplayButton, [this] {
        const std::string fault = m.desktop.OpenAssociated(m.state.Filename);
        m.shell.ShowMessage(fault.empty() ? "'" + m.state.FileNameOnly + "' opened in its program"
                                          : "ERROR - " + fault);
    });
    Connect(c.ClipBestButton, [this] { BestFramesButton_Click(); });
    Connect(c.BestFramesButton, [this] { BestFramesButton_Click(); });
    m.current.Follow([this] {
        if (m_best) m_best->FollowCurrent();
    });
    m_slider = Named(new QSlider(Qt::Horizontal), "VideoSlider", "Frame of the clip");
    m_slider->setFocusPolicy(Qt::NoFocus);
    static_cast<QBoxLayout*>(c.VideoFrame->layout())->addWidget(m_slider, 1);
    connect(m_slider, &QSlider::valueChanged, this,
            [this](int frame) { Seek(std::to_string(frame)); });
    c.Picture2->installEventFilter(this);
    // What is below the part that was read comes when it is scrolled to.
    connect(c.LogText->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        QScrollBar& bar = *m.controls.LogText->verticalScrollBar();
        if (!m_text.HasMore() || value == 0 || value < bar.maximum()) return;
        if (m_text.ReadMore())
            AppendText(*m.controls.LogText, m_text.Text());
        else
            m.shell.ShowError(m_text.Error() + " - " + m.state.FileNameOnly);
    });
}

void VideoRoom::BreakOff() {
    if (m_best) m_best->BreakOff();
    CloseVideoClip();
}

Mci& VideoRoom::Player() {
    if (!m_mci) {
        m_mci = m_makeMci();
        m_mci->onFrame = [this](const QImage& frame) { m.controls.Picture2->SetPicture(frame); };
        m_mci->onWait = [this] { return WaitsOn(); };
    }
    return *m_mci;
}

Mci::Reply VideoRoom::Send(const std::string& command) {
    const bool outermost = !m_sends.isValid();
    if (outermost) m_sends.start();
    Mci::Reply reply = Player().Send(command);
    if (outermost) {
        m_sends.invalidate();
        if (m_wait) m.shell.ShowMessage("");
        m_wait.reset();
        m_slider->setSliderDown(false); // a wait has taken the release
        if (std::exchange(m_closes, false)) CloseVideoClip();
    }
    return reply;
}

// A player that takes its time leaves the window alive; Esc breaks it off.
bool VideoRoom::WaitsOn() {
    if (m_closes) return false;
    if (m_sends.elapsed() < kQuick) return true;
    if (m_wait) return m_wait->Step("Waiting for '" + m.state.FileNameOnly + "' ...");
    if (m.state.BatchRuns) return !m.events.ProgramEnds();
    m_wait = std::make_unique<BatchRun>(m);
    return true;
}

bool VideoRoom::SendChecked(const std::string& command, std::string* reply) {
    const Mci::Reply answer = Send(command);
    if (reply) *reply = answer.text;
    if (answer.code == 0) return true;
    ErrorStep(answer.code);
    return false;
}

void VideoRoom::ErrorStep(int code) {
    const std::string text = Player().ErrorText(code);
    m.shell.ShowError(!text.empty() ? text
                                    : "MCI error " + std::to_string(code) +
                                          ", video Codec may not be installed.");
    m_lines[8] = m_lines[11] = " ";
    m_lines[9] = "        Note: Use Windows Media Player to ";
    m_lines[10] = "              download video codec.";
    CloseVideoClip();
    m.controls.VideoFrame->hide();
}

void VideoRoom::CloseVideoClip() {
    if (m_sends.isValid()) { // the command under way leaves first
        m_closes = true;
        return;
    }
    if (m_mci) m_mci->Send("close VidClip");
    m_open = m_running = false;
    m_timer.stop();
    SetPlayCaption(false);
}

long long VideoRoom::FileBytes() const {
    return ReadFileFacts(m.state.Filename).size;
}

void VideoRoom::BeginFile() {
    ProgramState& s = m.state;
    m.current.Choose(s.Filename, m.controls.FileListBox->CurrentRow());
    ForgetPicture(s);
    s.FileDate = FormatFileDate(ReadFileFacts(s.Filename));
    m.shell.ShowMessage("");
    m.shell.ShowError("");
    m.shell.ShowStatus(s.Filename);
    s.HistoryListed = false;
    s.ImageLoaded = false;
    s.ImageWidth = s.ImageHeight = 0;
    for (std::string* text : {&s.SizeText, &s.MpixelText, &s.FileSizeText}) text->clear();
    m.shell.ShowFileTexts();
    m.controls.CropLabel->hide();
    m.controls.QTplayButton->hide();
    m_lines = {};
}

// The file stands in the window: its texts, and all who follow it.
void VideoRoom::TellShown() {
    for (const std::string& line : m_lines)
        if (!line.empty()) m.state.PanelRows.push_back(line);
    m.shell.ShowFileTexts();
    m.current.Tell();
}

void VideoRoom::ShowVideoFile(const PictureRequest& request) {
    ProgramState& s = m.state;
    if (!s.FormLoadDone) s.VideoPending = true;
    if (!s.FormLoadDone || s.SlideViewing) return;
    BeginFile();
    if (s.FileType == ".LOG")
        ShowText(FileKind::Log);
    else if (s.FileType == ".MP4" && !s.VideoInWindow)
        ShowSummary("MP4 video", true);
    else if ((s.FileType == ".SER" || s.FileType == ".MOV") && !s.VideoInWindow)
        ShowSummary("Canon DSLR Video", false);
    else
        ShowClip();
    if (s.Kind != FileKind::Log && request.focus) m.shell.FocusPane();
    TellShown();
}

void VideoRoom::ShowPicture2(bool transport) {
    m.current.ShowAs(FileKind::Clip);
    m.controls.VideoFrame->setVisible(transport);
}

void VideoRoom::ShowSummary(const std::string& camera, bool placeholder) {
    const long long bytes = FileBytes();
    m_lines = SummaryLines(m.state.Filename, camera, bytes);
    if (placeholder) m_lines[5] = "           Video format not supported";
    m.state.FileSizeText = VideoSizeText(bytes);
    m.controls.Picture2->SetPicture(placeholder ? QImage(ToQt(ProgramFile("MP4.jpg"))) : QImage());
    m.controls.Picture2->SetHint(placeholder ? "" : "Press Play Video");
    ShowPicture2(false);
    m.controls.QTplayButton->show();
    m.controls.QTplayButton->raise();
}

void VideoRoom::ShowClip() {
    m.controls.Picture2->SetPicture({});
    m.controls.Picture2->SetHint("");
    ShowPicture2(true);
    if (OpenVideoClip(m.state.Filename)) PlayClip("VidClip to " + std::to_string(kFirstShown));
}

bool VideoRoom::OpenVideoClip(const std::string& path) {
    CloseVideoClip();
    if (!OpenPlayer(path)) return false;
    const auto numbers = AskForNumbers();
    if (!numbers) return false;
    m_clip = *numbers;
    ShowNumbers(path);
    if (m_sound) Send("setaudio VidClip on");
    return true;
}

bool VideoRoom::OpenPlayer(const std::string& path) {
    const Mci::Reply opened = Send("Open \"" + path + "\" alias VidClip");
    if (opened.code == 0) return true;
    if (opened.code == Mci::kFileNotFound) {
        m.shell.ShowError("File not Found - " + m.state.FileNameOnly);
        m.controls.VideoFrame->hide();
    } else {
        ErrorStep(opened.code);
    }
    return false;
}

// None when the player has failed at one of them; that was said.
std::optional<ClipNumbers> VideoRoom::AskForNumbers() {
    ClipNumbers clip;
    std::string length;
    std::string place;
    std::string rate;
    if (!SendChecked("status VidClip length", &length) ||
        !SendChecked(std::string("Window VidClip handle ") + kPaneHandle) ||
        !SendChecked("Where VidClip destination", &place))
        return std::nullopt;
    TakeSize(place, clip);
    if (!SendChecked("Put VidClip destination at 0 0 " + std::to_string(clip.width) + " " +
                     std::to_string(clip.height)) ||
        !SendChecked("status VidClip record frame rate", &rate))
        return std::nullopt;
    clip.lastFrame = ParseInt32(Trim(GetFirstWord(length))).value_or(1) - 1;
    clip.frameRate = ParseSingle(Trim(rate)).value_or(0) / kRateSeconds;
    return clip;
}

void VideoRoom::ShowNumbers(const std::string& path) {
    ProgramState& s = m.state;
    const long long bytes = FileBytes();
    m_lines = ClipLines(path, m_clip, bytes);
    s.SizeText = std::to_string(m_clip.width) + " x " + std::to_string(m_clip.height);
    s.FileSizeText = VideoSizeText(bytes);
    m.controls.CropLabel->setVisible(m_clip.width >= m.controls.Picture2->PixelSize().width());
    const QSignalBlocker silent(m_slider);
    m_slider->setRange(0, m_clip.lastFrame);
}

void VideoRoom::PlayClip(const std::string& alias) {
    if (!SendChecked("Play " + alias)) return;
    m_open = true;
    ReadPosition();
    ShowPosition();
}

void VideoRoom::ShowText(FileKind kind) {
    m.current.ShowAs(kind);
    m_lines = TextLines(m.state.Filename);
    if (m_text.ReadFirst(m.state.Filename)) {
        m.controls.LogText->setPlainText(ToQt(m_text.Text()));
    } else {
        m.controls.LogText->clear();
        m.shell.ShowError(m_text.Error() + " - " + m.state.FileNameOnly);
    }
}

void VideoRoom::Load_web(const PictureRequest& request) {
    ProgramState& s = m.state;
    if (!s.SlideViewing) m.shell.SetListCommands(false);
    BeginFile();
    m.display.SetPictureCommands(false);
    if (s.FileType == "HTML" || s.FileType == ".HTM")
        ShowPage();
    else
        ShowText(FileKind::Text);
    TellShown();
    if (s.WebImage() && request.focus) m.shell.FocusPane();
}

void VideoRoom::ShowPage() {
    ProgramState& s = m.state;
    m_lines = TextLines(s.Filename);
    s.EditCaption = "Web";
    m.current.ShowAs(FileKind::Page);
    m.shell.ShowMessage(m.controls.WebBrowser1->ShowPage(s.Filename));
}

} // namespace tarn

// The buttons, keys and the slider under a clip, and the timer that follows it.
#include "common/numbers.h"
#include "common/paths.h"
#include "common/text.h"
#include "history/Changes.h"
#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "video/VideoRoom.h"
#include "video/frmBestFrames.h"
#include "widgets/Dialogs.h"
#include "widgets/PictureBox.h"

#include <QBuffer>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QWheelEvent>

namespace tarn {

namespace {

enum Button { First = 0, StepBack = 1, PlayOrPause = 3, Stop = 4, StepOn = 5, Last = 6 };

// With Ctrl.
struct FrameKey {
    int key;
    Button button;
    const char* keys;
    const char* says;
};
constexpr FrameKey kFrameKeys[] = {
    {Qt::Key_Left, StepBack, "Ctrl+Left", "one frame back"},
    {Qt::Key_Right, StepOn, "Ctrl+Right", "one frame on"},
};

} // namespace

std::vector<keys::KeyLine> VideoRoom::KeyLines() {
    std::vector<keys::KeyLine> lines;
    for (const FrameKey& each : kFrameKeys) keys::AddLine(lines, each.keys, each.says);
    return lines;
}

void VideoRoom::SetPlayCaption(bool plays) {
    m.controls.VideoButton[PlayOrPause]->setText(plays ? QStringLiteral("Pause")
                                                       : QStringLiteral("Play"));
    m.controls.Picture2->setCursor(plays ? Qt::BusyCursor : Qt::ArrowCursor);
}

bool VideoRoom::ReadPosition() {
    const Mci::Reply reply = Send("status VidClip position");
    const auto position = ParseInt32(Trim(reply.text));
    if (reply.code != 0 || !position) return false;
    m_position = *position < 0 ? 1 : *position;
    return true;
}

void VideoRoom::ShowPosition() {
    const bool ended = m_position > m_clip.lastFrame;
    m.shell.ShowMessage("Video frame " + std::to_string(m_position) + (ended ? " end" : ""));
    const QSignalBlocker silent(m_slider);
    if (!m_slider->isSliderDown()) m_slider->setValue(std::min(m_position, m_clip.lastFrame));
    if (ended) SetPlayCaption(false);
}

void VideoRoom::Seek(const std::string& target) {
    if (!m_open || !SendChecked("seek VidClip to " + target)) return;
    SetPlayCaption(false);
    m_running = true;
    m_timer.start();
    ReadPosition();
    ShowPosition();
}

void VideoRoom::Play() {
    SetPlayCaption(true);
    if (m_position > m_clip.lastFrame) {
        VideoButton_Click(First);
        if (!m_open) return; // it was said why
        SetPlayCaption(true);
    }
    PlayClip("VidClip");
    if (!m_open) return;
    m_running = true;
    m_timer.start();
}

void VideoRoom::VideoButton_Click(int index) {
    if (!m_open) { // closed for a command on its file that came to nothing
        if (m.state.VideoImage()) ShowVideoFile();
        return;
    }
    switch (index) {
    case First:
        Seek("start");
        break;
    case StepBack:
        Seek(std::to_string(std::max(0, m_position - 1)));
        break;
    case PlayOrPause:
        if (m.controls.VideoButton[PlayOrPause]->text() == QLatin1String("Pause")) {
            SetPlayCaption(false);
            SendChecked("pause VidClip");
            ReadPosition();
        } else {
            Play();
        }
        break;
    case Stop:
        SetPlayCaption(false);
        SendChecked("stop VidClip");
        ReadPosition();
        m_running = false;
        break;
    case StepOn:
        Seek(std::to_string(m_position + 1));
        break;
    case Last:
        Seek("end");
        break;
    default:
        break;
    }
}

void VideoRoom::VideoTimer_Timer() {
    if (!m_running) {
        m_timer.stop();
        m.shell.ShowMessage("");
        m.controls.Picture2->setCursor(Qt::ArrowCursor);
        return;
    }
    if (ReadPosition()) ShowPosition();
}

// Number and picture belong together.
void VideoRoom::Halt() {
    if (m_best) m_best->StopBlink();
    if (m.controls.VideoButton[PlayOrPause]->text() == QLatin1String("Pause"))
        VideoButton_Click(PlayOrPause);
    m_timer.stop();
}

void VideoRoom::BestFramesButton_Click() {
    if (!m_best)
        m_best = std::make_unique<frmBestFrames>(
            m, ClipInPane{[this] { return m_open ? m_clip.lastFrame + 1 : 0; },
                          [this](int frame) { Seek(std::to_string(frame)); },
                          [this](QPoint by) { ShiftShown(by); }});
    m_best->Form_Load();
}

// Until the next frame comes.
void VideoRoom::ShiftShown(QPoint by) {
    const QImage shown = m.controls.Picture2->Picture();
    if (shown.isNull() || by.isNull()) return;
    QImage shifted(shown.size(), shown.format());
    shifted.fill(Qt::black);
    QPainter(&shifted).drawImage(by, shown);
    m.controls.Picture2->SetPicture(shifted);
}

void VideoRoom::CopyFrame() {
    Halt();
    const QImage frame = m.controls.Picture2->Picture();
    if (frame.isNull()) return;
    m.clipboard.SetPicture(frame);
    m.shell.ShowMessage("Copied frame " + std::to_string(m_position));
}

void VideoRoom::SaveFrame() {
    Halt();
    const QImage frame = m.controls.Picture2->Picture();
    const ProgramState& s = m.state;
    if (frame.isNull()) return;
    const std::string proposed =
        s.Filename.substr(0, s.Filename.rfind('.')) + "_" + std::to_string(m_position) + ".png";
    const std::string path =
        m.dialogs.SaveFile("Save frame", proposed, "Pictures (*.png *.jpg *.tif *.bmp)");
    if (path.empty()) return;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const std::string type = path.substr(std::min(path.size(), path.rfind('.') + 1));
    std::string error = "this kind of picture cannot be written";
    Changes changes(m.history, "Save frame '" + LastPart(path) + "'");
    const bool saved =
        frame.save(&buffer, type.c_str()) && changes.Write(path, bytes.toStdString(), &error);
    m.shell.ShowMessage(saved ? "'" + LastPart(path) + "' file created"
                              : "'" + LastPart(path) + "' was not written: " + error);
}

bool VideoRoom::eventFilter(QObject*, QEvent* event) {
    if (!m_open || m.state.BatchRuns) return false;
    if (event->type() == QEvent::Wheel) {
        const int turned = static_cast<QWheelEvent*>(event)->angleDelta().y();
        if (turned != 0) VideoButton_Click(turned > 0 ? StepBack : StepOn);
        return true;
    }
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!(key->modifiers() & Qt::ControlModifier)) return false;
        for (const FrameKey& each : kFrameKeys) {
            if (each.key != key->key()) continue;
            if (event->type() == QEvent::KeyPress) VideoButton_Click(each.button);
            return true;
        }
        return false;
    }
    if (event->type() == QEvent::ContextMenu) {
        QMenu menu;
        menu.addAction(QStringLiteral("Copy Frame"), this, [this] { CopyFrame(); });
        menu.addAction(QStringLiteral("Save Frame..."), this, [this] { SaveFrame(); });
        QAction* sound = menu.addAction(QStringLiteral("Sound"));
        sound->setCheckable(true);
        sound->setChecked(m_sound);
        connect(sound, &QAction::toggled, this, [this](bool on) {
            m_sound = on;
            Send(on ? "setaudio VidClip on" : "setaudio VidClip off");
        });
        menu.exec(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    }
    return false;
}

} // namespace tarn

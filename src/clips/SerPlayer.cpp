// Plays SER files.
#include "clips/ClipPlayer.h"
#include "clips/SerPicture.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>

namespace tarn {

namespace {

constexpr double kUsualRate = 25; // frames a second, where the file has no times
constexpr int kTick = 10;         // milliseconds between two looks at the clock while playing

class SerPlayer : public ClipPlayer {
public:
    SerPlayer() {
        m_ticks.setInterval(kTick);
        m_ticks.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_ticks, &QTimer::timeout, &m_ticks, [this] { Tick(); });
    }

    std::string Open(const std::string& path) {
        std::string error = m_file.Open(path);
        if (!error.empty()) return error;
        const SerHeader& header = m_file.Header();
        m_clip.width = header.width;
        m_clip.height = header.height;
        m_clip.frames = header.frames;
        const double length = m_file.Length();
        m_clip.rate = length > 0 ? (header.frames - 1) / length : kUsualRate;
        return ReadFrame(0);
    }

    std::string ShowFrame(int frame) override {
        std::string error = ReadFrame(frame);
        if (error.empty()) Deliver();
        return error;
    }

    void Play() override {
        NeedTimes();
        m_start = m_frame;
        m_clock.start();
        m_ticks.start();
    }
    void Pause() override { m_ticks.stop(); }
    int PlayedTo() override { return m_ended ? Count() : m_frame; }

private:
    void Tick();
    void NeedTimes();
    std::string ReadFrame(int frame);
    void Deliver() {
        if (onFrame && !size.isEmpty())
            onFrame(m_picture.size() == size
                        ? m_picture
                        : m_picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }

    SerFile m_file;
    QTimer m_ticks;
    QElapsedTimer m_clock;
    QImage m_picture; // the frame on show
    int m_frame = 0;
    int m_start = 0; // where play began
    bool m_ended = false;
};

std::string SerPlayer::ReadFrame(int frame) {
    std::string error;
    const QImage picture = SerPicture(m_file, frame, error);
    if (picture.isNull()) return error;
    m_picture = picture;
    m_frame = frame;
    m_ended = false;
    return {};
}

// They are as many as the frames, and nobody asks for them before the clip plays.
void SerPlayer::NeedTimes() {
    if (!m_clip.times.empty()) return;
    m_clip.times = m_file.Times();
    if (m_clip.times.empty())
        for (int i = 0; i < m_clip.frames; ++i) m_clip.times.push_back(i / m_clip.rate);
}

void SerPlayer::Tick() {
    const double now = m_clip.times[std::size_t(m_start)] + double(m_clock.elapsed()) / 1000;
    const double last = m_clip.times.back() + 1 / m_clip.rate;
    const int frame = std::max(m_frame, FrameAt(m_clip, now));
    // A frame that went away ends the play.
    const bool shown = frame == m_frame || ShowFrame(frame).empty();
    if (shown && now < last) return;
    m_ticks.stop();
    m_ended = true;
}

} // namespace

std::unique_ptr<ClipPlayer> OpenSer(const std::string& path, std::string& error) {
    auto player = std::make_unique<SerPlayer>();
    error = player->Open(path);
    return error.empty() ? std::move(player) : nullptr;
}

} // namespace tarn

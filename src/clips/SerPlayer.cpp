// Plays SER files.
#include "clips/ClipPlayer.h"
#include "clips/LateFrames.h"
#include "clips/SerPicture.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>

namespace tarn {

namespace {

using namespace std::chrono_literals;

constexpr double kUsualRate = 25; // frames a second, where the file has no times
constexpr int kTick = 10;         // milliseconds between two looks at the clock while playing
constexpr auto kLook = 5ms;       // between two looks at who waits
constexpr const char* kBrokenOff = "The clip was broken off";

class SerReader : public FrameReader {
public:
    explicit SerReader(std::string path) : m_path(std::move(path)) {}

    std::string Open(ClipFacts& facts) override {
        std::string error = m_file.Open(m_path);
        if (!error.empty()) return error;
        const SerHeader& header = m_file.Header();
        facts.width = header.width;
        facts.height = header.height;
        facts.frames = header.frames;
        const double length = m_file.Length();
        facts.rate = length > 0 ? (header.frames - 1) / length : kUsualRate;
        return {};
    }
    std::vector<double> Times() override { return m_file.Times(); }
    QImage Frame(int frame, std::string& error) override {
        return SerPicture(m_file, frame, error);
    }

private:
    std::string m_path;
    SerFile m_file;
};

class SerPlayer : public ClipPlayer {
public:
    SerPlayer(const std::string& path, Wait wait)
        : m_wait(std::move(wait)), m_late(std::make_unique<SerReader>(path)) {
        m_ticks.setInterval(kTick);
        m_ticks.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_ticks, &QTimer::timeout, &m_ticks, [this] { Tick(); });
    }

    std::string Open() {
        const LateFrames::Answer opened = Await(LateFrames::kOpen);
        if (!opened.error.empty()) return opened.error;
        m_clip = opened.facts;
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
        m_asked = m_frame;
        m_fails = false;
        m_clock.start();
        m_ticks.start();
    }
    void Pause() override { m_ticks.stop(); }
    int PlayedTo() override { return m_ended ? Count() : m_frame; }

private:
    void Tick();
    void NeedTimes();
    LateFrames::Answer Await(int what);
    std::string ReadFrame(int frame);
    void Deliver() {
        if (onFrame && !size.isEmpty())
            onFrame(m_picture.size() == size
                        ? m_picture
                        : m_picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }

    Wait m_wait;
    LateFrames m_late;
    QTimer m_ticks;
    QElapsedTimer m_clock;
    QImage m_picture; // the frame on show
    int m_frame = 0;
    int m_start = 0; // where play began
    int m_asked = 0; // the frame that play has asked for last
    bool m_fails = false;
    bool m_ended = false;
};

// Whatever else was asked for before is passed over.
LateFrames::Answer SerPlayer::Await(int what) {
    m_late.Ask(what);
    for (;;) {
        if (auto answer = m_late.Take(kLook); answer && answer->what == what)
            return std::move(*answer);
        if (!m_wait()) return {what, kBrokenOff, {}, {}, {}};
    }
}

std::string SerPlayer::ReadFrame(int frame) {
    LateFrames::Answer answer = Await(frame);
    if (answer.picture.isNull()) return answer.error;
    m_picture = std::move(answer.picture);
    m_frame = frame;
    m_ended = false;
    return {};
}

// They are as many as the frames, and nobody asks for them before the clip plays.
void SerPlayer::NeedTimes() {
    if (!m_clip.times.empty()) return;
    m_clip.times = Await(LateFrames::kTimes).times;
    if (m_clip.times.empty())
        for (int i = 0; i < m_clip.frames; ++i) m_clip.times.push_back(i / m_clip.rate);
}

// Frames that a slow disk brings late are shown, those that it never comes to are passed over.
void SerPlayer::Tick() {
    if (auto answer = m_late.Take(0ms); answer && answer->what > m_frame) {
        m_fails = answer->picture.isNull(); // a frame that went away ends the play
        if (!m_fails) {
            m_picture = std::move(answer->picture);
            m_frame = answer->what;
            Deliver();
        }
    }
    const double now = m_clip.times[std::size_t(m_start)] + double(m_clock.elapsed()) / 1000;
    const double last = m_clip.times.back() + 1 / m_clip.rate;
    const int frame = std::max(m_frame, FrameAt(m_clip, now));
    if (frame > m_asked) m_late.Ask(m_asked = frame);
    if (!m_fails && (now < last || m_frame < frame)) return;
    m_ticks.stop();
    m_ended = true;
}

} // namespace

std::unique_ptr<ClipPlayer> OpenSer(const std::string& path, const ClipPlayer::Wait& wait,
                                    std::string& error) {
    auto player = std::make_unique<SerPlayer>(path, wait);
    error = player->Open();
    return error.empty() ? std::move(player) : nullptr;
}

} // namespace tarn

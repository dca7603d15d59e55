// Plays what the libraries know.
#include "clips/ClipsModule.h"
#include "clips/Mci.h"
#include "common/worker.h"
#include "platform/OpenRegular.h"

#include <QElapsedTimer>
#include <QMetaObject>
#include <QObject>
#include <QTransform>

#include <mpv/client.h>
#include <mpv/render.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <optional>
#include <utility>

namespace tarn {

namespace {

constexpr int kWaitLimit = 10000; // milliseconds that the player may take for one answer
constexpr double kLook = 0.005;   // seconds between two looks while waiting

// Seconds before a frame at which the search for it begins; the last is the clip's beginning.
constexpr double kEarlier[] = {0, 2, 60, 1e6};

// Silent, without any file beside the clip, and without a way to anything that is not a local file.
constexpr std::pair<const char*, const char*> kOptions[] = {
    {"vo", "libmpv"},
    {"config", "no"},
    {"load-scripts", "no"},
    {"load-stats-overlay", "no"},
    {"load-osd-console", "no"},
    {"load-auto-profiles", "no"},
    {"ytdl", "no"},
    {"terminal", "no"},
    {"input-default-bindings", "no"},
    {"sub-auto", "no"},
    {"audio-file-auto", "no"},
    {"cover-art-auto", "no"},
    {"autoload-files", "no"},
    {"resume-playback", "no"},
    {"access-references", "no"},
    {"ordered-chapters", "no"},
    {"demuxer", "lavf"},
    {"demuxer-lavf-o", "protocol_whitelist=file"},
    {"pause", "yes"},
    {"keep-open", "always"},
    {"hr-seek", "yes"},
    {"aid", "no"}, // sound is off until it is asked for
    {"osd-level", "0"},
    {"hwdec", "no"},
    {"video-rotate", "no"}, // this renderer cannot, so frames are turned when they are made
    {"keepaspect", "no"},   // the frame fills the size that is asked for
    {"idle", "yes"}};

// The library with its renderer. Frames are made on a thread of their own, since one of a large
// clip takes longer than the window may stand still.
class MpvCore : public QObject {
public:
    MpvCore() : m_player(mpv_create()) {
        if (!m_player) return;
        for (const auto& [name, value] : kOptions) mpv_set_option_string(m_player, name, value);
        if (mpv_initialize(m_player) < 0) return;
        char kind[] = MPV_RENDER_API_TYPE_SW;
        mpv_render_param params[] = {{MPV_RENDER_PARAM_API_TYPE, kind},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
        if (mpv_render_context_create(&m_renderer, m_player, params) < 0) return;
        m_worker = Worker([this] { Work(); });
        mpv_render_context_set_update_callback(
            m_renderer, [](void* self) { static_cast<MpvCore*>(self)->Ask(false); }, this);
    }
    ~MpvCore() override {
        if (m_worker.IsRunning()) {
            mpv_render_context_set_update_callback(m_renderer, nullptr, nullptr);
            {
                const std::lock_guard lock(m_mutex);
                m_ends = true;
            }
            m_changed.notify_all();
            m_worker.Join();
        }
        if (m_renderer) mpv_render_context_free(m_renderer);
        if (m_player) mpv_terminate_destroy(m_player);
    }

    bool IsReady() const { return m_worker.IsRunning(); }
    mpv_handle* Handle() const { return m_player; }

    // The next event of this kind; the fault when the file ends with one, or the wait.
    std::string WaitFor(mpv_event_id wanted, const ClipPlayer::Wait& wait) {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < kWaitLimit) {
            if (!wait()) return "The clip was broken off";
            const mpv_event* event = mpv_wait_event(m_player, kLook);
            if (event->event_id == wanted) return {};
            if (event->event_id == MPV_EVENT_END_FILE) {
                const auto* end = static_cast<mpv_event_end_file*>(event->data);
                if (end->reason == MPV_END_FILE_REASON_ERROR) return mpv_error_string(end->error);
            }
        }
        return "The player does not answer";
    }

    void ForgetEvents() {
        while (mpv_wait_event(m_player, 0)->event_id != MPV_EVENT_NONE) {
        }
    }

    // The frame that the player stands on, delivered when this returns; an error text.
    std::string Show(const ClipPlayer::Wait& wait) {
        Ask(true);
        QElapsedTimer time;
        time.start();
        std::unique_lock lock(m_mutex);
        while (m_asked && time.elapsed() < kWaitLimit) {
            m_changed.wait_for(lock, std::chrono::duration<double>(kLook));
            if (!m_asked) break;
            lock.unlock();
            if (!wait()) return "The clip was broken off";
            lock.lock();
        }
        if (m_asked) return "The player does not answer";
        const QImage frame = m_frame;
        const int number = m_number;
        lock.unlock();
        Deliver(frame, number);
        return {};
    }

    void SetPlayer(ClipPlayer* player) {
        const std::lock_guard lock(m_mutex);
        m_shows = player;
        m_quarters = player->Facts().quarters;
    }

private:
    void Ask(bool waits) {
        {
            const std::lock_guard lock(m_mutex);
            m_news = true;
            if (waits) {
                m_asked = true;
                m_size = m_shows->size;
            }
        }
        m_changed.notify_all();
    }

    void Work() {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_ends || m_news; });
            if (m_ends) return;
            m_news = false;
            const bool asked = m_asked;
            const QSize size = m_size;
            const int quarters = m_quarters;
            lock.unlock();
            const bool isNew =
                (mpv_render_context_update(m_renderer) & MPV_RENDER_UPDATE_FRAME) != 0;
            std::string untold; // without a frame the last one stays
            const QImage frame =
                asked || isNew ? Guarded(untold, [&] { return Render(size, quarters); }) : QImage();
            lock.lock();
            if (asked) m_asked = false;
            if (frame.isNull()) continue;
            m_frame = frame;
            const int number = ++m_number;
            m_changed.notify_all();
            if (asked) continue;
            QMetaObject::invokeMethod(
                this, [this, frame, number] { Deliver(frame, number); }, Qt::QueuedConnection);
        }
    }

    // Without a size the frame is taken from the player and thrown away.
    QImage Render(QSize size, int quarters) {
        if (quarters % 2 != 0) size.transpose();
        QImage frame = size.isEmpty() ? QImage() : QImage(size, QImage::Format_RGB32);
        int sides[] = {frame.width(), frame.height()};
        char format[] = "bgr0";
        std::size_t stride = std::size_t(frame.bytesPerLine());
        int block = 0;
        int skip = 1;
        mpv_render_param drawn[] = {{MPV_RENDER_PARAM_SW_SIZE, sides},
                                    {MPV_RENDER_PARAM_SW_FORMAT, format},
                                    {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                    {MPV_RENDER_PARAM_SW_POINTER, frame.bits()},
                                    {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block},
                                    {MPV_RENDER_PARAM_INVALID, nullptr}};
        mpv_render_param skipped[] = {{MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
                                      {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block},
                                      {MPV_RENDER_PARAM_INVALID, nullptr}};
        const bool isDrawn =
            mpv_render_context_render(m_renderer, frame.isNull() ? skipped : drawn) >= 0;
        if (!isDrawn) return {};
        return quarters == 0 ? frame : frame.transformed(QTransform().rotate(90.0 * quarters));
    }

    // A frame that was made before the one on show comes too late.
    void Deliver(const QImage& frame, int number) {
        if (number <= m_delivered || frame.isNull()) return;
        m_delivered = number;
        if (m_shows && m_shows->onFrame) m_shows->onFrame(frame);
    }

    mpv_handle* m_player = nullptr;
    mpv_render_context* m_renderer = nullptr;
    ClipPlayer* m_shows = nullptr; // gets the frames, once it is open
    int m_delivered = 0;           // number of the last frame given out

    std::mutex m_mutex; // guards the rest
    std::condition_variable m_changed;
    bool m_news = false;  // something may have changed
    bool m_asked = false; // a frame is waited for
    bool m_ends = false;
    QSize m_size;
    int m_quarters = 0; // of a turn clockwise
    QImage m_frame;     // the last one made
    int m_number = 0;
    Worker m_worker;
};

class MpvPlayer : public ClipPlayer {
public:
    explicit MpvPlayer(Wait wait) : m_wait(std::move(wait)) {}

    std::string Open(const std::string& path);
    std::string ShowFrame(int frame) override;
    void Play() override {
        m_standsOn = -1;
        SetPause(0);
    }
    void Pause() override { SetPause(1); }
    void SetSound(bool on) override {
        mpv_set_property_string(m_core->Handle(), "aid", on ? "auto" : "no");
    }
    int PlayedTo() override;

private:
    std::string SeekTo(double time);
    int FrameOnShow();
    void SetPause(int pause) {
        mpv_set_property(m_core->Handle(), "pause", MPV_FORMAT_FLAG, &pause);
    }

    Wait m_wait;
    std::optional<OpenFile> m_file;
    std::optional<MpvCore> m_core;
    int m_standsOn = -1; // the frame that the library is known to stand on
};

// The library is made ready while the times of the frames are read, and then begins at the frame
// that will be asked for first.
std::string MpvPlayer::Open(const std::string& path) {
    std::string refused;
    m_file.emplace(path, refused);
    if (!*m_file) return refused;
    std::atomic<bool> stop = false;
    auto facts = std::async(std::launch::async, [&] {
        std::string thrown;
        ClipFacts read = Guarded(thrown, [&] { return ReadClipFacts(path, stop); });
        if (!thrown.empty()) read.error = thrown;
        return read;
    });
    m_core.emplace();
    const auto look = std::chrono::duration<double>(kLook);
    while (!stop && facts.wait_for(look) != std::future_status::ready) stop = !m_wait();
    m_clip = facts.get();
    if (!m_clip.error.empty()) return m_clip.error;
    if (!m_core->IsReady()) return "The player cannot be started";
    const int first = std::min(kFirstShown, Count() - 1);
    const std::string start = std::to_string(SeekTimeOf(m_clip, first) - m_clip.start);
    mpv_set_property_string(m_core->Handle(), "start", start.c_str());
    const std::string opened = NameOfOpen(m_file->Number()); // a file to the library, no stream
    const char* load[] = {"loadfile", opened.c_str(), nullptr};
    mpv_command(m_core->Handle(), load);
    m_core->SetPlayer(this);
    std::string fault = m_core->WaitFor(MPV_EVENT_PLAYBACK_RESTART, m_wait);
    if (fault.empty() && m_clip.indexed && FrameOnShow() == first) m_standsOn = first;
    return fault;
}

// Containers without an index are entered where the library guesses; then it has to begin earlier.
std::string MpvPlayer::ShowFrame(int frame) {
    if (frame == m_standsOn) return m_core->Show(m_wait);
    m_standsOn = -1;
    for (const double earlier : kEarlier) {
        if (earlier == 0 && !m_clip.indexed) continue; // the library does not tell when it missed
        mpv_set_property_string(m_core->Handle(), "hr-seek-demuxer-offset",
                                std::to_string(earlier).c_str());
        std::string error = SeekTo(SeekTimeOf(m_clip, frame) - m_clip.start);
        if (!error.empty()) return error;
        if (FrameOnShow() != frame) continue;
        m_standsOn = frame;
        return m_core->Show(m_wait);
    }
    return "The player does not find frame " + std::to_string(frame);
}

std::string MpvPlayer::SeekTo(double time) {
    m_core->ForgetEvents();
    const std::string text = std::to_string(time);
    const char* seek[] = {"seek", text.c_str(), "absolute+exact", nullptr};
    const int fault = mpv_command(m_core->Handle(), seek);
    return fault < 0 ? mpv_error_string(fault)
                     : m_core->WaitFor(MPV_EVENT_PLAYBACK_RESTART, m_wait);
}

int MpvPlayer::FrameOnShow() {
    double time = 0;
    mpv_get_property(m_core->Handle(), "time-pos", MPV_FORMAT_DOUBLE, &time);
    return FrameAt(m_clip, time + m_clip.start);
}

int MpvPlayer::PlayedTo() {
    int ended = 0;
    mpv_get_property(m_core->Handle(), "eof-reached", MPV_FORMAT_FLAG, &ended);
    if (ended != 0) return Count();
    return std::max(0, FrameOnShow());
}

} // namespace

std::unique_ptr<ClipPlayer> OpenWithMpv(const std::string& path, const ClipPlayer::Wait& wait,
                                        std::string& error) {
    auto player = std::make_unique<MpvPlayer>(wait);
    error = player->Open(path);
    return error.empty() ? std::move(player) : nullptr;
}

} // namespace tarn

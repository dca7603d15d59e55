#include "platform/EventPump.h"
#include "platform/mci/FrameTimes.h"
#include "platform/mci/Mci.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaObject>
#include <QObject>
#include <QSize>

#include <mpv/client.h>
#include <mpv/render.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <map>
#include <optional>

namespace tarn {

namespace {

constexpr int kPlayerFault = 1; // codes of our own, with the player's text
constexpr int kUnknownCommand = 2;
constexpr int kNoClip = 3;
constexpr int kWaitLimit = 10000;  // milliseconds that the player may take for one answer
constexpr double kFramesIn = 1000; // seconds of the reply about the rate

bool TakeStart(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) return false;
    text.remove_prefix(start.size());
    return true;
}

std::optional<int> WholeNumber(std::string_view text) {
    int number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    return fault == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

// The player with its renderer; silent, without any file of the user's beside the clip.
class Player : public QObject {
public:
    Player() : m_player(mpv_create()) {
        if (!m_player) return;
        const std::pair<const char*, const char*> options[] = {
            {"vo", "libmpv"},         {"config", "no"},         {"load-scripts", "no"},
            {"terminal", "no"},       {"sub-auto", "no"},       {"audio-file-auto", "no"},
            {"ytdl", "no"},           {"pause", "yes"},         {"keep-open", "always"},
            {"hr-seek", "yes"},       {"mute", "yes"},          {"osd-level", "0"},
            {"hwdec", "no"},          {"cover-art-auto", "no"}, {"resume-playback", "no"},
            {"autoload-files", "no"}, {"video-rotate", "no"},   {"idle", "yes"}};
        for (const auto& [name, value] : options) mpv_set_option_string(m_player, name, value);
        if (mpv_initialize(m_player) < 0) return;
        char kind[] = MPV_RENDER_API_TYPE_SW;
        mpv_render_param params[] = {{MPV_RENDER_PARAM_API_TYPE, kind},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
        if (mpv_render_context_create(&m_renderer, m_player, params) < 0) return;
        mpv_render_context_set_update_callback(
            m_renderer,
            [](void* self) {
                auto* player = static_cast<Player*>(self);
                QMetaObject::invokeMethod(
                    player, [player] { player->Update(); }, Qt::QueuedConnection);
            },
            this);
    }
    ~Player() override {
        if (m_renderer) mpv_render_context_free(m_renderer);
        if (m_player) mpv_terminate_destroy(m_player);
    }

    bool IsReady() const { return m_renderer != nullptr; }
    mpv_handle* Handle() const { return m_player; }

    // The next event of this kind, or the end of the file with its fault.
    int WaitFor(mpv_event_id wanted, EventPump& events) {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < kWaitLimit && !events.ProgramEnds()) {
            const mpv_event* event = mpv_wait_event(m_player, 0.005);
            if (event->event_id == wanted) return 0;
            if (event->event_id == MPV_EVENT_END_FILE) {
                const auto* end = static_cast<mpv_event_end_file*>(event->data);
                if (end->reason == MPV_END_FILE_REASON_ERROR) return end->error;
            }
            if (event->event_id == MPV_EVENT_NONE) Update();
        }
        return MPV_ERROR_LOADING_FAILED;
    }

    void Forget() {
        while (mpv_wait_event(m_player, 0)->event_id != MPV_EVENT_NONE) {
        }
    }

    void Update() {
        if (!m_renderer) return;
        if ((mpv_render_context_update(m_renderer) & MPV_RENDER_UPDATE_FRAME) != 0) Render();
    }

    void Render() {
        if (size.isEmpty()) return;
        QImage frame(size, QImage::Format_RGB32);
        int sides[] = {frame.width(), frame.height()};
        char format[] = "bgr0";
        std::size_t stride = std::size_t(frame.bytesPerLine());
        int wait = 0;
        mpv_render_param params[] = {{MPV_RENDER_PARAM_SW_SIZE, sides},
                                     {MPV_RENDER_PARAM_SW_FORMAT, format},
                                     {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                     {MPV_RENDER_PARAM_SW_POINTER, frame.bits()},
                                     {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
        if (mpv_render_context_render(m_renderer, params) >= 0 && onFrame) onFrame(frame);
    }

    QSize size; // of the frames that are made
    std::function<void(const QImage&)> onFrame;

private:
    mpv_handle* m_player = nullptr;
    mpv_render_context* m_renderer = nullptr;
};

class MpvMci : public Mci {
public:
    explicit MpvMci(EventPump& events) : m_events(events) {}

    Reply Send(const std::string& command) override {
        std::string_view rest = command;
        if (TakeStart(rest, "Open ")) return Open(rest);
        if (!m_player) return {kNoClip, {}};
        if (TakeStart(rest, "status VidClip ")) return Status(rest);
        if (TakeStart(rest, "seek VidClip to ")) return Seek(rest);
        if (TakeStart(rest, "Play VidClip")) return Play(rest);
        if (rest == "pause VidClip" || rest == "stop VidClip") return Pause();
        if (rest == "close VidClip") {
            m_player.reset();
            return {};
        }
        if (TakeStart(rest, "Window VidClip handle ")) return {};
        if (rest == "Where VidClip destination")
            return {0, "0 0 " + std::to_string(m_clip.width) + " " + std::to_string(m_clip.height)};
        if (TakeStart(rest, "Put VidClip destination at 0 0 ")) return Put(rest);
        return {kUnknownCommand, {}};
    }

    std::string ErrorText(int code) override {
        switch (code) {
        case kFileNotFound:
            return "The file was not found";
        case kPlayerFault:
            return m_fault;
        case kUnknownCommand:
            return "The player does not know this command";
        case kNoClip:
            return "No clip is open";
        default:
            return {};
        }
    }

private:
    int Count() const { return int(m_clip.times.size()); }

    Reply Fault(std::string text) {
        m_fault = std::move(text);
        m_player.reset();
        return {kPlayerFault, {}};
    }

    Reply Open(std::string_view rest) {
        m_player.reset();
        const std::size_t end = rest.rfind('"');
        if (!TakeStart(rest, "\"") || end == 0) return {kUnknownCommand, {}};
        const std::string path(rest.substr(0, end - 1));
        std::error_code code;
        if (!std::filesystem::exists(path, code)) return {kFileNotFound, {}};
        m_clip = ReadClipFacts(path);
        if (!m_clip.error.empty()) return Fault(m_clip.error);
        std::setlocale(LC_NUMERIC, "C"); // the application object takes the user's
        m_player = std::make_unique<Player>();
        if (!m_player->IsReady()) return Fault("The player cannot be started");
        m_player->onFrame = [this](const QImage& frame) {
            if (onFrame) onFrame(frame);
        };
        m_player->size = QSize(m_clip.width, m_clip.height);
        const char* load[] = {"loadfile", path.c_str(), nullptr};
        mpv_command(m_player->Handle(), load);
        const int fault = m_player->WaitFor(MPV_EVENT_PLAYBACK_RESTART, m_events);
        if (fault < 0) return Fault(mpv_error_string(fault));
        m_position = 0;
        m_player->Update();
        return {};
    }

    Reply Status(std::string_view what) {
        if (what == "length") return {0, std::to_string(Count())};
        if (what == "record frame rate")
            return {0, std::to_string(std::llround(m_clip.rate * kFramesIn))};
        if (what == "position") return {0, std::to_string(Position())};
        return {kUnknownCommand, {}};
    }

    // While it plays, the player tells; else it is where it was sent.
    int Position() {
        if (!m_plays) return m_position;
        int ended = 0;
        mpv_get_property(m_player->Handle(), "eof-reached", MPV_FORMAT_FLAG, &ended);
        double time = 0;
        if (ended != 0) {
            m_position = Count();
            Pause(false);
        } else if (mpv_get_property(m_player->Handle(), "time-pos", MPV_FORMAT_DOUBLE, &time) >=
                   0) {
            m_position = std::max(0, FrameAt(m_clip, time + m_clip.times.front()));
        }
        return m_position;
    }

    void Pause(bool asks) {
        if (asks) Position();
        int yes = 1;
        mpv_set_property(m_player->Handle(), "pause", MPV_FORMAT_FLAG, &yes);
        m_plays = false;
    }

    // The player stops a little behind what it last told: it is sent to the frame that counts.
    Reply Pause() {
        const bool played = m_plays;
        Pause(true);
        return played && m_position < Count() ? ShowFrame(m_position) : Reply{};
    }

    Reply ShowFrame(int frame) {
        m_player->Forget();
        const std::string time = std::to_string(SeekTimeOf(m_clip, frame) - m_clip.times.front());
        const char* seek[] = {"seek", time.c_str(), "absolute+exact", nullptr};
        const int fault = mpv_command(m_player->Handle(), seek);
        if (fault < 0) return Fault(mpv_error_string(fault));
        const int waited = m_player->WaitFor(MPV_EVENT_PLAYBACK_RESTART, m_events);
        if (waited < 0) return Fault(mpv_error_string(waited));
        m_player->Update();
        m_player->Render();
        m_position = frame;
        return {};
    }

    Reply Seek(std::string_view target) {
        if (m_plays) Pause(false);
        if (target == "start") return ShowFrame(0);
        const auto number = target == "end" ? Count() : WholeNumber(target);
        if (!number) return {kUnknownCommand, {}};
        const int frame = std::clamp(*number, 0, Count());
        const Reply reply = ShowFrame(std::min(frame, Count() - 1));
        if (reply.code == 0) m_position = frame; // the end is one past the last frame
        return reply;
    }

    Reply Play(std::string_view rest) {
        if (TakeStart(rest, " to ")) {
            const auto frame = WholeNumber(rest);
            if (!frame) return {kUnknownCommand, {}};
            return ShowFrame(std::clamp(*frame, 0, Count() - 1));
        }
        int no = 0;
        mpv_set_property(m_player->Handle(), "pause", MPV_FORMAT_FLAG, &no);
        m_plays = true;
        return {};
    }

    Reply Put(std::string_view sides) {
        const std::size_t blank = sides.find(' ');
        const auto width = WholeNumber(sides.substr(0, blank));
        const auto height =
            blank == std::string_view::npos ? std::nullopt : WholeNumber(sides.substr(blank + 1));
        if (!width || !height || *width < 1 || *height < 1) return {kUnknownCommand, {}};
        m_player->size = QSize(*width, *height);
        return {};
    }

    EventPump& m_events;
    std::unique_ptr<Player> m_player;
    ClipFacts m_clip;
    std::string m_fault;
    int m_position = 0;
    bool m_plays = false;
};

} // namespace

std::unique_ptr<Mci> MakeMci(EventPump& events) {
    return std::make_unique<MpvMci>(events);
}

} // namespace tarn

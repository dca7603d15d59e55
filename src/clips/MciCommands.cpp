// Interprets the command strings over a player.
#include "clips/ClipPlayer.h"
#include "clips/Mci.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <optional>

namespace tarn {

namespace {

constexpr int kPlayerFault = 1; // codes of our own, the first with the player's text
constexpr int kUnknownCommand = 2;
constexpr int kNoClip = 3;
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

class MciCommands : public Mci {
public:
    explicit MciCommands(OpenPlayer open) : m_open(std::move(open)) {}

    Reply Send(const std::string& command) override {
        std::string_view rest = command;
        if (TakeStart(rest, "Open ")) return Open(rest);
        if (!m_player) return {kNoClip, {}};
        if (TakeStart(rest, "status VidClip ")) return Status(rest);
        if (TakeStart(rest, "seek VidClip to ")) return Seek(rest);
        if (rest == "Play VidClip") return Play();
        if (TakeStart(rest, "Play VidClip to ")) return PlayTo(WholeNumber(rest));
        if (rest == "pause VidClip" || rest == "stop VidClip") return Pause();
        if (TakeStart(rest, "Put VidClip destination at 0 0 ")) return Put(rest);
        if (TakeStart(rest, "Window VidClip handle "))
            return {WholeNumber(rest) ? 0 : kUnknownCommand, {}};
        if (rest == "Where VidClip destination") {
            const ClipFacts& clip = m_player->Facts();
            return {0, "0 0 " + std::to_string(clip.width) + " " + std::to_string(clip.height)};
        }
        if (rest == "setaudio VidClip on" || rest == "setaudio VidClip off") {
            m_player->SetSound(rest.ends_with("on"));
            return {};
        }
        if (rest != "close VidClip") return {kUnknownCommand, {}};
        m_player.reset();
        return {};
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
    Reply Fault(std::string text) {
        m_fault = std::move(text);
        m_player.reset();
        return {kPlayerFault, {}};
    }

    Reply Open(std::string_view rest) {
        m_player.reset();
        m_plays = false;
        m_position = 0;
        const std::size_t end = rest.rfind('"');
        if (!TakeStart(rest, "\"") || end == 0 || rest.substr(end - 1) != "\" alias VidClip")
            return {kUnknownCommand, {}};
        const std::string path(rest.substr(0, end - 1));
        std::error_code code;
        if (!std::filesystem::exists(path, code)) return {kFileNotFound, {}};
        std::string error;
        m_player = m_open(
            path, [this] { return !onWait || onWait(); }, error);
        if (!m_player) return Fault(error);
        m_player->onFrame = [this](const QImage& frame) {
            if (onFrame) onFrame(frame);
        };
        m_player->size = QSize(m_player->Facts().width, m_player->Facts().height);
        return {};
    }

    Reply Status(std::string_view what) {
        if (what == "length") return {0, std::to_string(m_player->Count())};
        if (what == "record frame rate")
            return {0, std::to_string(std::llround(m_player->Facts().rate * kFramesIn))};
        if (what == "position") return {0, std::to_string(Position())};
        return {kUnknownCommand, {}};
    }

    // While it plays, the player tells; else it is where it was sent.
    int Position() {
        if (!m_plays) return m_position;
        m_position = m_player->PlayedTo();
        if (m_position >= m_player->Count()) Halt();
        return m_position;
    }

    void Halt() {
        m_player->Pause();
        m_plays = false;
    }

    Reply Play() {
        m_player->Play();
        m_plays = true;
        return {};
    }

    Reply PlayTo(std::optional<int> frame) {
        if (!frame) return {kUnknownCommand, {}};
        if (m_plays) Halt();
        return Show(std::clamp(*frame, 0, m_player->Count() - 1));
    }

    // The player stops a little behind what it last told: it is sent to the frame that counts.
    Reply Pause() {
        if (!m_plays) return {};
        Position();
        if (!m_plays) return {};
        Halt();
        return Show(m_position);
    }

    Reply Show(int frame) {
        std::string error = m_player->ShowFrame(frame);
        if (!error.empty()) return Fault(std::move(error));
        m_position = frame;
        return {};
    }

    Reply Seek(std::string_view target) {
        const int count = m_player->Count();
        const auto number = target == "start" ? 0 : target == "end" ? count : WholeNumber(target);
        if (!number) return {kUnknownCommand, {}};
        if (m_plays) Halt();
        const int frame = std::clamp(*number, 0, count);
        Reply reply = Show(std::min(frame, count - 1));
        if (reply.code == 0) m_position = frame; // the end is one past the last frame
        return reply;
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

    OpenPlayer m_open;
    std::unique_ptr<ClipPlayer> m_player;
    std::string m_fault;
    int m_position = 0;
    bool m_plays = false;
};

} // namespace

std::unique_ptr<Mci> MakeMci(OpenPlayer open) {
    return std::make_unique<MciCommands>(std::move(open));
}

std::unique_ptr<Mci> MakeMci() {
    return MakeMci(OpenClip);
}

} // namespace tarn

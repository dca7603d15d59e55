// Takes the lines of the input for commands to a player that has as many frames as the first byte
// says.
#include "Demand.h"
#include "Input.h"

#include "clips/ClipPlayer.h"
#include "clips/Mci.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

// Plays on by one frame each time it is asked; every seventh frame cannot be shown where it is
// broken.
class CountingPlayer : public ClipPlayer {
public:
    CountingPlayer(int count, bool broken) : m_broken(broken) {
        m_clip.width = 64;
        m_clip.height = 48;
        m_clip.rate = 25;
        m_clip.frames = count;
        for (int i = 0; i < count; ++i) m_clip.times.push_back(i / m_clip.rate);
    }
    std::string ShowFrame(int frame) override {
        Demand(frame >= 0 && frame < Count());
        if (m_broken && frame % 7 == 6) return "broken";
        m_frame = frame;
        Demand(!size.isEmpty());
        if (onFrame) onFrame(QImage());
        return {};
    }
    void Play() override { m_plays = true; }
    void Pause() override { m_plays = false; }
    int PlayedTo() override {
        if (m_plays && m_frame < Count()) ++m_frame;
        return m_frame;
    }

private:
    bool m_broken;
    bool m_plays = false;
    int m_frame = 0;
};

} // namespace

std::unique_ptr<ClipPlayer> tarn::OpenClip(const std::string&, const ClipPlayer::Wait&,
                                           std::string&) {
    return nullptr;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int first = input.Byte();
    const int count = 1 + first / 2;
    const auto mci = MakeMci([&](const std::string&, const ClipPlayer::Wait&,
                                 std::string& error) -> std::unique_ptr<ClipPlayer> {
        if (first != 'n') return std::make_unique<CountingPlayer>(count, first % 2 == 1);
        error = "none";
        return nullptr;
    });
    while (!input.IsEmpty()) {
        const Mci::Reply reply = mci->Send(input.Line());
        Demand(reply.code == 0 || !mci->ErrorText(reply.code).empty());
        Demand(reply.code == 0 || reply.text.empty());
        const Mci::Reply position = mci->Send("status VidClip position");
        if (position.code != 0) continue;
        const int frame = std::stoi(position.text);
        Demand(frame >= 0 && frame <= count);
        Demand(mci->Send("status VidClip length").text == std::to_string(count));
    }
    return 0;
}

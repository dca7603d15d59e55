// What a clip of 1080 lines with 250 frames between key frames costs: to its first picture, a step
// back, and its end, beside the bare library that decodes it. The clip is made with ffmpeg.
#include "Timing.h"

#include "clips/Mci.h"

#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <mpv/client.h>
#include <mpv/render.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;

constexpr int kRounds = 9;
constexpr int kSteps = 20;
constexpr int kFrom = 200; // the frame stepped back from, far from a key frame
constexpr double kRate = 25;
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

// Nothing but the library's own calls.
class Bare {
public:
    Bare() : m_player(mpv_create()) {
        for (const auto& [name, value] : {std::pair{"vo", "libmpv"},
                                          {"config", "no"},
                                          {"pause", "yes"},
                                          {"mute", "yes"},
                                          {"hwdec", "no"},
                                          {"osd-level", "0"},
                                          {"keep-open", "always"}})
            mpv_set_option_string(m_player, name, value);
        mpv_initialize(m_player);
        char kind[] = MPV_RENDER_API_TYPE_SW;
        mpv_render_param params[] = {{MPV_RENDER_PARAM_API_TYPE, kind},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
        mpv_render_context_create(&m_renderer, m_player, params);
    }
    ~Bare() {
        mpv_render_context_free(m_renderer);
        mpv_terminate_destroy(m_player);
    }
    void Load(const std::string& path) {
        const char* load[] = {"loadfile", path.c_str(), nullptr};
        mpv_command(m_player, load);
        Show();
    }
    void Seek(double time) {
        const std::string text = std::to_string(time);
        const char* seek[] = {"seek", text.c_str(), "absolute+exact", nullptr};
        mpv_command(m_player, seek);
        Show();
    }

private:
    void Show() {
        constexpr double kLook = 0.001; // seconds: the library waits for who renders
        while (mpv_wait_event(m_player, kLook)->event_id != MPV_EVENT_PLAYBACK_RESTART)
            if (mpv_render_context_update(m_renderer) & MPV_RENDER_UPDATE_FRAME) Render();
        Render();
    }
    void Render() {
        int sides[] = {kWidth, kHeight};
        char format[] = "bgr0";
        std::size_t stride = std::size_t(m_frame.bytesPerLine());
        mpv_render_param params[] = {{MPV_RENDER_PARAM_SW_SIZE, sides},
                                     {MPV_RENDER_PARAM_SW_FORMAT, format},
                                     {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                     {MPV_RENDER_PARAM_SW_POINTER, m_frame.bits()},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
        mpv_render_context_render(m_renderer, params);
    }

    mpv_handle* m_player;
    mpv_render_context* m_renderer = nullptr;
    QImage m_frame{kWidth, kHeight, QImage::Format_RGB32};
};

struct Times {
    std::vector<double> first, step, close;
};

void RunOurs(const std::string& path, Times& times) {
    const auto mci = tarn::MakeMci();
    QImage shown;
    mci->onFrame = [&shown](const QImage& frame) { shown = frame; };
    times.first.push_back(Milliseconds([&] {
        mci->Send("Open \"" + path + "\" alias VidClip");
        mci->Send("Play VidClip to 4");
    }));
    if (shown.isNull()) std::exit(1);
    for (int i = 0; i < kSteps; ++i)
        times.step.push_back(
            Milliseconds([&] { mci->Send("seek VidClip to " + std::to_string(kFrom - i)); }));
    times.close.push_back(Milliseconds([&] { mci->Send("close VidClip"); }));
}

void RunBare(const std::string& path, Times& times) {
    std::unique_ptr<Bare> bare;
    times.first.push_back(Milliseconds([&] {
        bare = std::make_unique<Bare>();
        bare->Load(path);
    }));
    for (int i = 0; i < kSteps; ++i)
        times.step.push_back(Milliseconds([&] { bare->Seek((kFrom - i - 0.5) / kRate); }));
    times.close.push_back(Milliseconds([&] { bare.reset(); }));
}

void Print(const char* what, const std::vector<double>& ours, const std::vector<double>& bare) {
    std::printf("%-32s %7.1f ms  bare %7.1f ms  ratio %.2f\n", what, Median(ours), Median(bare),
                Median(ours) / Median(bare));
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/clip.mp4";
    const std::string command =
        "ffmpeg -nostdin -loglevel error -f lavfi -i testsrc2=size=1920x1080:rate=25:duration=40 "
        "-c:v libx264 -preset veryfast -g 250 -pix_fmt yuv420p " +
        path;
    if (std::system(command.c_str()) != 0) return 1;
    Times ours;
    Times bare;
    for (int i = 0; i < kRounds; ++i) {
        RunBare(path, bare);
        RunOurs(path, ours);
    }
    Print("open to the first picture", ours.first, bare.first);
    Print("step back, 250 between key frames", ours.step, bare.step);
    Print("close", ours.close, bare.close);
}

// Frames of SER clips rated, beside a bare program that reads them and sums their samples: by
// turns, in one run, on one thread. Then what a clip of 50 GB takes to be opened (a sparse file).
#include "clips/SerFile.h"
#include "sky/frames/FrameRating.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using namespace tarn;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kHeader = 178;
constexpr int kRounds = 7;

struct Kind {
    int width;
    int height;
    int bits;
    int frames;
};

void PutNumber(std::string& bytes, std::int64_t number) {
    for (int i = 0; i < 4; ++i) bytes.push_back(char(number >> (8 * i) & 0xff));
}

std::string HeaderOf(const Kind& kind, std::int64_t frames) {
    std::string bytes = "LUCAM-RECORDER";
    for (const std::int64_t word :
         std::vector<std::int64_t>{0, 0, 0, kind.width, kind.height, kind.bits, frames})
        PutNumber(bytes, word);
    bytes.resize(kHeader, ' ');
    return bytes;
}

// A disc on a noisy sky.
std::string FrameOf(const Kind& kind) {
    std::string bytes;
    unsigned random = 1;
    for (int y = 0; y < kind.height; ++y)
        for (int x = 0; x < kind.width; ++x) {
            random = random * 1664525U + 1013904223U;
            const bool isLit =
                std::hypot(x - kind.width / 2, y - kind.height / 2) < kind.height / 4;
            const int value = (isLit ? 160 : 10) + int(random >> 28U);
            if (kind.bits > 8) bytes.push_back(char(random >> 20U & 0xffU));
            bytes.push_back(char(value));
        }
    return bytes;
}

bool WriteClip(const std::string& path, const Kind& kind) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    const std::string header = HeaderOf(kind, kind.frames);
    const std::string frame = FrameOf(kind);
    bool good = std::fwrite(header.data(), 1, header.size(), file) == header.size();
    for (int i = 0; i < kind.frames && good; ++i)
        good = std::fwrite(frame.data(), 1, frame.size(), file) == frame.size();
    return std::fclose(file) == 0 && good;
}

double Seconds(Clock::time_point since) {
    return std::chrono::duration<double>(Clock::now() - since).count();
}

double ReadAndSum(const std::string& path, const Kind& kind, std::uint64_t& sum) {
    const auto began = Clock::now();
    const std::size_t bytes =
        std::size_t(kind.width) * std::size_t(kind.height) * (kind.bits > 8 ? 2 : 1);
    std::vector<std::uint8_t> frame(bytes);
    const int file = ::open(path.c_str(), O_RDONLY);
    for (int i = 0; i < kind.frames; ++i) {
        if (::pread(file, frame.data(), bytes, kHeader + off_t(bytes) * i) != ssize_t(bytes)) break;
        if (kind.bits > 8) {
            const auto* words = reinterpret_cast<const std::uint16_t*>(frame.data());
            for (std::size_t k = 0; k < bytes / 2; ++k) sum += words[k];
        } else {
            for (const std::uint8_t value : frame) sum += value;
        }
    }
    ::close(file);
    return Seconds(began);
}

double Rate(const std::string& path, double& sharpness) {
    const auto began = Clock::now();
    SerFile clip;
    FrameRater rater;
    std::vector<std::uint8_t> bytes;
    if (!clip.Open(path).empty()) return 0;
    const SerHeader& h = clip.Header();
    for (int i = 0; i < h.frames && clip.ReadStored(i, bytes).empty(); ++i)
        sharpness +=
            rater.Rate({bytes, h.width, h.height, h.bits, h.Samples(), clip.HighByteFirst()})
                .sharpness;
    return Seconds(began);
}

void Compare(const std::string& path, const Kind& kind) {
    if (!WriteClip(path, kind)) return void(std::perror(path.c_str()));
    std::vector<double> bare;
    std::vector<double> rated;
    std::uint64_t sum = 0;
    double sharpness = 0;
    for (int i = 0; i < kRounds; ++i) {
        bare.push_back(ReadAndSum(path, kind, sum));
        rated.push_back(Rate(path, sharpness));
    }
    std::sort(bare.begin(), bare.end());
    std::sort(rated.begin(), rated.end());
    const double middle = rated[kRounds / 2];
    std::printf("%d x %d, %d bits: read and summed %.3f ms, rated %.3f ms a frame (%.0f a second), "
                "%.2f times (sum %llu, sharpness %g)\n",
                kind.width, kind.height, kind.bits, bare[kRounds / 2] / kind.frames * 1000,
                middle / kind.frames * 1000, kind.frames / middle, middle / bare[kRounds / 2],
                static_cast<unsigned long long>(sum), sharpness);
}

void OpenLarge(const std::string& path) {
    const Kind kind{1920, 1080, 16, 0};
    const std::int64_t frames = 50LL * 1000 * 1000 * 1000 / (1920 * 1080 * 2);
    const std::string header = HeaderOf(kind, frames);
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    const bool made = ::write(file, header.data(), header.size()) == ssize_t(header.size()) &&
                      ::ftruncate(file, kHeader + frames * 1920 * 1080 * 2) == 0;
    ::close(file);
    const auto began = Clock::now();
    SerFile clip;
    const std::string error = clip.Open(path);
    std::vector<std::uint8_t> bytes;
    clip.ReadStored(clip.Header().frames - 1, bytes);
    std::printf("50 GB opened, last of %d frames read: %.2f ms%s%s\n", clip.Header().frames,
                Seconds(began) * 1000, made ? "" : " (not made)", error.c_str());
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = argc > 1 ? argv[1] : ".";
    const std::string path = folder + "/bench_frames.ser";
    Compare(path, {640, 480, 8, 400});
    Compare(path, {1920, 1080, 16, 60});
    OpenLarge(path);
    ::unlink(path.c_str());
    return EXIT_SUCCESS;
}

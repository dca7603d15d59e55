// Time of the sum of 16 frames, on both cores: ours, from the files to the file; a bare program
// that reads each, warps it once and adds it, with the same kernel and with a plain loop of its
// own. Stars and maps are known to all of them. With a folder the frames are written there and
// nothing is measured.
#include "Memory.h"
#include "Timing.h"

#include "imaging/fits/FitsWriter.h"
#include "sky/planes/FramesOfFiles.h"
#include "sky/stack/Stack.h"

#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <numbers>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <fitsio.h>

namespace {

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr std::size_t kPixels = std::size_t(kWidth) * kHeight;
constexpr int kFrames = 16;
constexpr int kRounds = 3;
constexpr int kReach = 9; // pixels of a star

void Check(bool good, const char* what) {
    if (good) return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

// From a frame to the field: a little turned, a little shifted.
tarn::FrameMap MapOf(int frame) {
    const double turn = 0.002 * frame;
    return {std::cos(turn), -std::sin(turn), 7.3 * frame,
            std::sin(turn), std::cos(turn),  -4.1 * frame};
}

void WriteFrame(const std::string& path, int number) {
    std::mt19937 stars(1);
    std::mt19937 random(100 + unsigned(number));
    std::normal_distribution<float> noise(1000, 33);
    std::uniform_real_distribution<double> part(0, 1);
    std::vector<float> values(kPixels);
    for (float& value : values) value = noise(random);
    const tarn::FrameMap toFrame = tarn::Inverse(MapOf(number));
    for (int star = 0; star < 3000; ++star) {
        const auto [x, y] = toFrame(part(stars) * kWidth, part(stars) * kHeight);
        const double peak = 300 * std::pow(150, part(stars));
        for (int dy = -kReach; dy <= kReach; ++dy)
            for (int dx = -kReach; dx <= kReach; ++dx) {
                const int column = int(std::lround(x)) + dx;
                const int row = int(std::lround(y)) + dy;
                if (column < 0 || row < 0 || column >= kWidth || row >= kHeight) continue;
                const double square = std::pow(column - x, 2) + std::pow(row - y, 2);
                values[std::size_t(row) * kWidth + std::size_t(column)] +=
                    float(peak * std::exp(-square / 4.5));
            }
    }
    std::vector<std::uint16_t> samples(kPixels);
    for (std::size_t i = 0; i < kPixels; ++i)
        samples[i] = std::uint16_t(std::clamp(std::lround(values[i]), 0L, 65535L));
    fitsfile* file = nullptr;
    int status = 0;
    std::array<long, 2> axes{kWidth, kHeight};
    fits_create_diskfile(&file, path.c_str(), &status);
    fits_create_img(file, USHORT_IMG, 2, axes.data(), &status);
    std::string date = "2024-11-05T20:00:00";
    date[14] = char('0' + number * 3 / 10);
    date[15] = char('0' + number * 3 % 10);
    double seconds = 120;
    fits_write_key(file, TSTRING, "DATE-OBS", date.data(), nullptr, &status);
    fits_write_key(file, TDOUBLE, "EXPTIME", &seconds, nullptr, &status);
    fits_write_img(file, TUSHORT, 1, LONGLONG(kPixels), samples.data(), &status);
    fits_close_file(file, &status);
    Check(status == 0, "writing a frame");
}

std::vector<float> ReadFloats(const std::string& path) {
    static std::mutex library;
    fitsfile* file = nullptr;
    int status = 0;
    std::vector<float> values(kPixels);
    {
        const std::lock_guard lock(library);
        fits_open_diskfile(&file, path.c_str(), READONLY, &status);
        fits_read_img(file, TFLOAT, 1, LONGLONG(kPixels), nullptr, values.data(), nullptr, &status);
        fits_close_file(file, &status);
    }
    Check(status == 0, "reading a frame");
    return values;
}

// Lanczos of three samples to each side as it is first written: weights from a table, all 36
// samples of a place one after the other.
void AddPlainly(const std::vector<float>& frame, const tarn::FrameMap& map,
                std::vector<float>& sum) {
    constexpr int kPhases = 512;
    static const auto kWeights = [] {
        std::vector<std::array<float, 6>> weights(kPhases + 1);
        for (int phase = 0; phase <= kPhases; ++phase)
            for (int tap = 0; tap < 6; ++tap) {
                const double x = std::numbers::pi * (tap - 2 - double(phase) / kPhases);
                weights[std::size_t(phase)][std::size_t(tap)] =
                    std::abs(x) < 1e-9 ? 1 : float(3 * std::sin(x) * std::sin(x / 3) / (x * x));
            }
        return weights;
    }();
    const tarn::FrameMap back = tarn::Inverse(map);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const auto [fromX, fromY] = back(x, y);
            const int column = int(std::floor(fromX));
            const int row = int(std::floor(fromY));
            if (column < 2 || row < 2 || column >= kWidth - 3 || row >= kHeight - 3) continue;
            const auto& along = kWeights[std::size_t((fromX - column) * kPhases)];
            const auto& across = kWeights[std::size_t((fromY - row) * kPhases)];
            float value = 0;
            for (std::size_t j = 0; j < 6; ++j) {
                const float* at =
                    frame.data() + std::size_t(row - 2 + int(j)) * kWidth + column - 2;
                float inRow = 0;
                for (std::size_t i = 0; i < 6; ++i) inRow += along[i] * at[i];
                value += across[j] * inRow;
            }
            sum[std::size_t(y) * kWidth + std::size_t(x)] += value;
        }
}

void AddByOurs(const std::vector<float>& frame, const tarn::FrameMap& map,
               std::vector<float>& sum) {
    tarn::FrameSamples samples;
    samples.width = kWidth;
    samples.height = kHeight;
    samples.floats = frame.data();
    tarn::Warp warp(samples, map);
    constexpr int kSide = 100;
    std::array<float, kSide * kSide> tile{};
    for (int top = 0; top < kHeight; top += kSide)
        for (int left = 0; left < kWidth; left += kSide) {
            warp.Take({left, top, kSide, kSide}, tile.data());
            for (int y = 0; y < kSide; ++y)
                for (int x = 0; x < kSide; ++x)
                    if (const float value = tile[std::size_t(y * kSide + x)]; value == value)
                        sum[std::size_t(top + y) * kWidth + std::size_t(left + x)] += value;
        }
}

void WriteSum(const std::string& path, const std::vector<float>& sum) {
    fitsfile* file = nullptr;
    int status = 0;
    std::array<long, 2> axes{kWidth, kHeight};
    std::remove(path.c_str());
    fits_create_diskfile(&file, path.c_str(), &status);
    fits_create_img(file, FLOAT_IMG, 2, axes.data(), &status);
    fits_write_img(file, TFLOAT, 1, LONGLONG(kPixels), const_cast<float*>(sum.data()), &status);
    fits_close_file(file, &status);
    Check(status == 0, "writing the sum");
}

template <typename Add>
void BareSum(const std::vector<std::string>& paths, const std::string& target, const Add& add) {
    std::array<std::vector<float>, 2> sums;
    std::atomic<std::size_t> next = 0;
    const auto work = [&](std::vector<float>& sum) {
        sum.assign(kPixels, 0);
        for (std::size_t i = next++; i < paths.size(); i = next++)
            add(ReadFloats(paths[i]), MapOf(int(i)), sum);
    };
    std::thread second([&] { work(sums[1]); });
    work(sums[0]);
    second.join();
    for (std::size_t i = 0; i < kPixels; ++i) sums[0][i] = (sums[0][i] + sums[1][i]) / kFrames;
    WriteSum(target, sums[0]);
}

struct Target : tarn::SumTarget {
    std::string path;
    tarn::FitsWriter writer;

    bool Begin(int width, int height, int colours) override {
        std::remove(path.c_str());
        return writer.Create(path, width, height, colours, 0);
    }
    bool Write(int colour, int row, int rows, const float* values) override {
        return writer.WriteRows(colour, row, rows, values);
    }
};

void OurSum(const std::vector<std::string>& paths, const std::string& folder, double sigmas) {
    tarn::SeriesPlan plan;
    plan.reference = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) plan.frames.push_back({i, MapOf(int(i)), 1});
    plan.faults.resize(paths.size());
    plan.scores.assign(paths.size(), 100);
    tarn::StackOrder order;
    order.scratch = folder;
    order.sigmas = sigmas;
    Target target;
    target.path = folder + "/sum.fits";
    const auto read = [&](std::size_t i, std::string& error) {
        return tarn::ReadFrameColours(paths[i], error);
    };
    const tarn::StackResult result = tarn::StackSeries(plan, read, order, target);
    Check(result.fault.empty() && target.writer.Close({}), "our sum");
}

} // namespace

int main(int argc, char** argv) {
    const QTemporaryDir made;
    const std::string folder = argc > 1 ? argv[1] : made.path().toStdString();
    std::vector<std::string> paths;
    for (int i = 0; i < kFrames; ++i) {
        paths.push_back(folder + "/frame" + std::to_string(10 + i) + ".fits");
        WriteFrame(paths.back(), i);
    }
    if (argc > 1) return 0;
    std::vector<double> ours;
    std::vector<double> all;
    std::vector<double> bare;
    std::vector<double> plain;
    using tarn::bench::Milliseconds;
    const std::string target = folder + "/bare.fits";
    for (int round = 0; round < kRounds; ++round) {
        ours.push_back(Milliseconds([&] { OurSum(paths, folder, 3); }));
        all.push_back(Milliseconds([&] { OurSum(paths, folder, 0); }));
        bare.push_back(Milliseconds([&] { BareSum(paths, target, AddByOurs); }));
        plain.push_back(Milliseconds([&] { BareSum(paths, target, AddPlainly); }));
    }
    using tarn::bench::Median;
    std::printf("%d frames of %d x %d, 16 bits, two cores, %d rounds\n", kFrames, kWidth, kHeight,
                kRounds);
    std::printf("ours, outliers out        %8.0f ms\n", Median(ours));
    std::printf("ours, all samples         %8.0f ms\n", Median(all));
    std::printf("bare, our kernel          %8.0f ms, ratio %.2f\n", Median(bare),
                Median(ours) / Median(bare));
    std::printf("bare, a plain kernel      %8.0f ms, ratio %.2f\n", Median(plain),
                Median(ours) / Median(plain));
    return 0;
}

// Processor time of the stars of one frame: ours, from the file to the row; a library of the same
// purpose called bare for the same columns; reading the file and making floats of it alone. All
// run in turns in one process; the program that the library comes from runs beside them, where it
// is installed. With a path the frame is written there and nothing is measured.
#include "Timing.h"

#include "sky/planes/MeasurePicture.h"

#include <QTemporaryDir>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <fitsio.h>
extern "C" {
#include <sep.h>
}
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr std::size_t kPixels = std::size_t(kWidth) * kHeight;
constexpr int kStars = 3000;
constexpr double kSky = 1000;
constexpr double kNoise = 33;
constexpr double kSigma = 1.5;
constexpr int kReach = 9; // pixels
constexpr int kRounds = 7;

void Check(bool good, const char* what) {
    if (good) return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

void WriteFrame(const std::string& path) {
    std::mt19937 random(1);
    std::normal_distribution<double> noise(kSky, kNoise);
    std::uniform_real_distribution<double> part(0, 1);
    std::vector<float> values(kPixels);
    for (float& value : values) value = float(noise(random));
    for (int star = 0; star < kStars; ++star) {
        const double x = part(random) * kWidth;
        const double y = part(random) * kHeight;
        const double peak = 300 * std::pow(150, part(random));
        for (int dy = -kReach; dy <= kReach; ++dy)
            for (int dx = -kReach; dx <= kReach; ++dx) {
                const int column = int(x) + dx;
                const int row = int(y) + dy;
                if (column < 0 || row < 0 || column >= kWidth || row >= kHeight) continue;
                const double square = std::pow(column - x, 2) + std::pow(row - y, 2);
                values[std::size_t(row) * kWidth + std::size_t(column)] +=
                    float(peak * std::exp(-square / (2 * kSigma * kSigma)));
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
    fits_write_img(file, TUSHORT, 1, LONGLONG(kPixels), samples.data(), &status);
    fits_close_file(file, &status);
    Check(status == 0, "writing the frame");
}

std::vector<float> ReadFloats(const std::string& path) {
    fitsfile* file = nullptr;
    int status = 0;
    std::vector<float> values(kPixels);
    fits_open_diskfile(&file, path.c_str(), READONLY, &status);
    fits_read_img(file, TFLOAT, 1, LONGLONG(kPixels), nullptr, values.data(), nullptr, &status);
    fits_close_file(file, &status);
    Check(status == 0, "reading the frame");
    return values;
}

// Background, sources, and of the brightest few hundred the radius of half of the flux.
int BareStars(const std::string& path) {
    std::vector<float> values = ReadFloats(path);
    sep_image image{};
    image.data = values.data();
    image.dtype = SEP_TFLOAT;
    image.w = kWidth;
    image.h = kHeight;
    image.gain = 1;
    sep_bkg* sky = nullptr;
    Check(sep_background(&image, 64, 64, 3, 3, 0, &sky) == 0, "the background");
    Check(sep_bkg_subarray(sky, values.data(), SEP_TFLOAT) == 0, "subtracting it");
    image.noiseval = sky->globalrms;
    image.noise_type = SEP_NOISE_STDDEV;
    sep_catalog* found = nullptr;
    std::array<float, 9> weights{1, 2, 1, 2, 4, 2, 1, 2, 1};
    Check(sep_extract(&image, float(1.9 * sky->globalrms), SEP_THRESH_ABS, 5, weights.data(), 3, 3,
                      SEP_FILTER_CONV, 32, 0.005, 1, 1, &found) == 0,
          "the search");
    image.ndtype = SEP_TFLOAT;
    for (int i = 0; i < std::min(found->nobj, 300); ++i) {
        double half = 0.5;
        double radius = 0;
        short flag = 0;
        sep_flux_radius(&image, found->x[i], found->y[i], 6 * found->a[i], 0, 5, 0, nullptr, &half,
                        1, &radius, &flag);
    }
    const int count = found->nobj;
    sep_catalog_free(found);
    sep_bkg_free(sky);
    return count;
}

double ProcessorTime(int whose) {
    rusage usage{};
    getrusage(whose, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double Timed(const std::function<void()>& work) {
    const double before = ProcessorTime(RUSAGE_SELF);
    work();
    return ProcessorTime(RUSAGE_SELF) - before;
}

// Negative where it is not installed.
double TimedProgram(const std::string& path, const QTemporaryDir& folder) {
    const double before = ProcessorTime(RUSAGE_CHILDREN);
    const std::string columns = folder.filePath("columns").toStdString();
    if (std::FILE* file = std::fopen(columns.c_str(), "w")) {
        std::fputs("X_IMAGE\nY_IMAGE\nFLUX_ISO\nFLUX_MAX\nFLUX_RADIUS\nFWHM_IMAGE\nA_IMAGE\n"
                   "B_IMAGE\nTHETA_IMAGE\nFLAGS\n",
                   file);
        std::fclose(file);
    }
    const std::string catalogue = folder.filePath("catalogue").toStdString();
    const std::string weights = "/usr/share/source-extractor/default.conv";
    const pid_t child = ::fork();
    if (child == 0) {
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, 1);
        ::dup2(nowhere, 2);
        ::execlp("source-extractor", "source-extractor", path.c_str(), "-c", "/dev/null",
                 "-DETECT_THRESH", "1.9", "-ANALYSIS_THRESH", "1.9", "-PARAMETERS_NAME",
                 columns.c_str(), "-FILTER_NAME", weights.c_str(), "-CATALOG_NAME",
                 catalogue.c_str(), "-NTHREADS", "1", nullptr);
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status == 0 ? ProcessorTime(RUSAGE_CHILDREN) - before : -1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        WriteFrame(argv[1]);
        return 0;
    }
    const QTemporaryDir folder;
    const std::string path = folder.filePath("stars.fits").toStdString();
    WriteFrame(path);
    std::vector<double> floats;
    std::vector<double> ours;
    std::vector<double> bare;
    std::vector<double> program;
    tarn::FrameMeasures row;
    int found = 0;
    for (int round = 0; round < kRounds; ++round) {
        floats.push_back(Timed([&] { ReadFloats(path); }));
        ours.push_back(Timed([&] { row = tarn::MeasurePicture(path); }));
        bare.push_back(Timed([&] { found = BareStars(path); }));
        program.push_back(TimedProgram(path, folder));
    }
    using tarn::bench::Median;
    const double our = Median(ours);
    std::printf("%d x %d, 16 bits, %d stars of FWHM %.2f, %d rounds, processor time\n", kWidth,
                kHeight, kStars, 2.3548 * kSigma, kRounds);
    std::printf("ours: %d stars, HFR %.3f, FWHM %.3f  %7.3f s\n", row.stars, row.hfr, row.fwhm,
                our);
    std::printf("reading and floats alone              %7.3f s, ratio %.2f\n", Median(floats),
                our / Median(floats));
    std::printf("the library bare, %5d sources       %7.3f s, ratio %.2f\n", found, Median(bare),
                our / Median(bare));
    if (Median(program) > 0)
        std::printf("source-extractor                      %7.3f s, ratio %.2f\n", Median(program),
                    our / Median(program));
    return row.stars > kStars * 9 / 10 ? 0 : 1;
}

// What the decoder process reads is what the readers themselves give, byte for byte.
#include "FitsFiles.h"
#include "PictureFiles.h"
#include "RawFiles.h"
#include "XisfFiles.h"
#include "support/TestFolder.h"

#include "clips/ClipFrame.h"
#include "decoder/DecoderPool.h"
#include "imaging/PictureLoader.h"
#include "imaging/SamplePlanes.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/ScreenStretch.h"
#include "imaging/fits/SkyFile.h"
#include "platform/Modules.h"

#include <gtest/gtest.h>

#include <QColorSpace>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

namespace tarn::testing {
namespace {

// All that a file gives.
struct Read {
    std::string openError;
    QSize size;
    bool upright = false;
    QImage picture;
    std::string error;
    std::string remark;
    bool operator==(const Read&) const = default;
};

Read ReadOf(const std::string& path, QSize wanted) {
    Read read;
    const auto source = PictureLoader::Open(path, read.openError);
    if (!source) return read;
    read.size = source->Size();
    read.upright = source->IsUpright();
    read.picture = source->Decode(wanted, read.error);
    read.remark = source->ColorRemark();
    return read;
}

// Of a file that is cut short the toolkit leaves what is missing as its memory was.
enum class Pixels { Compared, LeftOut };

void ExpectSame(const std::string& path, QSize wanted = {}, Pixels pixels = Pixels::Compared) {
    SCOPED_TRACE(path + " " + std::to_string(wanted.width()));
    UseDecoders({});
    const Read inside = ReadOf(path, wanted);
    UseDecoders();
    const Read apart = ReadOf(path, wanted);
    EXPECT_EQ(apart.openError, inside.openError);
    EXPECT_EQ(apart.size, inside.size);
    EXPECT_EQ(apart.upright, inside.upright);
    EXPECT_EQ(apart.picture.format(), inside.picture.format());
    EXPECT_EQ(apart.picture.size(), inside.picture.size());
    if (pixels == Pixels::Compared) {
        EXPECT_EQ(apart.picture, inside.picture);
    }
    EXPECT_EQ(apart.error, inside.error);
    EXPECT_EQ(apart.remark, inside.remark);
    EXPECT_NE(DecoderProtection().find("system calls filtered"), std::string::npos)
        << DecoderProtection();
    UseDecoders({});
}

std::vector<float> Values(const FitsSamples& samples) {
    if (samples.words) return {samples.words.get(), samples.words.get() + samples.count};
    return {samples.floats.get(), samples.floats.get() + samples.count};
}

class Decoders : public ::testing::Test {
protected:
    ~Decoders() override { UseDecoders({}); }
    std::string Write(const std::string& name, const std::string& bytes) const {
        return folder.Write(name, bytes);
    }
    // By another program, out of a PNG file.
    std::string Converted(const std::string& name, const std::string& options) const {
        const std::string png = Write("p.png", PictureBytes(TellTale(64, 48), "PNG"));
        const std::string path = folder.Path() + "/" + name;
        const std::string command =
            "ffmpeg -nostdin -loglevel error -y -i '" + png + "' " + options + " '" + path + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << name;
        return path;
    }
    TestFolder folder;
};

} // namespace

TEST_F(Decoders, ToolkitFormatsAreReadAlike) {
    QImage through = TellTale(30, 20).convertToFormat(QImage::Format_ARGB32);
    through.setPixel(3, 3, qRgba(10, 20, 30, 40));
    QImage colored = TellTale(33, 7);
    colored.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
    for (const char* format : {"PNG", "BMP", "TIFF", "WEBP", "PPM"}) {
        ExpectSame(Write("a", PictureBytes(TellTale(64, 48), format)));
        const std::string bytes = PictureBytes(through, format);
        ExpectSame(Write("b", bytes));
        ExpectSame(Write("c", PictureBytes(colored, format)));
        ExpectSame(Write("d", bytes.substr(0, bytes.size() / 2)), {}, Pixels::LeftOut);
    }
    // Large ones are converted by the toolkit's own threads.
    const QImage deep = TellTale(900, 600).convertToFormat(QImage::Format_RGBX64);
    const std::string large = Write("f", PictureBytes(deep, "PNG"));
    ExpectSame(large);
    EXPECT_EQ(ReadOf(large, {}).error, "");
    ExpectSame(Write("e", "no picture at all"));
}

// The nice values of this process's children, ascending.
std::vector<int> ChildrensNice() {
    std::vector<int> values;
    for (const auto& each : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream children(each.path() / "children");
        for (int child = 0; children >> child;)
            values.push_back(::getpriority(PRIO_PROCESS, id_t(child)));
    }
    std::sort(values.begin(), values.end());
    return values;
}

TEST_F(Decoders, AThreadThatGivesWayHasProcessesOfItsOwn) {
    const std::string path = Write("a.png", PictureBytes(TellTale(64, 48), "PNG"));
    const auto readLow = [&] {
        std::thread([&] {
            ::setpriority(PRIO_PROCESS, id_t(::gettid()), 19);
            EXPECT_EQ(ReadOf(path, {}).error, "");
        }).join();
    };
    const int usual = ::getpriority(PRIO_PROCESS, 0);
    UseDecoders();
    readLow();
    EXPECT_EQ(ChildrensNice(), (std::vector<int>{19}));
    EXPECT_EQ(ReadOf(path, {}).error, ""); // not by that one, which would make the window wait
    EXPECT_EQ(ChildrensNice(), (std::vector<int>{usual, 19}));
    readLow();
    EXPECT_EQ(ReadOf(path, {}).error, "");
    EXPECT_EQ(ChildrensNice(), (std::vector<int>{usual, 19}));
}

TEST_F(Decoders, RawFilesAreReadAlikeAtEachSize) {
    const QImage scene = TellTale(160, 120);
    const std::string with =
        Write("a.dng", RawFile(scene, JpegBytes(TellTale(80, 60)), QSize(80, 60), 6).bytes);
    for (const QSize wanted : {QSize(), QSize(30, 20), QSize(75, 70)}) ExpectSame(with, wanted);
    const std::string bytes = RawFile(scene, {}, {}, 1).bytes;
    ExpectSame(Write("b.dng", bytes));
    ExpectSame(Write("c.dng", bytes.substr(0, bytes.size() / 2)));
}

TEST_F(Decoders, WhatTelephonesWriteIsReadAlike) {
    const std::string avif = Converted("p.avif", "-frames:v 1 -pix_fmt yuv420p");
    const std::string jxl = Converted(
        "p.jxl", "-vf setparams=color_primaries=smpte432:color_trc=iec61966-2-1 -pix_fmt rgb24");
    for (const std::string& path : {avif, jxl}) {
        ExpectSame(path);
        std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
        ExpectSame(path);
    }
}

TEST_F(Decoders, FilesOfTelescopesAreReadAlike) {
    const auto ramp = [](std::size_t i) { return double(i * 37 % 60000); };
    const std::vector<FitsWord> words{
        {"BZERO", "32768"}, {"BAYERPAT", "'RGGB'"}, {"GAIN", "'120'"}};
    XisfPicture packed;
    packed.codec = "zlib";
    packed.shuffled = true;
    XisfPicture floats;
    floats.format = "Float32";
    const std::string sky = NightSky(300, 200, words);
    std::vector<std::string> paths{
        Write("a.fit", sky),
        Write("b.fit", Gzipped(sky)),
        Write("c.fit", sky.substr(0, sky.size() / 2)),
        Write("d.fit", FitsBytes(-32, {40, 30, 3}, ramp) + FitsExtension(8, {20, 10}, ramp)),
        Write("e.fit", FitsBytes(16, {0, 0}, ramp)),
        Write("f.xisf", XisfBytes({packed, floats})),
        Write("g.xisf", XisfBytes({XisfPicture()}).substr(0, 300))};
    for (const std::string& path : paths)
        for (const QSize wanted : {QSize(), QSize(90, 60)}) ExpectSame(path, wanted);
    const ReadsImage second(1);
    ExpectSame(paths[3]);
    ExpectSame(paths[5]);
}

TEST_F(Decoders, TheChosenStretchGoesAlong) {
    StretchChoice choice;
    choice.locked = true;
    choice.fixed = Stretch{{0, 3000}, 0.1, 0.3, 0.9, {1, 1, 1}};
    choice.of = {0, 0, 16, 1};
    const std::string path = Write("a.fit", NightSky(60, 40));
    const QImage automatic = ReadOf(path, {}).picture;
    SetStretchChoice(choice);
    ExpectSame(path);
    EXPECT_NE(ReadOf(path, {}).picture, automatic);
    {
        const AutomaticStretchOnly only;
        UseDecoders();
        EXPECT_EQ(ReadOf(path, {}).picture, automatic);
    }
    SetStretchChoice({});
}

TEST_F(Decoders, HeadersAndSamplesOfTelescopesAreReadAlike) {
    const auto ramp = [](std::size_t i) { return double(i % 251); };
    XisfPicture floats;
    floats.format = "Float32";
    floats.attributes = "bounds=\"0:2\"";
    for (const std::string& path : {Write("a.fit", NightSky(50, 20, {{"OBJECT", "'M 31'"}})),
                                    Write("b.fit", FitsBytes(-64, {20, 10}, ramp)),
                                    Write("c.fit", NightSky(50, 20).substr(0, 2880 + 2880 / 2)),
                                    Write("d.xisf", XisfBytes({floats}))}) {
        std::string error;
        UseDecoders({});
        const SkyFacts facts = SkyFactsOf(path);
        const auto inside = ReadSkySamples(path, error);
        UseDecoders();
        std::string errorApart;
        const SkyFacts factsApart = SkyFactsOf(path);
        const auto apart = ReadSkySamples(path, errorApart);
        EXPECT_EQ(factsApart.lines, facts.lines) << path;
        EXPECT_EQ(factsApart.cameraDate, facts.cameraDate) << path;
        EXPECT_EQ(errorApart, error) << path;
        ASSERT_EQ(apart.has_value(), inside.has_value()) << path;
        if (!apart) continue;
        EXPECT_EQ(apart->header.object, inside->header.object);
        EXPECT_EQ(apart->range, inside->range);
        EXPECT_EQ(apart->zero, inside->zero);
        EXPECT_EQ(apart->scale, inside->scale);
        EXPECT_EQ(Values(*apart), Values(*inside)) << path;
    }
}

TEST_F(Decoders, SamplesOfASensorComeAsTheyAre) {
    const std::string path = Write("a.dng", RawFile(TellTale(60, 40), {}, {}, 6).bytes);
    for (const bool apart : {false, true}) {
        UseDecoders(apart ? DecoderUse{1, HelperPath("tarn-decoder"), 0} : DecoderUse{});
        std::string error;
        const auto samples = ReadSamplePlanes(path, error);
        ASSERT_TRUE(samples) << error;
        EXPECT_EQ(samples->header.width, 60);
        EXPECT_EQ(samples->header.height, 40);
        EXPECT_TRUE(samples->header.topDown);
        EXPECT_EQ(samples->header.pattern, (std::array{0, 1, 1, 2}));
        EXPECT_FALSE(samples->range); // the library finds 255, and there are larger ones
        // Red on the left above, green on the right: what is seen through each filter.
        std::vector<float> row;
        for (int x = 0; x < 60; ++x) row.push_back(x % 2 == (x < 30 ? 0 : 1) ? 60000 : 0);
        std::vector<float> values = Values(*samples);
        values.resize(60);
        EXPECT_EQ(values, row);
    }
    std::string error;
    EXPECT_FALSE(ReadSamplePlanes(Write("a.png", PictureBytes(TellTale(4, 4), "PNG")), error));
    EXPECT_EQ(error, "The file has no samples of a sensor");
}

TEST_F(Decoders, FirstFramesOfClipsAreReadAlike) {
    for (const char* name : {"c.mp4", "c.avi", "c.mkv"}) {
        const std::string path = Converted(name, "-frames:v 1 -c:v mpeg4 -pix_fmt yuv420p");
        for (const int side : {30, 200}) {
            UseDecoders({});
            const QImage inside = FirstFrame(path, side);
            UseDecoders();
            EXPECT_EQ(FirstFrame(path, side), inside) << name << side;
            EXPECT_EQ(FirstFrame(Write("none", "no clip"), side), QImage());
            EXPECT_FALSE(inside.isNull());
        }
        EXPECT_NE(DecoderProtection().find("system calls filtered"), std::string::npos);
    }
}

TEST_F(Decoders, PixelsStayAfterTheProcessIsGone) {
    UseDecoders();
    const Read read = ReadOf(Write("a.png", PictureBytes(TellTale(64, 48), "PNG")), {});
    UseDecoders({});
    EXPECT_EQ(Quarters(read.picture), "rgby");
    QImage own = read.picture;
    own.setPixel(0, 0, qRgb(1, 2, 3));
    EXPECT_EQ(own.pixel(0, 0), qRgb(1, 2, 3));
    EXPECT_EQ(Quarters(read.picture), "rgby");
}

} // namespace tarn::testing

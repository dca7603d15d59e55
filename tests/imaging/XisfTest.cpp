// XISF files: what is read, however it is stored and packed, and what is made of broken ones.
#include "PixelRows.h"
#include "XisfFiles.h"
#include "support/TestFolder.h"

#include "imaging/fits/FitsLines.h"
#include "imaging/fits/FitsPixels.h"
#include "imaging/xisf/XisfFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace tarn;
using namespace tarn::testing;

namespace {

class XisfPictures : public ::testing::Test {
protected:
    std::optional<FitsPixels> Read(const std::string& bytes) {
        error.clear();
        return FitsPixels::Read(folder.Write("a.xisf", bytes), 0, 0, error);
    }
    std::string Rows(const std::string& bytes, int channel = 0) {
        const auto pixels = Read(bytes);
        return pixels ? RowsOf(*pixels, channel) : error;
    }
    std::string Rows(const XisfPicture& picture, int channel = 0) {
        return Rows(XisfBytes({picture}), channel);
    }
    // What is said of a picture that is not shown.
    std::string Fault(const XisfPicture& picture) {
        return Read(XisfBytes({picture})) ? "shown" : error;
    }

    TestFolder folder;
    std::string error;
};

// Three bytes whose checksums are in every table.
XisfPicture Abc() {
    XisfPicture picture;
    picture.format = "UInt8";
    picture.height = 1;
    picture.sample = [](std::size_t i) { return double("abc"[i]); };
    return picture;
}

// More than one piece of a thread, and too regular for a codec to give up on it.
XisfPicture Large(const std::string& codec) {
    XisfPicture picture;
    picture.width = picture.height = 40;
    picture.codec = codec;
    picture.sample = [](std::size_t i) { return std::floor(double(i) / 10); };
    return picture;
}

TEST_F(XisfPictures, EveryKindOfNumberGivesItsValuesFromTheTop) {
    for (const char* format : {"UInt8", "UInt16", "UInt32", "UInt64", "Float32", "Float64"})
        for (const bool highFirst : {false, true}) {
            XisfPicture picture;
            picture.format = format;
            picture.highFirst = highFirst;
            EXPECT_EQ(Rows(picture), "0 1 2/3 4 5") << format << highFirst;
        }
}

TEST_F(XisfPictures, ColoursComeFromEitherStorageAndFurtherChannelsAreLeftOut) {
    for (const char* format : {"UInt8", "UInt16", "Float32"})
        for (const bool interleaved : {false, true}) {
            XisfPicture picture;
            picture.format = format;
            picture.width = 2;
            picture.height = 1;
            picture.channels = 4;
            picture.colour = true;
            picture.interleaved = interleaved;
            EXPECT_EQ(Rows(picture, 0), "0 1") << format << interleaved;
            EXPECT_EQ(Rows(picture, 1), "2 3") << format << interleaved;
            EXPECT_EQ(Rows(picture, 2), "4 5") << format << interleaved;
            picture.colour = false;
            EXPECT_EQ(Read(XisfBytes({picture}))->Channels(), 1);
            EXPECT_EQ(Rows(picture), "0 1") << format << interleaved;
        }
}

TEST_F(XisfPictures, RangeIsThatOfTheFileOrWhatTheNumbersCanHold) {
    const auto range = [&](const char* format, const char* attributes = "") {
        XisfPicture picture;
        picture.format = format;
        picture.attributes = attributes;
        return Read(XisfBytes({picture}))->Range();
    };
    EXPECT_EQ(range("UInt8"), (ValueRange{0, 255}));
    EXPECT_EQ(range("UInt16"), (ValueRange{0, 65535}));
    EXPECT_EQ(range("UInt32"), (ValueRange{0, 4294967295}));
    EXPECT_EQ(range("Float32", "bounds=\"0:65535\""), (ValueRange{0, 65535}));
    EXPECT_EQ(range("Float64", "bounds=\"-1:8\""), (ValueRange{-1, 8}));
    for (const char* none : {"", "bounds=\"1:1\"", "bounds=\"0\"", "bounds=\"0:1e999\""})
        EXPECT_EQ(range("Float32", none), (ValueRange{0, 5})) << none; // what is there
}

TEST_F(XisfPictures, FillValuesAreNoneWhateverTheBounds) {
    XisfPicture picture;
    picture.format = "Float32";
    picture.attributes = "bounds=\"0:1\"";
    picture.sample = [](std::size_t i) { return i == 4 ? 1e30 : double(i) / 10; };
    const auto pixels = Read(XisfBytes({picture}));
    EXPECT_TRUE(std::isnan(pixels->Value(0, 1, 1)));
    EXPECT_EQ(pixels->Range(), (ValueRange{0, 1}));
    // The largest that whole numbers can hold is light.
    picture.format = "UInt32";
    picture.attributes.clear();
    picture.sample = [](std::size_t i) { return i == 4 ? 4294967295.0 : double(i); };
    EXPECT_EQ(Read(XisfBytes({picture}))->Value(0, 1, 1), 4294967296.0F);
}

TEST_F(XisfPictures, StandsAsTheFileWantsItShown) {
    XisfPicture picture; // 0 1 2 over 3 4 5
    for (const auto& [orientation, rows] : {std::pair{"0", "0 1 2/3 4 5"},
                                            {"flip", "2 1 0/5 4 3"},
                                            {"90", "2 5/1 4/0 3"}, // anticlockwise
                                            {"90;flip", "5 2/4 1/3 0"},
                                            {"-90", "3 0/4 1/5 2"},
                                            {"-90;flip", "0 3/1 4/2 5"},
                                            {"180", "5 4 3/2 1 0"},
                                            {"180;flip", "3 4 5/0 1 2"},
                                            {"45", "0 1 2/3 4 5"}}) {
        picture.attributes = "orientation=\"" + std::string(orientation) + "\"";
        for (const char* format : {"UInt16", "Float32"}) {
            picture.format = format;
            const std::string bytes = XisfBytes({picture});
            EXPECT_EQ(Rows(bytes), rows) << orientation;
            const auto header = ReadXisfHeader(folder.Path() + "/a.xisf", 0, error);
            const bool sideways = std::string(rows).find('/') == 3;
            EXPECT_EQ(header->width, sideways ? 2 : 3) << orientation;
            EXPECT_EQ(header->height, sideways ? 3 : 2) << orientation;
        }
    }
    // Each plane for itself; the colours of a mosaic go along.
    picture.format = "UInt16";
    picture.colour = true;
    picture.channels = 3;
    picture.attributes = "orientation=\"90\"";
    EXPECT_EQ(Rows(picture, 2), "14 17/13 16/12 15");
    picture = {};
    picture.width = 4;
    picture.attributes = "orientation=\"90\"";
    picture.elements = "<ColorFilterArray pattern=\"RGGB\" width=\"2\" height=\"2\"/>";
    folder.Write("a.xisf", XisfBytes({picture}));
    EXPECT_EQ(ReadXisfHeader(folder.Path() + "/a.xisf", 0, error)->pattern,
              (std::array<int, 4>{1, 2, 0, 1})); // GB over RG
}

TEST_F(XisfPictures, EveryCodecUnpacksWhatItPacked) {
    XisfPicture plain = Large("");
    const std::string rows = Rows(plain);
    for (const char* codec : {"zlib", "lz4", "lz4hc", "zstd"})
        for (const bool shuffled : {false, true})
            for (const int pieces : {1, 3}) {
                XisfPicture packed = Large(codec);
                packed.shuffled = shuffled;
                packed.pieces = pieces;
                EXPECT_EQ(Rows(packed), rows) << codec << shuffled << pieces;
                EXPECT_LT(XisfBytes({packed}).size(), XisfBytes({plain}).size());
            }
}

TEST_F(XisfPictures, BlocksStandInTheHeaderAsWell) {
    for (const char* place : {"inline:base64", "inline:hex", "embedded"})
        for (const char* codec : {"", "zlib"})
            for (const int width : {3, 4, 5}) { // each ends a line of text in another way
                XisfPicture picture;
                picture.place = place;
                picture.codec = codec;
                picture.format = "UInt8";
                picture.width = width;
                picture.height = 1;
                const auto pixels = Read(XisfBytes({picture}));
                ASSERT_TRUE(pixels) << place << codec << error;
                EXPECT_EQ(RowsOf(*pixels), std::string("0 1 2 3 4").substr(0, 2 * width - 1));
            }
}

TEST_F(XisfPictures, ChecksumsAreComparedAndAWrongOneIsTold) {
    for (const auto& [name, sum, shown] :
         {std::tuple{"sha-1", "a9993e364706816aba3e25717850c26c9cd0d89d", "SHA-1"},
          {"sha-256", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
           "SHA-256"},
          {"sha-512",
           "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
           "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f",
           "SHA-512"},
          {"sha3-256", "3A985DA74FE225B2045C172D6BD390BD855F086E3E9D525B46BFE24511431532",
           "SHA3-256"},
          {"sha3-512",
           "b751850b1a57168a5693cd924b6b096e08f621827444f70d884f5d0240d2712e"
           "10e116e9192af3c91a7ec57647e3934057340b4cf408d5a56592f8274eec53f0",
           "SHA3-512"}}) {
        XisfPicture picture = Abc();
        picture.attributes = std::string("checksum=\"") + name + ":" + sum + "\"";
        EXPECT_EQ(Rows(picture), "97 98 99");
        EXPECT_EQ(error, "") << name;
        picture.sample = [](std::size_t i) { return double("abd"[i]); };
        EXPECT_EQ(Rows(picture), "97 98 100");
        EXPECT_EQ(error, std::string("The XISF file cannot be read: block of image 1: checksum ") +
                             shown + " differs");
    }
}

TEST_F(XisfPictures, EachPictureOfAFileIsReadByItsNumber) {
    XisfPicture second;
    second.width = 1;
    second.attributes = "imageType=\"Dark\"";
    const std::string path = folder.Write("a.xisf", XisfBytes({XisfPicture(), second}));
    const auto first = ReadXisfHeader(path, 0, error);
    const auto other = ReadXisfHeader(path, 1, error);
    EXPECT_EQ(first->images, 2);
    EXPECT_EQ(first->width, 3);
    EXPECT_EQ(other->width, 1);
    EXPECT_EQ(other->imageType, "Dark");
    EXPECT_EQ(other->image, 1);
    auto samples = ReadXisfSamples(path, 1, error);
    ASSERT_TRUE(samples) << error;
    EXPECT_EQ(FitsPixels(std::move(*samples), 0, 0).Value(0, 0, 1), 1);
    EXPECT_EQ(ReadXisfHeader(path, 2, error)->image, 0); // none, so the first
}

TEST_F(XisfPictures, ColoursComeOutOfTheMosaic) {
    XisfPicture picture;
    picture.width = picture.height = 4;
    picture.sample = [](std::size_t i) {
        return i / 4 % 2 == i % 2 ? 20.0 : i % 2 == 1 ? 10.0 : 30.0;
    };
    const auto colours = [&] {
        const auto pixels = Read(XisfBytes({picture}));
        return pixels->Channels() < 3 ? "gray"
                                      : std::to_string(pixels->Value(0, 1, 1)) + " " +
                                            std::to_string(pixels->Value(1, 1, 1)) + " " +
                                            std::to_string(pixels->Value(2, 1, 1));
    };
    picture.elements = "<ColorFilterArray pattern=\"GRBG\" width=\"2\" height=\"2\"/>";
    EXPECT_EQ(colours(), "10.000000 20.000000 30.000000");
    picture.elements = "<FITSKeyword name=\"BAYERPAT\" value=\"'grbg '\" comment=\"\"/>";
    EXPECT_EQ(colours(), "10.000000 20.000000 30.000000");
    picture.elements = "<ColorFilterArray pattern=\"GWRB\" width=\"2\" height=\"2\"/>";
    EXPECT_EQ(colours(), "gray");
}

TEST_F(XisfPictures, KeywordsAndPropertiesAreLinesOfThePanel) {
    XisfPicture picture;
    picture.attributes = "offset=\"0.01\" imageType=\"Light\"";
    picture.elements =
        "<FITSKeyword name=\"OBJECT\" value=\"'M 31    '\" comment=\"\"/>"
        "<FITSKeyword name=\"TELESCOP\" value=\"'O''Hara &lt;80&gt;'\" comment=\"\"/>"
        "<FITSKeyword name=\"EXPTIME\" value=\"120.500\" comment=\"s\"/>"
        "<FITSKeyword name=\"ROWORDER\" value=\"'BOTTOM-UP'\" comment=\"\"/>"
        "<Property id=\"Instrument:ExposureTime\" type=\"Float32\" value=\"7\"/>"
        "<Property id=\"Observation:Time:Start\" type=\"TimePoint\" "
        "value=\"2024-11-05T21:14:33Z\"/>"
        "<Property id=\"Instrument:Filter:Name\" type=\"String\">H\xCE\xB1</Property>"
        "<Property id=\"Instrument:Camera:Name\" type=\"String\" location=\"attachment:4096:2\"/>"
        "<Property id=\"Instrument:Telescope:FocalLength\" type=\"Float32\" value=\"0.53\"/>"
        "<Property id=\"Instrument:Camera:XBinning\" type=\"Int32\" value=\"2\"/>"
        "<Thumbnail geometry=\"1:1:1\" sampleFormat=\"UInt8\" location=\"attachment:0:1\"/>";
    const SkyFacts facts = SkyFactsOf(folder.Write("a.xisf", XisfBytes({picture})));
    EXPECT_EQ(facts.lines,
              (std::vector<std::string>{
                  "      Object: M 31", "    Observed: 2024-11-05 21:14:33 UT",
                  "    Exposure: 120.5s", "      Filter: H\xCE\xB1", "   Telescope: O'Hara <80>",
                  "      Format: 16 bit", "  Image type: Light", "    Pedestal: 0.01",
                  "     Binning: 2 x 2", "Focal length: 530 mm"}));
    EXPECT_EQ(facts.cameraDate, "2024:11:05 21:14:33");
    EXPECT_EQ(Rows(picture), "0 1 2/3 4 5"); // from the top, whatever a keyword says
    picture.elements = "<FITSKeyword name=\"OBJECT\" value=\"'a\xFF\x01z'\"/>";
    EXPECT_EQ(SkyFactsOf(folder.Write("a.xisf", XisfBytes({picture}))).lines.front(),
              "      Object: a??z");
}

// Wherever the file ends: what it has is shown, what it has not is black, and it is told.
TEST_F(XisfPictures, CutShortAnywhere) {
    XisfPicture picture = Large("");
    picture.sample = [](std::size_t) { return 5; };
    const std::string whole = XisfBytes({picture});
    const std::size_t data = whole.size() - 3200;
    for (std::size_t length = 0; length < whole.size(); length += length < 700 ? 7 : 97) {
        const auto pixels = Read(whole.substr(0, length));
        EXPECT_FALSE(error.empty()) << length;
        ASSERT_EQ(pixels.has_value(), length >= data + 2) << length;
        if (!pixels) continue;
        EXPECT_EQ(pixels->Value(0, 0, 0), 5);
        EXPECT_TRUE(std::isnan(pixels->Value(0, 39, 39)));
    }
    EXPECT_TRUE(Read(whole));
    EXPECT_EQ(error, "");
    picture = Large("zlib");
    picture.shuffled = true;
    const std::string packed = XisfBytes({picture});
    EXPECT_FALSE(Read(packed.substr(0, packed.size() - 1)));
    EXPECT_EQ(error, "The XISF file cannot be read: block of image 1: the file ends too early");
}

TEST_F(XisfPictures, WhatIsNotReadIsToldWithTheBlock) {
    const auto fault = [&](const std::string& from, const std::string& to,
                           const XisfPicture& picture = {}) {
        std::string bytes = XisfBytes({picture});
        const std::size_t place = bytes.find(from);
        if (place == std::string::npos || to.size() > from.size()) return "no " + from;
        bytes.replace(place, from.size(), to + std::string(from.size() - to.size(), ' '));
        return Read(bytes) ? "shown" : error;
    };
    const std::string cannot = "The XISF file cannot be read: ";
    const std::string block = cannot + "block of image 1 ";
    XisfPicture complex;
    complex.format = "Complex64";
    EXPECT_EQ(Fault(complex), cannot + "image 1: its samples are complex numbers");
    EXPECT_EQ(fault("3:2:1", "3:2"), cannot + "image 1: it is not of two dimensions");
    EXPECT_EQ(fault("3:2:1", "3:0:1"), cannot + "image 1: it has no pixels");
    EXPECT_EQ(fault("3:2:1", "-:2:1"), cannot + "image 1: its geometry is no list of sizes");
    EXPECT_EQ(fault("3:2:1", "9:9:1"), block + "is smaller than its picture");
    EXPECT_EQ(fault("attachment:4096", "path(b.xisb)"), block + "lies outside of the file");
    Read(XisfBytesOf("<xisf><Thumbnail/></xisf>"));
    EXPECT_EQ(error, cannot + "there is no picture in it");
    EXPECT_EQ(fault("</xisf>", "</xis>"), cannot + "its header is broken at byte 164");
    EXPECT_EQ(fault("compression=\"zlib", "compression=\"none", Large("zlib")),
              block + "is packed in an unknown way");
    EXPECT_EQ(fault(":3200\"", ":320\"", Large("zlib")),
              block + "is not of the size of its picture");
    EXPECT_EQ(fault("40:40:1", "99:40:1", Large("zstd")),
              block + "is not of the size of its picture");
    const std::string unpacks =
        "The XISF file cannot be read: block of image 1: it cannot be unpacked";
    EXPECT_EQ(fault("compression=\"zstd", "compression=\"zlib", Large("zstd")), unpacks);
    EXPECT_EQ(fault("compression=\"zlib", "compression=\"zstd", Large("zlib")), unpacks);
    XisfPicture text;
    text.place = "inline:hex";
    EXPECT_EQ(fault(">0000", ">    ", text), "shown");
    EXPECT_EQ(error, block + "is smaller than its picture");
    EXPECT_EQ(fault(">0000", ">0x00", text), cannot + "block of image 1: a sign in it is no hex");
}

// Sizes that only the header has: nothing is reserved for them.
TEST_F(XisfPictures, SizesThatTheFileCannotHoldAreRefused) {
    const auto fault = [&](const std::string& attributes) {
        const std::string header = "<xisf><Image colorSpace=\"Gray\" " + attributes + "/></xisf>";
        return Read(XisfBytesOf(header, "data")) ? "shown" : error;
    };
    const std::string large = "geometry=\"1073741824:1073741824:1\" sampleFormat=\"UInt8\" ";
    EXPECT_EQ(fault(large + "location=\"attachment:10:1152921504606846976\""),
              "The XISF file cannot be read: image 1: it is too large");
    EXPECT_NE(fault("geometry=\"99999999999999999999:2:1\" sampleFormat=\"UInt8\""), "shown");
    EXPECT_NE(fault("geometry=\"9999999999:2:1\" sampleFormat=\"UInt8\""), "shown");
    for (const char* codec : {"zlib", "lz4", "zstd", "zlib+sh"})
        EXPECT_EQ(fault(std::string("geometry=\"65536:65536:1\" sampleFormat=\"UInt16\" "
                                    "location=\"attachment:100:200\" compression=\"") +
                        codec + ":8589934592:2\""),
                  "The XISF file cannot be read: block of image 1 is smaller than its picture")
            << codec;
    for (const char* place : {"18446744073709551615:6", "0:0", "99999:6", "6"}) {
        EXPECT_NE(fault(std::string("geometry=\"3:2:1\" sampleFormat=\"UInt8\" "
                                    "location=\"attachment:") +
                        place + "\""),
                  "shown")
            << place;
        EXPECT_NE(error, "") << place;
    }
    std::string endless = XisfBytesOf("<xisf/>");
    endless.replace(8, 4, "\xFF\xFF\xFF\x7F");
    EXPECT_EQ(Read(endless) ? "shown" : error,
              "The XISF file cannot be read: its header is too large");
    std::string deep;
    for (int i = 0; i < 300'000; ++i) deep += "<a>";
    EXPECT_FALSE(Read(XisfBytesOf(deep)));
    EXPECT_FALSE(Read(XisfBytesOf(deep + deep + deep + deep)));
    EXPECT_EQ(error, "The XISF file cannot be read: its header has too many elements");
}

} // namespace

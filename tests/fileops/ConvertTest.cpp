#include "convert/ConvertPicture.h"
#include "convert/ConvertTarget.h"

#include "PictureFiles.h"
#include "fileops/ClipboardText.h"
#include "imaging/JpegWriter.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

ImgX Picture(int width, int height) {
    ImgX picture;
    picture.TakePicture(TellTale(width, height));
    return picture;
}

TEST(ConvertTarget, TakesTheFirstFreeNameInAnyCase) {
    const TestFolder folder;
    const auto files = MakeFiles();
    const auto beside = [&](const char* name) {
        return TargetBeside(*files, folder.Path() + "/" + name);
    };
    folder.Write("a.tif", "x");
    EXPECT_EQ(beside("a.tif").name, "a.jpg");
    EXPECT_EQ(beside("a.tif").noteName, "a.enf");
    folder.Write("A.JPG", "x");
    EXPECT_EQ(beside("A.JPG").name, "A-1.jpg");
    EXPECT_EQ(beside("a.tif").noteName, "a-1.enf");
    folder.Write("a-1.jpg", "x");
    EXPECT_EQ(beside("a.tif").path, "");
    EXPECT_EQ(TargetIn(*files, folder.Path(), "/x/b.png").name, "b.jpg");
    EXPECT_EQ(beside("u16.tiff").name, "u16.jpg"); // endings of five letters, too
    EXPECT_EQ(beside("u16.tiff").noteName, "u16.enf");
    EXPECT_EQ(beside("u16..png").name, "u16..jpg");
    for (const char* packed : {"M31.fits.gz", "M31.FIT.fz", "M31.fz"}) {
        EXPECT_EQ(beside(packed).name, "M31.jpg") << packed;
        EXPECT_EQ(beside(packed).noteName, "M31.enf") << packed;
    }
    EXPECT_EQ(beside("L_001.fz").name, "L_001.jpg");
    EXPECT_EQ(beside(".fz").name, "..jpg");
    EXPECT_EQ(beside(".heic").name, "..jpg");
    EXPECT_EQ(TargetIn(*files, folder.Path(), "/x/a.tif").name, "a-CM.jpg");
    EXPECT_EQ(TargetIn(*files, folder.Path(), "/x/a.tif").noteName, "a-CM.enf");
}

TEST(ConvertTarget, CaptionIsMadeOfTheFirstLines) {
    EXPECT_EQ(CaptionOfNote("M31\r\n80 mm f/6\r\nSeeing 4", 2), "M31  80 mm f/6");
    EXPECT_EQ(CaptionOfNote("M31\r\n80 mm f/6", 9), "M31  80 mm f/6");
    EXPECT_EQ(CaptionOfNote("M31\r\nx", 0), "M31");
    EXPECT_EQ(CaptionOfNote("", 3), "");
}

TEST(ConvertPicture, KeepsToTheLimitsAndTheProportions) {
    EXPECT_EQ(FaultOfLimit(9, "width"), "Convert to Jpg max width too small, must be > 9.");
    EXPECT_EQ(FaultOfLimit(10, "height"), "");
    struct Case {
        int maxWidth, maxHeight;
        QSize size;
        const char* suffix;
    };
    for (const Case& c : {Case{0, 0, {200, 100}, ""}, Case{100, 0, {100, 50}, ", width = 100"},
                          Case{200, 0, {200, 100}, ""}, Case{0, 30, {60, 30}, ", height = 30"}}) {
        ImgX picture = Picture(200, 100);
        ConvertOptions options;
        options.maxWidth = c.maxWidth;
        options.maxHeight = c.maxHeight;
        const Converted converted = ConvertPicture(picture, options);
        EXPECT_EQ(converted.suffix, c.suffix);
        const QImage back = QImage::fromData(QByteArray::fromStdString(converted.jpeg));
        EXPECT_EQ(back.size(), c.size);
        EXPECT_EQ(Quarters(back), "rgby");
        EXPECT_EQ(picture.Width(), c.size.width()); // it is what was written
    }
}

TEST(ConvertPicture, OfADamagedPictureThereIsNoCopy) {
    const TestFolder folder;
    const std::string whole = JpegBytes(TellTale(600, 400));
    ImgX picture;
    const std::string error =
        picture.LoadFile(folder.Write("a.jpg", whole.substr(0, whole.size() / 2)), {60, 40});
    ASSERT_TRUE(picture.HasImage());
    ASSERT_NE(error, "");
    for (const char* text : {"", "M31"}) {
        ImgX copy = picture;
        ConvertOptions options;
        options.text = text;
        const Converted converted = ConvertPicture(copy, options);
        EXPECT_EQ(converted.error, error);
        EXPECT_EQ(converted.jpeg, "");
    }
}

// The copy has no camera data to say how it was held; what it is made of stays as it is stored.
TEST(ConvertPicture, TheCopyStandsUpright) {
    const TestFolder folder;
    const char* const upright[] = {"rgby", "gryb", "ybgr", "byrg", "rbgy", "bryg", "ygbr", "gyrb"};
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        const std::string head = ExifBuilder(Endian::Little).Short(274, orientation).Jpeg();
        const std::string bytes = JpegBytes(TellTale(120, 80));
        ImgX picture;
        picture.LoadFile(folder.Write("a.jpg", head.substr(0, head.size() - 2) + bytes.substr(2)),
                         {});
        ConvertOptions options;
        options.orientation = OrientationOf(picture);
        options.maxWidth = 60;
        options.text = "M31";
        for (int run = 0; run < 2; ++run) { // the second one begins with what the first has left
            const Converted converted = ConvertPicture(picture, options);
            const QImage back = QImage::fromData(QByteArray::fromStdString(converted.jpeg));
            EXPECT_EQ(Quarters(back), upright[orientation - 1]) << orientation;
            EXPECT_EQ(back.size(), orientation < 5 ? QSize(60, 40) : QSize(60, 90)) << orientation;
            EXPECT_EQ(Quarters(picture.SystemPicture()), "rgby") << orientation;
        }
    }
}

// The line of text stands in its strip and nowhere else.
TEST(ConvertPicture, DrawsTheTextAtItsPlace) {
    const CaptionPlace place = PlaceOfCaption(600);
    EXPECT_EQ(place.left, 20);
    EXPECT_EQ(place.top, 580);
    EXPECT_EQ(place.height, 10);
    ImgX picture;
    QImage black(900, 600, QImage::Format_RGB32);
    black.fill(Qt::black);
    picture.TakePicture(black);
    ConvertOptions options;
    options.text = "M31";
    options.rgb = 0x00FF00;
    ConvertPicture(picture, options);
    QRect drawn;
    const QImage& pixels = picture.FullPicture();
    for (int y = 0; y < 600; ++y)
        for (int x = 0; x < 900; ++x)
            if (qGreen(pixels.pixel(x, y)) > 128) drawn |= QRect(x, y, 1, 1);
    EXPECT_GE(drawn.left(), 20);
    EXPECT_LT(drawn.left(), 24);
    EXPECT_GE(drawn.top(), 580);
    EXPECT_LE(drawn.bottom(), 592);
}

TEST(JpegWriter, PutsWhiteBehind) {
    std::string error;
    QImage clear(30, 20, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const std::string bytes = EncodeJpeg(clear, 90, &error);
    const QImage back = QImage::fromData(QByteArray::fromStdString(bytes));
    EXPECT_GT(qGray(back.pixel(5, 5)), 250);
    EXPECT_EQ(EncodeJpeg({}, 90, &error), "");
    EXPECT_EQ(error, "No Image");
    const QImage wide(70000, 1, QImage::Format_RGB32); // more than the format can say
    EXPECT_EQ(EncodeJpeg(wide, 90, &error), "");
    EXPECT_NE(error, "");
}

TEST(ClipboardText, NotesAndCameraDataInTheirForms) {
    const std::vector<std::string> rows{"   File name: a.jpg", "", " Size "};
    EXPECT_EQ(NotesCameraText("note", rows, true, true), "noteFile name: a.jpg\r\n\r\nSize\r\n");
    EXPECT_EQ(NotesCameraText("note", rows, false, false), "   File name: a.jpg\r\n\r\n Size \r\n");
    PictureInfo info;
    info.FileNameOnly = "a.jpg";
    info.FileDate = "06/22/2004 8:15:30 PM";
    EXPECT_EQ(NotesCameraLine("", info), "06/22/2004 8:15:30 PM a.jpg");
    info.PictureDate = "06/21/2004 8:15:30 PM";
    info.ExpMegapixels = "6.3 Mp";
    info.ExpFocusShort = ", AF";
    info.ExpFlashShort = ", Flash";
    info.ExpProgram = "Manual";
    info.ExpMeter = "Pattern";
    info.ExpSpeed = "400 ISO";
    info.ExpTime = "1/60s";
    info.ExpAperture = "f/4";
    info.ExpBias = "+0.7 EV";
    EXPECT_EQ(NotesCameraLine("M31", info),
              "M31   06/21/2004 8:15:30 PM, 6.3 Mp, AF, Flash, Manual, Pattern, 400 ISO, 1/60s, "
              "f/4, +0.7 EV a.jpg");
}

} // namespace
} // namespace tarn::testing

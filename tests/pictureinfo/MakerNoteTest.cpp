#include "Reading.h"
#include "pictureinfo/CanonMakerNote.h"

using namespace tarn;
using namespace tarn::testing;

namespace {

// A Canon note at buffer index 0, with words behind the settings' second one.
class CanonBytes {
public:
    // Its one entry stands behind `before` empty ones.
    explicit CanonBytes(int tag = 1, std::size_t before = 0) {
        const std::string entry = ByteWriter(Endian::Little)
                                      .Word(static_cast<unsigned>(tag))
                                      .Word(3)
                                      .Long(40)
                                      .Long(108)
                                      .Bytes();
        std::copy(entry.begin(), entry.end(), &m_bytes[2 + before * 12]);
        for (int k = 0; k < 60; k += 2) Word(k, 0);
    }
    CanonBytes& Word(int k, unsigned value) { return Byte(k, value).Byte(k + 1, value >> 8U); }
    CanonBytes& Byte(int k, unsigned value) {
        m_bytes[kBase + static_cast<std::size_t>(k)] = static_cast<std::uint8_t>(value);
        return *this;
    }
    CanonBytes& Text(int k, std::string_view text) {
        for (const char c : text) Byte(k++, static_cast<unsigned char>(c));
        return *this;
    }
    CanonMakerNote Read(std::string_view camera) const {
        CanonMakerNote note;
        ExifTag tag; // its data stand at buffer index 0
        note.Read({PictureDataBuffer{m_bytes}, ByteOrder::Intel, camera, false, tag});
        return note;
    }

private:
    static constexpr std::size_t kBase = 100;
    std::array<std::uint8_t, PictureDataBuffer::kSize> m_bytes{};
};

constexpr const char* kRebel = "Canon EOS DIGITAL REBEL XT";
constexpr const char* kOther = "Canon EOS 20D";

class NoteReading : public Reading {
protected:
    static std::string Nikon(Endian endian, const NikonNote& note, unsigned flash = 0) {
        ExifBuilder exif(endian);
        exif.Ascii(271, "NIKON").Ascii(272, "NIKON D70").ExifDirectory();
        return exif.Rational(33434, 1, 9).Short(37385, flash).MakerNote(note.Bytes()).Jpeg();
    }
    static NikonNote Lens(const std::vector<std::uint32_t>& numbers) {
        return NikonNote().Rationals(132, numbers);
    }
};

} // namespace

TEST(CanonNote, EverySettingHasItsPlace) {
    using Note = CanonMakerNote;
    struct Setting {
        int tag, k;
        std::string Note::*field;
        unsigned value;
        std::string name;
        const char* camera = kOther;
    };
    for (const Setting& each :
         {Setting{1, 24, &Note::CanonContrast, 65535, "Low"},
          Setting{1, 26, &Note::CanonSaturation, 1, "High"},
          Setting{1, 28, &Note::CanonSharpness, 65534, "Softest"},
          Setting{1, 4, &Note::CanonQuality, 3, "Fine"}, Setting{1, 6, &Note::CanonFlash, 5, "ON"},
          Setting{1, 38, &Note::CanonMode, 4, "Manual"},
          Setting{1, 10, &Note::CanonFocus, 1, "AI Servo AF"},
          Setting{2, 28, &Note::CanonWhiteBalance, 8, "Shade"},
          Setting{1, 427, &Note::CanonStyle, 131, "Landscape", kRebel}})
        EXPECT_EQ(CanonBytes(each.tag).Word(each.k, each.value).Read(each.camera).*each.field,
                  each.name);
    EXPECT_EQ(CanonBytes().Word(44, 50).Word(46, 50).Read(kOther).CanonLens, "50-50mm");
}

TEST(CanonNote, ThreeEntriesAreLookedAt) {
    EXPECT_EQ(CanonBytes(1, 2).Word(4, 3).Read(kOther).CanonQuality, "Fine");
    EXPECT_EQ(CanonBytes(2, 3).Word(28, 1).Read(kOther).CanonWhiteBalance, "");
}

TEST(CanonNote, ValuesWithoutANameAreEmpty) {
    CanonBytes bytes;
    bytes.Word(24, 3).Word(28, 32767).Word(4, 9).Word(38, 6).Word(10, 7).Word(46, 0xFFFF);
    const CanonMakerNote note = bytes.Read(kOther);
    for (const std::string& text : {note.CanonContrast, note.CanonSharpness, note.CanonQuality,
                                    note.CanonMode, note.CanonFocus, note.CanonLens})
        EXPECT_EQ(text, "");
    EXPECT_EQ(note.CanonLines[0], "Quality>          Sharpening> ");
}

TEST(CanonNote, WhiteBalanceHasALineOfItsOwn) {
    EXPECT_EQ(CanonBytes(2).Word(28, 4).Read(kOther).CanonLines[3],
              std::string(21, ' ') + "WB> Flourescent");
}

TEST(CanonNote, RebelKeepsSettingsElsewhere) {
    CanonBytes bytes;
    bytes.Word(24, 65535).Word(26, 32767).Word(4, 3).Byte(427, 133).Word(46, 17);
    bytes.Text(2623, std::string_view("  EF-S18-55mm\0\0 x  ", 19));
    const CanonMakerNote note = bytes.Read(kRebel);
    EXPECT_EQ(note.CanonContrast, "-1");
    EXPECT_EQ(note.CanonSaturation, "B/W");
    EXPECT_EQ(note.CanonLens,
              std::string("EF-S18-55mm\0\0 x  \0\0", 19)); // the zeros stop the trim
    EXPECT_EQ(note.CanonLines[0], "Quality> Fine              WB> ");
    EXPECT_EQ(note.CanonLines[1], "  Focus> One Shot    Contrast> -1");
    EXPECT_EQ(note.CanonLines[2], "  Flash> OFF       Saturation> B/W");
    EXPECT_EQ(note.CanonLines[3], "  Style> Faitful          ");
}

TEST_F(NoteReading, CanonDataOutOfReachRepeatThePictureBefore) {
    Read(CanonPicture());
    ExifBuilder exif(Endian::Little);
    exif.Ascii(272, "Canon EOS 20D").Rational(33434, 1, 9).Entry(37500, 7, 100, 25000);
    Read(exif.Jpeg());
    EXPECT_EQ(Line(7), ""); // the lens is emptied first
    EXPECT_EQ(Line(8), "    Settings: Quality> Fine     Sharpening> Normal");
    EXPECT_EQ(m_info.ExpProgram, "Aperture Priority");
    // Big-endian, the note is not read at all.
    Read(CanonPicture());
    ExifBuilder other(Endian::Big);
    other.Ascii(272, "Canon EOS 20D").Rational(33434, 1, 9).MakerNote("xx");
    Read(other.Jpeg());
    EXPECT_EQ(Line(7), "        Lens: 17-85mm");
}

TEST_F(NoteReading, NikonLensTexts) {
    const auto lens = [&](const std::vector<std::uint32_t>& numbers, Endian endian = Endian::Big) {
        Read(Nikon(endian, Lens(numbers)));
        return Line(7);
    };
    EXPECT_EQ(lens({50, 1, 50, 1, 18, 10, 18, 10}), "        Lens: 50mm f/1.8");
    EXPECT_EQ(lens({175, 10, 700, 10, 35, 10, 45, 10}), "        Lens: 17.5-70mm f/3.5-4.5");
    EXPECT_EQ(lens({175, 10, 700, 10, 35, 10, 45, 10}, Endian::Little),
              "        Lens: 18-70mm f/3.5-4.5");
    EXPECT_EQ(lens({0, 1, 70, 1, 35, 10, 45, 10}), "");
    EXPECT_EQ(lens({18, 0, 70, 1, 35, 10, 45, 10}), "");
    EXPECT_EQ(lens({18, 1, 70, 1, 35, 0, 45, 10}), "        Lens: 18-70mm f/0-4.5");
    EXPECT_EQ(lens({0x80000000U, 1, 80, 1, 1, 1, 1, 1}), "        Lens: 18-80mm f/1-1");
}

TEST_F(NoteReading, NikonFlashTextOnlyWhenItFired) {
    const NikonNote note = NikonNote().Text(8, "NORMAL  ");
    Read(Nikon(Endian::Big, note, 1));
    EXPECT_EQ(Line(10), "                Flash> NORMAL   ");
    Read(Nikon(Endian::Big, note, 0));
    EXPECT_EQ(Line(10), "                Flash> OFF      ");
}

TEST_F(NoteReading, NikonTextsStayFromPictureToPicture) {
    Read(NikonPicture());
    Read(Nikon(Endian::Big, NikonNote().Value(2, 1600)));
    EXPECT_EQ(m_info.ExpSpeed, "1600 ISO");
    EXPECT_EQ(Line(7), "");
    EXPECT_EQ(Line(8), "    Settings: Quality> FINE     Sharpening> AUTO");
    EXPECT_EQ(m_info.ExpFocus, "AF-S");
}

TEST_F(NoteReading, NikonTagThatDoesNotFitActsAsTheOneBefore) {
    Read(Nikon(Endian::Big, NikonNote().Value(2, 200).Value(0x8002, 800)));
    EXPECT_EQ(m_info.ExpSpeed, "800 ISO");
}

TEST_F(NoteReading, ThirtyOneNikonEntriesAreLookedAt) {
    NikonNote note;
    for (int i = 0; i < 30; ++i) note.Value(999, 0);
    Read(Nikon(Endian::Big, note.Value(2, 100).Value(2, 800)));
    EXPECT_EQ(m_info.ExpSpeed, "100 ISO");
}

TEST_F(NoteReading, DatePassReadsTheNoteOfTheCameraBefore) {
    Read(NikonPicture());
    ReadDate(Nikon(Endian::Big, NikonNote().Text(4, "RAW")));
    ExifBuilder exif(Endian::Big);
    exif.Ascii(272, "NIKON D70").Rational(33434, 1, 9).Entry(37500, 7, 9, 25000);
    Read(exif.Jpeg());
    EXPECT_EQ(Line(8), "    Settings: Quality> RAW      Sharpening> AUTO");
}

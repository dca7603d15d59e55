// Writes inputs for the targets to begin with: a folder for each target into the folder given.
#include "FitsFiles.h"
#include "PictureFiles.h"
#include "XisfFiles.h"
#include "clips/MadeSer.h"
#include "support/ContainerFiles.h"
#include "support/ExifBuilder.h"

#include "clips/SerFile.h"
#include "decoder/Protocol.h"
#include "imaging/fits/SkyWire.h"
#include "notes/Drafts.h"
#include "web/SavedValues.h"

#include <filesystem>
#include <fstream>
#include <string>

using namespace tarn;
using namespace tarn::testing;
using namespace std::string_literals;

namespace {

class Corpus {
public:
    explicit Corpus(std::string folder) : m_folder(std::move(folder)) {}

    void Add(const std::string& target, const std::string& name, const std::string& bytes) {
        std::filesystem::create_directories(m_folder + "/" + target);
        std::ofstream file(m_folder + "/" + target + "/" + name, std::ios::binary);
        file << bytes;
        m_written = m_written && file.flush();
    }
    bool Written() const { return m_written; }

private:
    std::string m_folder;
    bool m_written = true;
};

void AddPictures(Corpus& corpus) {
    const std::string tiff = ExifBuilder(Endian::Big).Ascii(36867, "2004:06:22 20:15:30").Tiff();
    const auto add = [&](const char* name, const std::string& picture) {
        corpus.Add("picture_info", name, picture + picture);
        corpus.Add("dates", name, picture);
    };
    add("canon", CanonPicture());
    add("nikon", NikonPicture());
    add("tiff", tiff);
    std::string unfit = "MM\0*\0\0\0\x08\0\4"s; // its last offset is far below 0
    for (int i = 0; i < 4; ++i) unfit += "\x90\3\0\2\0\0\0\xFF\0\0\xFF\xFF"s;
    corpus.Add("dates", "before_start", unfit + std::string(40, '\0'));
    corpus.Add("dates", "text", "2004:06:22 20:15:30");
    corpus.Add("dates", "below_zero", "2004:06:22 20:15:-3");

    const std::string block = TiffOf(CanonPicture());
    for (const auto& [name, file] : {std::pair{"png", PngWith(block, false, 100)},
                                     {"png_behind", PngWith(block, true, 100)},
                                     {"webp", WebPWith(block)},
                                     {"heif", HeifWith(block)},
                                     {"heif_small", HeifWith(block, {0, true, true})},
                                     {"jxl", JxlWith(block)},
                                     {"raw_boxes", RawBoxes(block, block, block)},
                                     {"raw_jpeg", RawAroundJpeg(NikonPicture())},
                                     {"raw", std::string(block).replace(2, 2, "RO")},
                                     {"tiff", block}})
        corpus.Add("exif", name, file);

    std::string masked = "BM" + std::string(8, '\0') +
                         "\x46\0\0\0\x28\0\0\0\2\0\0\0\2\0\0\0\1\0"
                         "\x20\0\3\0\0\0"s;
    masked.resize(54);
    masked += "\0\0\xF0\x3F\0\xFC\x0F\0\xFF\3\0\0\0\0\0\0"s + std::string(16, '\x5A');
    corpus.Add("gaps", "masks", masked);
    corpus.Add("gaps", "array", "BA" + std::string(12, '\0') + masked);
    corpus.Add("gaps", "short_header",
               "BM" + std::string(8, '\0') + "\x1A\0\0\0\x0C\0\0\0\4\0\3\0\1\0\x18\0"s +
                   std::string(24, '\x5A'));
    corpus.Add("gaps", "gif",
               "GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"s);
    corpus.Add("gaps", "png",
               "\x89PNG\r\n\x1A\n"s +
                   PngChunk("IHDR", HighFirst(2, 4) + HighFirst(2, 4) + "\x10\2\0\0\0"s) +
                   PngChunk("tRNS", "\x12\x34\x80\x80\0\0"s) + PngChunk("IDAT", "x"));

    for (const auto& [name, start] :
         {std::pair{"jpeg", "\xFF\xD8\xFF\xE1"s},
          {"fits", "SIMPLE  =                    T"s},
          {"xisf", "XISF0100"s},
          {"raw", "II*\0\x10\0\0\0CR\2\0"s},
          {"raw_cut", "II*\0"s},
          {"raw_open", "II*\0\x08\0\0\0\1\0\x12\xC6\1\0\4\0\0\0\1\4\0\0"s},
          {"raw_reduced", "MM\0*\0\0\0\x08\0\2\0\xFE\0\4\0\0\0\1\0\0\0\1"
                          "\1\x4A\0\4\0\0\0\1\0\0\2\0"s},
          {"raw_box", "\0\0\0\x18"
                      "ftypcrx "s},
          {"heif", "\0\0\0\x18"
                   "ftypheic"s},
          {"avif", "\0\0\0\x18"
                   "ftypavif"s},
          {"jxl", "\0\0\0\x0CJXL \r\n\x87\n"s},
          {"jxl_bare", "\xFF\x0A"s},
          {"png", "\x89PNG\r\n"s}})
        corpus.Add("format_of", name, start);
    corpus.Add("format_of", "tiff", tiff.substr(0, 60));
}

// Lines as the target for such files reads them; a byte behind "END" says whether a part follows.
void AddTelescopes(Corpus& corpus) {
    const std::string cards = "SIMPLE  =                    T\nBITPIX  =                   16\n"
                              "NAXIS   =                    2\nNAXIS1  =                    8\n"
                              "NAXIS2  =                    6\n";
    const std::string samples(96, '\x15');
    corpus.Add("fits", "whole",
               "F" + FitsBytes(8, {4, 2}, [](std::size_t i) { return double(i); }));
    corpus.Add("fits", "words",
               "L" + cards +
                   "BZERO   =                32768\nOBJECT  = 'M 31    '\n"
                   "DATE-OBS= '2024-11-05T21:14:33.5'\nEXPTIME =                 30.0\n"
                   "BAYERPAT= 'RGGB    '\nROWORDER= 'TOP-DOWN'\nEND\n-" +
                   samples);
    corpus.Add("fits", "huge", "L" + cards + "BZERO   =               1.0E+30\nEND\n-" + samples);
    corpus.Add("fits", "blank", "L" + cards + "BLANK   =                    7\nEND\n-" + samples);
    corpus.Add("fits", "cut", "L" + cards + "END\n-");
    corpus.Add("fits", "floats",
               "LSIMPLE  =                    T\nBITPIX  =                  -32\n"
               "NAXIS   =                    3\nNAXIS1  =                    2\n"
               "NAXIS2  =                    2\nNAXIS3  =                    3\nEND\n-" +
                   samples);
    corpus.Add("fits", "parts",
               "LSIMPLE  =                    T\nBITPIX  =                    8\n"
               "NAXIS   =                    0\nEXTEND  =                    T\nEND\n+"
               "XTENSION= 'IMAGE   '\nBITPIX  =                    8\n"
               "NAXIS   =                    2\nNAXIS1  =                    8\n"
               "NAXIS2  =                    6\nPCOUNT  =                    0\n"
               "GCOUNT  =                    1\nEND\n-" +
                   samples);
    corpus.Add("fits", "cube",
               "F" + FitsBytes(16, {3, 4, 4, 2}, [](std::size_t i) { return double(i); }));
    corpus.Add("fits", "pixels",
               "F" + FitsBytes(8, {3, 4, 5}, [](std::size_t i) { return double(i); }));
    corpus.Add("fits", "gzip",
               "F" + Gzipped(FitsBytes(8, {4, 2}, [](std::size_t i) { return double(i); })));
    const std::string packed =
        "LSIMPLE  =                    T\nBITPIX  =                    8\n"
        "NAXIS   =                    0\nEXTEND  =                    T\nEND\n+"
        "XTENSION= 'BINTABLE'\nBITPIX  =                    8\n"
        "NAXIS   =                    2\nNAXIS1  =                    8\n"
        "NAXIS2  =                    6\nPCOUNT  =                   60\n"
        "GCOUNT  =                    1\nTFIELDS =                    1\n"
        "TTYPE1  = 'COMPRESSED_DATA'\nTFORM1  = '1PB(10) '\n"
        "ZIMAGE  =                    T\nZCMPTYPE= 'RICE_1  '\n"
        "ZBITPIX =                   16\nZNAXIS  =                    2\n"
        "ZNAXIS1 =                    8\nZNAXIS2 =                    6\n"
        "ZTILE1  =                    8\nZTILE2  =                    1\n"
        "ZNAME1  = 'BLOCKSIZE'\nZVAL1   =                   32\n"
        "ZNAME2  = 'BYTEPIX'\nZVAL2   =                    2\nEND\n-";
    std::string rows; // six, each of the same ten bytes
    for (int i = 0; i < 6; ++i) rows += "\0\0\0\x0A\0\0\0\0"s;
    corpus.Add("fits", "packed", packed + rows + samples);
    const std::string broken = "= " + std::string(40, '\xFF');
    corpus.Add("fits", "no_size", std::string(packed).replace(packed.find("ZTILE1") + 29, 1, "0"));
    corpus.Add("fits", "no_number",
               std::string(packed).replace(packed.find("ZNAXIS2 ") + 8, 2, broken));
}

// As they are, and one in the form that is short.
void AddXisf(Corpus& corpus) {
    XisfPicture picture;
    picture.elements = "<FITSKeyword name=\"OBJECT\" value=\"'M 31'\"/>"
                       "<Property id=\"Observation:Time:Start\" value=\"2024-11-05T21:14:33Z\"/>"
                       "<ColorFilterArray pattern=\"RGGB\" width=\"2\" height=\"2\"/>";
    corpus.Add("xisf", "mosaic", "X" + XisfBytes({picture}));
    picture.attributes = "orientation=\"90;flip\"";
    corpus.Add("xisf", "turned", "X" + XisfBytes({picture}));
    picture.attributes.clear();
    picture.elements.clear();
    picture.place = "embedded";
    picture.shuffled = true;
    for (const char* codec : {"zlib", "lz4", "zstd"}) {
        picture.codec = codec;
        corpus.Add("xisf", codec, "X" + XisfBytes({picture}));
    }
    picture.codec = "";
    picture.place = "inline:hex";
    picture.format = "Float32";
    picture.attributes = "bounds=\"0:6\" checksum=\"sha-1:00\"";
    corpus.Add("xisf", "hex", "X" + XisfBytes({picture, picture}));
    corpus.Add("xisf", "colour",
               "-<xisf><Image geometry=\"2:1:3\" sampleFormat=\"UInt8\" colorSpace=\"RGB\" "
               "pixelStorage=\"Normal\" location=\"attachment:140:6\"/></xisf>" +
                   std::string(12, '\0'));
    corpus.Add("xisf", "pieces",
               "-<xisf><Image geometry=\"2:1:1\" sampleFormat=\"UInt8\" compression=\"lz4:2\" "
               "subblocks=\"2,1:2,1\" location=\"inline:base64\">EGEQYg==</Image></xisf>");
}

void AddClips(Corpus& corpus) {
    SerClip clip;
    clip.width = 4;
    clip.height = 2;
    const std::vector<int> frame{0, 10, 20, 30, 40, 50, 60, 70};
    clip.frames = {frame, frame};
    clip.ticks = {1000, 2000};
    corpus.Add("ser", "mono", SerBytes(clip));
    clip.framesStated = 9;
    corpus.Add("ser", "cut", SerBytes(clip));
    clip.framesStated = -1;
    clip.bits = 12;
    clip.color = SerHeader::Gbrg;
    corpus.Add("ser", "bayer", SerBytes(clip));
    clip.color = SerHeader::Bgr;
    clip.width = 2;
    clip.height = 1;
    for (auto& samplesOf : clip.frames) samplesOf.resize(6);
    corpus.Add("ser", "colour", SerBytes(clip));
}

template <class Settings> std::string PageWith(const char* marker, const Settings& settings) {
    PageText page;
    page.Line("<html>");
    page.Line(marker);
    AddSavedValues(page, InPageBytes(settings));
    page.Line("-->");
    return page.Bytes();
}

void AddSidecars(Corpus& corpus) {
    const std::string rdf =
        "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
        "<rdf:Description rdf:about='' xmlns:xmp='http://ns.adobe.com/xap/1.0/'";
    const std::string elements =
        "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>"
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'>" +
        rdf +
        "><xmp:Rating>3</xmp:Rating></rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>";
    corpus.Add("sidecar", "elements", elements);
    corpus.Add("sidecar", "attributes",
               rdf + " xmlns:d='http://www.digikam.org/ns/1.0/' xmp:Rating='-1.0' d:PickLabel='1'/>"
                     "</rdf:RDF>");
    corpus.Add("sidecar", "structures",
               rdf + " xmlns:my='http://example.org/my#'><my:list><rdf:Seq><rdf:li my:a='1'/>"
                     "</rdf:Seq></my:list><my:text xml:lang='x-default'>a</my:text>"
                     "</rdf:Description></rdf:RDF>");
    std::string wide = "\xFF\xFE"s;
    for (const char c : rdf + " xmp:Rating='4'/></rdf:RDF>") wide += c + "\0"s;
    corpus.Add("sidecar", "utf16", wide);
    corpus.Add("sidecar", "kept", "mark k3 6 /a.jpg\nmark -0 2 /b\n");
    const std::string block = "http://ns.adobe.com/xap/1.0/\0"s + elements;
    corpus.Add("exif", "jpeg_xmp",
               "\xFF\xD8\xFF\xE1"s + HighFirst(block.size() + 2, 2) + block + "\xFF\xDA"s);
}

void AddTexts(Corpus& corpus) {
    corpus.Add("saved_values", "page", PageWith("<!--TarnView saved settings", HtmlSettings()));
    corpus.Add("saved_values", "gallery", PageWith("<!--TarnView", GallerySettings()));
    corpus.Add("saved_values", "short", "<!--TarnView\r\nA title\n-->");

    corpus.Add("notes", "formatted",
               "A first line\r\nTelescope:80 mm\r\nFilter:UHC\r\nLocation:Home\r\nDate:11/25/2026");
    corpus.Add("notes", "quoted", "\"An old note\r\nof two lines\"\r\n");
    corpus.Add("notes", "formats",
               "A comment\r\nTelescope:80 mm f/6\nMount: fork:wedge\r\nLens:\r\n");
    corpus.Add("notes", "drafts",
               PackDrafts({{"/notes/M31.enf", "Unsaved\r\nlines"}, {"/notes/b.enf", ""}}));

    const auto numbers = [](std::int64_t high, std::int64_t cur) {
        std::string bytes;
        AppendNumber(bytes, high, 4);
        AppendNumber(bytes, cur, 4);
        return bytes;
    };
    corpus.Add("history", "three", numbers(3, 2) + "+/a+/b b+/c+\n0+2+4+6+\n\0\1\2\3\0\0"s);
    corpus.Add("history", "torn", numbers(2000, -1) + "+/a+/b\n0+x+\n\2\2\1\0"s);

    corpus.Add("mci", "play",
               "\x41Open \"/\" alias VidClip\nstatus VidClip length\nWindow VidClip handle 7\n"
               "Where VidClip destination\nPut VidClip destination at 0 0 40 30\n"
               "Play VidClip to 4\nPlay VidClip\nstatus VidClip position\npause VidClip\n"
               "seek VidClip to end\nseek VidClip to 3\nseek VidClip to start\n"
               "status VidClip record frame rate\nsetaudio VidClip on\nstop VidClip\n"
               "close VidClip\n");
    corpus.Add("mci", "faults",
               "nOpen \"/\" alias VidClip\nOpen \"/none\" alias VidClip\nOpen \"\nPlay VidClip\n");
    corpus.Add("video_text", "place", "0 0 640 480");
    corpus.Add("video_text", "words", "Well, then? No. ! x");

    corpus.Add("clipboard", "cut",
               "cut\n1\nfile:///a%20b/M31.jpg\r\nfile://localhost/c\r\n# remark\r\n");
    corpus.Add(
        "clipboard", "others",
        "copy\n0\nhttp://example.org/a\nfile:/d\nfile:e\nfile://elsewhere/f\nfile:///%00%f\n");

    corpus.Add("log", "lines", "\2A first line\r\nand another one\n\nM\xC3\xA9ssier\n");
    corpus.Add("log", "mark", "\xFF\xEF\xBB\xBFText behind a mark");
    corpus.Add("log", "codepage", "\1M\xE9ssier 31\n\x80\n");
    std::string endless = "\xFF";
    for (int i = 0; i < 3000; ++i) endless += "\xE2\x82\xAC";
    corpus.Add("log", "endless", endless);
}

// Small pictures of every kind, to be broken.
void AddWholePictures(Corpus& corpus) {
    const QImage picture = TellTale(24, 16);
    const auto rising = [](std::size_t place) { return double(place); };
    corpus.Add("loader", "jpeg", JpegBytes(picture));
    corpus.Add("loader", "jpeg_steps", JpegBytes(picture, JpegKind::Color, 80, true));
    corpus.Add("loader", "jpeg_inks", JpegBytes(picture, JpegKind::AdobeCmyk));
    corpus.Add("loader", "jpeg_profile", WithProfile(JpegBytes(picture), SwappedProfile()));
    for (const char* kind : {"PNG", "BMP", "TIFF", "WEBP", "PPM"})
        corpus.Add("loader", kind, PictureBytes(picture, kind));
    corpus.Add("loader", "fits", FitsBytes(16, {8, 6}, rising));
    corpus.Add("loader", "fits_colour", FitsBytes(-32, {4, 3, 3}, rising));
}

// The first bytes are those of the memory that comes with it.
void AddAnswers(Corpus& corpus) {
    const auto add = [&](const char* name, AnswerHead head, const std::string& behind,
                         std::uint8_t blocks) {
        corpus.Add("decoder_answer", name,
                   std::string(1, char(blocks)) + std::string(tarn::BytesOf(head)) + behind);
    };
    AnswerHead head;
    head.numbers = {8, 4, 0, 0};
    head.memory = 8 * 4 * 4;
    add("picture", head, "", 1);
    head.bytesInMemory = 1;
    head.bytes = 16;
    add("profile", head, "", 1);
    AnswerHead error;
    error.error = 5;
    add("error", error, "Wrong", 0);
    FitsHeader sky;
    sky.width = 4;
    sky.height = 3;
    sky.planes = sky.images = 1;
    sky.bits = 16;
    const std::string wire = WireOf(sky);
    AnswerHead header;
    header.bytes = std::uint32_t(wire.size());
    add("sky_header", header, wire, 0);
    FitsSamples samples;
    samples.header = sky;
    samples.count = 12;
    const std::string all = WireOf(samples);
    header.bytes = std::uint32_t(all.size());
    header.memory = 12 * sizeof(float);
    add("sky_samples", header, all, 1);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    Corpus corpus(argv[1]);
    AddPictures(corpus);
    AddTelescopes(corpus);
    AddXisf(corpus);
    AddClips(corpus);
    AddSidecars(corpus);
    AddTexts(corpus);
    AddWholePictures(corpus);
    AddAnswers(corpus);
    return corpus.Written() ? 0 : 1;
}

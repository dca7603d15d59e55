// Marks of single files: which sidecar counts, what a picture says itself, and that nothing is
// written over what cannot be read.
#include "marks/MarkFiles.h"

#include "marks/MarksAside.h"
#include "marks/Sidecar.h"
#include "support/ContainerFiles.h"
#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace tarn::testing {
namespace {

const Mark kThree{Decision::None, 3};

std::string SidecarOf(const Mark& mark) {
    return XmpWithMark("", SetTo(mark), nullptr).value_or("");
}

// A JPEG file of nothing but this XMP.
std::string JpegWithXmp(const std::string& xmp) {
    using namespace std::string_literals;
    const std::string block = "http://ns.adobe.com/xap/1.0/\0"s + xmp;
    return "\xFF\xD8\xFF\xE0"s + HighFirst(4, 2) + "ab" + "\xFF\xE1"s +
           HighFirst(block.size() + 2, 2) + block + "\xFF\xDA"s + "pixels";
}

struct FilesDesk {
    TestFolder folder;
    ForwardingFiles files;

    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
    SidecarNames Sidecars() const {
        return SidecarsIn(files, folder.Path(), nullptr).value_or(SidecarNames());
    }
    FoundMark Find(const std::string& name) const { return ReadMark(files, At(name), Sidecars()); }
    WrittenMark Set(const std::string& name, const MarkChange& change) {
        return WriteMark(files, At(name), Sidecars(), change);
    }
    Mark In(const std::string& sidecar) const {
        return MarkOfXmp(BytesOf(At(sidecar)), nullptr).value_or(Mark{Decision::None, -1});
    }
};

TEST(MarkFiles, TheSidecarCountsBeforeThePictureItself) {
    FilesDesk d;
    Fill(d.folder, {{"a.jpg", JpegWithXmp(SidecarOf(kThree))},
                    {"b.jpg", JpegWithXmp(SidecarOf(kThree))},
                    {"B.JPG.XMP", SidecarOf({Decision::Keep, 1})},
                    {"b.xmp", SidecarOf({Decision::Reject, 0})},
                    {"c.jpg", "no picture"},
                    {"d.jpg", "x"},
                    {"d.jpg.xmp", "no XMP"}});
    EXPECT_EQ(d.Find("a.jpg").mark, kThree);
    EXPECT_EQ(d.Find("b.jpg").mark, (Mark{Decision::Keep, 1}));
    EXPECT_EQ(d.Find("b.cr2").mark, (Mark{Decision::Reject, 0}));
    EXPECT_EQ(d.Find("c.jpg").mark, Mark());
    EXPECT_EQ(d.Find("c.jpg").error, "");
    EXPECT_EQ(d.Find("d.jpg").error, "it is no XMP");
}

TEST(MarkFiles, PicturesOfAllKindsSayTheirMark) {
    FilesDesk d;
    const std::string xmp = SidecarOf(kThree);
    using namespace std::string_literals;
    const std::string riff = "WEBP" + RiffChunk("VP8 ", "pixels") + RiffChunk("XMP ", xmp);
    const std::string tiff = "II*\0"s + LowFirst(8, 4) + LowFirst(1, 2) + LowFirst(700, 2) +
                             LowFirst(1, 2) + LowFirst(xmp.size(), 4) + LowFirst(26, 4) +
                             LowFirst(0, 4) + xmp;
    const std::string text = "XML:com.adobe.xmp\0\0\0en\0name\0"s + xmp;
    Fill(d.folder, {{"a.png", "\x89PNG\r\n\x1A\n" + PngChunk("IDAT", "pixels") +
                                  PngChunk("iTXt", text) + PngChunk("IEND", "")},
                    {"a.webp", "RIFF" + LowFirst(riff.size(), 4) + riff},
                    {"a.tif", tiff},
                    {"a.jxl", "\0\0\0\x0CJXL \r\n\x87\n"s + Box("xml ", xmp)}});
    for (const char* name : {"a.png", "a.webp", "a.tif", "a.jxl"})
        EXPECT_EQ(d.Find(name).mark, kThree) << name;
}

TEST(MarkFiles, AMarkIsWrittenBesideThePictureAndNeverIntoIt) {
    FilesDesk d;
    const std::string picture = JpegWithXmp(SidecarOf(kThree));
    Fill(d.folder, {{"a.jpg", picture}, {"b.jpg", "b"}, {"B.xmp", SidecarOf(kThree)}});
    EXPECT_EQ(d.Set("a.jpg", Decide(Decision::Keep)).mark, (Mark{Decision::Keep, 3}));
    EXPECT_EQ(d.In("a.jpg.xmp"), (Mark{Decision::Keep, 3})); // with what the picture says
    EXPECT_EQ(BytesOf(d.At("a.jpg")), picture);
    EXPECT_TRUE(d.Set("b.jpg", Rate(5)).done);
    EXPECT_EQ(d.In("B.xmp"), (Mark{Decision::None, 5}));
    // Nothing is to be written where nothing changes.
    d.folder.Write("c.jpg", "c");
    EXPECT_TRUE(d.Set("c.jpg", ClearMark()).done);
    EXPECT_FALSE(d.files.Exists(d.At("c.jpg.xmp")));
}

TEST(MarkFiles, WhatCannotBeReadOrMayNotBeWrittenStays) {
    FilesDesk d;
    const std::string standing = SidecarOf(kThree);
    Fill(d.folder, {{"a.jpg.xmp", "no XMP"}, {"b.jpg.xmp", ""}, {"c.jpg.xmp", standing}});
    Fill(d.folder, {{"a.jpg", "a"}, {"b.jpg", "b"}, {"c.jpg", "c"}, {"d.jpg", "d"}});
    ::mkfifo(d.At("d.jpg.xmp").c_str(), 0600);
    for (const char* name : {"a.jpg", "b.jpg", "d.jpg"}) {
        const WrittenMark written = d.Set(name, Rate(1));
        EXPECT_FALSE(written.done) << name;
        EXPECT_NE(written.error, "") << name;
    }
    EXPECT_EQ(BytesOf(d.At("a.jpg.xmp")), "no XMP");
    EXPECT_EQ(BytesOf(d.At("b.jpg.xmp")), "");
    d.files.Refuse("write", "No space left on device");
    EXPECT_EQ(d.Set("c.jpg", Rate(1)).error, "No space left on device");
    EXPECT_EQ(BytesOf(d.At("c.jpg.xmp")), standing);
}

TEST(MarkFiles, AnotherProgramsChangeIsReadAgain) {
    FilesDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"a.jpg.xmp", SidecarOf(kThree)}});
    int reads = 0;
    d.files.onAsk = [&](const std::string& verb, const std::string&) {
        // Between our reading and our writing the other one keeps the picture.
        if (verb == "read" && ++reads == 1) return std::string();
        if (verb == "look" && reads == 1) {
            reads = 2;
            d.folder.Write("a.jpg.xmp", SidecarOf({Decision::Keep, 1}));
        }
        return std::string();
    };
    EXPECT_EQ(d.Set("a.jpg", Rate(5)).mark, (Mark{Decision::Keep, 5}));
    EXPECT_EQ(d.In("a.jpg.xmp"), (Mark{Decision::Keep, 5}));
}

TEST(MarkFiles, ASidecarKeepsItsMode) {
    FilesDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"a.jpg.xmp", SidecarOf(kThree)}});
    ::chmod(d.At("a.jpg.xmp").c_str(), 0640);
    EXPECT_TRUE(d.Set("a.jpg", Rate(1)).done);
    struct stat facts {};
    ASSERT_EQ(::stat(d.At("a.jpg.xmp").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0640U);
}

TEST(MarksAside, TheyComeBackWhateverTheNamesAndAsFarAsTheyAreWhole) {
    const KeptMarks marks{{"/a/b c.jpg", SetTo({Decision::Keep, 4})},
                          {"/a/line\nmark n0 1 /.jpg", Decide(Decision::Reject)},
                          {"/\xFF.jpg", Rate(0)}};
    const std::string bytes = PackMarks(marks);
    EXPECT_EQ(UnpackMarks(bytes), marks);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        for (const auto& [path, change] : UnpackMarks(std::string_view(bytes).substr(0, size)))
            EXPECT_EQ(marks.at(path), change) << size;
}

} // namespace
} // namespace tarn::testing

// Sidecars as other programs write them, and what stands in them once the mark is set.
#include "marks/Sidecar.h"

#include "common/sidecar_names.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarn {

void PrintTo(const Mark& mark, std::ostream* out) {
    *out << "decision " << int(mark.decision) << ", " << mark.stars << " stars";
}

namespace {

using namespace std::string_literals;

// The properties of one description, as attributes and as elements.
std::string Xmp(const std::string& attributes, const std::string& elements = {}) {
    return "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
           "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
           "<rdf:Description rdf:about='' xmlns:xmp='http://ns.adobe.com/xap/1.0/' "
           "xmlns:xmpDM='http://ns.adobe.com/xmp/1.0/DynamicMedia/' "
           "xmlns:digiKam='http://www.digikam.org/ns/1.0/' " +
           attributes + ">" + elements + "</rdf:Description></rdf:RDF></x:xmpmeta>";
}

std::string Utf16(const std::string& text, bool highFirst, bool marked) {
    std::string bytes = marked ? (highFirst ? "\xFE\xFF"s : "\xFF\xFE"s) : ""s;
    for (const char c : text) bytes += highFirst ? "\0"s + c : c + "\0"s;
    return bytes;
}

Mark MarkOf(const std::string& bytes) {
    std::string error;
    const auto mark = MarkOfXmp(bytes, &error);
    EXPECT_EQ(error, "");
    return mark.value_or(Mark{Decision::None, -1});
}

TEST(Sidecar, TheFormsThatOtherProgramsWrite) {
    const Mark three{Decision::None, 3};
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating='3'")), three);
    EXPECT_EQ(MarkOf(Xmp("", "<xmp:Rating>3</xmp:Rating>")), three);
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating=' 3.0 '")), three);
    EXPECT_EQ(MarkOf("\xEF\xBB\xBF<?xml version='1.0'?>" + Xmp("xmp:Rating='3'")), three);
    EXPECT_EQ(MarkOf("<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n" +
                     Xmp("xmp:Rating='3'") + "\n<?xpacket end='w'?>" + std::string(100, '\0')),
              three);
    const std::string declared = "<?xml version='1.0' encoding='UTF-16'?>" + Xmp("xmp:Rating='3'");
    for (const bool highFirst : {true, false})
        for (const bool marked : {true, false})
            EXPECT_EQ(MarkOf(Utf16(declared, highFirst, marked)), three) << highFirst << marked;
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating='9'")), (Mark{Decision::None, kMostStars}));
    for (const char* none : {"three", "nan", "1e99", ""})
        EXPECT_EQ(MarkOf(Xmp("xmp:Rating='"s + none + "'")), Mark()) << none;
    EXPECT_EQ(MarkOf(Xmp("")), Mark());
    EXPECT_EQ(MarkOf(Xmp("", "<xmp:Rating><rdf:Bag><rdf:li>3</rdf:li></rdf:Bag></xmp:Rating>")),
              Mark());
}

TEST(Sidecar, WhatWinsWhereTheyDiffer) {
    const Mark rejected{Decision::Reject, 0};
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating='-1'")), rejected);
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating='-1' xmpDM:pick='1'")), rejected);
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating='2' xmpDM:pick='-1'")), (Mark{Decision::Reject, 2}));
    EXPECT_EQ(MarkOf(Xmp("xmp:Rating='2' xmpDM:pick='1'")), (Mark{Decision::Keep, 2}));
    EXPECT_EQ(MarkOf(Xmp("digiKam:PickLabel='1'")), rejected);
    EXPECT_EQ(MarkOf(Xmp("digiKam:PickLabel='2'")), Mark());
    EXPECT_EQ(MarkOf(Xmp("digiKam:PickLabel='3' xmp:Rating='4'")), (Mark{Decision::Keep, 4}));
    EXPECT_EQ(MarkOf(Xmp("digiKam:PickLabel='3' xmpDM:pick='0'")), Mark());
}

std::string Written(const std::string& bytes, const MarkChange& change) {
    std::string error;
    const auto written = XmpWithMark(bytes, change, &error);
    EXPECT_EQ(error, "");
    return written.value_or("");
}

bool Has(const std::string& bytes, const std::string& part) {
    return bytes.find(part) != std::string::npos;
}

TEST(Sidecar, EveryMarkComesBackAsItWasSet) {
    for (const Decision decision : {Decision::None, Decision::Keep, Decision::Reject})
        for (int stars = 0; stars <= kMostStars; ++stars) {
            const Mark mark{decision, stars};
            EXPECT_EQ(MarkOf(Written("", SetTo(mark))), mark);
            EXPECT_EQ(MarkOf(Written(Xmp("xmp:Rating='-1' xmpDM:pick='1'"), SetTo(mark))), mark);
        }
}

TEST(Sidecar, OtherProgramsReadTheMark) {
    const std::string rejected = Written(Xmp("digiKam:PickLabel='3'"), Decide(Decision::Reject));
    EXPECT_PRED2(Has, rejected, "xmp:Rating=\"-1\"");
    EXPECT_PRED2(Has, rejected, "xmpDM:pick=\"-1\"");
    EXPECT_PRED2(Has, rejected, "digiKam:PickLabel=\"1\"");
    const std::string kept = Written(Xmp("xmp:Rating='4'"), Decide(Decision::Keep));
    EXPECT_PRED2(Has, kept, "xmp:Rating=\"4\"");
    EXPECT_PRED2(Has, kept, "xmpDM:pick=\"1\"");
    EXPECT_FALSE(Has(kept, "PickLabel"));
}

TEST(Sidecar, ARejectIsLiftedByAProgramThatKnowsTheRatingAlone) {
    std::string bytes = Written("", Decide(Decision::Reject));
    bytes.replace(bytes.find("xmp:Rating=\"-1\""), 15, "xmp:Rating=\"2\"");
    EXPECT_EQ(MarkOf(bytes), (Mark{Decision::None, 2}));
}

TEST(Sidecar, StarsOutlastAReject) {
    const std::string rejected = Written(Xmp("xmp:Rating='4'"), Decide(Decision::Reject));
    EXPECT_EQ(MarkOf(rejected), (Mark{Decision::Reject, 4}));
    EXPECT_EQ(MarkOf(Written(rejected, Decide(Decision::Keep))), (Mark{Decision::Keep, 4}));
    EXPECT_EQ(MarkOf(Written(rejected, ClearMark())), Mark());
}

TEST(Sidecar, WhatElseStandsInItStays) {
    const std::string bytes = Written(
        Xmp("xmlns:dc='http://purl.org/dc/elements/1.1/' xmlns:my='http://example.org/my#' "
            "my:word='1 &lt; 2' xmp:Label='Red'",
            "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>Mondl\xC3\xB6sung</rdf:li></rdf:Alt>"
            "</dc:title><my:history><rdf:Seq><rdf:li my:step='0' my:params='ff00'/></rdf:Seq>"
            "</my:history>"),
        Rate(2));
    EXPECT_EQ(MarkOf(bytes), (Mark{Decision::None, 2}));
    for (const char* part : {"my:word=\"1 &lt; 2\"", "xmp:Label=\"Red\"", "Mondl\xC3\xB6sung",
                             "xml:lang=\"x-default\"", "my:step=\"0\"", "my:params=\"ff00\""})
        EXPECT_PRED2(Has, bytes, part);
}

TEST(Sidecar, WhatStandsAroundTheRootStaysToTheByte) {
    const std::string before =
        "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
        "<!-- written by <rdf:RDF> another 'program -->\n"
        "<x:xmpmeta xmlns:x='adobe:ns:meta/' x:xmptk='Core > 4'>\n<!-- inner --> ";
    const std::string behind = "\n<!-- last </rdf:RDF> -->\n</x:xmpmeta>\n" +
                               std::string(2000, ' ') + "\n<?xpacket end='w'?>";
    const std::string root =
        "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
        "rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' dc:format='a > b'/></rdf:RDF>";
    const std::string after = Written(before + root + behind, Rate(3));
    EXPECT_EQ(MarkOf(after), (Mark{Decision::None, 3}));
    EXPECT_EQ(after.substr(0, before.size()), before);
    EXPECT_EQ(after.substr(after.size() - behind.size()), behind);
    EXPECT_PRED2(Has, after, "dc:format=\"a &gt; b\"");
    EXPECT_EQ(Written(after, Rate(3)), after);
    EXPECT_EQ(MarkOf(Written(root, Rate(2))), (Mark{Decision::None, 2})); // no outer element
    // Names that only the outer element explains are explained in the root that replaces it.
    const std::string outer = Written(
        "<x:xmpmeta xmlns:x='adobe:ns:meta/' xmlns:my='http://example.org/my#' "
        "xmlns:r='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><r:RDF><r:Description r:about='' "
        "my:word='kept'/></r:RDF><!-- end --></x:xmpmeta>",
        Rate(1));
    EXPECT_EQ(MarkOf(outer), (Mark{Decision::None, 1}));
    EXPECT_PRED2(Has, outer, "my:word=\"kept\"");
    EXPECT_PRED2(Has, outer, "<!-- end -->");
}

TEST(Sidecar, WhatIsNoneIsToldAndNotChanged) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += "<a>";
    for (const std::string& bytes :
         {"hello"s, "<html><body/></html>"s, Xmp("xmp:Rating='3'").substr(0, 200),
          "\xFF\xD8\xFF\xE1"s, deep, "<!DOCTYPE x [<!ENTITY a 'b'>]>" + Xmp(""), "\0\0\0"s}) {
        std::string error;
        EXPECT_EQ(MarkOfXmp(bytes, &error), std::nullopt) << bytes.substr(0, 80);
        EXPECT_NE(error, "") << bytes.substr(0, 80);
        EXPECT_EQ(XmpWithMark(bytes, Rate(1), nullptr), std::nullopt) << bytes.substr(0, 80);
    }
    // The library would write the name of this space without its quotes escaped.
    const std::string quotes = Xmp("xmlns:q='http://example.org/\"/' q:word='1'");
    EXPECT_NE(MarkOfXmp(quotes, nullptr), std::nullopt);
    EXPECT_EQ(XmpWithMark(quotes, Rate(1), nullptr), std::nullopt);
    EXPECT_EQ(MarkOfXmp("", nullptr), std::nullopt);
    EXPECT_EQ(MarkOfXmp(std::string(kLargestSidecar + 1, ' '), nullptr), std::nullopt);
}

TEST(SidecarNames, ThePicturesOwnComesBeforeTheSharedOneInAnyCase) {
    const SidecarNames names(
        {"M31.CR2.XMP", "m31.xmp", "m42.fit", "m42.xmp.txt", ".xmp", "a.b.xmp"});
    EXPECT_EQ(names.Of("m31.cr2"), "M31.CR2.XMP");
    EXPECT_EQ(names.Of("M31.jpg"), "m31.xmp");
    EXPECT_EQ(names.SharedOf("m31.cr2"), "m31.xmp");
    EXPECT_EQ(names.Of("m42.fit"), "");
    EXPECT_EQ(names.Of("a.b"), "a.b.xmp");
    EXPECT_EQ(names.Of("a.b.jpg"), "a.b.xmp");
    EXPECT_EQ(SharedSidecarName(".jpg"), ".jpg.xmp"); // a name that has no ending
}

} // namespace
} // namespace tarn

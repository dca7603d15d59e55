#include "notes/FilledFacts.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

constexpr std::size_t At(NoteEntry entry) {
    return static_cast<std::size_t>(entry);
}

std::string Value(const FilledFacts& facts, NoteEntry entry) {
    return facts[At(entry)] ? facts[At(entry)]->value : "(none)";
}

const char* const kKit = "My things\r\n"
                         "Telescope:TEC APO 140:EQMOD HEQ5:TEC140\r\n"
                         "Mount:AP 900 GTO: EQMOD HEQ5 \n"
                         "Camera:ZWO ASI178MC-COOL:ZWO ASI178MC-Cool\n"
                         "Telescope:\n"
                         "Location:RQT:x\n";

TEST(KitList, KeepsWhatItDoesNotKnow) {
    const std::vector<KitItem> items = ParseKit(kKit);
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0], (KitItem{NoteEntry::Telescope, "TEC APO 140", {"EQMOD HEQ5", "TEC140"}}));
    EXPECT_EQ(items[1], (KitItem{NoteEntry::Mount, "AP 900 GTO", {"EQMOD HEQ5"}}));
    const std::string bytes = KitBytes(items, kKit);
    EXPECT_EQ(bytes, "My things\r\nTelescope:\nLocation:RQT:x\n"
                     "Telescope:TEC APO 140:EQMOD HEQ5:TEC140\r\n"
                     "Mount:AP 900 GTO:EQMOD HEQ5\r\n"
                     "Camera:ZWO ASI178MC-COOL:ZWO ASI178MC-Cool\r\n");
    EXPECT_EQ(ParseKit(bytes), items);
    EXPECT_EQ(KitFor(items, NoteEntry::Telescope, "eqmod heq5"), &items[0]);
    EXPECT_EQ(KitFor(items, NoteEntry::Mount, "AP 900 gto"), &items[1]);
    EXPECT_EQ(KitFor(items, NoteEntry::Camera, "other"), nullptr);
    EXPECT_EQ(KitFor(items, NoteEntry::Camera, ""), nullptr);
}

TEST(KitList, ColonsAndNamelessItemsAreRefused) {
    EXPECT_EQ(FaultOf({NoteEntry::Camera, "", {}}), "an item needs a name");
    EXPECT_EQ(FaultOf({NoteEntry::Camera, "a:b", {}}), "'a:b': a name has no colon");
    EXPECT_EQ(FaultOf({NoteEntry::Camera, "a", {"x:y"}}), "'x:y': a header name has no colon here");
    EXPECT_EQ(HeaderNamesOf(" a ;; b c; "), (std::vector<std::string>{"a", "b c"}));
}

struct Facts {
    std::vector<KitItem> kit = ParseKit(kKit);
    std::vector<NamedSite> sites = ParseSites("Garden|48.125|11.525|520|60;Hill|47|10|1000|");
    FrameHeader header;

    FilledFacts All(const std::string& otherwise = {}, std::size_t form = 4) const {
        return FactsOf(header, {kit, sites, otherwise, form});
    }
};

TEST(FilledFacts, TheKitListNamesWhatTheHeaderMeans) {
    Facts f;
    f.header.telescope = "EQMOD HEQ5";
    f.header.camera = "ZWO ASI178MC-Cool";
    f.header.filter = "Ha";
    f.header.exposure = "300";
    const FilledFacts facts = f.All();
    EXPECT_EQ(facts[At(NoteEntry::Telescope)],
              (FilledFact{"TEC APO 140", "kit list, for 'EQMOD HEQ5'"}));
    EXPECT_EQ(Value(facts, NoteEntry::Mount), "AP 900 GTO");
    EXPECT_EQ(Value(facts, NoteEntry::Camera), "ZWO ASI178MC-COOL");
    EXPECT_EQ(facts[At(NoteEntry::Filter)], (FilledFact{"Ha", "header"}));
    EXPECT_EQ(Value(facts, NoteEntry::Exposure), "300 s");
    EXPECT_EQ(Value(facts, NoteEntry::Lens), "(none)");
    EXPECT_EQ(Value(facts, NoteEntry::Date), "(none)");
    f.header.telescope = "Unheard of";
    EXPECT_EQ(f.All()[At(NoteEntry::Telescope)], (FilledFact{"Unheard of", "header"}));
    f.header.telescope = "AP 900 GTO"; // a mount, of which no telescope is known
    EXPECT_EQ(Value(f.All(), NoteEntry::Telescope), "(none)");
    EXPECT_EQ(Value(f.All(), NoteEntry::Mount), "AP 900 GTO");
}

TEST(FilledFacts, PlaceAndDateAreThoseOfThePlace) {
    Facts f;
    f.header.where.site = Site{48.126, 11.53, 500};
    f.header.where.time.start = 1730847600; // 2024-11-05 23:00 UTC
    f.header.where.time.zoneHours = 2;
    EXPECT_EQ(Value(f.All(), NoteEntry::Location), "Garden");
    EXPECT_EQ(Value(f.All(), NoteEntry::Date), "2024-11-06");
    f.header.where.time.zoneHours.reset();
    EXPECT_EQ(Value(f.All("Hill", 0), NoteEntry::Date), "06-Nov-2024"); // by the place's own zone
    f.header.where.site = Site{-33.5, -70.25, 0};
    EXPECT_EQ(Value(f.All(), NoteEntry::Location), "(none)"); // which way does it count?
    EXPECT_EQ(f.All("Garden")[At(NoteEntry::Date)], (FilledFact{"2024-11-05", "header, UTC"}));
    f.header.where.isSiteSure = true;
    EXPECT_EQ(Value(f.All(), NoteEntry::Location), "33.5000 S 70.2500 W");
    f.header.where.site.reset();
    EXPECT_EQ(f.All("Hill")[At(NoteEntry::Location)],
              (FilledFact{"Hill", "sites, for pictures without one"}));
}

TEST(FilledFacts, ANoteHasNoEmptyLines) {
    Facts f;
    EXPECT_EQ(NoteOf(f.header, f.All()), "");
    f.header.exposure = "0.008";
    f.header.where.time.exposure = 0.008;
    EXPECT_EQ(NoteOf(f.header, f.All()), "Exposure: 1/125 s");
    f.header.exposure.clear();
    f.header.where.time.exposure.reset();
    f.header.object = "M 31";
    f.header.filter = "Ha";
    EXPECT_EQ(NoteOf(f.header, f.All()), "M 31\r\nFilter: Ha");
}

} // namespace
} // namespace tarn

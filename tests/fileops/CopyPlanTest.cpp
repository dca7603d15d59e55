#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include "common/paths.h"
#include "fileops/CopyRun.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

struct PlanDesk {
    TestFolder from;
    TestFolder to;
    TestFolder notes;
    ForwardingFiles files;
    CopyRequest request;

    // Files out of `from` into `to`, notes out of `notes` beside them.
    PlanDesk() {
        request.filesFrom = from.Path();
        request.filesTo = request.notesTo = to.Path();
        request.notesFrom = notes.Path();
    }
    CopyPlan Plan() {
        std::string error;
        return PlanCopies(request, files, &error).value_or(CopyPlan());
    }
    // One line a unit: "name>name", "+" between the copies, "!" where something stands.
    static std::string Told(const CopyPlan& plan) {
        std::string text;
        for (const CopyUnit& unit : plan) {
            std::string line;
            for (const PlannedCopy& copy : unit.copies)
                line += (line.empty() ? "" : "+") + LastPart(copy.from) + ">" + LastPart(copy.to) +
                        (copy.stands ? "!" : "");
            text += line + "\n";
        }
        return text;
    }
    CopyCounts Run(CopyPlan plan) {
        CopyRun run(std::move(plan), files);
        while (!run.Done()) run.Step();
        return run.counts;
    }
};

TEST(CopyPlan, FilesGoWithTheNoteOfTheirName) {
    PlanDesk d;
    Fill(d.notes, {{"M31.enf", "n"}, {"img.ENF", "n"}, {"x..enf", "n"}, {"other.enf", "n"}});
    d.request.files = {"M31.jpg", "M31.cr2", "IMG.jpg", "x.jpeg", "none.jpg"};
    EXPECT_EQ(d.Told(d.Plan()), "M31.jpg>M31.jpg+M31.enf>M31.enf+M31.cr2>M31.cr2\n"
                                "IMG.jpg>IMG.jpg+img.ENF>img.ENF\n"
                                "x.jpeg>x.jpeg+x..enf>x..enf\n"
                                "none.jpg>none.jpg\n");
    d.request.everyNote = true;
    d.request.files = {"M31.jpg"};
    EXPECT_EQ(d.Told(d.Plan()), "M31.jpg>M31.jpg+M31.enf>M31.enf\n"
                                "img.ENF>img.ENF\nother.enf>other.enf\nx..enf>x..enf\n");
    d.request.everyNote = false;
    d.request.files = {"M31.jpg", "M31.cr2", "none.jpg"};
    d.request.filesTo.clear();
    EXPECT_EQ(d.Told(d.Plan()), "M31.enf>M31.enf\n"); // notes alone, each once
    d.request.notesFrom.clear();
    d.request.filesTo = d.to.Path();
    EXPECT_EQ(d.Told(d.Plan()), "M31.jpg>M31.jpg\nM31.cr2>M31.cr2\nnone.jpg>none.jpg\n");
}

TEST(CopyPlan, WhatStandsIsDecidedForAll) {
    PlanDesk d;
    Fill(d.notes, {{"a.enf", "n"}, {"b.enf", "n"}, {"c.enf", "n"}});
    Fill(d.to, {{"a.jpg", "old"}, {"B.ENF", "old"}, {"c (2).jpg", "old"}, {"C.jpg", "other case"}});
    d.to.Write("c.enf", "old");
    d.request.files = {"a.jpg", "b.jpg", "c.jpg", "d.jpg"};
    const CopyPlan plan = d.Plan();
    EXPECT_EQ(d.Told(plan), "a.jpg>a.jpg!+a.enf>a.enf\n"
                            "b.jpg>b.jpg+b.enf>B.ENF!\n" // a note in any case
                            "c.jpg>c.jpg+c.enf>c.enf!\n" // a file by its exact name
                            "d.jpg>d.jpg\n");
    EXPECT_EQ(CountStanding(plan), 3);
    const auto after = [&](WhenStands decision) {
        CopyPlan resolved = plan;
        Resolve(resolved, decision, d.files);
        return d.Told(resolved);
    };
    EXPECT_EQ(after(WhenStands::Skip), "b.jpg>b.jpg\nc.jpg>c.jpg\nd.jpg>d.jpg\n");
    EXPECT_EQ(after(WhenStands::KeepBoth), "a.jpg>a (2).jpg+a.enf>a (2).enf\n"
                                           "b.jpg>b (2).jpg+b.enf>b (2).enf\n"
                                           "c.jpg>c (3).jpg+c.enf>c (3).enf\n"
                                           "d.jpg>d.jpg\n");
    EXPECT_EQ(after(WhenStands::Overwrite), d.Told(plan));
}

TEST(CopyPlan, SidecarsGoWithTheirFilesAndAreNotCounted) {
    PlanDesk d;
    Fill(d.from, {{"a.cr2", "1"},
                  {"a.jpg", "2"},
                  {"A.xmp", "of both"},
                  {"b.fit", "3"},
                  {"b.fit.xmp", "of b"},
                  {"c.xmp", "of none"}});
    Fill(d.to, {{"b.fit.xmp", "old"}});
    d.request.notesFrom.clear();
    d.request.files = {"a.cr2", "a.jpg", "b.fit"};
    const CopyPlan plan = d.Plan();
    EXPECT_EQ(d.Told(plan), "a.cr2>a.cr2+A.xmp>A.xmp\n"
                            "a.jpg>a.jpg\n"
                            "b.fit>b.fit+b.fit.xmp>b.fit.xmp!\n");
    CopyPlan both = plan;
    Resolve(both, WhenStands::KeepBoth, d.files);
    EXPECT_EQ(d.Told({both.back()}), "b.fit>b (2).fit+b.fit.xmp>b (2).fit.xmp\n");
    const CopyCounts counts = d.Run(plan);
    EXPECT_EQ(counts.files, 3);
    EXPECT_EQ(counts.notes, 0);
    EXPECT_EQ(ReadTree(d.to.Path()), (Tree{{"a.cr2", "1"},
                                           {"a.jpg", "2"},
                                           {"A.xmp", "of both"},
                                           {"b.fit", "3"},
                                           {"b.fit.xmp", "of b"}}));
}

TEST(CopyPlan, NewNamesNeverMeetEachOther) {
    PlanDesk d;
    Fill(d.to, {{"a.jpg", "1"}, {"b", "1"}});
    d.request.notesFrom.clear();
    d.request.files = {"a.jpg", "a (2).jpg", "b"};
    CopyPlan plan = d.Plan();
    Resolve(plan, WhenStands::KeepBoth, d.files);
    EXPECT_EQ(d.Told(plan), "a.jpg>a (3).jpg\na (2).jpg>a (2).jpg\nb>b (2)\n");
}

TEST(CopyRun, AFailureIsCountedAndTheRestGoesOn) {
    PlanDesk d;
    Fill(d.from, {{"a.jpg", "1"}, {"b.jpg", "2"}, {"c.jpg", "3"}});
    d.request.files = {"a.jpg", "b.jpg", "gone.jpg", "c.jpg"};
    d.files.onChange = [](const std::string& verb, const std::string& path) {
        return verb == "copy" && LastPart(path) == "b.jpg" ? "No space left on device" : "";
    };
    const CopyCounts counts = d.Run(d.Plan());
    EXPECT_EQ(counts.files, 2);
    EXPECT_EQ(counts.failed, 2);
    EXPECT_EQ(LastPart(counts.faults.at(0).path), "b.jpg");
    EXPECT_EQ(counts.faults.at(0).why, "No space left on device");
    EXPECT_EQ(ReadTree(d.to.Path()), (Tree{{"a.jpg", "1"}, {"c.jpg", "3"}}));
    EXPECT_EQ(ReportText(counts, "Exported", "/x", false),
              "ERROR - Exported 2 files to '/x', 2 failed: b.jpg - No space left on device");
}

TEST(CopyRun, OnlyWhatWasAskedAboutIsReplaced) {
    PlanDesk d;
    Fill(d.from, {{"a.jpg", "1"}, {"b.jpg", "2"}});
    Fill(d.to, {{"a.jpg", "asked about"}});
    d.request.files = {"a.jpg", "b.jpg"};
    d.files.onChange = [&](const std::string& verb, const std::string& path) {
        if (verb == "copy" && LastPart(path) == "b.jpg") d.to.Write("b.jpg", "came up meanwhile");
        return std::string();
    };
    const CopyCounts counts = d.Run(d.Plan());
    EXPECT_EQ(ReadTree(d.to.Path()), (Tree{{"a.jpg", "1"}, {"b.jpg", "came up meanwhile"}}));
    ASSERT_EQ(counts.faults.size(), 1U);
    EXPECT_EQ(counts.faults[0].why, "File exists");
    EXPECT_EQ(Trashed("a.jpg"), "asked about");
}

// The mark of the old picture is none of the new one's.
TEST(CopyRun, TheReplacedPicturesSidecarGoesWithIt) {
    PlanDesk d;
    const Tree marked{{"a.jpg", "1"}, {"b.jpg", "2"}, {"b.jpg.xmp", "mark of 2"}};
    Fill(d.from, marked);
    Fill(d.to, {{"a.jpg", "old"}, {"a.JPG.xmp", "mark of old"}, {"b.jpg.xmp", "nobody's"}});
    d.request.files = {"a.jpg", "b.jpg"};
    CopyPlan plan = d.Plan();
    Resolve(plan, WhenStands::Overwrite, d.files);
    EXPECT_EQ(d.Run(plan).failed, 0);
    EXPECT_EQ(ReadTree(d.to.Path()), marked);
    EXPECT_EQ(Trashed("a.JPG.xmp"), "mark of old");
    Fill(d.to, {{"a.jpg", "old"}, {"a.jpg.xmp", "mark of old"}});
    plan = d.Plan();
    Resolve(plan, WhenStands::KeepBoth, d.files);
    d.Run(plan);
    EXPECT_EQ(BytesOf(d.to.Path() + "/a.jpg.xmp"), "mark of old"); // its picture stays
}

} // namespace
} // namespace tarn::testing

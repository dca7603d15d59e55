// The marks of many files: read and written in the background, kept where they cannot be written.
#include "marks/MarkStore.h"

#include "history/History.h"
#include "marks/Sidecar.h"
#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <atomic>
#include <condition_variable>

namespace tarn::testing {
namespace {

struct StoreDesk {
    TestFolder folder;
    ForwardingFiles files;
    History history{files, {}};
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::string> told;
    std::unique_ptr<MarkStore> store;

    StoreDesk() { Begin(); }
    ~StoreDesk() {
        store.reset();
        std::filesystem::remove(Kept());
    }
    void Begin() {
        store.reset(); // with all written
        store = std::make_unique<MarkStore>(
            history, MarkStore::Answers{.changed = [this] { changed.notify_all(); },
                                        .told =
                                            [this](const std::string& text) {
                                                const std::lock_guard lock(mutex);
                                                told.push_back(text);
                                            }});
    }
    // Anew, since its threads ask from their beginning on.
    void BeginWith(ForwardingFiles::Hook onAsk) {
        store.reset();
        files.onAsk = std::move(onAsk);
        Begin();
    }
    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
    std::string Kept() const { return files.StateFolder() + "/unwritten_marks"; }
    Mark OnDisk(const std::string& name) const {
        return MarkOfXmp(BytesOf(At(name + ".xmp")), nullptr).value_or(Mark{Decision::None, -1});
    }
    void ShowAndRead(const std::vector<std::string>& names) {
        store->Show(folder.Path(), names);
        std::unique_lock lock(mutex);
        const auto all = [this] { return store->AllRead(); };
        for (int i = 0; i < 500 && !all(); ++i)
            changed.wait_for(lock, std::chrono::milliseconds(10), all);
        EXPECT_TRUE(all());
    }
    std::vector<std::string> Told() {
        const std::lock_guard lock(mutex);
        return told;
    }
};

std::string Sidecar(const Mark& mark) {
    return XmpWithMark("", SetTo(mark), nullptr).value_or("");
}

TEST(MarkStore, AMarkIsSeenAtOnceAndOnTheDiskAfterTheFlush) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"b.jpg", "b"}, {"b.xmp", Sidecar({Decision::Keep, 2})}});
    EXPECT_EQ(d.store->MarkOf(d.At("a.jpg")), std::nullopt); // not read yet
    d.ShowAndRead({"a.jpg", "b.jpg"});
    EXPECT_EQ(d.store->MarkOf(d.At("a.jpg")), Mark());
    EXPECT_EQ(d.store->MarkOf(d.At("b.jpg")), (Mark{Decision::Keep, 2}));
    d.store->Set(d.At("b.jpg"), Rate(4));
    d.store->Set(d.At("b.jpg"), Decide(Decision::None));
    EXPECT_EQ(d.store->MarkOf(d.At("b.jpg")), (Mark{Decision::None, 4}));
    d.store->Flush();
    EXPECT_EQ(MarkOfXmp(BytesOf(d.At("b.xmp")), nullptr), (Mark{Decision::None, 4}));
    EXPECT_EQ(d.store->MarkOf(d.At("b.jpg")), (Mark{Decision::None, 4}));
    EXPECT_EQ(d.Told(), std::vector<std::string>());
}

TEST(MarkStore, TheEndWritesWhatWasSet) {
    StoreDesk d;
    for (int i = 1; i <= 50; ++i)
        d.store->Set(d.folder.Write(std::to_string(i) + ".jpg", "x"), Rate(1 + i % 5));
    d.store->Set(d.At("gone.jpg"), Rate(1));
    d.store.reset();
    EXPECT_FALSE(d.files.Exists(d.At("gone.jpg.xmp")));
    for (int i = 1; i <= 50; ++i)
        EXPECT_EQ(d.OnDisk(std::to_string(i) + ".jpg"), (Mark{Decision::None, 1 + i % 5})) << i;
}

TEST(MarkStore, AnotherLookAtTheFolderReadsWhatHasChanged) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"b.jpg", "b"}, {"b.jpg.xmp", Sidecar({Decision::Keep, 2})}});
    std::atomic<int> reads = 0;
    d.BeginWith([&](const std::string& verb, const std::string& path) {
        if (verb == "read" && path.starts_with(d.folder.Path())) ++reads;
        return std::string();
    });
    d.ShowAndRead({"a.jpg", "b.jpg"});
    reads = 0;
    d.ShowAndRead({"a.jpg", "b.jpg"});
    EXPECT_EQ(reads, 0); // all stand as they stood
    d.folder.Write("a.jpg.xmp", Sidecar({Decision::Reject, 0}));
    d.ShowAndRead({"a.jpg", "b.jpg"});
    EXPECT_EQ(d.store->MarkOf(d.At("a.jpg")), (Mark{Decision::Reject, 0}));
    EXPECT_EQ(d.store->MarkOf(d.At("b.jpg")), (Mark{Decision::Keep, 2}));
}

TEST(MarkStore, WhatCannotBeWrittenIsKeptToldOnceAndWrittenLater) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"a.jpg.xmp", "no XMP"}});
    d.ShowAndRead({"a.jpg"});
    for (const int stars : {1, 4}) {
        d.store->Set(d.At("a.jpg"), Rate(stars));
        d.store->Flush();
    }
    EXPECT_EQ(d.store->KeptAside(d.At("a.jpg")), Rate(4));
    EXPECT_EQ(d.store->MarkOf(d.At("a.jpg")), (Mark{Decision::None, 4}));
    EXPECT_EQ(BytesOf(d.At("a.jpg.xmp")), "no XMP");
    EXPECT_EQ(d.Told(), std::vector<std::string>{"The mark of 'a.jpg' is kept in the settings, its "
                                                 "sidecar stays: it is no XMP"});
    d.Begin(); // another run
    std::filesystem::remove(d.At("a.jpg.xmp"));
    d.ShowAndRead({"a.jpg"});
    d.store->Flush();
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::None, 4}));
    EXPECT_EQ(d.store->KeptAside(d.At("a.jpg")), std::nullopt);
    EXPECT_EQ(BytesOf(d.Kept()), "");
}

TEST(MarkStore, WhatTheDiskDoesNotTakeIsCountedAndKeptForTheNextRun) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"b.jpg", "b"}});
    std::mutex disk;
    d.BeginWith([&](const std::string& verb, const std::string& path) {
        if (verb == "writable" && path == d.folder.Path()) const std::lock_guard wait(disk);
        return std::string();
    });
    {
        const std::lock_guard hangs(disk);
        d.store->Set(d.At("a.jpg"), Rate(3));
        EXPECT_FALSE(d.store->Flush(std::chrono::milliseconds(100)));
        d.store->Set(d.At("b.jpg"), Decide(Decision::Keep));
        EXPECT_EQ(d.store->StillUnwritten().count, 2U);
        EXPECT_EQ(d.store->StillUnwritten().now, d.At("a.jpg"));
        d.store->KeepUnwrittenAside();
        EXPECT_EQ(UnpackMarks(BytesOf(d.Kept())),
                  (KeptMarks{{d.At("a.jpg"), Rate(3)}, {d.At("b.jpg"), Decide(Decision::Keep)}}));
    }
    EXPECT_TRUE(d.store->Flush(std::chrono::milliseconds(10000))); // it answers after all
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::None, 3}));
    EXPECT_EQ(d.store->StillUnwritten().count, 0U);
}

TEST(MarkStore, AFolderThatMayNotBeWrittenIsToldOnce) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"b.jpg", "b"}});
    std::atomic<bool> isWritable = false;
    d.BeginWith([&](const std::string& verb, const std::string& path) {
        return !isWritable && verb == "writable" && path == d.folder.Path() ? "no" : "";
    });
    d.store->Set(d.At("a.jpg"), Rate(1));
    d.store->Set(d.At("b.jpg"), Decide(Decision::Keep));
    d.store->Flush();
    EXPECT_EQ(d.Told(), std::vector<std::string>{"Marks of '" + d.folder.Path() +
                                                 "' are kept in the settings: the folder may not "
                                                 "be written"});
    EXPECT_EQ(d.store->MarkOf(d.At("b.jpg")), (Mark{Decision::Keep, 0}));
    EXPECT_TRUE(d.store->AnyMarked(d.folder.Path()));
    d.store->Set(d.At("b.jpg"), {}); // its picture has gone elsewhere
    d.store->Flush();
    EXPECT_EQ(d.store->KeptAside(d.At("b.jpg")), std::nullopt);
    EXPECT_EQ(UnpackMarks(BytesOf(d.Kept())), (KeptMarks{{d.At("a.jpg"), Rate(1)}}));
    d.store->Set(d.At("b.jpg"), Decide(Decision::Keep));
    d.store->Flush();
    isWritable = true;
    d.ShowAndRead({"a.jpg", "b.jpg"});
    d.store->Flush();
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::None, 1}));
    EXPECT_EQ(d.OnDisk("b.jpg"), (Mark{Decision::Keep, 0}));
}

// What was kept aside of a file goes into its sidecar with the next change.
TEST(MarkStore, TheNextChangeBringsWhatIsKeptAside) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}});
    d.ShowAndRead({"a.jpg"});
    d.BeginWith([](const std::string& verb, const std::string&) {
        return verb == "writable" ? std::string("read only") : std::string();
    });
    d.store->Set(d.At("a.jpg"), Decide(Decision::Reject));
    EXPECT_TRUE(d.store->Flush());
    EXPECT_EQ(d.store->KeptAside(d.At("a.jpg")), Decide(Decision::Reject));
    d.BeginWith(nullptr);
    d.store->Set(d.At("a.jpg"), Rate(3));
    EXPECT_TRUE(d.store->Flush());
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::Reject, 3}));
    EXPECT_EQ(d.store->KeptAside(d.At("a.jpg")), std::nullopt);
}

// Each is taken back to the byte, also where the folder had not been read; what another program has
// changed since stands.
TEST(MarkStore, ACommandIsTakenBackToTheByte) {
    StoreDesk d;
    const std::string odd = Sidecar({Decision::Reject, 2}) + "<!-- theirs -->";
    Fill(d.folder, {{"a.jpg", "a"}, {"b.jpg", "b"}, {"b.jpg.xmp", odd}});
    const Tree before = ReadTree(d.folder.Path());
    d.store->Set(
        {"Kept - 2 files",
         {{d.At("a.jpg"), Decide(Decision::Keep)}, {d.At("b.jpg"), Decide(Decision::Keep)}}});
    d.store->Set({"Rejected 'a.jpg'", {{d.At("a.jpg"), Decide(Decision::Reject)}}});
    d.store->Set({"Rejected 'a.jpg'", {{d.At("a.jpg"), Decide(Decision::Reject)}}}); // is already
    EXPECT_EQ(d.store->MarkOf(d.At("a.jpg")), (Mark{Decision::Reject, 0}));
    d.store->Flush();
    EXPECT_EQ(d.OnDisk("b.jpg"), (Mark{Decision::Keep, 2}));
    const Tree after = ReadTree(d.folder.Path());
    const auto all = [](std::size_t) { return true; };
    EXPECT_EQ(d.history.Undo(all).text, "Undone: Rejected 'a.jpg'");
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::Keep, 0}));
    EXPECT_EQ(d.history.Undo(all).text, "Undone: Kept - 2 files");
    EXPECT_EQ(ReadTree(d.folder.Path()), before);
    EXPECT_EQ(d.history.NextToUndo(), std::nullopt);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(d.history.Redo(all).done);
    EXPECT_EQ(ReadTree(d.folder.Path()), after);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(d.history.Undo(all).done);
    EXPECT_TRUE(d.history.Redo(all).done);
    d.folder.Write("b.jpg.xmp", Sidecar({Decision::None, 5}));
    EXPECT_EQ(d.history.Undo(all).text, "Undone: Kept - 2 files; 1 not taken back, first b.jpg.xmp"
                                        " - it has been changed since");
    EXPECT_EQ(d.OnDisk("b.jpg"), (Mark{Decision::None, 5}));
}

TEST(MarkStore, PicturesOfOneSidecarAreMarkedInOneCommand) {
    StoreDesk d;
    MarksSet many{"Kept many", {}};
    for (int i = 100; i < 400; ++i) {
        const std::string name = std::to_string(i);
        d.folder.Write(name + ".cr2", "raw");
        d.folder.Write(name + ".jpg", "small");
        if (i % 2 == 0) d.folder.Write(name + ".xmp", Sidecar({Decision::None, 1}));
        for (const char* kind : {".cr2", ".jpg"})
            many.changes[d.At(name + kind)] = Decide(Decision::Keep);
    }
    const Tree before = ReadTree(d.folder.Path());
    d.store->Set(many);
    d.store->Flush();
    EXPECT_EQ(d.OnDisk("100"), (Mark{Decision::Keep, 1}));
    EXPECT_EQ(d.OnDisk("399.jpg"), (Mark{Decision::Keep, 0}));
    EXPECT_EQ(ReadTree(d.folder.Path()).size(), before.size() + 300U);
    const UndoResult back = d.history.Undo([](std::size_t) { return true; });
    EXPECT_TRUE(back.done) << back.text;
    EXPECT_EQ(ReadTree(d.folder.Path()), before);
}

TEST(MarkStore, AllPicturesOfASidecarShowItsMarkAtOnce) {
    StoreDesk d;
    const std::string none = Sidecar({Decision::None, 1});
    Fill(d.folder, {{"m.cr2", ""}, {"m.jpg", ""}, {"M.xmp", none}, {"m.fit", ""}, {"n.jpg", ""}});
    d.folder.Write("m.fit.xmp", none);
    d.ShowAndRead({"m.cr2", "m.jpg", "m.fit", "n.jpg"});
    d.store->Set({"Kept 'm.jpg'", {{d.At("m.jpg"), Decide(Decision::Keep)}}});
    d.store->Flush();
    EXPECT_EQ(d.store->MarkOf(d.At("m.cr2")), (Mark{Decision::Keep, 1}));
    EXPECT_EQ(d.store->MarkOf(d.At("m.fit")), (Mark{Decision::None, 1})); // has its own
    EXPECT_EQ(d.store->MarkOf(d.At("n.jpg")), Mark());
}

TEST(MarkStore, WhatTheHistoryRefusesIsNotMarked) {
    StoreDesk d;
    d.folder.Write("a.jpg", "a");
    std::filesystem::create_directory(d.At("history.db")); // in the way
    d.store.reset();
    History refuses(d.files, d.At("history.db"));
    std::string asked;
    refuses.onUnwritable = [&](const std::string& text) {
        asked = text;
        return false;
    };
    std::vector<std::string> told;
    {
        MarkStore store(refuses, {.changed = {},
                                  .told = [&](const std::string& text) { told.push_back(text); }});
        store.Set({"Kept 'a.jpg'", {{d.At("a.jpg"), Decide(Decision::Keep)}}});
        store.Flush();
        EXPECT_EQ(store.MarkOf(d.At("a.jpg")), std::nullopt);
    }
    EXPECT_EQ(asked.find("History cannot be written: "), 0U);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].find("Not marked: History cannot be written: "), 0U) << told[0];
    EXPECT_FALSE(std::filesystem::exists(d.At("a.jpg.xmp")));
    EXPECT_FALSE(std::filesystem::exists(d.Kept()));
}

// What no sidecar takes is kept aside, and goes back all the same.
TEST(MarkStore, AMarkKeptAsideIsACommandToo) {
    StoreDesk d;
    Fill(d.folder, {{"a.jpg", "a"}, {"a.jpg.xmp", "no sidecar"}});
    d.store->Set({"Kept 'a.jpg'", {{d.At("a.jpg"), Decide(Decision::Keep)}}});
    d.store->Flush();
    EXPECT_EQ(d.store->KeptAside(d.At("a.jpg")), Decide(Decision::Keep));
    const UndoResult back = d.history.Undo([](std::size_t) { return true; });
    ASSERT_EQ(back.marks.size(), 1U) << back.text;
    EXPECT_EQ(back.marks[0].path, d.At("a.jpg"));
    EXPECT_EQ(back.marks[0].change, Decide(Decision::None));
}

// What an earlier command could not write is none of this one's.
TEST(MarkStore, WhatWasKeptAsideStaysWhenALaterMarkGoesBack) {
    StoreDesk d;
    d.folder.Write("a.jpg", "a");
    bool mayWrite = false;
    d.BeginWith([&](const std::string& verb, const std::string& path) {
        return verb == "writable" && path == d.folder.Path() && !mayWrite ? "no" : "";
    });
    d.store->Set({"Rejected 'a.jpg'", {{d.At("a.jpg"), Decide(Decision::Reject)}}});
    d.store->Flush();
    EXPECT_EQ(d.store->KeptAside(d.At("a.jpg")), Decide(Decision::Reject));
    mayWrite = true;
    d.store->Set({"3 stars 'a.jpg'", {{d.At("a.jpg"), Rate(3)}}});
    d.store->Flush();
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::Reject, 3}));
    EXPECT_EQ(d.history.Undo([](std::size_t) { return true; }).text, "Undone: 3 stars 'a.jpg'");
    EXPECT_EQ(d.OnDisk("a.jpg"), (Mark{Decision::Reject, 0}));
}

// More than are planned at once; in the midst of it another program holds the history.
TEST(MarkStore, ACommandThatIsRefusedHalfwayIsNotDoneAtAll) {
    StoreDesk d;
    MarksSet many{"Kept many", {}};
    for (int i = 100; i < 500; ++i) {
        d.folder.Write(std::to_string(i) + ".jpg", "");
        many.changes[d.At(std::to_string(i) + ".jpg")] = Decide(Decision::Keep);
    }
    d.store.reset();
    TestFolder state;
    History history(d.files, state.Path() + "/history.db");
    sqlite3* other = nullptr;
    int written = 0;
    d.files.onChange = [&](const std::string& verb, const std::string&) {
        if (verb != "write" || ++written != 200) return std::string();
        ::sqlite3_open((state.Path() + "/history.db").c_str(), &other);
        ::sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        return std::string();
    };
    std::vector<std::string> told;
    {
        MarkStore store(history, {.changed = {},
                                  .told = [&](const std::string& text) { told.push_back(text); }});
        store.Set(many);
        store.Flush();
        EXPECT_EQ(store.MarkOf(d.At("100.jpg")), std::nullopt);
    }
    ::sqlite3_close(other);
    EXPECT_EQ(told, std::vector<std::string>{"Not marked: another program is changing files just "
                                             "now, nothing was done"});
    EXPECT_EQ(ReadTree(d.folder.Path()).size(), 400U);
    EXPECT_FALSE(history.NextToUndo());
}

} // namespace
} // namespace tarn::testing

// The database itself: damaged, locked, read only, pruned, forgotten.
#include "history/Changes.h"
#include "history/History.h"

#include "platform/Statement.h"
#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace tarn::testing {
namespace {

struct Book {
    TestFolder pictures;
    TestFolder state;
    ForwardingFiles files;
    std::string error;

    std::string File() const { return state.Path() + "/history.db"; }
    std::string At(const std::string& name) const { return pictures.Path() + "/" + name; }
    bool Throw(History& history, const std::string& name) {
        pictures.Write(name, "1");
        Changes changes(history, "Delete '" + name + "'");
        return changes.ThrowAway(At(name), &error);
    }
    // Another program holds the database when the command ends, and lets it go by the order.
    void ThrowHeld(History& history, const std::string& name, const char* order) {
        sqlite3* other = nullptr;
        ASSERT_EQ(::sqlite3_open(File().c_str(), &other), SQLITE_OK);
        pictures.Write(name, "1");
        {
            Changes changes(history, "Delete '" + name + "'");
            ASSERT_TRUE(changes.ThrowAway(At(name), &error)) << error;
            ASSERT_EQ(::sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr),
                      SQLITE_OK);
        }
        EXPECT_EQ(::sqlite3_exec(other, order, nullptr, nullptr, nullptr), SQLITE_OK);
        ::sqlite3_close(other);
    }
};

std::vector<std::string> Whats(History& history) {
    std::vector<std::string> whats;
    for (const CommandRow& row : history.List({100})) whats.push_back(row.what);
    return whats;
}

TEST(Journal, ADamagedOneIsPutAsideAndAnotherBegun) {
    Book book;
    book.state.Write("history.db", std::string(8192, 'x'));
    History history(book.files, book.File());
    EXPECT_EQ(history.Notice(),
              "The history was damaged and is put aside as '" + book.File() + ".damaged'");
    EXPECT_TRUE(book.Throw(history, "a")) << book.error;
    EXPECT_EQ(BytesOf(book.File() + ".damaged"), std::string(8192, 'x'));
    EXPECT_EQ(Whats(history), std::vector<std::string>{"Delete 'a'"});
}

TEST(Journal, WhatCannotBeWrittenIsAskedOnceAndGoesOnInMemory) {
    for (const bool goesOn : {false, true}) {
        Book book;
        // A folder where the file is to be cannot be opened.
        std::filesystem::create_directory(book.File());
        History history(book.files, book.File());
        std::vector<std::string> asked;
        history.onUnwritable = [&](const std::string& text) {
            asked.push_back(text);
            return goesOn;
        };
        EXPECT_EQ(book.Throw(history, "a"), goesOn);
        EXPECT_EQ(book.Throw(history, "b"), goesOn);
        ASSERT_EQ(asked.size(), 1U);
        EXPECT_EQ(asked[0].find("History cannot be written: "), 0U) << asked[0];
        EXPECT_NE(asked[0].find(". Go on without?"), std::string::npos) << asked[0];
        EXPECT_EQ(book.files.Exists(book.At("a")), !goesOn);
        if (!goesOn) continue;
        history.Undo([](std::size_t) { return true; });
        EXPECT_TRUE(book.files.Exists(book.At("b")));
    }
}

TEST(Journal, WhileAnotherProgramWritesNothingIsChanged) {
    Book book;
    History history(book.files, book.File());
    ASSERT_TRUE(book.Throw(history, "a"));
    sqlite3* other = nullptr;
    ASSERT_EQ(::sqlite3_open(book.File().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(::sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    history.onUnwritable = [](const std::string&) {
        ADD_FAILURE() << "a moment's wait is no question";
        return true;
    };
    EXPECT_FALSE(book.Throw(history, "b"));
    EXPECT_EQ(book.error, "another program is changing files just now, nothing was done");
    EXPECT_TRUE(book.files.Exists(book.At("b")));
    EXPECT_EQ(history.Undo([](std::size_t) { return true; }).text,
              "NOT undone: Delete 'a'; another program is changing files just now, nothing was "
              "done");
    ::sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    ::sqlite3_close(other);
    EXPECT_TRUE(book.Throw(history, "b"));
}

// A command that was refused once is not done in halves when the way is free again.
TEST(Journal, ARefusedCommandIsRefusedToItsEnd) {
    Book book;
    History history(book.files, book.File());
    ASSERT_TRUE(book.Throw(history, "a"));
    for (const char* name : {"b", "c"}) book.pictures.Write(name, "1");
    sqlite3* other = nullptr;
    ASSERT_EQ(::sqlite3_open(book.File().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(::sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    {
        Changes changes(history, "Delete of two");
        EXPECT_FALSE(changes.ThrowAway(book.At("b"), &book.error));
        ::sqlite3_close(other);
        EXPECT_FALSE(changes.ThrowAway(book.At("c"), &book.error));
    }
    EXPECT_TRUE(book.files.Exists(book.At("c")));
    EXPECT_EQ(Whats(history), std::vector<std::string>{"Delete 'a'"});
}

TEST(Journal, TwoProgramsShareOne) {
    Book book;
    History window(book.files, book.File());
    History console(book.files, book.File());
    ASSERT_TRUE(book.Throw(window, "a"));
    ASSERT_TRUE(book.Throw(console, "b"));
    EXPECT_EQ(Whats(window), (std::vector<std::string>{"Delete 'b'", "Delete 'a'"}));
    EXPECT_EQ(window.Undo([](std::size_t) { return true; }).text,
              "Undone: Delete 'b'; back again: 'b'");
    EXPECT_TRUE(window.BrokenOff().empty());
}

TEST(Journal, OldAndLargeCommandsGoAndAllCanBeForgotten) {
    Book book;
    History history(book.files, book.File());
    for (const char* name : {"a", "b", "c"}) ASSERT_TRUE(book.Throw(history, name));
    sqlite3* database = nullptr;
    ASSERT_EQ(::sqlite3_open(book.File().c_str(), &database), SQLITE_OK);
    ::sqlite3_exec(database, "UPDATE commands SET began = began - 91*86400 WHERE id=1", nullptr,
                   nullptr, nullptr);
    ::sqlite3_close(database);
    const std::atomic<bool> never = false;
    EXPECT_TRUE(history.Prune(90, 1 << 20, never));
    EXPECT_EQ(Whats(history), (std::vector<std::string>{"Delete 'c'", "Delete 'b'"}));
    EXPECT_TRUE(history.Prune(90, 1, never)); // the newest stays, whatever its size
    EXPECT_EQ(Whats(history), std::vector<std::string>{"Delete 'c'"});
    EXPECT_TRUE(history.Forget());
    EXPECT_EQ(Whats(history), std::vector<std::string>());
    EXPECT_FALSE(history.NextToUndo());
}

TEST(Journal, DamageThatShowsLaterIsPutAsideAndTheCommandGoesOn) {
    Book book;
    {
        History history(book.files, book.File());
        ASSERT_TRUE(book.Throw(history, "a"));
    }
    {
        std::fstream file(book.File(), std::ios::in | std::ios::out | std::ios::binary);
        const std::string noise(4096, '\x5a');
        // All but the first page, which tells what there is.
        const auto pages = std::filesystem::file_size(book.File()) / noise.size();
        for (std::uintmax_t page = 1; page < pages; ++page)
            file.seekp(std::streamoff(page * noise.size()))
                .write(noise.data(), std::streamsize(noise.size()));
    }
    History later(book.files, book.File());
    ASSERT_TRUE(book.Throw(later, "b")) << book.error; // nobody is asked
    EXPECT_EQ(Whats(later), std::vector<std::string>{"Delete 'b'"});
    EXPECT_NE(later.Notice().find("history.db.damaged'"), std::string::npos) << later.Notice();
    EXPECT_TRUE(std::filesystem::exists(book.File() + ".damaged"));
}

TEST(Journal, ACommandThatCouldNotBeEndedIsEndedLater) {
    Book book;
    History history(book.files, book.File());
    book.ThrowHeld(history, "a", "ROLLBACK");
    ASSERT_TRUE(book.Throw(history, "b"));
    EXPECT_EQ(Whats(history), (std::vector<std::string>{"Delete 'b'", "Delete 'a'"}));
    for (const char* what : {"Delete 'b'", "Delete 'a'"}) {
        const auto next = history.NextToUndo();
        ASSERT_TRUE(next);
        EXPECT_EQ(next->what, what);
        EXPECT_TRUE(history.Undo([](std::size_t) { return true; }).done);
    }
}

// The end of a command belongs to the database in which it began, whichever stands by then.
TEST(Journal, ALateEndNeverReachesAnotherDatabase) {
    Book book;
    History history(book.files, book.File());
    history.onUnwritable = [](const std::string&) { return true; };
    book.ThrowHeld(history, "a", "DROP TABLE plans; COMMIT");
    ASSERT_TRUE(book.Throw(history, "b")) << book.error; // goes on in memory, as number 1
    const auto next = history.NextToUndo();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->what, "Delete 'b'");
    EXPECT_EQ(history.Undo([](std::size_t) { return true; }).text,
              "Undone: Delete 'b'; back again: 'b'");
}

TEST(Journal, OneOfAnEarlierVersionGoesOn) {
    Book book;
    {
        History history(book.files, book.File());
        ASSERT_TRUE(book.Throw(history, "a"));
    }
    sqlite3* earlier = nullptr;
    ASSERT_EQ(::sqlite3_open(book.File().c_str(), &earlier), SQLITE_OK);
    EXPECT_EQ(::sqlite3_exec(earlier, "ALTER TABLE commands DROP COLUMN whole", nullptr, nullptr,
                             nullptr),
              SQLITE_OK);
    ::sqlite3_close(earlier);
    History history(book.files, book.File());
    EXPECT_EQ(Whats(history), std::vector<std::string>{"Delete 'a'"});
    ASSERT_TRUE(book.Throw(history, "b")) << book.error;
    for (const char* text :
         {"Undone: Delete 'b'; back again: 'b'", "Undone: Delete 'a'; back again: 'a'"})
        EXPECT_EQ(history.Undo([](std::size_t) { return true; }).text, text);
}

} // namespace
} // namespace tarn::testing

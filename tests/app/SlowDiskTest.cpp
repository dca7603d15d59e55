// On a network mount each call that names a file costs more than a picture: a step to one that was
// made ahead takes a look at its file and at its note, and nothing that is shown is less for it.
#include "FilesDesk.h"
#include "FitsFiles.h"

#include "imaging/PicturesAhead.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <mutex>
#include <thread>

namespace {

struct Watch {
    std::mutex mutex;
    std::vector<std::string> roots; // files below them count; none: nothing does
    std::thread::id thread;
    std::vector<std::string> calls;
};
Watch theWatch;

void Name(const char* verb, const char* path) {
    const std::lock_guard lock(theWatch.mutex);
    if (std::this_thread::get_id() != theWatch.thread) return;
    for (const std::string& root : theWatch.roots)
        if (std::string_view(path).starts_with(root))
            theWatch.calls.push_back(verb + std::string(path).substr(root.size()));
}

template <typename Function> Function* Real(Function*, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// The readers reach their files by themselves and through libraries: here is where all of them
// pass.
extern "C" {
int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    Name("open ", path);
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return open64(path, flags, mode);
}
FILE* fopen(const char* path, const char* mode) {
    static const auto real = Real(&::fopen, "fopen");
    Name("open ", path);
    return real(path, mode);
}
int stat(const char* path, struct stat* status) noexcept {
    static const auto real = Real(&::fstatat, "fstatat");
    Name("look ", path);
    return real(AT_FDCWD, path, status, 0);
}
int lstat(const char* path, struct stat* status) noexcept {
    static const auto real = Real(&::fstatat, "fstatat");
    Name("look ", path);
    return real(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}
int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept {
    static const auto real = Real(&::statx, "statx");
    Name("look ", path);
    return real(folder, path, flags, mask, status);
}
int access(const char* path, int mode) noexcept {
    static const auto real = Real(&::access, "access");
    Name("look ", path);
    return real(path, mode);
}
}

namespace tarn::testing {
namespace {

using CallNames = std::vector<std::string>;

struct SlowDesk : FilesDesk {
    SlowDesk() : FilesDesk(std::vector<std::string>()) {
        settings->Write("filedate_auto", "False");
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "f.jpg", "g.jpg"})
            folder.Write(name, Behind(CanonPicture(), TellTale(300, 200)));
        folder.Write("d.fit", NightSky(120, 80, {{"OBJECT", "'M 31'"}}));
        folder.Write("e.bmp", PictureBytes(TellTale(200, 300), "BMP"));
        notes.Write("b.enf", "of b");
        notes.Write("d.enf", "of d");
    }
    void StartWithAll() {
        Start();
        c.FCheck->setChecked(true);
        GoTo("a.jpg");
    }
    // What the interface thread asks the disk from here to the end, once all is made ahead.
    void BeginWatch() {
        house.ahead.WaitUntilDone();
        const std::lock_guard lock(theWatch.mutex);
        theWatch.calls.clear();
        theWatch.thread = std::this_thread::get_id();
        theWatch.roots = {folder.Path() + "/", notes.Path() + "/"};
    }
    static CallNames EndWatch() {
        const std::lock_guard lock(theWatch.mutex);
        theWatch.roots.clear();
        return theWatch.calls;
    }
    CallNames Step(int key) {
        BeginWatch();
        Key(key);
        return EndWatch();
    }
    std::string Seen() const {
        return Panel() + Status() + "|" + Error() + "|" + Said() + "|" + s.FileDate + "|" +
               s.FileModifiedText + "|" + s.NoteText + "|" + c.SizeText->text().toStdString() +
               (c.StretchButton->isEnabled() ? "|stretches" : "|");
    }
};

TEST(SlowDisk, AStepToAPictureMadeAheadLooksAtItAndItsNoteAlone) {
    SlowDesk d;
    d.StartWithAll();
    EXPECT_EQ(d.Step(Qt::Key_N), (CallNames{"look b.jpg", "open b.enf"}));
    EXPECT_EQ(d.s.NoteText, "of b");
    EXPECT_EQ(d.Step(Qt::Key_N), (CallNames{"look c.jpg", "open c.enf"}));
    EXPECT_EQ(d.Step(Qt::Key_N), (CallNames{"look d.fit", "open d.enf"}));
    EXPECT_EQ(d.Step(Qt::Key_N), (CallNames{"look e.bmp", "open e.enf"}));
    EXPECT_EQ(d.Step(Qt::Key_P), (CallNames{"look d.fit", "open d.enf"}));
    EXPECT_EQ(d.Current(), "d.fit");
    EXPECT_EQ(d.s.NoteText, "of d");
}

TEST(SlowDisk, WhatIsShownIsWhatAFirstReadingShows) {
    SlowDesk d;
    d.StartWithAll();
    for (const char* name : {"b.jpg", "c.jpg", "d.fit", "e.bmp"}) {
        d.Step(Qt::Key_N);
        const std::string ahead = d.Seen();
        const QImage picture = d.c.Picture1->Picture();
        d.house.ahead.Expect({}); // what was taken stays
        d.house.ahead.Expect({});
        d.BeginWatch();
        d.GoTo(name);
        const CallNames calls = SlowDesk::EndWatch();
        EXPECT_NE(std::find(calls.begin(), calls.end(), std::string("open ") + name), calls.end());
        EXPECT_EQ(d.Seen(), ahead);
        EXPECT_EQ(d.c.Picture1->Picture(), picture);
    }
}

// A kept picture counts for the very file that it was read from, and its facts with it.
TEST(SlowDisk, AFileThatChangedIsReadAnewAndOneThatWentIsTold) {
    SlowDesk d;
    d.StartWithAll();
    d.house.ahead.WaitUntilDone();
    d.folder.Write("b.jpg", Behind(NikonPicture(), TellTale(90, 60)));
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.s.ImageWidth, 90);
    EXPECT_NE(d.Panel().find("NIKON"), std::string::npos) << d.Panel();
    d.house.ahead.WaitUntilDone();
    std::filesystem::remove(d.At("c.jpg"));
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Error(), "No such file or directory - b.jpg");
    EXPECT_TRUE(d.c.Picture1->Picture().isNull());
}

TEST(SlowDisk, AShowLooksAtEachPictureOnce) {
    SlowDesk d;
    d.StartWithAll();
    CallNames calls;
    AppDesk::ShowActs acts;
    acts.emplace_back([&] {
        d.BeginWatch();
        QTest::keyClick(d.house.slides.Window(), Qt::Key_N);
    });
    acts.emplace_back([&] { calls = SlowDesk::EndWatch(); });
    d.RunShow(d.c.SlideButton, acts);
    EXPECT_EQ(calls, CallNames{"look b.jpg"});
}

} // namespace
} // namespace tarn::testing

// Kills each kind of save 200 times at a random instant: what stands there must be the old or the
// new, whole, and nothing of the user's may be lost.
#include "KillSaves.h"

#include "convert/ConvertPicture.h"
#include "fileops/PicturePlan.h"
#include "imaging/JpegWriter.h"
#include "marks/MarkFiles.h"
#include "marks/Sidecar.h"
#include "notes/NoteStore.h"
#include "platform/SettingsStore.h"
#include "thumbnails/ThumbNames.h"
#include "thumbnails/ThumbRun.h"
#include "web/GalleryRun.h"
#include "web/PageBuild.h"

#include <map>

namespace {

using namespace tarn;
using tarn::bench::Found;
using tarn::bench::KillDesk;
using tarn::bench::KillSaves;
using tarn::bench::KillSubject;

constexpr int kPictures = 4;

Found Torn(const char* what, int save) {
    std::printf("save %d: %s\n", save, what);
    return Found::Torn;
}

// All of one kind give that kind, any mixture is in part.
Found Joined(bool allOld, bool allNew) {
    return allNew ? Found::New : allOld ? Found::Old : Found::Partly;
}

std::string Text(int number) {
    std::string text;
    while (text.size() < 200000) text += "note " + std::to_string(number) + "\r\n";
    return text;
}

std::string NameOf(int picture) {
    return "P" + std::to_string(picture) + ".jpg";
}

void Must(bool done) {
    if (!done) std::_Exit(2);
}

// What works on pictures runs in processes of its own: threads of the toolkit do not survive the
// forks that follow.
void Apart(const std::function<void()>& work) {
    tarn::bench::Ended(tarn::bench::Begin(work));
}

// A picture that takes some time to decode and to pack. Its number counts by odd and even alone, as
// that of all saves below: old and new differ, and are made but once.
QImage Grained(int number) {
    QImage picture(900, 600, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb((x * y + number % 2 * 99) % 251, x % 256, y % 256));
    return picture;
}

const std::string& Jpeg(int number) {
    static std::string made[2];
    std::string& jpeg = made[number % 2];
    if (!jpeg.empty()) return jpeg;
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/made.jpg";
    const auto files = MakeFiles();
    Apart([&] {
        std::string error;
        Must(files->Write(path, EncodeJpeg(Grained(number), 90, &error), &error));
    });
    jpeg = files->Read(path, std::numeric_limits<std::size_t>::max()).value_or("(none)");
    return jpeg;
}

// With a note that another program has changed meanwhile, which must not be lost either.
int KillNotes(bool changed) {
    const KillDesk desk;
    const std::string note = desk.folder + "/M31.enf";
    return KillSaves(desk, {changed ? "note changed meanwhile" : "note",
                            [&](int i) { desk.Put(note, Text(i - 1)); },
                            [&](int i) {
                                NoteStore store(*desk.files);
                                store.index.SetFolder(desk.folder);
                                if (!changed) store.Load(note);
                                std::string error;
                                Must(store.Save(*desk.files, note, Text(i), &error));
                            },
                            [&](int i) {
                                const std::string found = desk.Read(note);
                                if (found != Text(i) && found != Text(i - 1))
                                    return Torn("half a note", i);
                                if (changed && !desk.IsAnywhere(Text(i - 1)))
                                    return Torn("lost note", i);
                                return found == Text(i) ? Found::New : Found::Old;
                            }});
}

int KillSettings() {
    const KillDesk desk;
    const std::string file = desk.folder + "/settings.ini";
    constexpr int kKeys = 250;
    const auto write = [&](int i) {
        const auto store = MakeSettingsStore(file);
        for (int key = 0; key < kKeys; ++key)
            store->Write("key_" + std::to_string(key), "value " + std::to_string(i));
        Must(store->Flush());
    };
    const int torn =
        KillSaves(desk, {"settings", [&](int i) { write(i - 1); }, write,
                         [&](int i) {
                             const auto store = MakeSettingsStore(file);
                             int of[2] = {};
                             for (int key = 0; key < kKeys; ++key)
                                 for (const int fresh : {0, 1})
                                     of[fresh] += store->Read("key_" + std::to_string(key), "") ==
                                                  "value " + std::to_string(i - 1 + fresh);
                             if (of[1] == kKeys) return Found::New;
                             return of[0] == kKeys ? Found::Old : Torn("mixed", i);
                         }});
    for (const auto& entry : std::filesystem::directory_iterator(desk.folder))
        if (entry.path() != file) std::printf("  left: %s\n", entry.path().filename().c_str());
    return torn;
}

// Over an older picture, which goes to the wastebasket.
int KillConverted() {
    const KillDesk desk;
    const std::string path = desk.folder + "/a-CM.jpg";
    return KillSaves(desk, {"converted picture", [&](int i) { desk.Put(path, Jpeg(i - 1)); },
                            [&](int i) {
                                ImgX picture;
                                picture.TakePicture(Grained(i));
                                ConvertOptions options;
                                options.quality = 90;
                                const Converted made = ConvertPicture(picture, options);
                                Changes changes(*desk.files);
                                std::string error;
                                Must(MakeRoom(*desk.files, {}, path, changes, &error));
                                Must(desk.files->Write(path, made.jpeg, &error));
                            },
                            [&](int i) {
                                const std::string found = desk.Read(path);
                                if (!desk.IsAnywhere(Jpeg(i - 1)))
                                    return Torn("the older picture is lost", i);
                                if (found == Jpeg(i)) return Found::New;
                                // Between the two it stands in the wastebasket alone.
                                if (found == "(none)") return Found::Partly;
                                return found == Jpeg(i - 1) ? Found::Old
                                                            : Torn("half a picture", i);
                            }});
}

int KillThumbnails() {
    const KillDesk desk;
    std::filesystem::create_directory(desk.folder + "/thumbnails");
    std::vector<ThumbJob> jobs;
    for (int i = 0; i < kPictures; ++i) {
        desk.Put(desk.folder + "/" + NameOf(i), Jpeg(i));
        jobs.push_back({i, NameOf(i)});
    }
    const auto run = [&](int number) { // each other one in another quality
        ThumbRequest request;
        request.pictures = desk.folder;
        request.subFolder = "thumbnails";
        request.quality = number % 2 == 0 ? 60 : 90;
        ThumbRun thumbs(jobs, request, *desk.files);
        while (!thumbs.Done()) Must(thumbs.Step());
    };
    const auto made = [&] {
        std::vector<std::string> all;
        for (int i = 0; i < kPictures; ++i)
            all.push_back(desk.Read(desk.folder + "/thumbnails/" + ThumbnailName(120, NameOf(i))));
        return all;
    };
    std::vector<std::string> of[2];
    for (const int kind : {0, 1}) Apart([&] { run(kind); }), of[kind] = made();
    return KillSaves(desk, {"thumbnails", [&](int i) { Apart([&] { run(i - 1); }); }, run,
                            [&](int i) {
                                const auto& fresh = of[i % 2];
                                const auto& old = of[(i + 1) % 2];
                                const auto found = made();
                                for (std::size_t k = 0; k < found.size(); ++k)
                                    if (found[k] != fresh[k] && found[k] != old[k])
                                        return Torn("half a thumbnail", i);
                                return Joined(found == old, found == fresh);
                            }});
}

EntryFacts Entry(int number) {
    EntryFacts facts;
    facts.name = NameOf(number);
    facts.type = ".JPG";
    facts.width = 900;
    facts.height = 600;
    facts.note = Text(number).substr(0, 7000);
    return facts;
}

// A new page over an old one, whose bytes reach the disk entry by entry; or one that is appended
// to.
int KillPage(bool appended) {
    const KillDesk desk;
    const std::string path = desk.folder + "/page.html";
    const auto lay = [&](const std::string& page, int i, bool append) {
        const HtmlSettings settings;
        PageBuild build("v");
        build.Choose(page, desk.folder);
        Must(append ? build.Append(*desk.files, "now")
                    : build.Begin(*desk.files, settings, std::to_string(i % 2), {}));
        for (int k = 0; k < (append || !appended ? kPictures : 1); ++k)
            Must(build.Add(*desk.files, settings, true, Entry(i % 2 + k)));
        Must(build.Close(*desk.files));
    };
    std::map<std::pair<int, bool>, std::string> wholes;
    const auto whole = [&](int i, bool append) {
        std::string& kept = wholes[{i % 2, append}];
        if (!kept.empty()) return kept;
        // As deep as the real one, for the links to the pictures.
        const std::string beside = desk.home.path().toStdString() + "/whole";
        std::filesystem::create_directory(beside);
        const std::string page = beside + "/page.html";
        lay(page, i, false);
        if (append) lay(page, i + 1, true);
        return kept = desk.Read(page);
    };
    return KillSaves(
        desk, {appended ? "page appended to" : "page laid by hand",
               [&](int i) { lay(path, i - 1, false); }, [&](int i) { lay(path, i, appended); },
               [&](int i) {
                   const std::string old = whole(i - 1, false);
                   const std::string fresh = appended ? whole(i - 1, true) : whole(i, false);
                   const std::string found = desk.Read(path);
                   if (found == old || found == fresh) return Joined(found == old, found == fresh);
                   // New as far as it goes; behind that the close of the old one, at most.
                   std::size_t same = 0;
                   while (same < found.size() && same < fresh.size() && found[same] == fresh[same])
                       ++same;
                   const bool grows = same == found.size() ||
                                      (appended && found.size() == old.size() &&
                                       old.compare(same, std::string::npos, found, same) == 0);
                   return grows ? Found::Partly : Torn("a torn page", i);
               }});
}

// Anew over an old one.
int KillGallery() {
    const KillDesk desk;
    GalleryPlan plan;
    plan.indexPath = desk.folder + "/index.html";
    plan.pictureFolder = desk.folder;
    plan.subFolder = "thumbnails";
    plan.thumbnailSize = 120;
    for (int i = 0; i < 20; ++i) plan.items.push_back({NameOf(i), "T120_" + NameOf(i)});
    const auto make = [&](int save) {
        const int i = save % 2;
        plan.now = std::to_string(i);
        plan.version = std::to_string(i);
        GalleryRun run(*desk.files, plan,
                       {[](const std::string&) { return std::pair(900, 600); },
                        [](const std::string&) { return 1000LL; },
                        [i](const std::string&) { return Text(i).substr(0, 5000); },
                        [](const std::string&) { return std::vector<std::string>{"row"}; }});
        while (run.Step()) {
        }
        Must(run.Finish());
    };
    const auto pages = [&] {
        std::map<std::string, std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(desk.folder))
            if (entry.is_regular_file())
                found[entry.path().filename().string()] = desk.Read(entry.path().string());
        return found;
    };
    std::map<std::string, std::string> old;
    return KillSaves(desk, {"gallery",
                            [&](int i) {
                                make(i - 1);
                                old = pages();
                            },
                            make,
                            [&](int i) {
                                const auto found = pages();
                                if (found == old) return Found::Old;
                                make(i);
                                const auto fresh = pages();
                                for (const auto& [name, bytes] : found)
                                    if (bytes != old.at(name) && bytes != fresh.at(name))
                                        return Torn("half a page of a gallery", i);
                                return Joined(false, found == fresh);
                            }});
}

// A sidecar of another program's; what that has written must stay.
int KillMarks() {
    const KillDesk desk;
    const std::string picture = desk.folder + "/a.jpg";
    const std::string foreign =
        "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
        "rdf:about='' xmlns:my='http://example.org/my#' my:word='" +
        Text(0) + "'/></rdf:RDF>";
    const auto mark = [](int i) { return SetTo({i % 2 ? Decision::Keep : Decision::Reject, 3}); };
    const auto set = [&](int i) {
        const auto sidecars = SidecarsIn(*desk.files, desk.folder, nullptr);
        Must(sidecars && WriteMark(*desk.files, picture, *sidecars, mark(i)).done);
    };
    std::string old;
    return KillSaves(desk, {"mark",
                            [&](int i) {
                                desk.Put(picture, "a picture");
                                desk.Put(picture + ".xmp", foreign);
                                set(i - 1);
                                old = desk.Read(picture + ".xmp");
                            },
                            set,
                            [&](int i) {
                                const std::string found = desk.Read(picture + ".xmp");
                                if (found == old) return Found::Old;
                                return found == XmpWithMark(old, mark(i), nullptr)
                                           ? Found::New
                                           : Torn("half a sidecar", i);
                            }});
}

} // namespace

int main() {
    const int torn = KillNotes(false) + KillNotes(true) + KillMarks() + KillSettings() +
                     KillConverted() + KillThumbnails() + KillPage(false) + KillPage(true) +
                     KillGallery();
    std::printf("%d torn or lost\n", torn);
    return torn == 0 ? 0 : 1;
}

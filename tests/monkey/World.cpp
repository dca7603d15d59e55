#include "World.h"

#include "FitsFiles.h"
#include "clips/ClipFiles.h"

#include <algorithm>
#include <sys/stat.h>

namespace tarn::testing {

World::World(Dice& dice) : dialogs(dice, root.Path()) {
    for (const char* name : {"pictures", "pictures/\xC3\x89vening one", "pictures/UPPER",
                             "pictures/empty", "copies", "notes", "paper", "home"})
        fs::create_directory(Folder(name));
    Fill();
    m_files.home = Folder("home");
    m_files.onChange = [this](const std::string& verb, const std::string& path) -> std::string {
        // A file of a folder that was asked before comes by its name.
        const bool name = path.empty() || (verb == "stage" && path[0] != '/');
        if (name || IsOurs(path)) return {};
        if (trespass.empty()) trespass = verb + " " + path;
        return "not ours";
    };
    m_settings = MakeSettingsStore(Folder("home") + "/settings.ini");
    m_settings->Write("notes_folder", Folder("notes"));
    m_settings->Write("copy_folder", Folder("copies"));
    m_settings->Flush();
}

bool World::IsOurs(const std::string& path) const {
    return path.starts_with(root.Path() + "/") || path.starts_with(std::getenv("HOME"));
}

std::vector<std::string> World::PictureFolders() const {
    return {Folder("pictures"), Folder("pictures/\xC3\x89vening one"), Folder("pictures/UPPER"),
            Folder("pictures/empty"), Folder("copies")};
}

void World::Start(const std::string& path) {
    m_house.reset();
    m_settings->Flush();
    m_settings = MakeSettingsStore(Folder("home") + "/settings.ini");
    events = std::make_unique<QuickPump>();
    m_house = std::make_unique<House>(Platform{m_files, *m_settings, *events, dialogs, m_sound,
                                               m_desktop, *m_clipboard, m_printing});
    m_house->Start(path, {});
}

void World::Restart() {
    Fill();
    Start(Folder("pictures"));
}

std::string StampOf(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0) return {};
    return std::to_string(found.st_size) + "/" + std::to_string(found.st_ctim.tv_sec) + "/" +
           std::to_string(found.st_ctim.tv_nsec);
}

QImage Plain(int number) {
    constexpr int kHues = 12;
    QImage picture(60 + number, 40, QImage::Format_RGB32);
    picture.fill(
        QColor::fromHsv(number % kHues * 30, 255 - number / kHues * 50, 255 - number / kHues * 40));
    return picture;
}

void World::Fill() const {
    int number = 0;
    const auto add = [this](const std::string& name, const std::string& bytes) {
        if (!fs::exists(root.Path() + "/" + name)) root.Write(name, bytes);
    };
    const auto write = [&](const std::string& name, const std::string& bytes) {
        add("pictures/" + name, bytes);
    };
    const auto plain = [&] { return JpegBytes(Plain(number++)); };
    const auto behind = [&](const std::string& head) { return Behind(head, Plain(number++)); };
    const auto turned = [&](unsigned orientation) {
        return Photo(ExifBuilder(Endian::Little).Short(0x112, orientation), Plain(number++));
    };
    write("IMG_0001.JPG", behind(CanonPicture()));
    write("dsc 0002.jpg", behind(NikonPicture()));
    write("portrait.jpg", turned(6));
    write("portrait left.JPG", turned(8));
    write("upside.jpg", turned(3));
    write("plain.jpg", plain());
    static const std::string large = JpegBytes(Plain(number).scaled(1500, 1100)); // takes its time
    ++number;
    write("large.jpg", large);
    write("cut.jpg", behind(CanonPicture()).substr(0, 1900));
    write("broken.jpg", "no picture at all");
    write("empty.jpg", "");
    write("profile.jpg", WithProfile(plain(), "no profile"));
    write("swapped profile.jpg", WithProfile(plain(), SwappedProfile()));
    write("drawing.png", PictureBytes(Plain(number++), "PNG"));
    write("\xC3\xA9toile.png", PictureBytes(Plain(number++), "PNG"));
    write("scan.tif", PictureBytes(Plain(number++), "TIFF"));
    write("old.bmp", PictureBytes(Plain(number++), "BMP"));
    write("sky.fits", NightSky(80, 60, {{"OBJECT", "'M 31'"}}));
    static const std::string cube = FitsBytes(
        16, {80, 60, 3}, [](std::size_t i) { return double(1000 + i % 4800 * 7919 % 40); });
    write("cube.fits", cube); // three pictures that look alike
    write("cut sky.fit", NightSky(80, 60).substr(0, 4000));
    write("saturn.ser", NumberedSer(12));
    write("readme.txt", "First line\r\nsecond");
    write("guiding.log", "12:00:01 guiding started\n");
    write("own page.html", "<html><body>A page of the user's own</body></html>");
    if (const std::string clip = Folder("pictures/clip.avi"); !fs::exists(clip))
        MakeClip(clip, 12, "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p");
    for (const char* name : {"one.jpg", "two.jpg", "three.jpg"})
        write("\xC3\x89vening one/" + std::string(name), plain());
    for (const char* name : {"A.JPG", "B.JPG"}) write("UPPER/" + std::string(name), plain());
    add("copies/B.JPG", plain());
    add("notes/IMG_0001.enf", "Andromeda, 12 x 300 s\r\nGood seeing");
    add("notes/DSC 0002.ENF", "A note in upper case");
    add("notes/portrait.enf", "\"An old note\"\r\n");
    add("notes/plain.enf", std::string(9000, 'l')); // longer than is read
    add("notes/nobody.enf", "of no picture");
}

} // namespace tarn::testing

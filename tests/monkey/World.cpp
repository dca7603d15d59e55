#include "World.h"

#include "FitsFiles.h"
#include "video/ClipFiles.h"

#include <algorithm>
#include <filesystem>

namespace tarn::testing {

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kNames{"new", "M 31.jpg", "\xC3\xA9toile", "B.JPG",
                                      "",    "IMG_0003", "a/b",           "CON"};

} // namespace

int RandomDialogs::Choose(Icon, const std::string&, const std::string&,
                          const std::vector<std::string>& buttons) {
    const int choice = m_dice.Below(static_cast<int>(buttons.size()));
    if (buttons[std::size_t(choice)] == "Delete for good") deletedForGood = true;
    return choice;
}

std::string RandomDialogs::AskText(const std::string&, const std::string&, const std::string&) {
    return m_dice.Of(kNames);
}

std::string RandomDialogs::OpenFile(const std::string&, const std::string& folder,
                                    const std::string& filter) {
    if (m_dice.OneIn(4)) return {};
    if (filter.find("htm") != std::string::npos)
        return folder + "/made-" + std::to_string(m_dice.Below(3)) + ".html";
    std::vector<std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(m_root))
        if (entry.is_regular_file()) all.push_back(entry.path().string());
    std::sort(all.begin(), all.end());
    return m_dice.Of(all);
}

std::string RandomDialogs::ChooseFolder(const std::string&, const std::string&) {
    const char* const folders[] = {"",         "pictures", "pictures/\xC3\x89vening one",
                                   "copies",   "notes",    "pictures/UPPER",
                                   "not there"};
    const std::string folder = m_dice.Of(folders);
    return folder.empty() ? folder : m_root + "/" + folder;
}

std::string RandomDialogs::SaveFile(const std::string& title, const std::string& path,
                                    const std::string& filter) {
    const auto dot = path.rfind('.');
    return ChooseTarget(title, path.substr(0, path.rfind('/') + 1), filter,
                        dot == std::string::npos ? "bin" : path.substr(dot + 1));
}

std::string RandomDialogs::ChooseTarget(const std::string&, const std::string& start,
                                        const std::string&, const std::string& ending) {
    if (m_dice.OneIn(4)) return {};
    const std::string folder = fs::is_directory(start) ? start : start.substr(0, start.rfind('/'));
    return folder + "/made-" + std::to_string(m_dice.Below(3)) + "." + ending;
}

std::optional<int> RandomDialogs::ChooseColor(const std::string&, int) {
    constexpr int kColors = 0x1000000;
    if (m_dice.OneIn(3)) return {};
    return m_dice.Below(kColors);
}

bool RandomDialogs::ChooseFont(const std::string&, std::string& name, int& size) {
    name = m_dice.OneIn(2) ? "DejaVu Sans" : "No such face";
    size = 6 + m_dice.Below(20);
    return !m_dice.OneIn(3);
}

bool RandomDialogs::ChoosePrinter(PrintQuestion& question) {
    question.choice.toFile = m_dice.OneIn(2);
    question.choice.pdf = m_root + "/paper/made-" + std::to_string(m_dice.Below(2)) + ".pdf";
    if (!question.choice.toFile) question.choice.printer = "a printer";
    question.from = question.least;
    question.to = m_dice.OneIn(2) ? question.most : question.least;
    return !m_dice.OneIn(3);
}

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

std::string World::Wastebasket() {
    return std::string(std::getenv("XDG_DATA_HOME")) + "/Trash/files";
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
    const auto behind = [&](const std::string& head) {
        return head.substr(0, head.size() - 2) + plain().substr(2);
    };
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

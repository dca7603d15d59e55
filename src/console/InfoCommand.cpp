#include "console/InfoCommand.h"

#include "console/Arguments.h"
#include "pictureinfo/PictureInfoReader.h"

#include <cstdio>

namespace tarn {

namespace {

void Print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

class InfoPrinter {
public:
    explicit InfoPrinter(const PictureLooker& lookAt) : m_lookAt(lookAt) {}

    void PrintPanel(const std::string& path) {
        BeginPicture(m_info, path);
        m_info.FileDate = FormatFileDate(ReadFileFacts(path));
        const PictureLook look = m_lookAt(path);
        m_info.ImageWidth = look.width;
        m_info.ImageHeight = look.height;
        m_reader.ReadPictureInfo(m_info);
        if (!WasRead()) return;
        Print("== " + path + "\n");
        for (const std::string& row : m_info.PanelRows) Print(row + "\n");
        for (const std::string& row : look.lines) Print(row + "\n");
    }

    void PrintDates(const std::string& path) {
        m_info.Filename = path;
        m_info.CameraDate.clear();
        m_info.PictureDate.clear();
        m_reader.ReadCameraDate(m_info);
        if (WasRead()) Print(path + "\t" + m_info.CameraDate + "\t" + m_info.PictureDate + "\n");
    }

    int ExitStatus() const { return m_exitStatus; }

private:
    bool WasRead() {
        if (m_reader.FileWasRead()) return true;
        ComplainOfFile(m_info.Filename, "cannot be read");
        m_exitStatus = kExitFailedFile;
        return false;
    }

    const PictureLooker& m_lookAt;
    PictureInfoReader m_reader;
    PictureInfo m_info;
    int m_exitStatus = kExitSuccess;
};

constexpr OptionRule kOptions[] = {{"--date"}};
constexpr UsageLine kLines[] = {{kOptions, "FILE..."}};

} // namespace

constinit const Usage kInfoUsage{"info", kLines};

int RunInfo(std::span<const std::string> words, const PictureLooker& lookAt) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kInfoUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kInfoUsage);
    InfoPrinter printer(lookAt);
    for (const std::string& path : arguments->Operands()) {
        if (arguments->Has("--date")) {
            printer.PrintDates(path);
        } else {
            printer.PrintPanel(path);
        }
    }
    return printer.ExitStatus();
}

} // namespace tarn

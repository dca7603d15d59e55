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
    explicit InfoPrinter(const PictureLooker& lookAt) : lookAt_(lookAt) {}

    void PrintPanel(const std::string& path) {
        BeginPicture(info_, path);
        info_.FileDate = FormatFileDate(ReadFileFacts(path));
        const PictureLook look = lookAt_(path);
        info_.ImageWidth = look.width;
        info_.ImageHeight = look.height;
        reader_.ReadPictureInfo(info_);
        if (!WasRead()) return;
        Print("== " + path + "\n");
        for (const std::string& row : info_.PanelRows) Print(row + "\n");
        for (const std::string& row : look.lines) Print(row + "\n");
    }

    void PrintDates(const std::string& path) {
        info_.Filename = path;
        info_.CameraDate.clear();
        info_.PictureDate.clear();
        reader_.ReadCameraDate(info_);
        if (WasRead()) Print(path + "\t" + info_.CameraDate + "\t" + info_.PictureDate + "\n");
    }

    int ExitStatus() const { return exitStatus_; }

private:
    bool WasRead() {
        if (reader_.FileWasRead()) return true;
        ComplainOfFile(info_.Filename, "cannot be read");
        exitStatus_ = kExitFailedFile;
        return false;
    }

    const PictureLooker& lookAt_;
    PictureInfoReader reader_;
    PictureInfo info_;
    int exitStatus_ = kExitSuccess;
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

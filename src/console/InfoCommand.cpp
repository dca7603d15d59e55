#include "console/InfoCommand.h"

#include "console/Arguments.h"
#include "imaging/fits/FitsLines.h"
#include "pictureinfo/CameraDataText.h"
#include "pictureinfo/JpegFrame.h"
#include "pictureinfo/PictureFile.h"
#include "pictureinfo/PictureInfoReader.h"

#include <cstdio>
#include <optional>

namespace tarn {

namespace {

constexpr std::size_t kPiece = 1 << 16; // bytes

class InfoPrinter {
public:
    explicit InfoPrinter(const PictureLooker& lookAt) : m_lookAt(lookAt) {}
    ~InfoPrinter() { Flush(); }
    InfoPrinter(const InfoPrinter&) = delete;
    InfoPrinter& operator=(const InfoPrinter&) = delete;

    void PrintPanel(const std::string& path) {
        BeginPicture(m_info, path);
        m_reader.Take(PictureFile(path));
        m_info.FileDate = FormatFileDate(m_reader.File());
        const PictureLook look = Look(path);
        m_info.ImageWidth = look.width;
        m_info.ImageHeight = look.height;
        m_reader.ReadTaken(m_info);
        if (!WasRead()) return;
        AddOwnFacts(m_info, look.cameraDate, look.lines);
        Print("== ", path, "\n");
        for (const std::string& row : m_info.PanelRows) Print(row, "\n");
        if (!look.fault.empty()) Complain(look.fault);
    }

    void PrintDates(const std::string& path) {
        m_info.Filename = path;
        m_info.CameraDate.clear();
        m_info.PictureDate.clear();
        m_reader.ReadCameraDate(m_info);
        const SkyFacts sky = m_info.NoExif ? SkyFactsOf(path) : SkyFacts();
        if (m_info.NoExif) TakeOwnDate(sky.cameraDate);
        if (!WasRead()) return;
        Print(path, "\t", m_info.CameraDate, "\t", m_info.PictureDate, "\n");
        if (!sky.fault.empty()) Complain(sky.fault);
    }

    int ExitStatus() const { return m_exitStatus; }

private:
    // In large pieces, since rows are short.
    template <typename... Texts> void Print(const Texts&... texts) {
        (m_out.append(texts), ...);
        if (m_out.size() >= kPiece) Flush();
    }
    void Flush() {
        std::fwrite(m_out.data(), 1, m_out.size(), stdout);
        m_out.clear();
    }

    // Ordinary JPEG files need no decoders, whose loading takes as long as a thousand of them.
    PictureLook Look(const std::string& path) const {
        const auto frame = m_reader.FileWasRead() ? FindJpegFrame(m_reader.Record()) : std::nullopt;
        if (!frame) return m_lookAt(path);
        PictureLook look;
        look.width = frame->width;
        look.height = frame->height;
        return look;
    }

    bool WasRead() {
        if (m_reader.FileWasRead()) return true;
        Complain("cannot be read");
        return false;
    }

    void Complain(std::string_view fault) {
        Flush(); // so that the complaint stands where its file would
        std::fflush(stdout);
        ComplainOfFile(m_info.Filename, fault);
        m_exitStatus = kExitFailedFile;
    }

    void TakeOwnDate(const std::string& date) {
        m_info.CameraDate = date;
        m_info.PictureDate = ShownCameraDate(m_info.CameraDate).value_or("");
    }

    const PictureLooker& m_lookAt;
    PictureInfoReader m_reader;
    PictureInfo m_info;
    std::string m_out;
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

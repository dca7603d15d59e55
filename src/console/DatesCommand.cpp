#include "console/DatesCommand.h"

#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"
#include "pictureinfo/PictureInfoReader.h"
#include "pictureinfo/dates/CameraDateText.h"

#include <cstdio>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--dry-run"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER"}};

// What is read of a folder first, so that all of it is one command.
class DateRun {
public:
    void Read(const std::string& folder, const std::string& name) {
        m_info.Filename = JoinPath(folder, name);
        m_info.CameraDate.clear();
        m_info.PictureDate.clear();
        m_reader.ReadCameraDate(m_info);
        Row row{m_info.Filename, name, {}, {}, {}};
        if (!m_reader.FileWasRead())
            row.error = "cannot be read";
        else if (const auto time = m_info.NoExif ? std::nullopt : FileTimeOf(m_info.CameraDate))
            row.date = m_info.PictureDate, row.time = time;
        m_rows.push_back(std::move(row));
    }

    void Set(const DateSetter& set) {
        std::vector<SetDate> wanted;
        std::vector<Row*> rows;
        for (Row& row : m_rows) {
            if (!row.time) continue;
            wanted.push_back({row.path, *row.time, {}});
            rows.push_back(&row);
        }
        const std::vector<SetDate> done = set(wanted);
        for (std::size_t i = 0; i < done.size(); ++i) rows[i]->error = done[i].error;
    }

    int Tell() const {
        int status = kExitSuccess;
        for (const Row& row : m_rows) {
            if (row.error.empty()) {
                std::printf("%s\t%s\n", row.name.c_str(), row.date.c_str());
                continue;
            }
            ComplainOfFile(row.path, row.error);
            status = kExitFailedFile;
        }
        return status;
    }

private:
    struct Row {
        std::string path;
        std::string name;
        std::string date; // empty: the picture has none
        std::optional<std::int64_t> time;
        std::string error;
    };
    PictureInfoReader m_reader;
    PictureInfo m_info;
    std::vector<Row> m_rows;
};

} // namespace

constinit const Usage kDatesUsage{"dates", kLines};

int RunDates(std::span<const std::string> words, const DateSetter& set) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kDatesUsage);
    if (arguments->Operands().size() != 1)
        return ComplainOfUsage("one folder is needed", kDatesUsage);
    const std::string& folder = arguments->Operands().front();
    const auto names = ListedPictures(folder);
    if (!names) {
        ComplainOfFile(folder, "is not a folder that can be read");
        return kExitFailedFile;
    }
    DateRun run;
    for (const std::string& name : *names) run.Read(folder, name);
    if (!arguments->Has("--dry-run")) run.Set(set);
    return run.Tell();
}

} // namespace tarn

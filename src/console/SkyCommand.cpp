#include "console/SkyCommand.h"

#include "common/paths.h"
#include "console/Arguments.h"
#include "console/NamedFrames.h"
#include "console/SiteOption.h"
#include "console/TableRow.h"
#include "platform/CanonicalPath.h"
#include "sky/headers/FrameHeader.h"
#include "sky/place/Angles.h"
#include "sky/place/SkyRows.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"}, {"--site", "LAT,LON,HEIGHT"}};
constexpr UsageLine kLines[] = {{kOptions, "FILE|FOLDER..."}};

constexpr int kTargetDecimals = 5; // of degrees
constexpr int kDecimals = 3;

struct Row {
    std::string path;
    SkyRow sky;
};

// The longitudes of a folder count one way, whoever named its files.
class SkyRun {
public:
    explicit SkyRun(const std::vector<std::string>& operands) {
        for (const NamedFrame& frame : FramesOf(operands)) {
            Row row{frame.path, {}};
            row.sky.fault = frame.fault;
            if (frame.fault.empty()) {
                FrameHeader header = ReadFrameHeader(frame.path, {});
                row.sky.fault = header.fault;
                if (header.fault.empty()) {
                    const std::string path = FolderOf(frame.path);
                    Folder& folder = m_folders.try_emplace(CanonicalPath(path)).first->second;
                    if (folder.rows.empty()) folder.path = path.empty() ? "." : path;
                    folder.rows.push_back(m_rows.size());
                    folder.names.insert(LastPart(frame.path));
                    folder.frames.push_back(std::move(header.where));
                }
            }
            m_rows.push_back(std::move(row));
        }
    }

    void Look(const std::optional<Site>& site) {
        for (const auto& [canonical, folder] : m_folders) {
            SkyOfFolder sky = SkyOver(folder.frames, SenseFor(folder), site);
            for (std::size_t i = 0; i < folder.rows.size(); ++i)
                m_rows[folder.rows[i]].sky = std::move(sky.rows[i]);
            if (sky.hasUnsure) ComplainOfFile(folder.path, SaidOfLongitudes(sky.sense));
        }
    }

    int Print(bool csv) const {
        PrintColumnNames(csv, {"file", "utc", "ra", "dec", "altitude", "azimuth", "airmass",
                               "sun_altitude", "moon_altitude", "moon_phase", "moon_separation",
                               "error"});
        int status = kExitSuccess;
        for (const Row& row : m_rows) {
            const SkyRow& sky = row.sky;
            TableRow line(csv);
            line.Add(row.path).Add(sky.utc ? UtcText(*sky.utc) : std::string());
            line.Add(WithinWrittenTurn(sky.rightAscension, kTargetDecimals), kTargetDecimals)
                .Add(sky.declination, kTargetDecimals);
            const double azimuth = WithinWrittenTurn(sky.azimuth, kDecimals);
            for (const double value : {sky.altitude, azimuth, sky.airMass, sky.sunAltitude,
                                       sky.moonAltitude, sky.moonPhase, sky.moonSeparation})
                line.Add(value, kDecimals);
            line.Add(sky.fault).Print();
            if (!sky.fault.empty()) status = kExitFailedFile;
        }
        return status;
    }

private:
    struct Folder {
        std::string path; // as it was first named
        std::vector<std::size_t> rows;
        std::vector<FrameWhere> frames;
        std::set<std::string> names; // of the frames
    };

    // Where the frames that are named do not tell, the others of their folder are asked.
    static LongitudeSense SenseFor(const Folder& folder) {
        LongitudeSense sense = SenseOf(folder.frames);
        const bool asks =
            sense.said.empty() &&
            std::any_of(folder.frames.begin(), folder.frames.end(),
                        [](const FrameWhere& frame) { return frame.HasUnsureSite(); });
        if (!asks) return sense;
        std::vector<FrameWhere> frames = folder.frames;
        for (const NamedFrame& other : FramesOf({folder.path})) {
            if (!other.fault.empty() || folder.names.contains(LastPart(other.path))) continue;
            FrameHeader header = ReadFrameHeader(other.path, {});
            if (header.fault.empty()) frames.push_back(std::move(header.where));
        }
        return SenseOf(frames);
    }

    std::vector<Row> m_rows;
    std::map<std::string, Folder> m_folders;
};

} // namespace

constinit const Usage kSkyUsage{"sky", kLines};

int RunSky(std::span<const std::string> words) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kSkyUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kSkyUsage);
    std::optional<Site> site;
    if (arguments->Has("--site")) {
        site = ParseSite(arguments->ValueOf("--site"), fault);
        if (!site) return ComplainOfUsage(fault, kSkyUsage);
    }
    SkyRun run(arguments->Operands());
    run.Look(site);
    return run.Print(arguments->Has("--csv"));
}

} // namespace tarn

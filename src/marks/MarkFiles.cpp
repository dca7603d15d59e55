#include "marks/MarkFiles.h"

#include "common/paths.h"
#include "imaging/exif/XmpPlaces.h"
#include "marks/Sidecar.h"
#include "platform/OpenRegular.h"
#include "platform/WholeFile.h"

namespace tarn {

namespace {

constexpr int kTries = 3; // at a sidecar that others are writing

// A picture that cannot be read, or says nothing of the kind, has no mark.
Mark MarkInPicture(const std::string& picture) {
    std::string ignored;
    const OpenFile file(picture, ignored);
    if (!file) return {};
    const std::string xmp = ReadXmp(FileBytes(file.Number()));
    if (xmp.empty()) return {};
    return MarkOfXmp(xmp, nullptr).value_or(Mark());
}

// The one that stands, or the one to be made.
std::string SidecarPath(const std::string& picture, const SidecarNames& sidecars) {
    const std::string name = LastPart(picture);
    const std::string found = sidecars.Of(name);
    return JoinPath(FolderOf(picture), found.empty() ? OwnSidecarName(name) : found);
}

// A sidecar as it stood when it was read; without bytes there is none.
struct Read {
    std::optional<FileLook> look;
    std::string bytes;
    Mark mark;
};

std::optional<Read> ReadSidecar(const Files& files, const std::string& picture,
                                const std::string& path, std::string* error) {
    if (!files.Exists(path)) return Read{{}, {}, MarkInPicture(picture)};
    Read read;
    read.look = files.Look(path, error);
    auto bytes = read.look ? ReadWhole(files, path, kLargestSidecar, error) : std::nullopt;
    const auto mark = bytes ? MarkOfXmp(*bytes, error) : std::nullopt;
    if (!mark) return {};
    read.bytes = std::move(*bytes);
    read.mark = *mark;
    return read;
}

// One try; none when the sidecar has changed while it was worked on.
std::optional<WrittenMark> TryToWrite(Files& files, const std::string& picture,
                                      const std::string& path, const MarkChange& change) {
    WrittenMark written;
    const auto read = ReadSidecar(files, picture, path, &written.error);
    if (!read) return written;
    written.mark = Changed(read->mark, change);
    written.done = written.mark == read->mark;
    if (written.done) return written;
    const auto bytes = XmpWithMark(read->bytes, SetTo(written.mark), &written.error);
    if (!bytes) return written;
    if (files.Look(path) != read->look) return {};
    written.done = files.Write(path, *bytes, &written.error);
    return written;
}

} // namespace

std::optional<SidecarNames> SidecarsIn(const Files& files, const std::string& folder,
                                       std::string* error) {
    const auto names = files.FileNames(folder, error);
    return names ? std::optional(SidecarNames(*names)) : std::nullopt;
}

FoundMark ReadMark(const Files& files, const std::string& picture, const SidecarNames& sidecars) {
    const std::string name = sidecars.Of(LastPart(picture));
    if (name.empty()) return {MarkInPicture(picture), {}};
    FoundMark found;
    const auto bytes =
        ReadWhole(files, JoinPath(FolderOf(picture), name), kLargestSidecar, &found.error);
    if (bytes) found.mark = MarkOfXmp(*bytes, &found.error).value_or(Mark());
    return found;
}

std::optional<SidecarBytes> SidecarWith(const Files& files, const std::string& picture,
                                        const SidecarNames& sidecars, const MarkChange& change) {
    const std::string path = SidecarPath(picture, sidecars);
    const auto read =
        files.Exists(picture) ? ReadSidecar(files, picture, path, nullptr) : std::nullopt;
    if (!read || Changed(read->mark, change) == read->mark) return {};
    auto bytes = XmpWithMark(read->bytes, SetTo(Changed(read->mark, change)), nullptr);
    return bytes ? std::optional(SidecarBytes{path, std::move(*bytes)}) : std::nullopt;
}

WrittenMark WriteMark(Files& files, const std::string& picture, const SidecarNames& sidecars,
                      const MarkChange& change) {
    const std::string path = SidecarPath(picture, sidecars);
    if (!files.Exists(picture)) return {false, {}, "No such file or directory", false, true};
    // Written over in place it could be lost halfway.
    if (!files.IsWritable(FolderOf(picture)))
        return {false, {}, "the folder may not be written", true, false};
    for (int i = 0; i < kTries; ++i)
        if (auto written = TryToWrite(files, picture, path, change)) {
            written->sidecar = LastPart(path);
            return *written;
        }
    return {false, {}, "another program keeps writing it", false, false};
}

} // namespace tarn

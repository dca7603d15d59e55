#include "convert/ConvertTarget.h"

#include "common/paths.h"
#include "common/text.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int kEnding = 4; // characters of a name that the new ending takes the place of

// One character at least stays. Of a longer ending the point goes too, for the new one brings its
// own.
std::string StemOfPlain(const std::string& name) {
    std::string stem(LeftChars(name, std::max(1, Length(name) - kEnding)));
    const bool longer = name.substr(stem.size()).find('.') == std::string::npos;
    if (longer && stem.size() > 1 && stem.ends_with('.')) stem.pop_back();
    return stem;
}

// Of "M31.fits.fz" both endings go, of "M31.fz" the one.
std::string StemOf(const std::string& name) {
    if (!IsPackedName(name) || Length(name) <= kPackedEnding) return StemOfPlain(name);
    std::string plain(LeftChars(name, Length(name) - kPackedEnding));
    const std::string type = FileTypeOf(plain);
    const bool named = type == ".FIT" || type == ".FTS" || type == "FITS";
    return named && Length(plain) > kEnding ? StemOfPlain(plain) : plain;
}

ConvertTarget Named(const std::string& folder, const std::string& stem) {
    const std::string name = stem + ".jpg";
    return {JoinPath(folder, name), name, stem + ".enf"};
}

} // namespace

ConvertTarget TargetBeside(const Files& files, const std::string& picture) {
    const std::string stem = StemOf(LastPart(picture));
    ConvertTarget target = Named(FolderOf(picture), stem);
    if (files.FindAnyCase(target.path)) target = Named(FolderOf(picture), stem + "-1");
    if (files.FindAnyCase(target.path)) target.path.clear();
    return target;
}

ConvertTarget TargetIn(const Files& files, const std::string& folder, const std::string& picture) {
    const std::string stem = StemOf(LastPart(picture));
    const ConvertTarget target = Named(folder, stem);
    return files.FindAnyCase(target.path) ? Named(folder, stem + "-CM") : target;
}

std::string CaptionOfNote(const std::string& note, int lines) {
    std::string caption;
    int taken = 0;
    for (std::string line : Split(note, '\r')) {
        if (taken++ >= std::max(1, lines)) break;
        if (!line.empty() && line.front() == '\n') line.erase(0, 1);
        caption += (taken > 1 ? "  " : "") + line;
    }
    return caption;
}

} // namespace tarn

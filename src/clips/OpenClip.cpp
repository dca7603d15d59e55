// Which reader a clip has: our own for SER, or the module with the libraries for all others.
#include "clips/ClipFrame.h"

#include "clips/ClipsModule.h"
#include "clips/SerPicture.h"
#include "platform/DecodeBudget.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"

namespace tarn {

namespace {

constexpr long long kFilmBytes = 256LL << 20U; // that a decoder of films may hold of its frames

bool IsSerFile(const std::string& path, std::string& error) {
    std::string start(64, '\0');
    const FileHandle file = OpenRegular(path, error);
    start.resize(file ? std::fread(start.data(), 1, start.size(), file.get()) : 0);
    return IsSer(start);
}

QImage FirstOfSer(const std::string& path, int side) {
    SerFile ser;
    if (!ser.Open(path).empty()) return {};
    std::string error;
    const QImage picture = SerPicture(ser, 0, error);
    return picture.isNull() ? picture
                            : picture.scaled(SmallSize(picture.size(), side), Qt::IgnoreAspectRatio,
                                             Qt::SmoothTransformation);
}

} // namespace

std::unique_ptr<ClipPlayer> OpenClip(const std::string& path, const ClipPlayer::Wait& wait,
                                     std::string& error) {
    std::string fault;
    if (IsSerFile(path, fault)) return OpenSer(path, error);
    if (!fault.empty()) return error = fault, nullptr;
    if (const auto* clips = FromModule<ClipsModule>()) return clips->player(path, wait, error);
    error = "The program's player of clips is not installed";
    return nullptr;
}

QImage FirstFrame(const std::string& path, int side) {
    std::string fault;
    if (IsSerFile(path, fault)) return FirstOfSer(path, side);
    if (!fault.empty()) return {};
    const DecodeShare share(kFilmBytes);
    const auto* clips = share ? FromModule<ClipsModule>() : nullptr;
    return clips ? clips->firstFrame(path, side) : QImage();
}

} // namespace tarn

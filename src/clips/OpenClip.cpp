// Which reader a clip has: our own for SER, or the modules with the libraries for all others, of
// which first frames are read by the decoder process.
#include "clips/ClipFrame.h"

#include "clips/ClipsModule.h"
#include "clips/FramesModule.h"
#include "clips/SerPicture.h"
#include "decoder/DecodedPicture.h"
#include "decoder/DecoderPool.h"
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

QImage FirstOfOther(const std::string& path, int side) {
    std::string fault;
    const OpenFile file(path, fault);
    if (!file) return {};
    DecoderRequest request;
    request.head.verb = DecoderVerb::FirstFrame;
    request.head.format = DecoderFormat::Clip;
    request.head.width = side;
    const auto isFrame = [side](const DecoderAnswer& answer) {
        return IsDecodedPicture(answer) && answer.numbers[0] <= side && answer.numbers[1] <= side;
    };
    if (auto answer = AskDecoder(request, file.Number(), isFrame))
        return TakeDecodedPicture(std::move(*answer));
    const auto* frames = FromModule<FramesModule>();
    return frames ? frames->first(path, side) : QImage();
}

} // namespace

std::unique_ptr<ClipPlayer> OpenClip(const std::string& path, const ClipPlayer::Wait& wait,
                                     std::string& error) {
    std::string fault;
    if (IsSerFile(path, fault)) return OpenSer(path, wait, error);
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
    return share ? FirstOfOther(path, side) : QImage();
}

} // namespace tarn

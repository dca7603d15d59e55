// The program's side of the formats that the decoder process reads. Where there is none the reader
// itself is called.
#include "decoder/DecodedPicture.h"
#include "decoder/DecoderPool.h"
#include "imaging/DirectFormats.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/ScreenStretch.h"

#include <QColorSpace>

#include <cstring>

#include <sys/stat.h>

namespace tarn {

namespace {

DecoderRequest RequestFor(DecoderVerb verb, DecoderFormat format, std::FILE* file, QSize wanted) {
    DecoderRequest request;
    request.head.verb = verb;
    request.head.format = format;
    request.head.width = wanted.width();
    request.head.height = wanted.height();
    if (format != DecoderFormat::Fits) return request;
    struct stat facts {};
    ::fstat(::fileno(file), &facts);
    request.head.image = ChosenImage(std::int64_t(facts.st_dev), std::int64_t(facts.st_ino));
    const StretchChoice choice = CurrentStretchChoice();
    request.payload = BytesOf(choice);
    return request;
}

bool IsSize(const DecoderAnswer& answer) {
    constexpr std::int64_t kMostSide = INT32_MAX;
    return answer.numbers[0] >= 0 && answer.numbers[0] <= kMostSide && answer.numbers[1] >= 0 &&
           answer.numbers[1] <= kMostSide;
}

bool IsAny(const DecoderAnswer&) {
    return true;
}

template <DecoderFormat kFormat> struct Apart {
    static std::optional<DecoderAnswer> Ask(DecoderVerb verb, std::FILE* file, QSize wanted,
                                            const IsRight& isRight) {
        return AskDecoder(RequestFor(verb, kFormat, file, wanted), ::fileno(file), isRight);
    }
    static QSize Size(std::FILE* file, std::string& error) {
        if (const auto answer = Ask(DecoderVerb::Size, file, {}, IsSize)) {
            error = answer->error;
            return error.empty() ? QSize(int(answer->numbers[0]), int(answer->numbers[1]))
                                 : QSize(0, 0);
        }
        const PictureFormat* format = DirectFormat(kFormat, error);
        return format ? format->size(file, error) : QSize(0, 0);
    }
    static QImage Decode(std::FILE* file, QSize wanted, std::string& error) {
        if (auto answer = Ask(DecoderVerb::Decode, file, wanted, IsDecodedPicture)) {
            error = answer->error;
            const QByteArray profile = QByteArray::fromStdString(answer->bytes);
            QImage picture = TakeDecodedPicture(std::move(*answer));
            if (!picture.isNull() && !profile.isEmpty())
                picture.setColorSpace(QColorSpace::fromIccProfile(profile));
            return picture;
        }
        const PictureFormat* format = DirectFormat(kFormat, error);
        return format ? format->decode(file, wanted, error) : QImage();
    }
    static std::string Profile(std::FILE* file) {
        if (const auto answer = Ask(DecoderVerb::Profile, file, {}, IsAny)) return answer->bytes;
        std::string error;
        const PictureFormat* format = DirectFormat(kFormat, error);
        return format ? format->profile(file) : std::string();
    }
};

using Raw = Apart<DecoderFormat::Raw>;
using Heif = Apart<DecoderFormat::Heif>;
using Jxl = Apart<DecoderFormat::Jxl>;
using Tiff = Apart<DecoderFormat::Tiff>;
using Toolkit = Apart<DecoderFormat::Toolkit>;
using Fits = Apart<DecoderFormat::Fits>;

} // namespace

const PictureFormat kRawFormat{Raw::Size, Raw::Decode, true, true, nullptr};
const PictureFormat kHeifFormat{Heif::Size, Heif::Decode, false, true, Heif::Profile};
const PictureFormat kJxlFormat{Jxl::Size, Jxl::Decode, false, true, Jxl::Profile};
const PictureFormat kTiffFormat{Tiff::Size, Tiff::Decode, false, false, nullptr, IsContainerTurned};
const PictureFormat kToolkitFormat{Toolkit::Size, Toolkit::Decode,  false,
                                   false,         Toolkit::Profile, IsContainerTurned};
const PictureFormat kFitsFormat{Fits::Size, Fits::Decode, true, false, nullptr};

} // namespace tarn

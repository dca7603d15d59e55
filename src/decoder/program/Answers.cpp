#include "decoder/program/Answers.h"

#include "clips/FramesModule.h"
#include "common/file_handle.h"
#include "decoder/program/SkyAnswers.h"
#include "imaging/DirectFormats.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/ScreenStretch.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

#include <algorithm>
#include <cstring>
#include <exception>
#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kReadBuffer = 256 * 1024;
constexpr char kNoMemory[] = "Not enough memory";

// In one of the two kinds that are sent.
QImage InSentKind(const QImage& picture) {
    const bool sent =
        picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_ARGB32;
    return sent ? picture : picture.convertToFormat(QImage::Format_ARGB32);
}

// The rows of the picture, and the bytes behind them where they are too many for a packet.
void PutPicture(const QImage& read, Reply& reply) {
    if (read.isNull()) return;
    const QImage picture = InSentKind(read);
    const QImage tight = picture.bytesPerLine() == picture.width() * 4 ? picture : picture.copy();
    const bool behind = reply.bytes.size() > kMostInline;
    reply.used = std::size_t(tight.sizeInBytes());
    reply.memory =
        SharedMemory::Filled({{reinterpret_cast<const char*>(tight.constBits()), reply.used},
                              behind ? std::string_view(reply.bytes) : std::string_view()});
    if (!reply.memory) throw std::bad_alloc();
    const bool shines = picture.format() == QImage::Format_ARGB32;
    reply.numbers = {picture.width(), picture.height(),
                     std::int64_t(shines ? PixelKind::ShinesThrough : PixelKind::Opaque)};
}

void Decode(const PictureFormat& format, std::FILE* file, const RequestHead& head, Reply& reply) {
    const QImage picture = format.decode(file, QSize(head.width, head.height), reply.error);
    reply.bytes = picture.colorSpace().iccProfile().toStdString();
    if (reply.bytes.size() > kMostBytes) reply.bytes.clear();
    PutPicture(picture, reply);
}

void AnswerOfPicture(const DecoderRequest& request, std::FILE* file, Reply& reply) {
    const PictureFormat* format = DirectFormat(request.head.format, reply.error);
    if (!format) return;
    if (request.head.verb == DecoderVerb::Size) {
        const QSize size = format->size(file, reply.error);
        reply.numbers = {size.width(), size.height()};
        if (!reply.error.empty()) reply.numbers = {};
    } else if (request.head.verb == DecoderVerb::Decode) {
        Decode(*format, file, request.head, reply);
    } else if (request.head.verb == DecoderVerb::Profile && format->profile) {
        reply.bytes = format->profile(file);
        if (reply.bytes.size() > kMostBytes) reply.bytes.clear();
    }
}

// What the user chose holds for this request alone.
void TakeChoice(const DecoderRequest& request) {
    StretchChoice choice;
    if (request.payload.size() == sizeof choice)
        std::memcpy(static_cast<void*>(&choice), request.payload.data(), sizeof choice);
    SetStretchChoice(choice);
}

void Answer(const DecoderRequest& request, int file, Reply& reply) {
    if (request.head.verb == DecoderVerb::FirstFrame) {
        const auto* frames = FromModule<FramesModule>();
        if (frames) PutPicture(frames->first(NameOfOpen(file), request.head.width), reply);
        return;
    }
    if (request.head.verb == DecoderVerb::SkyHeader)
        return AnswerSkyHeader(request.head, file, reply);
    if (request.head.verb == DecoderVerb::SkySamples)
        return AnswerSkySamples(request.head, file, reply);
    const FileHandle stream(::fdopen(::fcntl(file, F_DUPFD_CLOEXEC, 0), "rb"));
    if (!stream) {
        reply.error = kNoMemory;
        return;
    }
    std::setvbuf(stream.get(), nullptr, _IOFBF, kReadBuffer);
    std::rewind(stream.get());
    const ReadsImage one(request.head.image);
    TakeChoice(request);
    AnswerOfPicture(request, stream.get(), reply);
}

} // namespace

void LoadReaders(DecoderKind kind) {
    if (kind == DecoderKind::Clips) {
        FromModule<FramesModule>();
        return;
    }
    std::string error;
    for (const DecoderFormat each :
         {DecoderFormat::Raw, DecoderFormat::Heif, DecoderFormat::Jxl, DecoderFormat::Tiff})
        DirectFormat(each, error);
    LoadSkyReaders();
    // The toolkit loads a plug-in when it is first asked for its kind; of others that are there
    // none is loaded, and so none is ever used.
    for (const char* name :
         {"png", "gif", "bmp", "jpeg", "xpm", "pbm", "pgm", "ppm", "webp", "tiff", "ico", "cur"}) {
        QByteArray bytes("none");
        QBuffer buffer(&bytes);
        QImageReader(&buffer, name).canRead();
    }
}

Reply AnswerTo(const DecoderRequest& request, int file) {
    Reply reply;
    try {
        Answer(request, file, reply);
    } catch (const std::exception&) {
        reply = {};
        reply.error = kNoMemory;
    }
    return reply;
}

} // namespace tarn

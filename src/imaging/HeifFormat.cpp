// HEIF and AVIF, as telephones write them. The library turns and crops as the file says; where it
// says nothing, the camera data count.
#include "imaging/PictureFormat.h"
#include "imaging/Turn.h"
#include "imaging/exif/Boxes.h"
#include "imaging/exif/FileFront.h"

#include <libheif/heif.h>

#include <memory>

namespace tarn {

namespace {

struct Closer {
    void operator()(heif_context* context) const { heif_context_free(context); }
    void operator()(heif_image_handle* handle) const { heif_image_handle_release(handle); }
    void operator()(heif_image* image) const { heif_image_release(image); }
};

// The library reads what it needs; the file stays open as long as this lives.
class Heif {
public:
    explicit Heif(std::FILE* file) : m_file(file), m_context(heif_context_alloc()) {
        if (!HasFewBoxes(FileBytes(::fileno(m_file)))) {
            m_error = "The file has too many parts";
            return;
        }
        ::fseeko(m_file, 0, SEEK_END);
        m_size = ::ftello(m_file);
        std::rewind(m_file);
        m_reader.reader_api_version = 1;
        m_reader.get_position = [](void* self) { return std::int64_t(::ftello(Of(self).m_file)); };
        m_reader.read = [](void* bytes, std::size_t size, void* self) {
            return std::fread(bytes, 1, size, Of(self).m_file) == size ? 0 : 1;
        };
        m_reader.seek = [](std::int64_t place, void* self) {
            return ::fseeko(Of(self).m_file, place, SEEK_SET);
        };
        m_reader.wait_for_file_size = [](std::int64_t size, void* self) {
            return size <= Of(self).m_size ? heif_reader_grow_status_size_reached
                                           : heif_reader_grow_status_size_beyond_eof;
        };
        heif_error fault = heif_context_read_from_reader(m_context.get(), &m_reader, this, nullptr);
        heif_image_handle* handle = nullptr;
        if (fault.code == heif_error_Ok)
            fault = heif_context_get_primary_image_handle(m_context.get(), &handle);
        m_handle.reset(handle);
        if (fault.code != heif_error_Ok) m_error = fault.message;
    }

    const std::string& Error() const { return m_error; }
    const heif_image_handle* Picture() const { return m_handle.get(); }
    QSize Size() const {
        return LeftTurn().Of(
            {heif_image_handle_get_width(Picture()), heif_image_handle_get_height(Picture())});
    }
    Turn LeftTurn() const { // that the library does not make
        const FileBytes file(::fileno(m_file));
        return HeifTurns(file) ? Turn() : Turn::Upright(OrientationOfContainer(file));
    }

private:
    static Heif& Of(void* self) { return *static_cast<Heif*>(self); }

    std::FILE* m_file;
    std::int64_t m_size = 0;
    heif_reader m_reader{};
    std::unique_ptr<heif_context, Closer> m_context;
    std::unique_ptr<heif_image_handle, Closer> m_handle;
    std::string m_error;
};

QSize HeifSize(std::FILE* file, std::string& error) {
    const Heif heif(file);
    error = heif.Error();
    return error.empty() ? heif.Size() : QSize(0, 0);
}

QImage DecodeHeif(std::FILE* file, QSize, std::string& error) {
    const Heif heif(file);
    error = heif.Error();
    if (!error.empty()) return {};
    const bool shinesThrough = heif_image_handle_has_alpha_channel(heif.Picture()) != 0;
    heif_image* decoded = nullptr;
    const heif_error fault = heif_decode_image(heif.Picture(), &decoded, heif_colorspace_RGB,
                                               heif_chroma_interleaved_RGBA, nullptr);
    const std::unique_ptr<heif_image, Closer> image(decoded);
    if (fault.code != heif_error_Ok) return error = fault.message, QImage();
    int stride = 0;
    const std::uint8_t* pixels =
        heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const QSize size(heif_image_get_width(decoded, heif_channel_interleaved),
                     heif_image_get_height(decoded, heif_channel_interleaved));
    if (!pixels || size.isEmpty()) return error = "The picture has no pixels", QImage();
    return heif.LeftTurn().Of(
        QImage(pixels, size.width(), size.height(), stride, QImage::Format_RGBA8888)
            .convertToFormat(shinesThrough ? QImage::Format_ARGB32 : QImage::Format_RGB32));
}

std::string ProfileOfHeif(std::FILE* file) {
    const Heif heif(file);
    if (!heif.Error().empty()) return {};
    const std::size_t size = heif_image_handle_get_raw_color_profile_size(heif.Picture());
    std::string profile(size <= kLargestProfile ? size : 0, '\0');
    if (profile.empty() ||
        heif_image_handle_get_raw_color_profile(heif.Picture(), profile.data()).code !=
            heif_error_Ok)
        return {};
    return profile;
}

constexpr PictureFormat kFormat{HeifSize, DecodeHeif, false, true, ProfileOfHeif};

std::string Version() {
    return heif_get_version();
}

} // namespace

extern "C" const FormatModule TarnModule{&kFormat, Version};

} // namespace tarn

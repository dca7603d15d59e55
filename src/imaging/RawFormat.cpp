// What the sensor of a camera recorded: the picture that the camera has put beside it, for as long
// as it has the pixels, and the developed one for all of them.
#include "common/file_handle.h"
#include "imaging/ColorProfiles.h"
#include "imaging/RawModule.h"
#include "imaging/Turn.h"
#include "imaging/exif/FileBytes.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>

namespace tarn {

namespace {

constexpr char kDamaged[] = "Data of this raw file are missing or damaged";
constexpr double kSameShape = 0.02; // part by which the camera's own picture may differ in shape

// The library reads through this, so that a name says nothing and a file is opened once.
class FileStream : public LibRaw_abstract_datastream {
public:
    explicit FileStream(std::FILE* file) : m_file(file) {
        ::fseeko(m_file, 0, SEEK_END);
        m_size = ::ftello(m_file);
        std::rewind(m_file);
    }
    int valid() override { return 1; }
    int read(void* bytes, std::size_t size, std::size_t count) override {
        return int(std::fread(bytes, size, count, m_file));
    }
    int seek(INT64 place, int from) override { return ::fseeko(m_file, place, from); }
    INT64 tell() override { return ::ftello(m_file); }
    INT64 size() override { return m_size; }
    int get_char() override { return std::fgetc(m_file); }
    char* gets(char* text, int most) override { return std::fgets(text, most, m_file); }
    int scanf_one(const char* format, void* value) override {
        return std::fscanf(m_file, format, value); // NOLINT(cert-err34-c): the library's format
    }
    int eof() override { return std::feof(m_file); }
    void* make_jas_stream() override { return nullptr; }

private:
    std::FILE* m_file;
    INT64 m_size = 0;
};

struct Raw {
    Raw(std::FILE* file, bool forPixels)
        : stream(file), reader(std::make_unique<LibRaw>(LIBRAW_OPIONS_NO_DATAERR_CALLBACK)) {
        reader->set_dataerror_handler(
            [](void* damaged, const char*, int) { *static_cast<bool*>(damaged) = true; }, &damaged);
        fault = reader->open_datastream(&stream);
        if (fault == LIBRAW_SUCCESS) fault = reader->adjust_sizes_info_only();
        if (fault != LIBRAW_SUCCESS) return;
        size = QSize(reader->imgdata.sizes.iwidth, reader->imgdata.sizes.iheight);
        if (!forPixels) return;
        reader->recycle(); // it does not go on from there
        stream.seek(0, SEEK_SET);
        fault = reader->open_datastream(&stream);
    }
    bool Fails(std::string& error) const {
        if (fault != LIBRAW_SUCCESS) error = LibRaw::strerror(fault);
        return fault != LIBRAW_SUCCESS;
    }
    FileStream stream;
    std::unique_ptr<LibRaw> reader; // large
    int fault;
    QSize size{0, 0};     // upright
    bool damaged = false; // data of the file are missing or wrong
};

// The library keeps three bits: mirrored left to right, top to bottom, and then sides exchanged.
Turn UprightTurn(int flip) {
    Turn turn;
    if ((flip & 1) != 0) turn.Mirror(0);
    if ((flip & 2) != 0) turn.Mirror(1);
    if ((flip & 4) != 0) {
        turn.Rotate(1);
        turn.Mirror(0);
    }
    return turn;
}

QSize RawSize(std::FILE* file, std::string& error) {
    const Raw raw(file, false);
    return raw.Fails(error) ? QSize(0, 0) : raw.size;
}

bool HasShapeOf(QSize picture, QSize size) {
    const double wanted = double(size.width()) / size.height();
    return std::abs(double(picture.width()) / picture.height() / wanted - 1) < kSameShape;
}

// The camera's own picture, upright; null when there is none of this shape. `least` is its size.
QImage CamerasPicture(Raw& raw, QSize wanted, QSize least) {
    LibRaw& reader = *raw.reader;
    if (reader.unpack_thumb() != LIBRAW_SUCCESS) return {};
    const libraw_thumbnail_t& thumb = reader.imgdata.thumbnail;
    if (thumb.tformat != LIBRAW_THUMBNAIL_JPEG || !thumb.thumb || thumb.tlength == 0) return {};
    const Turn turn = UprightTurn(reader.imgdata.sizes.flip);
    const FileHandle memory(::fmemopen(thumb.thumb, thumb.tlength, "rb"));
    if (!memory) return {};
    std::string error;
    const QSize size = kJpegFormat.size(memory.get(), error);
    QImage picture;
    const QSize upright = turn.Of(size);
    const bool serves = !size.isEmpty() && upright.width() >= least.width() &&
                        upright.height() >= least.height() && HasShapeOf(upright, raw.size);
    if (serves) {
        std::rewind(memory.get());
        const std::string profile = ProfileOfJpeg(memory.get());
        std::rewind(memory.get());
        picture = kJpegFormat.decode(memory.get(), turn.SwapsSides() ? wanted.transposed() : wanted,
                                     error);
        ToScreenColors(picture, profile);
    }
    return error.empty() ? turn.Of(picture) : QImage();
}

// Whether data packed as JPEG files are stand where the library looks for them: it passes over
// those that do not, and leaves what they should fill as its memory was.
bool PackedDataAreThere(LibRaw& reader, std::FILE* file) {
    const std::string_view packing = reader.unpack_function_name();
    const bool tiled = packing.starts_with("lossless_dng");
    if (!tiled && !packing.starts_with("lossless_jpeg")) return true;
    const FileBytes bytes(::fileno(file));
    const auto& data = reader.get_internal_data_pointer()->unpacker_data;
    const auto begins = [&](std::int64_t place) { return bytes.At(place, 2).ends_with('\xD8'); };
    if (!tiled || data.tile_length >= INT_MAX) return begins(data.data_offset);
    const auto count = [](unsigned whole, unsigned tile) {
        return tile == 0 ? 0U : (whole + tile - 1) / tile;
    };
    const std::size_t tiles = std::size_t(count(reader.imgdata.sizes.raw_width, data.tile_width)) *
                              count(reader.imgdata.sizes.raw_height, data.tile_length);
    const std::string list = bytes.At(data.data_offset, tiles * 4);
    for (std::size_t i = 0; i < tiles; ++i)
        if (!begins(std::int64_t(NumberAt(list, i * 4, 4, data.order == 0x4D4D)))) return false;
    return true;
}

// No sensor has rows without any noise.
bool EndsInNothing(const libraw_data_t& data) {
    constexpr int kRows = 8;
    const auto& sizes = data.sizes;
    const void* samples = data.rawdata.raw_image;
    std::size_t bytes = sizeof(ushort);
    if (!samples) {
        const bool three = data.rawdata.color3_image != nullptr;
        samples =
            three ? static_cast<const void*>(data.rawdata.color3_image) : data.rawdata.color4_image;
        bytes *= three ? 3 : 4;
    }
    if (!samples || sizes.height < kRows) return false;
    const std::size_t pitch = sizes.raw_pitch ? sizes.raw_pitch : sizes.raw_width * bytes;
    for (int row = sizes.height - kRows; row < sizes.height; ++row) {
        const char* start = static_cast<const char*>(samples) +
                            std::size_t(sizes.top_margin + row) * pitch + sizes.left_margin * bytes;
        if (std::any_of(start, start + sizes.width * bytes, [](char byte) { return byte != 0; }))
            return false;
    }
    return true;
}

QImage Developed(Raw& raw, std::FILE* file, QSize wanted, std::string& error) {
    LibRaw& reader = *raw.reader;
    libraw_output_params_t& params = reader.imgdata.params;
    params.use_camera_wb = 1;
    params.output_bps = 8;
    const QSize half((raw.size.width() + 1) / 2, (raw.size.height() + 1) / 2);
    params.half_size =
        !wanted.isEmpty() && half.width() >= wanted.width() && half.height() >= wanted.height();
    raw.damaged = false; // of a small picture it was
    if (!PackedDataAreThere(reader, file)) return error = kDamaged, QImage();
    int fault = reader.unpack();
    if (fault == LIBRAW_SUCCESS && EndsInNothing(reader.imgdata)) raw.damaged = true;
    if (fault == LIBRAW_SUCCESS) fault = reader.dcraw_process();
    int width = 0;
    int height = 0;
    int colors = 0;
    int bits = 0;
    if (fault == LIBRAW_SUCCESS) reader.get_mem_image_format(&width, &height, &colors, &bits);
    const QImage::Format format = colors == 1 ? QImage::Format_Grayscale8 : QImage::Format_RGB888;
    QImage picture;
    if (fault == LIBRAW_SUCCESS && (colors == 1 || colors == 3)) {
        picture = QImage(width, height, format);
        if (picture.isNull()) return error = "Not enough memory", QImage();
        fault = reader.copy_mem_image(picture.bits(), int(picture.bytesPerLine()), 0);
    }
    if (fault != LIBRAW_SUCCESS) return error = LibRaw::strerror(fault), QImage();
    if (picture.isNull()) return error = "The colors of this raw file are not known", QImage();
    if (raw.damaged) error = kDamaged;
    return picture.convertToFormat(QImage::Format_RGB32);
}

bool IsBlack(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            if ((row[x] & 0xFFFFFF) != 0) return false;
    }
    return true;
}

// What stands for a picture that cannot be developed: the camera's own, of any size, or the part
// that could be. What is enlarged has no more to show, but stands where the picture would.
QImage StandIn(std::FILE* file, const QImage& part) {
    Raw raw(file, true);
    QImage own;
    if (raw.fault == LIBRAW_SUCCESS) own = CamerasPicture(raw, {}, QSize(1, 1));
    if (!own.isNull())
        return own.size() == raw.size
                   ? own
                   : own.scaled(raw.size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return IsBlack(part) ? QImage() : part;
}

QImage DecodeRaw(std::FILE* file, QSize wanted, std::string& error) {
    QImage picture;
    {
        Raw raw(file, true);
        if (raw.Fails(error)) return {};
        if (!wanted.isEmpty()) picture = CamerasPicture(raw, wanted, wanted);
        if (picture.isNull()) picture = Developed(raw, file, wanted, error);
    }
    return error.empty() ? picture : StandIn(file, picture);
}

// The colours of the first two pixels of two rows, as places of "RGB"; false where they are laid
// out otherwise.
bool TakeMosaic(LibRaw& reader, FitsHeader& header) {
    constexpr unsigned kOwnLayouts = 1000; // numbers below it stand for tables of the library's
    const libraw_iparams_t& sensor = reader.imgdata.idata;
    if (sensor.filters == 0) return sensor.colors == 1;
    if (sensor.filters < kOwnLayouts) return false;
    const std::string_view colors = "RGB";
    for (int i = 0; i < 4; ++i) {
        const std::size_t place = colors.find(sensor.cdesc[reader.COLOR(i / 2, i % 2)]);
        if (place == std::string_view::npos) return false;
        header.pattern[std::size_t(i)] = int(place);
    }
    header.mosaic = true;
    return true;
}

std::optional<FitsSamples> RawSamples(std::FILE* file, std::string& error) {
    Raw raw(file, true);
    if (raw.Fails(error)) return std::nullopt;
    LibRaw& reader = *raw.reader;
    if (!PackedDataAreThere(reader, file)) return error = kDamaged, std::nullopt;
    const int fault = reader.unpack();
    if (fault != LIBRAW_SUCCESS) return error = LibRaw::strerror(fault), std::nullopt;
    const auto& sizes = reader.imgdata.sizes;
    const std::uint16_t* from = reader.imgdata.rawdata.raw_image;
    FitsSamples samples;
    samples.header.width = sizes.width;
    samples.header.height = sizes.height;
    samples.header.topDown = true;
    if (!from || sizes.width == 0 || sizes.height == 0 || !TakeMosaic(reader, samples.header))
        return error = "The samples of this sensor are laid out in a way that is not known",
               std::nullopt;
    samples.words = RoomFor<std::uint16_t>(samples.All());
    if (!samples.words) return error = "Not enough memory", std::nullopt;
    const std::size_t pitch = sizes.raw_pitch ? sizes.raw_pitch / sizeof *from : sizes.raw_width;
    for (std::size_t row = 0; row < sizes.height; ++row)
        std::copy_n(from + (sizes.top_margin + row) * pitch + sizes.left_margin, sizes.width,
                    samples.words.get() + row * sizes.width);
    samples.count = samples.All();
    const libraw_colordata_t& levels = reader.imgdata.color;
    const unsigned black = levels.black + levels.cblack[0];
    const unsigned stated = levels.dng_levels.dng_whitelevel[0];
    const unsigned white = stated > 0 ? stated : levels.maximum;
    // The library does not find the level of every file.
    const bool known =
        white > black &&
        white >= *std::max_element(samples.words.get(), samples.words.get() + samples.count);
    if (known) samples.range = ValueRange{double(black), double(white)};
    if (raw.damaged || EndsInNothing(reader.imgdata)) error = kDamaged;
    return samples;
}

constexpr PictureFormat kFormat{RawSize, DecodeRaw, true, true, nullptr};

std::string Version() {
    const std::string version = LibRaw::version(); // "0.20.2-Release"
    return version.substr(0, version.find_first_not_of("0123456789."));
}

} // namespace

extern "C" const RawModule TarnModule{{&kFormat, Version}, RawSamples};

} // namespace tarn

#include "imaging/JpegWriter.h"

#include <QPainter>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

#include <jerror.h>

namespace tarn {

namespace {

struct Errors {
    jpeg_error_mgr manager; // first, the library only knows this part
    std::jmp_buf back;
    char text[JMSG_LENGTH_MAX];
};

extern "C" void Leave(j_common_ptr info) {
    auto* errors = reinterpret_cast<Errors*>(info->err);
    errors->manager.format_message(info, errors->text);
    std::longjmp(errors->back, 1); // NOLINT(cert-err52-cpp): the library is C
}

extern "C" void BeQuiet(j_common_ptr, int) {}

void Prepare(Errors& errors) {
    jpeg_std_error(&errors.manager);
    errors.manager.error_exit = Leave;
    errors.manager.emit_message = BeQuiet;
    errors.text[0] = 0;
}

// Where the library puts the bytes. Its own one cannot be given back safely after an error.
struct Memory {
    jpeg_destination_mgr manager; // first, the library only knows this part
    JOCTET* bytes = nullptr;
    std::size_t room = 0;
    std::size_t size = 0;
};

// NOLINTBEGIN(cppcoreguidelines-no-malloc): nothing may throw through the library
bool Grow(Memory& memory) {
    constexpr std::size_t kFirst = 1 << 16;
    const std::size_t room = memory.room == 0 ? kFirst : memory.room * 2;
    void* bytes = std::realloc(memory.bytes, room);
    if (!bytes) return false;
    memory.bytes = static_cast<JOCTET*>(bytes);
    memory.manager.next_output_byte = memory.bytes + memory.room;
    memory.manager.free_in_buffer = room - memory.room;
    memory.room = room;
    return true;
}
// NOLINTEND(cppcoreguidelines-no-malloc)

extern "C" void BeginMemory(j_compress_ptr info) {
    if (!Grow(*reinterpret_cast<Memory*>(info->dest))) ERREXIT1(info, JERR_OUT_OF_MEMORY, 0);
}

extern "C" boolean MoreMemory(j_compress_ptr info) {
    BeginMemory(info);
    return TRUE;
}

extern "C" void EndMemory(j_compress_ptr info) {
    auto* memory = reinterpret_cast<Memory*>(info->dest);
    memory->size = memory->room - memory->manager.free_in_buffer;
}

// One writing. The library jumps back into the method that called it, so it holds nothing that
// would need to be destroyed.
class Encoder {
public:
    Encoder() {
        Prepare(m_errors);
        m_info.err = &m_errors.manager;
        m_memory.manager.init_destination = BeginMemory;
        m_memory.manager.empty_output_buffer = MoreMemory;
        m_memory.manager.term_destination = EndMemory;
    }
    ~Encoder() {
        jpeg_destroy_compress(&m_info);
        std::free(m_memory.bytes); // NOLINT(cppcoreguidelines-no-malloc)
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    bool Write(const QImage& rgb, int quality) {
        if (setjmp(m_errors.back) != 0) return false; // NOLINT(cert-err52-cpp)
        jpeg_create_compress(&m_info);
        m_info.dest = &m_memory.manager;
        m_info.image_width = static_cast<JDIMENSION>(rgb.width());
        m_info.image_height = static_cast<JDIMENSION>(rgb.height());
        m_info.input_components = 3;
        m_info.in_color_space = JCS_RGB;
        jpeg_set_defaults(&m_info);
        jpeg_set_quality(&m_info, quality, TRUE);
        jpeg_start_compress(&m_info, TRUE);
        while (m_info.next_scanline < m_info.image_height) {
            auto* row = const_cast<JSAMPROW>(rgb.constScanLine(int(m_info.next_scanline)));
            jpeg_write_scanlines(&m_info, &row, 1);
        }
        jpeg_finish_compress(&m_info);
        return true;
    }
    std::string Bytes() const {
        return {reinterpret_cast<const char*>(m_memory.bytes), m_memory.size};
    }
    const char* ErrorText() const { return m_errors.text; }

private:
    jpeg_compress_struct m_info{};
    Errors m_errors{};
    Memory m_memory{};
};

QImage OnWhite(const QImage& picture) {
    if (!picture.hasAlphaChannel()) return picture.convertToFormat(QImage::Format_RGB888);
    QImage white(picture.size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    QPainter(&white).drawImage(0, 0, picture);
    return white.convertToFormat(QImage::Format_RGB888);
}

} // namespace

std::string EncodeJpeg(const QImage& picture, int quality, std::string* error) {
    const QImage rgb = picture.isNull() ? QImage() : OnWhite(picture);
    Encoder encoder;
    if (rgb.isNull()) {
        if (error) *error = "No Image";
    } else if (encoder.Write(rgb, std::clamp(quality, 1, 100))) {
        return encoder.Bytes();
    } else if (error) {
        *error = encoder.ErrorText();
    }
    return {};
}

} // namespace tarn

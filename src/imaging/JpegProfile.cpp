// The colour profile that a JPEG carries.
#include "imaging/PictureFormat.h"

#include <csetjmp>
#include <cstdlib>
#include <string_view>

#include <jpeglib.h>

namespace tarn {

namespace {

struct Errors {
    jpeg_error_mgr manager; // first, the library only knows this part
    std::jmp_buf back;
};

extern "C" void LeaveProfile(j_common_ptr info) {
    std::longjmp(reinterpret_cast<Errors*>(info->err)->back, 1); // NOLINT(cert-err52-cpp)
}

extern "C" void PassOver(j_common_ptr, int) {}

// The library jumps back into Read, so it holds nothing that would need to be destroyed.
class ProfileReader {
public:
    ProfileReader() {
        m_info.err = jpeg_std_error(&m_errors.manager);
        m_errors.manager.error_exit = LeaveProfile;
        m_errors.manager.emit_message = PassOver;
    }
    ~ProfileReader() {
        jpeg_destroy_decompress(&m_info);
        std::free(m_profile); // NOLINT(cppcoreguidelines-no-malloc): the library's own
    }
    ProfileReader(const ProfileReader&) = delete;
    ProfileReader& operator=(const ProfileReader&) = delete;

    bool Read(std::FILE* file) {
        constexpr unsigned kLongest = 0xFFFF;
        if (setjmp(m_errors.back) != 0) return false; // NOLINT(cert-err52-cpp)
        jpeg_create_decompress(&m_info);
        jpeg_stdio_src(&m_info, file);
        jpeg_save_markers(&m_info, JPEG_APP0 + 2, kLongest);
        return jpeg_read_header(&m_info, TRUE) == JPEG_HEADER_OK;
    }
    // Parts that do not make a whole come as they are: what takes them finds that out.
    std::string Profile() {
        if (setjmp(m_errors.back) != 0) return {}; // NOLINT(cert-err52-cpp)
        if (jpeg_read_icc_profile(&m_info, &m_profile, &m_size) == TRUE)
            return {reinterpret_cast<const char*>(m_profile), m_size};
        constexpr std::string_view kMark("ICC_PROFILE\0", 12);
        for (const auto* each = m_info.marker_list; each; each = each->next) {
            const std::string_view part(reinterpret_cast<const char*>(each->data),
                                        each->data_length);
            if (part.starts_with(kMark)) return std::string(part);
        }
        return {};
    }

private:
    jpeg_decompress_struct m_info{};
    Errors m_errors{};
    JOCTET* m_profile = nullptr;
    unsigned m_size = 0;
};

} // namespace

std::string ProfileOfJpeg(std::FILE* file) {
    ProfileReader reader;
    return reader.Read(file) ? reader.Profile() : std::string();
}

} // namespace tarn

// JPEG files, read at the coarsest scale that will do.
#include "common/stop_flag.h"
#include "imaging/PictureFormat.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <vector>

#include <jpeglib.h>

#include <jerror.h>
#include <sys/stat.h>

namespace tarn {

namespace {

// Scaled reading goes by eighths.
constexpr int kScaleSteps = 8;

// A progressive file has about ten scans, and every scan goes over all pixels. One of many scans
// over a huge picture is made to keep readers busy.
constexpr int kMostScans = 200;
constexpr long long kMostScannedPixels = 3'000'000'000;

// QImage keeps a pixel as one 32-bit number, so the order of its bytes is the machine's.
constexpr J_COLOR_SPACE kPixelOrder = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRA : JCS_EXT_ARGB;

struct JpegErrors {
    jpeg_error_mgr manager; // first, the library only knows this part
    std::jmp_buf back;
    char text[JMSG_LENGTH_MAX]; // of the first that matters: what follows comes from it
    bool stopsAtLoss;
};

extern "C" void GiveUp(j_common_ptr info) {
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    if (errors->text[0] == 0) errors->manager.format_message(info, errors->text);
    std::longjmp(errors->back, 1); // NOLINT(cert-err52-cpp): the library is C
}

// Cameras and editors leave many harmless faults; what is told is a loss of pixels: a file that
// ends too early, or data that do.
extern "C" void NoteWarning(j_common_ptr info, int level) {
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    const int code = errors->manager.msg_code;
    const bool loss = code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER;
    if (level < 0 && loss && errors->text[0] == 0)
        errors->manager.format_message(info, errors->text);
    if (level < 0 && loss && errors->stopsAtLoss)
        std::longjmp(errors->back, 1); // NOLINT(cert-err52-cpp): the library is C
}

// One reading of one file. The library jumps back into the method that called it, so these methods
// hold nothing that would need to be destroyed.
class JpegDecoder {
public:
    explicit JpegDecoder(std::FILE* file) : m_file(file) {
        m_info.err = jpeg_std_error(&m_errors.manager);
        m_errors.manager.error_exit = GiveUp;
        m_errors.manager.emit_message = NoteWarning;
    }
    ~JpegDecoder() { jpeg_destroy_decompress(&m_info); }
    JpegDecoder(const JpegDecoder&) = delete;
    JpegDecoder& operator=(const JpegDecoder&) = delete;

    bool Create(); // false when the library is of another make than its headers
    bool ReadHeader();
    long long Cost(QSize wanted);
    bool Start(QSize wanted);
    int ReadRows(uchar* pixels, qsizetype bytesPerLine); // rows that were read

    QSize Size() const { return {int(m_info.image_width), int(m_info.image_height)}; }
    QSize OutputSize() const { return {int(m_info.output_width), int(m_info.output_height)}; }
    const char* ErrorText() const { return m_errors.text; }

private:
    void ChooseScale(QSize wanted);
    bool IsHugeClaim() const;
    int ReadScans();
    void KeepFrame();
    void RestoreFrame();
    bool ScansFitIntoMemory();
    long long BytesOfScans() const {
        return 2LL * m_info.image_width * m_info.image_height * m_info.num_components;
    }
    int MostScans() const;
    bool IsCmyk() const { return m_info.out_color_space == JCS_CMYK; }
    void FromCmyk(uchar* pixels) const;

    std::FILE* m_file;
    jpeg_decompress_struct m_info{};
    JpegErrors m_errors{};
    // What the file's own header says of the frame. A second one makes the library fail only after
    // it has taken its numbers over, by which it would then show what has been read.
    struct Frame {
        JDIMENSION width, height;
        int components, precision;
        boolean progressive, arithmetic;
    };
    Frame m_frame{};
    int m_scan = 0; // of several, the last one read; a jump back leaves it as it is
    std::vector<uchar> m_cmykRow;
};

bool JpegDecoder::Create() {
    if (setjmp(m_errors.back)) return false;
    jpeg_create_decompress(&m_info);
    return true;
}

bool JpegDecoder::ReadHeader() {
    if (!Create()) return false;
    if (setjmp(m_errors.back)) return false;
    jpeg_stdio_src(&m_info, m_file);
    jpeg_read_header(&m_info, TRUE);
    KeepFrame();
    return true;
}

void JpegDecoder::KeepFrame() {
    m_frame = {m_info.image_width,    m_info.image_height,     m_info.num_components,
               m_info.data_precision, m_info.progressive_mode, m_info.arith_code};
}

void JpegDecoder::RestoreFrame() {
    m_info.image_width = m_frame.width;
    m_info.image_height = m_frame.height;
    m_info.num_components = m_frame.components;
    m_info.data_precision = m_frame.precision;
    m_info.progressive_mode = m_frame.progressive;
    m_info.arith_code = m_frame.arithmetic;
}

void JpegDecoder::ChooseScale(QSize wanted) {
    m_info.scale_denom = kScaleSteps;
    m_info.scale_num = wanted.isEmpty() ? kScaleSteps : 1;
    jpeg_calc_output_dimensions(&m_info);
    while (m_info.scale_num < kScaleSteps &&
           (OutputSize().width() < wanted.width() || OutputSize().height() < wanted.height())) {
        ++m_info.scale_num;
        jpeg_calc_output_dimensions(&m_info);
    }
}

// The pixels that come out; a file of several scans is held whole beside them.
long long JpegDecoder::Cost(QSize wanted) {
    if (setjmp(m_errors.back)) return 0;
    ChooseScale(wanted);
    const long long out = 4LL * m_info.output_width * m_info.output_height;
    return out + (jpeg_has_multiple_scans(&m_info) ? BytesOfScans() : 0);
}

// The emptiest file has more than a byte for so many pixels: what is missing here is nearly all.
bool JpegDecoder::IsHugeClaim() const {
    constexpr long long kMostOfByte = 1024;
    constexpr long long kSmall = 4'000'000;
    const long long pixels = 1LL * m_info.image_width * m_info.image_height;
    struct stat facts {};
    const int file = ::fileno(m_file);
    return pixels > kSmall && file >= 0 && ::fstat(file, &facts) == 0 &&
           pixels / kMostOfByte > facts.st_size;
}

bool JpegDecoder::Start(QSize wanted) {
    if (setjmp(m_errors.back)) return false;
    const bool fourInks =
        m_info.jpeg_color_space == JCS_CMYK || m_info.jpeg_color_space == JCS_YCCK;
    m_info.out_color_space = fourInks ? JCS_CMYK : kPixelOrder;
    ChooseScale(wanted);
    m_errors.stopsAtLoss = IsHugeClaim();
    if (IsCmyk()) m_cmykRow.resize(std::size_t(m_info.output_width) * 4);
    m_info.buffered_image = jpeg_has_multiple_scans(&m_info);
    if (m_info.buffered_image && !ScansFitIntoMemory()) return false;
    return jpeg_start_decompress(&m_info);
}

// A file of several scans is held whole, whatever is wanted of it: 2 bytes a pixel and colour.
bool JpegDecoder::ScansFitIntoMemory() {
    if (BytesOfScans() <= PictureMemoryLimit()) return true;
    std::strcpy(m_errors.text, "The picture does not fit into memory"); // shorter than the field
    return false;
}

int JpegDecoder::MostScans() const {
    const long long pixels = std::max(1LL, 1LL * m_info.image_width * m_info.image_height);
    return static_cast<int>(std::clamp(kMostScannedPixels / pixels, 10LL, 1LL * kMostScans));
}

// Takes in what there is of a file of several scans; returns the last one that can be shown.
int JpegDecoder::ReadScans() {
    if (setjmp(m_errors.back)) {
        RestoreFrame();
        const bool between = m_info.input_iMCU_row == m_info.total_iMCU_rows;
        if (between) m_info.do_block_smoothing = FALSE; // which would look at what comes next
        return m_info.input_scan_number - (between ? 0 : 1);
    }
    while (!IsStopped() && m_info.input_scan_number < MostScans() &&
           jpeg_consume_input(&m_info) != JPEG_REACHED_EOI) {
    }
    return m_info.input_scan_number;
}

int JpegDecoder::ReadRows(uchar* pixels, qsizetype bytesPerLine) {
    m_scan = m_info.buffered_image ? ReadScans() : 1;
    if (m_scan < 1) return 0;
    if (setjmp(m_errors.back)) return int(m_info.output_scanline);
    if (m_info.buffered_image) jpeg_start_output(&m_info, m_scan);
    while (m_info.output_scanline < m_info.output_height && !IsStopped()) {
        uchar* line = pixels + bytesPerLine * qsizetype(m_info.output_scanline);
        JSAMPROW row = IsCmyk() ? m_cmykRow.data() : line;
        jpeg_read_scanlines(&m_info, &row, 1);
        if (IsCmyk()) FromCmyk(line);
    }
    return int(m_info.output_scanline);
}

// Files with the editor's marker keep the inks inverted: what is left of the light.
void JpegDecoder::FromCmyk(uchar* pixels) const {
    auto* out = reinterpret_cast<QRgb*>(pixels);
    const uchar turn = m_info.saw_Adobe_marker ? 0 : 255;
    for (std::size_t i = 0; i + 3 < m_cmykRow.size(); i += 4) {
        const int light = m_cmykRow[i + 3] ^ turn;
        *out++ = qRgb((m_cmykRow[i] ^ turn) * light / 255, (m_cmykRow[i + 1] ^ turn) * light / 255,
                      (m_cmykRow[i + 2] ^ turn) * light / 255);
    }
}

QSize JpegSize(std::FILE* file, std::string& error) {
    JpegDecoder decoder(file);
    if (decoder.ReadHeader()) return decoder.Size();
    error = decoder.ErrorText();
    return {};
}

} // namespace

long long JpegCost(std::FILE* file, QSize wanted) {
    JpegDecoder decoder(file);
    return decoder.ReadHeader() ? decoder.Cost(wanted) : 0;
}

namespace {

QImage DecodeJpeg(std::FILE* file, QSize wanted, std::string& error) {
    JpegDecoder decoder(file);
    if (!decoder.ReadHeader() || !decoder.Start(wanted)) {
        error = decoder.ErrorText();
        return {};
    }
    QImage picture(decoder.OutputSize(), QImage::Format_RGB32);
    if (picture.isNull()) {
        error = "Not enough memory";
        return {};
    }
    uchar* pixels = picture.bits();
    const int rows = decoder.ReadRows(pixels, picture.bytesPerLine());
    error = decoder.ErrorText();
    if (rows == 0 || IsStopped()) return {};
    // What could not be read is grey, as the library paints the rest of a file cut short.
    for (int y = rows; y < picture.height(); ++y)
        std::fill_n(reinterpret_cast<QRgb*>(picture.scanLine(y)), picture.width(), 0xFF808080);
    return picture;
}

} // namespace

const PictureFormat kJpegFormat{JpegSize, DecodeJpeg, true, false, ProfileOfJpeg};

std::string JpegReaderError() {
    JpegDecoder decoder(nullptr);
    return decoder.Create() ? std::string() : decoder.ErrorText();
}

} // namespace tarn

#include "PictureFiles.h"

#include "common/file_handle.h"
#include "imaging/PictureFormat.h"
#include "pictureinfo/JpegFrame.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <utility>

namespace tarn::testing {
namespace {

using Size = std::optional<std::pair<int, int>>;

Size ByMarkers(const std::string& bytes) {
    const auto frame =
        FindJpegFrame({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    return frame ? Size({frame->width, frame->height}) : std::nullopt;
}

Size ByDecoder(std::string bytes) {
    const FileHandle file(::fmemopen(bytes.data(), bytes.size(), "rb"));
    std::string error;
    const QSize size = kJpegFormat.size(file.get(), error);
    return error.empty() ? Size({size.width(), size.height()}) : std::nullopt;
}

TEST(JpegFrame, SaysWhatTheDecoderSaysOrNothing) {
    for (const JpegKind kind : {JpegKind::Color, JpegKind::Gray}) {
        const std::string whole = JpegBytes(TellTale(60, 40), kind);
        EXPECT_EQ(ByMarkers(whole), Size({60, 40}));
        const std::size_t scan = whole.find("\xFF\xDA");
        ASSERT_NE(scan, std::string::npos);
        EXPECT_EQ(ByMarkers(whole.substr(0, scan)), std::nullopt); // more may come behind
        for (std::size_t at = 0; at < scan + 12; ++at)
            for (const int value : {0, 1, 4, 0x11, 0x44, 0x7F, 0xC0, 0xC4, 0xDA, 0xFF}) {
                std::string damaged = whole;
                damaged[at] = static_cast<char>(value);
                const Size frame = ByMarkers(damaged);
                if (frame) {
                    EXPECT_EQ(frame, ByDecoder(damaged)) << at << " " << value;
                }
            }
    }
}

// What has been read is shown as the file's own header says, whatever comes later.
TEST(JpegFrame, AnotherOneBetweenTheScansSpoilsNothing) {
    const std::string whole = JpegBytes(TellTale(64, 48), JpegKind::Color, 95, true);
    const std::size_t second = whole.find("\xFF\xC4", whole.find("\xFF\xDA"));
    ASSERT_NE(second, std::string::npos);
    for (const std::string& frame :
         {std::string("\xFF\xC9\0\x08\x11\0\x02\x02\x03\0", 10),
          std::string("\xFF\xC2\0\x0B\x08\xFF\xFF\xFF\xFF\x01\x01\x11\0", 13),
          std::string("\xFF\xC0\0\x14\x08\0\x01\0\x01\x04\x01\x11\0\x02\x11\0\x03\x11\0\x04\x11\0",
                      22)}) {
        std::string bytes = whole.substr(0, second) + frame + whole.substr(second);
        for (const QSize wanted : {QSize(), QSize(16, 12)}) {
            const FileHandle file(::fmemopen(bytes.data(), bytes.size(), "rb"));
            std::string error;
            const QImage picture = kJpegFormat.decode(file.get(), wanted, error);
            EXPECT_NE(error, "");
            EXPECT_EQ(picture.size(), wanted.isEmpty() ? QSize(64, 48) : wanted);
            EXPECT_EQ(Quarters(picture), "rgby") << frame.size();
        }
    }
}

} // namespace
} // namespace tarn::testing

#include "clips/SerPicture.h"

#include "platform/DecodeBudget.h"

namespace tarn {

QImage SerPicture(SerFile& file, int frame, std::string& error) {
    // As stored, as samples, as colours of 16 bits, and the picture.
    const SerHeader& header = file.Header();
    const std::int64_t pixels = std::int64_t(header.width) * header.height;
    const std::int64_t cost = header.FrameBytes() + pixels * (2 * header.Samples() + 6 + 4);
    if (cost > TheDecodeBudget().Bytes()) return error = "The frames are too large", QImage();
    const DecodeShare share(cost);
    if (!share) return error = "The reading was broken off", QImage();
    std::vector<std::uint16_t> samples;
    error = file.ReadFrame(frame, samples);
    if (!error.empty()) return {};
    const auto colors = SerColors(header, samples);
    QImage picture(header.width, header.height, QImage::Format_RGB32);
    if (picture.isNull()) return error = "Not enough memory", QImage();
    const std::uint16_t* from = colors.data();
    for (int y = 0; y < header.height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < header.width; ++x, from += 3)
            line[x] = qRgb(from[0] >> 8, from[1] >> 8, from[2] >> 8);
    }
    return picture;
}

} // namespace tarn

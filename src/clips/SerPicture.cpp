#include "clips/SerPicture.h"

namespace tarn {

QImage SerPicture(SerFile& file, int frame, std::string& error) {
    std::vector<std::uint16_t> samples;
    error = file.ReadFrame(frame, samples);
    if (!error.empty()) return {};
    const SerHeader& header = file.Header();
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

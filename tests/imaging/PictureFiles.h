// Picture files made in code, and a picture that tells how it was turned.
#pragma once

#include <QColor>
#include <QImage>

#include <string>
#include <vector>

namespace tarn::testing {

enum class JpegKind { Color, Gray, Cmyk, AdobeCmyk };

// The picture as a JPEG file's bytes; Color with chroma at half size, as cameras write. Cmyk puts
// everything into three inks, AdobeCmyk the same with the marker and the inks inverted.
std::string JpegBytes(const QImage& picture, JpegKind kind = JpegKind::Color, int quality = 95,
                      bool progressive = false);

// In another of the toolkit's formats ("PNG", "BMP", "TIFF", "WEBP").
std::string PictureBytes(const QImage& picture, const char* format);

// The JPEG file with a colour profile put in.
std::string WithProfile(const std::string& jpeg, const std::string& profile);

// In which red means blue and blue red.
std::string SwappedProfile();

// Four quarters: red, green / blue, yellow (left to right, top to bottom).
QImage TellTale(int width, int height);

// The colours of the four quarters as letters, left to right, top to bottom: "rgby" for TellTale;
// "?" for any other colour.
std::string Quarters(const QImage& picture);

} // namespace tarn::testing

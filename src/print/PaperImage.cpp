#include "print/PaperImage.h"

namespace tarn {

QImage ImageForPaper(ImgX picture, QSize worth, std::string* error) {
    const QSize whole(picture.Width(), picture.Height());
    const QSize size = worth.boundedTo(whole).expandedTo({1, 1});
    if (picture.HasImage() && size != whole) picture.Scale(size.width(), size.height());
    QImage image = picture.FullPicture();
    *error = picture.ErrorText();
    return image;
}

} // namespace tarn

#include "widgets/PictureBox.h"

#include <QImage>
#include <QPixmap>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <algorithm>

using namespace tarn;

namespace {

// What stands on the screen, in its pixels.
QImage OnScreen(PictureBox& box) {
    QImage image = box.grab().toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    return image;
}

QImage Checkered(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, (x + y) % 2 ? qRgb(255, 0, 0) : qRgb(0, 0, 255));
    return picture;
}

} // namespace

TEST(PictureBox, ShowsPicturesPixelByPixelInTheMiddle) {
    PictureBox box;
    box.resize(41, 30);
    const QSize pane = box.PixelSize();
    for (const QSize size : {QSize(20, 10), QSize(21, 11), pane}) {
        const QImage picture = Checkered(size.width(), size.height());
        box.SetPicture(picture);
        const QImage screen = OnScreen(box);
        const QPoint place((pane.width() - size.width()) / 2, (pane.height() - size.height()) / 2);
        EXPECT_EQ(screen.copy(QRect(place, size)), picture) << size.width();
        if (size == pane) continue;
        const QRgb around = box.palette().color(QPalette::Window).rgb();
        EXPECT_EQ(screen.pixel(place - QPoint(1, 1)), around);
        EXPECT_EQ(screen.pixel(place + QPoint(size.width(), size.height())), around);
    }
}

TEST(PictureBox, CutsTheEdgesOfWhatIsLarger) {
    PictureBox box;
    box.resize(20, 20);
    const QSize pane = box.PixelSize();
    const QImage picture = Checkered(pane.width() + 40, pane.height() + 30);
    box.SetPicture(picture);
    EXPECT_EQ(OnScreen(box), picture.copy(20, 15, pane.width(), pane.height()));
}

TEST(PictureBox, SaysSomethingOnlyWithoutAPicture) {
    PictureBox box;
    box.resize(300, 60);
    const auto distinct = [&box] {
        const QImage screen = OnScreen(box);
        const QRgb first = screen.pixel(0, 0);
        int other = 0;
        for (int y = 0; y < screen.height(); ++y)
            for (int x = 0; x < screen.width(); ++x) other += screen.pixel(x, y) != first;
        return other;
    };
    EXPECT_EQ(distinct(), 0);
    box.SetHint("No picture");
    EXPECT_GT(distinct(), 20);
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    box.SetPicture(picture);
    EXPECT_EQ(distinct(), 4);
    box.SetPicture(QImage());
    EXPECT_GT(distinct(), 20);
    EXPECT_EQ(box.focusPolicy(), Qt::StrongFocus);
}

// Shows whose pictures are seen larger than they fit, on a screen of 800 x 800 pixels.
#include "SlideDesk.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

namespace tarn::testing {
namespace {

// Every pixel another colour than its neighbours.
QImage Ramp(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, x / 256 * 16 + y / 256));
    return picture;
}

struct ZoomDesk : SlideDesk {
    const QImage& Screen() { return room.Window()->Backing(); }
    void Add(const std::string& name, const QImage& picture) {
        folder.Write(name, PictureBytes(picture, "PNG"));
    }
    void Wheel(int notches, int x, int y) {
        QWheelEvent event(QPointF(x, y), QPointF(x, y), {}, {0, 120 * notches}, {},
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(room.Window(), &event);
    }
    void Drag(QPoint from, QPoint way) {
        const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButtons held) {
            QMouseEvent event(type, at, at,
                              type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, {});
            QApplication::sendEvent(room.Window(), &event);
        };
        send(QEvent::MouseButtonPress, from, Qt::LeftButton);
        send(QEvent::MouseMove, from + way, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, from + way, {});
    }
    void Then(std::function<void()> act) { pump.script.push_back(std::move(act)); }
};

// The areas of the show of four have 396 x 376 pixels for their pictures, from 4,4 on.
constexpr QRect kFirst(4, 4, 396, 376);
constexpr QRect kSecond(418, 4, 396, 376);

TEST(ShowZoom, PicturesSideBySideAreSeenAtTheSamePlaceAndStaySoWhenStepping) {
    ZoomDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    d.Add("a.jpg", Ramp(1000, 900));
    d.Add("b.jpg", Ramp(2000, 1800));
    d.Add("c.jpg", Ramp(1000, 900));
    d.Then([&] { d.Wheel(1, 4 + 198, 4 + 188); }); // the middle of the first
    d.Then([&] {
        EXPECT_TRUE(d.state.SlideZoomed);
        EXPECT_EQ(d.Screen().copy(kFirst), Ramp(1000, 900).copy(302, 262, 396, 376));
        EXPECT_EQ(d.Screen().copy(kSecond).copy(0, 0, 300, 376),
                  Ramp(2000, 1800).copy(802, 712, 300, 376));
        d.Drag({100, 100}, {-100, 50});
    });
    d.Then([&] {
        EXPECT_EQ(d.Screen().copy(kFirst), Ramp(1000, 900).copy(402, 212, 396, 376));
        EXPECT_EQ(d.Screen().copy(kSecond).copy(0, 0, 300, 376),
                  Ramp(2000, 1800).copy(1002, 612, 300, 376))
            << "the same part of its sides";
        d.room.SlideKeyUp('N');
    });
    d.Then([&] {
        EXPECT_EQ(d.Screen().copy(kFirst), Ramp(2000, 1800).copy(1002, 612, 396, 376));
        d.room.SlideKeyUp(keys::kPlus);
    });
    d.Then([&] {
        EXPECT_EQ(d.Screen().pixel(4, 4), d.Screen().pixel(5, 5)) << "doubled";
        EXPECT_NE(d.Screen().pixel(5, 5), d.Screen().pixel(6, 6));
        for (int i = 0; i < 2; ++i) d.room.SlideKeyUp(keys::kMinus);
    });
    d.Then([] {});
    d.Then([&] { EXPECT_FALSE(d.state.SlideZoomed); });
    d.room.Slides4Button_Click();
    EXPECT_FALSE(d.state.SlideZoomed);
}

TEST(ShowZoom, OneSlideIsZoomedAndTurnedAndADragIsNoClick) {
    ZoomDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    const QImage picture = Ramp(2000, 1500);
    d.Add("a.jpg", picture);
    d.Add("b.jpg", picture);
    const QRect place(4, 4, 792, 772);
    d.Do([&] {
        d.Drag({100, 100}, {100, 0}); // a click, on the left half
    });
    d.Do([&] { d.Wheel(1, 400, 390); });
    d.Do([&] {
        EXPECT_EQ(d.Screen().copy(place), picture.copy(604, 364, 792, 772));
        d.Drag({600, 100}, {-50, -20});
    });
    d.Do([&] {
        EXPECT_EQ(d.Screen().copy(place), picture.copy(654, 384, 792, 772));
        d.room.SlideKeyUp('R');
    });
    d.Do([&] {
        const QImage turned = picture.transformed(QTransform().rotate(90));
        EXPECT_EQ(d.Screen().copy(place), turned.copy(1500 - 770 - 396, 1050 - 386, 792, 772));
        d.room.SlideKeyUp('N');
    });
    d.Do([&] {
        EXPECT_EQ(d.Screen().copy(place), picture.copy(654, 384, 792, 772)) << "not turned";
        d.room.SlideKeyUp('9');
    });
    d.Do([&] {
        EXPECT_FALSE(d.state.SlideZoomed);
        EXPECT_EQ(d.Screen().pixel(400, 20), QColor(0x80, 0x80, 0x80).rgb()) << "seen whole";
    });
    EXPECT_EQ(d.Run(), "a b b b b a a");
}

} // namespace
} // namespace tarn::testing

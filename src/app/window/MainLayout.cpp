#include "app/window/MainLayout.h"

#include "common/numbers.h"

#include <algorithm>

namespace tarn {

namespace {

// Logical pixels.
constexpr int kGap = kAroundTools / 4;
constexpr int kMessageSide = 5; // left and right of the message line
constexpr int kMessageBelow = 2;
constexpr int kFramesOver = 3;  // that the frames reach into the message line's upper edge
constexpr int kFramesRight = 4; // of the notes
constexpr int kTreeAbove = 2;
constexpr int kPictureBelow = 5;
constexpr int kFrameMargin = 3; // inside camera data and notes
constexpr int kRowTwips = 224;

} // namespace

MainLayout LayOut(QSize window, const LayoutMeasures& m) {
    MainLayout l;
    const int width = window.width();
    const int height = window.height();
    l.message = QRect(kMessageSide, height - m.messageHeight - kMessageBelow,
                      width - 2 * kMessageSide, m.messageHeight);
    l.notice = QRect(kMessageSide, l.message.top() - m.noticeHeight, width - 2 * kMessageSide,
                     m.noticeHeight);
    // The frames' own margin keeps the texts apart from the line.
    const int framesTop = l.notice.top() - m.panelHeight + kFramesOver;
    const int exifWidth = width - m.notesWidth - kGap - kFramesRight;
    l.exif = QRect(kGap, framesTop, exifWidth, m.panelHeight);
    l.notes = QRect(kGap + exifWidth, framesTop, m.notesWidth, m.panelHeight);

    l.folderBar = QRect(kGap, kGap, m.treeWidth, m.folderBarHeight);
    const int splitterTop = kGap + m.folderBarHeight + kTreeAbove;
    l.splitter = QRect(kGap, splitterTop, m.treeWidth, framesTop - splitterTop);

    const int left = m.treeWidth + 3 * kGap;
    l.tools = QRect(left, kGap, width - left - kGap, m.toolsHeight);
    const int pictureTop = kGap + m.toolsHeight + kGap;
    l.picture =
        QRect(left, pictureTop, width - left - kGap, framesTop - kPictureBelow - pictureTop);

    l.treeHandle = QRect(kGap + m.treeWidth, kGap, 2 * kGap, framesTop - 2 * kGap);
    l.stripHandle = QRect(left, framesTop - kPictureBelow, width - left - kGap, kPictureBelow + 1);
    l.notesHandle = QRect(l.notes.left() - kFrameMargin, framesTop + kFrameMargin, 2 * kFrameMargin,
                          m.panelHeight - 2 * kFrameMargin);
    return l;
}

int SnapSplitter(int twips) {
    constexpr int kLongest = 1'000'000; // far beyond every screen
    return static_cast<int>(RoundHalfEven(double(std::min(twips, kLongest)) / kRowTwips)) *
           kRowTwips;
}

} // namespace tarn

#include "app/window/MainLayout.h"

#include "common/numbers.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int kGap = 4;
constexpr int kRowTwips = 224;

} // namespace

MainLayout LayOut(QSize window, const LayoutMeasures& m) {
    MainLayout l;
    const int width = window.width();
    const int height = window.height();
    l.message = QRect(5, height - m.messageHeight - 2, width - 10, m.messageHeight);
    // The frames reach into the line's upper edge; their own margin keeps the texts apart.
    const int framesTop = l.message.top() - m.panelHeight + 3;
    const int exifWidth = width - m.notesWidth - 8;
    l.exif = QRect(kGap, framesTop, exifWidth, m.panelHeight);
    l.notes = QRect(kGap + exifWidth, framesTop, m.notesWidth, m.panelHeight);

    l.folderBar = QRect(kGap, kGap, m.treeWidth, m.folderBarHeight);
    const int splitterTop = kGap + m.folderBarHeight + 2;
    l.splitter = QRect(kGap, splitterTop, m.treeWidth, framesTop - splitterTop);

    const int left = m.treeWidth + 3 * kGap;
    l.tools = QRect(left, kGap, width - left - kGap, m.toolsHeight);
    const int pictureTop = kGap + m.toolsHeight + kGap;
    l.picture = QRect(left, pictureTop, width - left - kGap, framesTop - 5 - pictureTop);
    return l;
}

int SnapSplitter(int twips) {
    constexpr int kLongest = 1'000'000; // far beyond every screen
    return static_cast<int>(RoundHalfEven(double(std::min(twips, kLongest)) / kRowTwips)) *
           kRowTwips;
}

} // namespace tarn

// What the main window's parts ask for, and where that puts them in the window it has.
#include "app/window/frmMain.h"

#include "app/window/FlowRow.h"
#include "pictureinfo/CameraDataText.h"
#include "widgets/FocusFrame.h"
#include "widgets/PaneHandle.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>

namespace tarn {

namespace {

// Widths in digits of the window's font: as designed, and the least that a small area leaves.
constexpr int kTreeDigits = 32;
constexpr int kLeastTreeDigits = 24;
constexpr int kNotesDigits = 48;
constexpr int kLeastNotesDigits = 30;
constexpr int kExifDigits = 48;
constexpr int kLeastToolsDigits = 36;

// Heights in lines of that font.
constexpr int kToolLines = 2; // above the picture
constexpr int kPictureLines = 20;
constexpr int kLeastPictureLines = 8;
constexpr int kLeastTreeLines = 4;
constexpr int kLongButtonLines = 3; // the width of a button that has only a sign

// Logical pixels.
constexpr int kAroundNotes = 6; // both margins of their frame
constexpr int kAroundList = 16; // those of the camera data's, with the list's own
constexpr int kGround = 8;      // some texts bring a ground of their own
constexpr int kInset = 10;      // of what lies over the panes
constexpr int kButtonGap = 6;
constexpr int kFrame = 12; // that window managers draw, both sides

} // namespace

// The texts of the row change with every picture; its height does not.
void frmMain::ReserveInfo() {
    const MainControls& c = m_controls;
    const auto reserve = [this](const QLabel* label, const char* longest) {
        m_rows[Place::Info]->Reserve(
            label, label->fontMetrics().horizontalAdvance(QString::fromUtf8(longest)) + kGround);
    };
    // Buttons whose captions change with the file.
    const auto reserveButton = [](FlowRow& row, const QAbstractButton& button, const char* other) {
        const QFontMetrics font = button.fontMetrics();
        const int more = font.horizontalAdvance(QString::fromLatin1(other)) -
                         font.horizontalAdvance(button.text());
        row.Reserve(&button, button.sizeHint().width() + std::max(0, more));
    };
    constexpr std::size_t kPlay = 3;
    reserveButton(*m_rows[Place::CopyTo], *c.EditButton2, "Web");
    reserveButton(*m_rows[Place::Video], *c.VideoButton[kPlay], "Pause");
    m_rows[Place::View]->Reserve(c.CloseOneToOneButton, kLongButtonLines * fontMetrics().height());
    reserve(c.LastLabel, "Last Picture");
    reserve(c.CropLabel, "Cropped");
    reserve(c.TextNumOf, "00000 of 00000");
    reserve(c.MarkLabel, "Rejected 5\u2605 !");
    reserve(c.SizeText, "00000 x 00000");
    reserve(c.ZoomText, "000%");
    reserve(c.MpixelText, "000.0 Mp");
    reserve(c.FileSizeText, "000,000 KB");
}

// The widest of these rows, each in one line.
int frmMain::WidestOf(std::initializer_list<Place> places) const {
    int width = 0;
    for (const Place place : places) width = std::max(width, m_rows.at(place)->LineWidth());
    return width;
}

// All of it follows from the fonts.
void frmMain::Measure() {
    MeasureDesign();
    MeasureLeast();
    SetLeastArea(m_scroll->size());
    TakeDesignSize();
}

// What the parts ask for where there is room.
void frmMain::MeasureDesign() {
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int toolsWidth = m_rows.at(Place::Step)->WidthFor(kToolLines);
    LayoutMeasures& m = m_measures;
    m.treeWidth =
        std::max(WidestOf({Place::FolderBar, Place::Classes, Place::ListBar}), kTreeDigits * digit);
    m.notesWidth = std::max(WidestOf({Place::NotesBar, Place::NotesStep}) + kAroundNotes,
                            kNotesDigits * digit);
    m.panelHeight = kPanelLines * QFontMetrics(m_controls.List1->font()).height() + kAroundList;
    m.messageHeight = m_controls.FileDateText->sizeHint().height();
    m.folderBarHeight = m_folderBar->heightForWidth(m.treeWidth);
    const int width =
        std::max(m.treeWidth + kAroundTools + toolsWidth, m.notesWidth + kExifDigits * digit);
    PlaceInfo(width);
    m.toolsHeight = m_tools->heightForWidth(toolsWidth);
    m_designArea = QSize(width, m.toolsHeight + kPictureLines * fontMetrics().height() +
                                    m.panelHeight + m.messageHeight);
}

// What a small area leaves them: its rows wrap.
void frmMain::MeasureLeast() {
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_least = m_measures;
    m_least.treeWidth = std::max(std::min(m_measures.treeWidth, kLeastTreeDigits * digit),
                                 m_listSide->minimumSizeHint().width());
    m_least.notesWidth = std::min(m_measures.notesWidth, kLeastNotesDigits * digit);
    m_leastWidth = m_least.treeWidth + kAroundTools +
                   std::max(kLeastToolsDigits * digit, m_tools->minimumSizeHint().width());
}

// The least size of the window, as far as the screen goes.
void frmMain::TakeDesignSize() {
    const QSize bars(0, menuBar()->sizeHint().height() + statusBar()->sizeHint().height());
    const QSize frame(kFrame, style()->pixelMetric(QStyle::PM_TitleBarHeight) + kFrame);
    m_design = (m_designArea + bars)
                   .expandedTo(QSize(menuBar()->sizeHint().width(), 0))
                   .boundedTo(screen()->availableSize() - frame);
    setMinimumSize(m_design);
}

// The note's controls and two lines of its text.
int frmMain::LeastPanel(int notesWidth) const {
    return std::min(m_measures.panelHeight, m_notes->layout()->minimumHeightForWidth(notesWidth));
}

// The list and the rows around it, which may wrap.
int frmMain::LeastListSide(int width) const {
    return m_listSide->layout()->minimumHeightForWidth(width);
}

// What an area must have: its least width, and at the width it gets a height that leaves some lines
// to the picture. Below that the window scrolls.
void frmMain::SetLeastArea(QSize outside) {
    PlaceInfo(outside.width());
    if (m_pictureOnly) return m_area->setMinimumSize(0, 0);
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = std::max(outside.width() - bar, m_leastWidth);
    const LayoutMeasures m = MeasuresFor(QSize(width, 0));
    m_area->setMinimumSize(m_leastWidth,
                           LeastAbove(m) + m.panelHeight + m.noticeHeight + m.messageHeight);
}

// Tree and list on one side, tools and some lines of the picture on the other.
int frmMain::LeastAbove(const LayoutMeasures& m) const {
    const int line = fontMetrics().height();
    const int right = m.toolsHeight + kLeastPictureLines * line;
    const int left = m.folderBarHeight + kLeastTreeLines * line + LeastListSide(m.treeWidth);
    return std::max(left, right);
}

LayoutMeasures frmMain::MeasuresFor(QSize area) const {
    LayoutMeasures m = m_measures;
    if (m_noticeShown) m.noticeHeight = m_notice->sizeHint().height();
    // A narrow window takes from tree and note, a low one from the panel.
    if (area.width() < m_designArea.width()) {
        m.treeWidth =
            std::max(m_least.treeWidth, m.treeWidth * area.width() / m_designArea.width());
        m.notesWidth = std::clamp(area.width() * 9 / 16, m_least.notesWidth, m.notesWidth);
    }
    ApplyChosen(m, area);
    m.folderBarHeight = m_folderBar->heightForWidth(m.treeWidth);
    m.toolsHeight = m_tools->heightForWidth(area.width() - m.treeWidth - kAroundTools);
    const int panel = LeastPanel(m.notesWidth);
    if (m_chosen.strip > 0) {
        m.panelHeight =
            std::clamp(m_chosen.strip, panel,
                       std::max(panel, area.height() - m.messageHeight - LeastAbove(m)));
        return m;
    }
    const int less = m_designArea.height() + m.toolsHeight - m_measures.toolsHeight - area.height();
    if (less > 0) m.panelHeight = std::clamp(m.panelHeight - less, panel, m.panelHeight);
    return m;
}

// What the scroll area will give to it.
QSize frmMain::AreaInside(QSize outside) {
    SetLeastArea(outside);
    const QSize least = m_area->minimumSize();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize inside = outside;
    if (inside.height() < least.height()) inside.rwidth() -= bar;
    if (inside.width() < least.width()) inside.rheight() -= bar;
    return inside.expandedTo(least);
}

void frmMain::LayOutNow() {
    if (!isVisible()) { // bars and area have no size yet
        layout()->activate();
        m_area->resize(AreaInside(m_scroll->size()));
    }
    m_laidOut = m_area->size();
    if (m_pictureOnly) {
        m_panes->setGeometry(m_area->rect());
        return PlacePanes(m_area->rect());
    }
    m_now = MeasuresFor(m_laidOut);
    LayoutMeasures shown = m_now;
    // The notice takes its room from the panel, so that the picture stands.
    if (shown.noticeHeight > 0)
        shown.panelHeight =
            std::max(LeastPanel(shown.notesWidth), shown.panelHeight - shown.noticeHeight);
    const MainLayout l = LayOut(m_laidOut, shown);
    m_listSide->setMinimumHeight(LeastListSide(l.splitter.width()));
    m_folderBar->setGeometry(l.folderBar);
    m_splitter->setGeometry(l.splitter);
    m_tools->setGeometry(l.tools);
    m_panes->setGeometry(l.picture);
    m_exif->setGeometry(l.exif);
    m_notes->setGeometry(l.notes);
    m_controls.FileDateText->setGeometry(l.message);
    if (m_notice) m_notice->setGeometry(l.notice);
    m_treeHandle->setGeometry(l.treeHandle);
    m_stripHandle->setGeometry(l.stripHandle);
    m_notesHandle->setGeometry(l.notesHandle);
    PlacePanes(QRect(QPoint(0, 0), l.picture.size()));
}

void frmMain::PlacePanes(const QRect& area) {
    const MainControls& c = m_controls;
    const int video = m_videoFrame->heightForWidth(area.width());
    c.Picture1->setGeometry(area);
    c.WebBrowser1->setGeometry(area);
    c.LogText->setGeometry(area);
    c.Picture2->setGeometry(area.adjusted(0, 0, 0, -video));
    m_videoFrame->setGeometry(area.left(), area.bottom() + 1 - video, area.width(), video);
    const int inner = area.width() - 2 * kInset;
    c.Label_error->setGeometry(kInset, kInset, inner,
                               std::max(0, c.Label_error->heightForWidth(inner)));
    int x = kInset;
    for (QPushButton* button : {c.DeletePicButton, c.DeleteFitsButton, c.QTplayButton,
                                c.PrintCancelButton, c.BatchCancelButton}) {
        button->adjustSize();
        button->move(x, area.height() - button->height() - kInset);
        x += button->width() + kButtonGap;
        button->raise();
    }
    c.Label_error->raise();
    m_focus->Place();
}

} // namespace tarn

#include "app/window/frmMain.h"

#include "app/window/FlowRow.h"
#include "common/numbers.h"
#include "desk/state/WindowState.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>

#include <QUrl>

namespace tarn {

frmMain::frmMain(MainControls& controls, const Files& files) : m_controls(controls) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Tarn_View - Digital Camera Picture program"));
    setAcceptDrops(true);
    m_area = new QWidget();
    m_area->installEventFilter(this);
    m_scroll = new QScrollArea(this);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidgetResizable(true);
    m_scroll->setWidget(m_area);
    m_scroll->installEventFilter(this);
    setCentralWidget(m_scroll);
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    menuBar()->setNativeMenuBar(false);
    MakeBars();
    MakePanels();
    MakeControls(m_controls, files, [this](QWidget* widget, Place place) { Put(widget, place); });
    MakeMenus(m_controls, *menuBar(), *this);
    StyleControls();
    ReserveInfo();
    Measure();
}

QWidget* frmMain::Bar(const char* name, QWidget* parent) {
    auto* bar = new QWidget(parent);
    bar->setObjectName(QString::fromLatin1(name));
    return bar;
}

namespace {

constexpr int kGap = 3;
constexpr int kGroupGap = 12;
constexpr int kTextGap = 14;

template <typename Layout> Layout* Tight(QWidget* on, int margin = 0) {
    auto* layout = on ? new Layout(on) : new Layout();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(kGap);
    return layout;
}

} // namespace

void frmMain::MakeBars() {
    m_folderBar = Bar("FolderBar", m_area);
    m_rows[Place::FolderBar] = new FlowRow(m_folderBar, kGap, kGroupGap);

    m_splitter = new QSplitter(Qt::Vertical, m_area);
    m_splitter->setObjectName(QStringLiteral("vbuSplitter"));
    m_splitter->setChildrenCollapsible(false);
    QObject::connect(m_splitter, &QSplitter::splitterMoved, this,
                     [this] { SetSplitterTop(SplitterTop()); });
    m_listSide = Bar("ListSide", nullptr);
    auto* side = Tight<QVBoxLayout>(m_listSide);
    side->addLayout(m_rows[Place::Classes] = new FlowRow(nullptr, kGap, kGroupGap));
    side->addLayout(m_bars[Place::ListNote] = Tight<QHBoxLayout>(nullptr));
    side->addLayout(m_bars[Place::List] = Tight<QHBoxLayout>(nullptr), 1);
    side->addLayout(m_rows[Place::ListBar] = new FlowRow(nullptr, kGap, kGroupGap));

    m_tools = Bar("Tools", m_area);
    m_tools->installEventFilter(this);
    auto* rows = Tight<QVBoxLayout>(m_tools);
    const std::initializer_list<std::initializer_list<Place>> toolRows{
        {Place::Step, Place::Turn, Place::View}, {Place::Slides, Place::CopyTo}, {Place::Info}};
    for (const auto& places : toolRows) {
        const bool texts = *places.begin() == Place::Info;
        auto* row = new FlowRow(nullptr, texts ? kTextGap : kGap, kGroupGap);
        for (const Place place : places) m_rows[place] = row;
        rows->addLayout(row);
    }
}

void frmMain::MakePanels() {
    m_panes = Bar("Panes", m_area);
    m_videoFrame = Bar("VideoFrame", m_panes);
    // The video room puts its slider beside the buttons.
    Tight<QHBoxLayout>(m_videoFrame)
        ->addLayout(m_rows[Place::Video] = new FlowRow(nullptr, kGap, kGroupGap));
    m_controls.VideoFrame = m_videoFrame;
    m_videoFrame->hide();

    m_exif = Bar("FrameExif", m_area);
    m_bars[Place::Exif] = Tight<QHBoxLayout>(m_exif, 3);

    m_notes = Bar("FrameNotes", m_area);
    auto* notes = Tight<QVBoxLayout>(m_notes, 3);
    notes->addLayout(m_bars[Place::NotesHead] = Tight<QHBoxLayout>(nullptr));
    notes->addLayout(m_bars[Place::NotesText] = Tight<QHBoxLayout>(nullptr), 1);
    for (const Place place : {Place::NotesBar, Place::NotesStep})
        notes->addLayout(m_rows[place] = new FlowRow(nullptr, kGap, kGroupGap));
}

void frmMain::Put(QWidget* widget, Place place) {
    switch (place) {
    case Place::Tree:
        m_splitter->addWidget(widget);
        m_splitter->addWidget(m_listSide);
        m_splitter->setStretchFactor(1, 1);
        break;
    case Place::Panes:
    case Place::Over:
        widget->setParent(m_panes);
        break;
    case Place::Message:
        widget->setParent(m_area);
        break;
    default:
        if (const auto row = m_rows.find(place); row != m_rows.end())
            row->second->Add(widget, static_cast<int>(place));
        else
            m_bars.at(place)->addWidget(widget);
        break;
    }
}

// What is not the window's own font, made anew when that changes.
void frmMain::StyleFonts() {
    const MainControls& c = m_controls;
    // Courier New or, where it is missing, its like.
    QFont fixed(QStringLiteral("Courier New"));
    fixed.setStyleHint(QFont::TypeWriter);
    fixed.setPointSizeF(font().pointSizeF());
    c.List1->setFont(fixed);
    c.LogText->setFont(fixed);
    QFont bold = font();
    bold.setBold(true);
    c.LastLabel->setFont(bold);
    c.PreviewLabel->setFont(bold);
    c.LabelNavKeys->setFixedSize(fontMetrics().height() * 2, fontMetrics().height() / 2);
}

void frmMain::StyleControls() {
    MainControls& c = m_controls;
    StyleFonts();
    c.List1->setUniformItemSizes(true);
    c.List1->setTextElideMode(Qt::ElideNone); // a long line is scrolled to, not cut
    c.LogText->setReadOnly(true);
    c.LogText->setLineWrapMode(QPlainTextEdit::NoWrap);
    c.FileDateText->setReadOnly(true);
    c.FileDateText->setFocusPolicy(Qt::ClickFocus);
    c.NotesBox->setTabChangesFocus(true);
    c.FileListBox->setMinimumHeight(4 * fontMetrics().lineSpacing());
    c.FolderTreeview1->setMinimumHeight(3 * fontMetrics().lineSpacing());
    c.NotesBox->setMinimumHeight(3 * fontMetrics().lineSpacing());
    // A name of any length takes what room there is.
    c.NotesFrame->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    c.LabelNavKeys->setAutoFillBackground(true);
    QPalette grey;
    grey.setColor(QPalette::Window, Qt::gray);
    c.LabelNavKeys->setPalette(grey);
    QSizePolicy kept = c.LabelNavKeys->sizePolicy();
    kept.setRetainSizeWhenHidden(true); // the texts beside it stand still
    c.LabelNavKeys->setSizePolicy(kept);
    c.Label_error->setWordWrap(true);
    c.Label_error->setAutoFillBackground(true);
    c.Label_error->setFrameShape(QFrame::Box);
    c.Label_error->setContentsMargins(6, 4, 6, 4);
    c.FolderChangedLabel->hide();
    for (QWidget* hidden : std::initializer_list<QWidget*>{
             c.LastLabel, c.CropLabel, c.PreviewLabel, c.LabelNavKeys, c.Label_error,
             c.DeletePicButton, c.DeleteFitsButton, c.QTplayButton, c.PrintCancelButton,
             c.BatchCancelButton, c.CloseOneToOneButton, c.OpenButtonF, c.Picture2, c.WebBrowser1,
             c.LogText})
        hidden->hide();
}

// The texts of the row change with every picture; its height does not.
void frmMain::ReserveInfo() {
    const MainControls& c = m_controls;
    const auto reserve = [this](const QLabel* label, const char* longest) {
        constexpr int kGround = 8; // some texts bring a ground of their own
        m_rows[Place::Info]->Reserve(
            label, label->fontMetrics().horizontalAdvance(QString::fromLatin1(longest)) + kGround);
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
    m_rows[Place::View]->Reserve(c.CloseOneToOneButton, 3 * fontMetrics().height());
    reserve(c.LastLabel, "Last Picture");
    reserve(c.CropLabel, "Cropped");
    reserve(c.TextNumOf, "00000 of 00000");
    reserve(c.PreviewLabel, "Preview picture is full size cropped if needed");
    reserve(c.SizeText, "00000 x 00000");
    reserve(c.MpixelText, "000.0 Mp");
    reserve(c.FileSizeText, "000,000 KB");
}

// What the fonts ask for; the sum of it is the least size of the window, as far as the screen
// goes. On a smaller one the rows wrap and the panel is lower.
void frmMain::Measure() {
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int line = fontMetrics().height();
    const auto widest = [this](std::initializer_list<Place> places) {
        int width = 0;
        for (const Place place : places) width = std::max(width, m_rows[place]->LineWidth());
        return width;
    };
    LayoutMeasures& m = m_measures;
    m.treeWidth = std::max(widest({Place::FolderBar, Place::Classes, Place::ListBar}), 32 * em);
    m.notesWidth = std::max(widest({Place::NotesBar, Place::NotesStep}) + 6, 48 * em);
    m.panelHeight = 13 * QFontMetrics(m_controls.List1->font()).height() + 16;
    m.messageHeight = m_controls.FileDateText->sizeHint().height();
    const int toolsWidth = widest({Place::Step, Place::Slides});
    m.folderBarHeight = m_folderBar->heightForWidth(m.treeWidth);
    m.toolsHeight = m_tools->heightForWidth(toolsWidth);
    m_designArea = QSize(std::max(m.treeWidth + 16 + toolsWidth, m.notesWidth + 48 * em),
                         m.toolsHeight + 20 * line + m.panelHeight + m.messageHeight);

    m_least = m;
    m_least.treeWidth = std::min(m.treeWidth, 24 * em);
    m_least.notesWidth = std::min(m.notesWidth, 30 * em);
    m_least.treeWidth = std::max(m_least.treeWidth, m_listSide->minimumSizeHint().width());
    m_leastWidth = m_least.treeWidth + 16 + std::max(36 * em, m_tools->minimumSizeHint().width());
    SetLeastArea(m_scroll->size());

    const QSize bars(0, menuBar()->sizeHint().height() + statusBar()->sizeHint().height());
    m_design = (m_designArea + bars).expandedTo(QSize(menuBar()->sizeHint().width(), 0));
    constexpr int kFrame = 12; // that window managers draw, both sides
    const QSize frame(kFrame, style()->pixelMetric(QStyle::PM_TitleBarHeight) + kFrame);
    m_design = m_design.boundedTo(screen()->availableSize() - frame);
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
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = std::max(outside.width() - bar, m_leastWidth);
    const LayoutMeasures m = MeasuresFor(QSize(width, 0));
    const int right = m.toolsHeight + 8 * fontMetrics().height();
    const int left = m.folderBarHeight + 5 * fontMetrics().height() + LeastListSide(m.treeWidth);
    m_area->setMinimumSize(m_leastWidth, std::max(left, right) + m.panelHeight + m.messageHeight);
}

LayoutMeasures frmMain::MeasuresFor(QSize area) const {
    LayoutMeasures m = m_measures;
    // A narrow window takes from the tree first, a low one from the panel.
    const int lack = m_designArea.width() - area.width();
    if (lack > 0) {
        m.treeWidth = std::max(m_least.treeWidth, m.treeWidth - lack);
        m.notesWidth = std::clamp(area.width() / 2, m_least.notesWidth, m.notesWidth);
    }
    m.folderBarHeight = m_folderBar->heightForWidth(m.treeWidth);
    m.toolsHeight = m_tools->heightForWidth(area.width() - m.treeWidth - 16);
    const int less = m_designArea.height() + m.toolsHeight - m_measures.toolsHeight - area.height();
    if (less > 0)
        m.panelHeight = std::clamp(m.panelHeight - less, LeastPanel(m.notesWidth), m.panelHeight);
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
    const LayoutMeasures measures = MeasuresFor(m_laidOut);
    m_toolsHeight = measures.toolsHeight;
    const MainLayout l = LayOut(m_laidOut, measures);
    m_listSide->setMinimumHeight(LeastListSide(l.splitter.width()));
    m_folderBar->setGeometry(l.folderBar);
    m_splitter->setGeometry(l.splitter);
    m_tools->setGeometry(l.tools);
    m_panes->setGeometry(l.picture);
    m_exif->setGeometry(l.exif);
    m_notes->setGeometry(l.notes);
    m_controls.FileDateText->setGeometry(l.message);
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
    const int inner = area.width() - 20;
    c.Label_error->setGeometry(10, 10, inner, std::max(0, c.Label_error->heightForWidth(inner)));
    int x = 10;
    for (QPushButton* button : {c.DeletePicButton, c.DeleteFitsButton, c.QTplayButton,
                                c.PrintCancelButton, c.BatchCancelButton}) {
        button->adjustSize();
        button->move(x, area.height() - button->height() - 10);
        x += button->width() + 6;
        button->raise();
    }
    c.Label_error->raise();
}

int frmMain::SplitterTop() const {
    return SnapSplitter(m_splitter->sizes().value(0) * kTwipsPerPixel);
}

int frmMain::DesignSplitterTop() const {
    return m_splitter->height() * 2 / 5 * kTwipsPerPixel;
}

void frmMain::SetSplitterTop(int twips) {
    const int total = m_splitter->height() - m_splitter->handleWidth();
    const int top = static_cast<int>(RoundHalfEven(SnapSplitter(twips) / double(kTwipsPerPixel)));
    m_splitter->setSizes({top, std::max(1, total - top)});
}

double frmMain::ChangeListFont(double by) {
    QFont changed = m_controls.FileListBox->font();
    changed.setPointSizeF(std::clamp(changed.pointSizeF() + by, 4.0, 40.0));
    m_controls.FileListBox->setFont(changed);
    return m_controls.FileListBox->font().pointSizeF();
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_scroll && event->type() == QEvent::Resize) SetLeastArea(m_scroll->size());
    if (watched == m_area && event->type() == QEvent::Resize && m_area->size() != m_laidOut) {
        LayOutNow();
        if (onResize) onResize();
    }
    // A button has come or got another name, and the rows may have to wrap.
    if (watched == m_tools && event->type() == QEvent::LayoutRequest && isVisible() &&
        MeasuresFor(m_laidOut).toolsHeight != m_toolsHeight) {
        LayOutNow();
        if (onResize) onResize();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        if (!m_tools || !m_controls.FileDateText) return;
        StyleFonts();
        ReserveInfo();
        Measure();
        LayOutNow();
        if (onResize) onResize();
    }
}

void frmMain::closeEvent(QCloseEvent* event) {
    event->ignore(); // the program ends by its own steps, which close this window last
    if (onClose) onClose();
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    // What is dragged out of our own list is here already.
    if (event->mimeData()->hasUrls() && !event->source()) event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.first().isLocalFile()) return;
    event->acceptProposedAction();
    if (onOpen) onOpen(FromQt(urls.first().toLocalFile()));
}

} // namespace tarn

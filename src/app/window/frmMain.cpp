#include "app/window/frmMain.h"

#include "app/window/FlowRow.h"
#include "common/numbers.h"
#include "desk/state/WindowState.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PictureBox.h"
#include "widgets/Themes.h"
#include "widgets/webpane/PageBrowser.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
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
    MakeHandles();
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

constexpr int kChoiceLetters = 7; // of the box beside Filter
constexpr int kOrderLetters = 8;  // and of the list's order
constexpr int kGap = 3;
constexpr int kGroupGap = 12;
constexpr int kTextGap = 14;
constexpr double kSmall = 0.85;

template <typename Layout> Layout* Tight(QWidget* on, int margin = 0) {
    auto* layout = on ? new Layout(on) : new Layout();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(kGap);
    return layout;
}

// The order of the list stands at the end of the line that tells what the list hides.
void PutOrder(QBoxLayout& notes, QLabel* hidden, QWidget* order) {
    const int at = notes.indexOf(hidden);
    notes.removeWidget(hidden);
    auto* line = Tight<QHBoxLayout>(nullptr);
    line->addWidget(hidden, 1);
    line->addWidget(order);
    notes.insertLayout(at, line);
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
    side->addLayout(m_bars[Place::ListNote] = Tight<QVBoxLayout>(nullptr));
    side->addLayout(m_bars[Place::List] = Tight<QHBoxLayout>(nullptr), 1);
    side->addLayout(m_rows[Place::ListBar] = new FlowRow(nullptr, kGap, kGroupGap));

    m_tools = Bar("Tools", m_area);
    m_tools->installEventFilter(this);
    auto* rows = Tight<QVBoxLayout>(m_tools);
    auto* row = new FlowRow(nullptr, kGap, kGroupGap);
    for (const Place place : {Place::Step, Place::Turn, Place::View, Place::Slides, Place::CopyTo})
        m_rows[place] = row;
    rows->addLayout(row);
    m_info = Bar("Info", m_tools);
    m_rows[Place::Info] = new FlowRow(m_info, kTextGap, kGroupGap);
    rows->addWidget(m_info);
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
    const bool isOrder = widget == m_controls.SortCombo;
    m_placed[isOrder ? Place::ListNote : place].push_back(widget);
    if (isOrder) return PutOrder(*m_bars.at(Place::ListNote), m_controls.HiddenFilesLabel, widget);
    switch (place) {
    case Place::Tree:
        m_splitter->addWidget(widget);
        m_splitter->addWidget(m_listSide);
        m_splitter->setStretchFactor(1, 1);
        m_splitter->handle(1)->installEventFilter(this);
        break;
    case Place::Panes:
    case Place::Over:
        widget->setParent(m_panes);
        break;
    case Place::Status:
        statusBar()->addPermanentWidget(widget);
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

// What is not the window's own font or colour, made anew when these change.
void frmMain::StyleFonts() {
    const MainControls& c = m_controls;
    // Courier New or, where it is missing, its like.
    QFont fixed(QStringLiteral("Courier New"));
    fixed.setStyleHint(QFont::TypeWriter);
    fixed.setPointSizeF(font().pointSizeF());
    c.List1->setFont(fixed);
    c.SkyList->setFont(fixed);
    c.LogText->setFont(fixed);
    QFont bold = font();
    bold.setBold(true);
    c.LastLabel->setFont(bold);
    QFont small = font(); // what stands there with every picture is quiet
    small.setPointSizeF(font().pointSizeF() * kSmall);
    c.PreviewLabel->setFont(small);
    QPalette grey;
    grey.setColor(QPalette::Window, Themed(Qt::gray));
    c.LabelNavKeys->setPalette(grey);
    c.LabelNavKeys->setFixedSize(fontMetrics().height() * 2, fontMetrics().height() / 2);
}

void frmMain::StyleControls() {
    MainControls& c = m_controls;
    StyleFonts();
    c.List1->setUniformItemSizes(true);
    for (QListWidget* list : {c.List1, c.SkyList})
        list->setTextElideMode(Qt::ElideNone); // a long line is scrolled to, not cut
    c.SkyList->hide();                         // until it is asked for
    c.LogText->setReadOnly(true);
    c.LogText->setLineWrapMode(QPlainTextEdit::NoWrap);
    c.FileDateText->setReadOnly(true);
    c.FileDateText->setFocusPolicy(Qt::ClickFocus);
    c.NotesBox->setTabChangesFocus(true);
    c.FileListBox->setMinimumHeight(3 * fontMetrics().lineSpacing());
    c.FolderTreeview1->setMinimumHeight(3 * fontMetrics().lineSpacing());
    c.NotesBox->setMinimumHeight(5 * fontMetrics().lineSpacing() / 2);
    // A name of any length takes what room there is.
    c.NotesFrame->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    c.LabelNavKeys->setAutoFillBackground(true);
    QSizePolicy kept = c.LabelNavKeys->sizePolicy();
    kept.setRetainSizeWhenHidden(true); // the texts beside it stand still
    c.LabelNavKeys->setSizePolicy(kept);
    // Its room is kept, and a long sentence ends at the edge: the list stands still.
    QSizePolicy line(QSizePolicy::Ignored, QSizePolicy::Fixed);
    line.setRetainSizeWhenHidden(true);
    c.HiddenFilesLabel->setSizePolicy(line);
    c.Label_error->setWordWrap(true);
    c.Label_error->setAutoFillBackground(true);
    c.Label_error->setFrameShape(QFrame::Box);
    c.Label_error->setContentsMargins(6, 4, 6, 4);
    for (const auto& [box, letters] : {std::pair(c.NoteFilterCombo, kChoiceLetters),
                                       {c.SortCombo, kOrderLetters}}) { // their lists open wider
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(letters);
    }
    c.FolderChangedLabel->hide();
    c.HiddenFilesLabel->hide();
    c.FindLine->hide();
    for (QWidget* hidden : std::initializer_list<QWidget*>{
             c.LastLabel, c.CropLabel, c.PreviewLabel, c.LabelNavKeys, c.Label_error,
             c.DeletePicButton, c.DeleteFitsButton, c.QTplayButton, c.PrintCancelButton,
             c.BatchCancelButton, c.CloseOneToOneButton, c.OpenButtonF, c.Picture2, c.WebBrowser1,
             c.LogText})
        hidden->hide();
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
    if (event->type() == QEvent::MouseButtonDblClick && watched == m_splitter->handle(1))
        SetSplitterTop(DesignSplitterTop());
    if (watched == m_scroll && event->type() == QEvent::Resize) SetLeastArea(m_scroll->size());
    if (watched == m_area && event->type() == QEvent::Resize && m_area->size() != m_laidOut) {
        LayOutNow();
        if (onResize) onResize();
    }
    // A button has come or got another name, and the rows may have to wrap.
    if (watched == m_tools && event->type() == QEvent::LayoutRequest && isVisible() &&
        MeasuresFor(m_laidOut).toolsHeight != m_now.toolsHeight) {
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

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (event->spontaneous() && onSizedBySystem) onSizedBySystem();
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

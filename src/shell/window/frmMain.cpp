#include "shell/window/frmMain.h"

#include "common/numbers.h"
#include "platform/FileListBox.h"
#include "platform/FolderTreeview.h"
#include "platform/PictureBox.h"
#include "platform/QtText.h"
#include "platform/webpane/PageBrowser.h"
#include "shell/state/WindowState.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>

#include <QUrl>

namespace tarn {

frmMain::frmMain(MainControls& controls, const Files& files) : m_controls(controls) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Tarn_View - Digital Camera Picture program"));
    setAcceptDrops(true);
    m_area = new QWidget(this);
    m_area->installEventFilter(this);
    setCentralWidget(m_area);
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    menuBar()->setNativeMenuBar(false);
    MakeBars();
    MakePanels();
    MakeControls(m_controls, files, [this](QWidget* widget, Place place) { Put(widget, place); });
    MakeMenus(m_controls, *menuBar(), *this);
    for (auto& [place, bar] : m_bars)
        if (place != Place::NotesHead && place != Place::NotesText && place != Place::List &&
            place != Place::Exif)
            bar->addStretch();
    StyleControls();
    Measure();
}

QWidget* frmMain::Bar(const char* name, QWidget* parent) {
    auto* bar = new QWidget(parent);
    bar->setObjectName(QString::fromLatin1(name));
    return bar;
}

namespace {

template <typename Layout> Layout* Tight(QWidget* on, int margin = 0) {
    auto* layout = on ? new Layout(on) : new Layout();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(3);
    return layout;
}

} // namespace

void frmMain::MakeBars() {
    m_folderBar = Bar("FolderBar", m_area);
    m_bars[Place::FolderBar] = Tight<QHBoxLayout>(m_folderBar);

    m_splitter = new QSplitter(Qt::Vertical, m_area);
    m_splitter->setObjectName(QStringLiteral("vbuSplitter"));
    m_splitter->setChildrenCollapsible(false);
    QObject::connect(m_splitter, &QSplitter::splitterMoved, this,
                     [this] { SetSplitterTop(SplitterTop()); });
    m_listSide = Bar("ListSide", nullptr);
    auto* side = Tight<QVBoxLayout>(m_listSide);
    for (const Place place : {Place::Classes, Place::ListNote, Place::List, Place::ListBar}) {
        m_bars[place] = Tight<QHBoxLayout>(nullptr);
        side->addLayout(m_bars[place], place == Place::List ? 1 : 0);
    }

    m_tools = Bar("Tools", m_area);
    auto* rows = Tight<QVBoxLayout>(m_tools);
    const std::initializer_list<std::initializer_list<Place>> toolRows{
        {Place::Step, Place::Turn, Place::View}, {Place::Slides, Place::CopyTo}, {Place::Info}};
    for (const auto& places : toolRows) {
        auto* row = Tight<QHBoxLayout>(nullptr);
        row->setSpacing(12);
        for (const Place place : places) {
            m_bars[place] = Tight<QHBoxLayout>(nullptr);
            row->addLayout(m_bars[place], place == Place::Info ? 1 : 0);
        }
        if (places.size() > 1) row->addStretch();
        rows->addLayout(row);
    }
    m_bars[Place::Info]->setSpacing(14);
}

void frmMain::MakePanels() {
    m_panes = Bar("Panes", m_area);
    m_videoFrame = Bar("VideoFrame", m_panes);
    m_bars[Place::Video] = Tight<QHBoxLayout>(m_videoFrame);
    m_controls.VideoFrame = m_videoFrame;
    m_videoFrame->hide();

    m_exif = Bar("FrameExif", m_area);
    m_bars[Place::Exif] = Tight<QHBoxLayout>(m_exif, 3);

    m_notes = Bar("FrameNotes", m_area);
    auto* notes = Tight<QVBoxLayout>(m_notes, 3);
    for (const Place place :
         {Place::NotesHead, Place::NotesText, Place::NotesBar, Place::NotesStep}) {
        m_bars[place] = Tight<QHBoxLayout>(nullptr);
        notes->addLayout(m_bars[place], place == Place::NotesText ? 1 : 0);
    }
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
        m_bars.at(place)->addWidget(widget);
        break;
    }
}

void frmMain::StyleControls() {
    MainControls& c = m_controls;
    // Courier New or, where it is missing, its like.
    QFont fixed(QStringLiteral("Courier New"));
    fixed.setStyleHint(QFont::TypeWriter);
    fixed.setPointSizeF(font().pointSizeF());
    c.List1->setFont(fixed);
    c.List1->setUniformItemSizes(true);
    c.List1->setTextElideMode(Qt::ElideNone); // a long line is scrolled to, not cut
    c.LogText->setReadOnly(true);
    c.LogText->setFont(fixed);
    c.LogText->setLineWrapMode(QPlainTextEdit::NoWrap);
    c.FileDateText->setReadOnly(true);
    c.FileDateText->setFocusPolicy(Qt::ClickFocus);
    c.NotesBox->setTabChangesFocus(true);
    // A name of any length takes what room there is.
    c.NotesFrame->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    c.LabelNavKeys->setAutoFillBackground(true);
    QPalette grey;
    grey.setColor(QPalette::Window, Qt::gray);
    c.LabelNavKeys->setPalette(grey);
    QSizePolicy kept = c.LabelNavKeys->sizePolicy();
    kept.setRetainSizeWhenHidden(true); // the texts beside it stand still
    c.LabelNavKeys->setSizePolicy(kept);
    c.LabelNavKeys->setFixedSize(fontMetrics().height() * 2, fontMetrics().height() / 2);
    c.Label_error->setWordWrap(true);
    c.Label_error->setAutoFillBackground(true);
    c.Label_error->setFrameShape(QFrame::Box);
    c.Label_error->setContentsMargins(6, 4, 6, 4);
    QFont bold = font();
    bold.setBold(true);
    c.LastLabel->setFont(bold);
    c.PreviewLabel->setFont(bold);
    c.FolderChangedLabel->hide();
    for (QWidget* hidden : std::initializer_list<QWidget*>{
             c.LastLabel, c.CropLabel, c.PreviewLabel, c.LabelNavKeys, c.Label_error,
             c.DeletePicButton, c.DeleteFitsButton, c.QTplayButton, c.PrintCancelButton,
             c.BatchCancelButton, c.CloseOneToOneButton, c.OpenButtonF, c.Picture2, c.WebBrowser1,
             c.LogText})
        hidden->hide();
}

// What the fonts ask for; the sum of it is the least size of the window.
void frmMain::Measure() {
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int line = fontMetrics().height();
    m_measures.treeWidth =
        std::max(m_folderBar->minimumSizeHint().width(), m_listSide->minimumSizeHint().width());
    m_measures.treeWidth = std::max(m_measures.treeWidth, 32 * em);
    m_measures.folderBarHeight = m_folderBar->sizeHint().height();
    m_measures.toolsHeight = m_tools->sizeHint().height();
    m_measures.notesWidth = std::max(m_notes->minimumSizeHint().width(), 48 * em);
    const int row = QFontMetrics(m_controls.List1->font()).height();
    m_measures.panelHeight = 13 * row + 16;
    m_measures.messageHeight = m_controls.FileDateText->sizeHint().height();
    const int width = m_measures.treeWidth + 16 + m_tools->minimumSizeHint().width();
    const int height = m_measures.toolsHeight + 20 * line + m_measures.panelHeight +
                       m_measures.messageHeight + menuBar()->sizeHint().height() +
                       statusBar()->sizeHint().height();
    m_design = QSize(std::max(width, menuBar()->sizeHint().width()), height);
    m_design = m_design.boundedTo(screen()->availableSize());
    setMinimumSize(m_design);
}

void frmMain::LayOutNow() {
    if (!isVisible()) layout()->activate(); // bars and area have no size yet
    m_laidOut = m_area->size();
    const MainLayout l = LayOut(m_laidOut, m_measures);
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
    const int video = m_videoFrame->sizeHint().height();
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
    return m_splitter->sizes().value(0) * kTwipsPerPixel;
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
    if (watched == m_area && event->type() == QEvent::Resize && m_area->size() != m_laidOut) {
        LayOutNow();
        if (onResize) onResize();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        if (!m_tools || !m_controls.FileDateText) return;
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

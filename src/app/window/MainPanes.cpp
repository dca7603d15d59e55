// The main window's panes in the user's hand: the handles between them, the pane alone.
#include "app/window/FlowRow.h"
#include "app/window/frmMain.h"
#include "widgets/FileListBox.h"
#include "widgets/FocusFrame.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PaneHandle.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>

namespace tarn {

namespace {

constexpr int kPathDigits = 30; // that the path is left of its line
constexpr char kLongestPreview[] = "Preview picture is full size cropped if needed";

} // namespace

void frmMain::MakeHandles() {
    m_treeHandle =
        Handle("TreeHandle", Qt::Horizontal, &LayoutMeasures::treeWidth, &PanePlaces::tree, 1);
    m_stripHandle =
        Handle("StripHandle", Qt::Vertical, &LayoutMeasures::panelHeight, &PanePlaces::strip, -1);
    m_notesHandle =
        Handle("NotesHandle", Qt::Horizontal, &LayoutMeasures::notesWidth, &PanePlaces::notes, -1);
    const MainControls& c = m_controls;
    m_focus = new FocusFrame({c.Picture1, c.Picture2, c.WebBrowser1, c.LogText, c.FileListBox,
                              c.FolderTreeview1, c.NotesBox, c.List1},
                             m_area);
    m_escape = new QShortcut(Qt::Key_Escape, this);
    m_escape->setEnabled(false);
    QObject::connect(m_escape, &QShortcut::activated, this, [this] {
        if (onEscape) onEscape();
    });
}

// `sign` says whether the pane grows with the pointer's way or against it.
PaneHandle* frmMain::Handle(const char* name, Qt::Orientation moves, int LayoutMeasures::*now,
                            int PanePlaces::*chosen, int sign) {
    auto* handle = new PaneHandle(moves, name, m_area);
    handle->place = [this, now, sign] { return sign * m_now.*now; };
    handle->moveTo = [this, now, chosen, sign](int place) {
        m_chosen.*chosen = std::max(1, sign * place);
        m_chosen.*chosen = MeasuresFor(m_laidOut).*now; // as far as the others allow
        Moved();
    };
    handle->reset = [this, chosen] {
        m_chosen.*chosen = 0;
        Moved();
    };
    return handle;
}

void frmMain::SetNotice(QWidget& strip) {
    m_notice = &strip;
    strip.setParent(m_area);
    strip.hide();
}

void frmMain::ShowNotice(bool shown) {
    if (shown == m_noticeShown) return;
    m_noticeShown = shown;
    m_notice->setVisible(shown && !m_pictureOnly);
    const QSize before = m_panes->size();
    SetLeastArea(m_scroll->size());
    LayOutNow();
    if (onRefit && m_panes->size() != before) onRefit();
}

void frmMain::Moved() {
    SetLeastArea(m_scroll->size());
    LayOutNow();
    if (onResize) onResize();
}

void frmMain::SetPanes(const PanePlaces& places) {
    m_chosen = places;
    Moved();
}

// Dragged places hold as far as each pane keeps its least and leaves the others theirs.
void frmMain::ApplyChosen(LayoutMeasures& m, QSize area) const {
    const auto within = [](int chosen, int least, int most) {
        return std::clamp(chosen, least, std::max(least, most));
    };
    if (m_chosen.tree > 0)
        m.treeWidth = within(m_chosen.tree, m_least.treeWidth,
                             area.width() - (m_leastWidth - m_least.treeWidth));
    if (m_chosen.notes > 0)
        m.notesWidth = within(m_chosen.notes, m_least.notesWidth, area.width() * 3 / 4);
}

// From the list to the picture and to its note, then to the buttons.
void frmMain::OrderTabs() {
    QWidget* before = nullptr;
    for (const Place place :
         {Place::List, Place::Panes, Place::Video, Place::Over, Place::NotesText, Place::NotesBar,
          Place::NotesStep, Place::Exif, Place::FolderBar, Place::Tree, Place::Classes,
          Place::ListNote, Place::ListBar, Place::Step, Place::Turn, Place::View, Place::Slides,
          Place::CopyTo})
        for (QWidget* each : m_placed[place]) {
            if (each->focusPolicy() == Qt::NoFocus) continue;
            if (before) setTabOrder(before, each);
            before = each;
        }
}

// In the line of the path where that has room for both; else above the picture.
void frmMain::PlaceInfo(int width) {
    const int path = kPathDigits * fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const QFontMetrics small = m_controls.PreviewLabel->fontMetrics();
    const int preview = small.horizontalAdvance(QLatin1String(kLongestPreview));
    const bool below = width >= m_rows[Place::Info]->LineWidth() + preview + path;
    if (below == (m_info->parentWidget() == statusBar())) return;
    if (below) {
        m_tools->layout()->removeWidget(m_info);
        statusBar()->addPermanentWidget(m_info);
    } else {
        statusBar()->removeWidget(m_info);
        m_tools->layout()->addWidget(m_info);
    }
    m_info->show();
}

void frmMain::SetPictureOnly(bool only) {
    if (only == m_pictureOnly) return;
    m_pictureOnly = only;
    m_escape->setEnabled(only);
    // Not hidden: its entries would lose their keys.
    menuBar()->setMaximumHeight(only ? 0 : QWIDGETSIZE_MAX);
    for (QWidget* each : std::initializer_list<QWidget*>{
             m_folderBar, m_splitter, m_tools, m_exif, m_notes, m_treeHandle, m_stripHandle,
             m_notesHandle, m_controls.FileDateText, statusBar()})
        each->setVisible(!only);
    if (m_notice) m_notice->setVisible(!only && m_noticeShown);
    layout()->activate();
    Moved();
}

} // namespace tarn

// The controls of the page form, the rules between them, and its three states.
#include "web/frmHtmlLayout.h"

#include "common/paths.h"
#include "web/FormParts.h"
#include "widgets/FileListBox.h"
#include "widgets/WindowPlaces.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QRadioButton>

namespace tarn {

namespace {

constexpr QSize kDesign(560, 0); // logical pixels

} // namespace

frmHtmlLayout::frmHtmlLayout(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context), m_page(context.state.Version),
      m_place(*this, context.state.HtmlLayoutPlace) {
    setObjectName(QStringLiteral("frmHtmlLayout"));
    setWindowTitle(QStringLiteral("Tarn View - Html file Layout"));
    auto* all = new QVBoxLayout(this);
    all->setSizeConstraint(QLayout::SetFixedSize); // each state has its own height
    MakeTop(*all);
    MakeLinkFrame();
    MakePictureFrame();
    MakeTextFrame();
    MakeLookFrame();
    MakeAddFrame();
    auto* frames = new QGridLayout();
    frames->addWidget(m_frame1, 0, 0);
    frames->addWidget(m_frame2, 0, 1);
    frames->addWidget(m_frame4, 1, 0);
    frames->addWidget(m_frame3, 1, 1);
    all->addLayout(frames);
    all->addWidget(m_frameAdd);
    MakeBottom(*all);
    ConnectRules();
    m_chosen = m.state.HtmlPath; // of the last page
    m_fields.Load(m.state);
    m_appendOption->setChecked(m.state.HtmlAppendOption != 0);
    Show(Flow::Closed);
    setWindowTitle(QStringLiteral("Tarn View - Html file Layout"));
}

void frmHtmlLayout::ShowForm() {
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    activateWindow();
}

void frmHtmlLayout::MakeTop(QVBoxLayout& all) {
    auto* create = NamedButton("CreateButton_1", "Create/Open");
    auto* append = NamedButton("CreateButton_2", "Append");
    m_view = NamedButton("ViewHtmlFile", "View");
    m_edit = NamedButton("EditHtmlFile", "Edit");
    auto* quit = NamedButton("QuitButton", "Close");
    all.addLayout(Row({create, append, m_view, m_edit, quit}));
    m_appendOption =
        Named(new QCheckBox(QStringLiteral("Use saved settings in html file if found")),
              "HtmlAppendOptionCheck");
    m_inForm = Named(new QCheckBox(QStringLiteral("View in form")), "CheckInForm");
    all.addLayout(Row({m_appendOption, m_inForm}));
    connect(create, &QPushButton::clicked, this, [this] { CreateButton_Click(); });
    connect(append, &QPushButton::clicked, this, [this] { AppendButton_Click(); });
    connect(m_view, &QPushButton::clicked, this, [this] { ViewLast(); });
    connect(m_edit, &QPushButton::clicked, this, [this] { EditLast(); });
    connect(quit, &QPushButton::clicked, this, [this] { close(); });
}

void frmHtmlLayout::MakeAddFrame() {
    auto* rows = MakeFrame(m_frameAdd, "FrameAdd", "Add pictures");
    auto* add = NamedButton("HtmlAddButton", "Add");
    auto* all = NamedButton("HtmlAddAllButton", "Add All", "Add all files in folder");
    auto* reverse =
        NamedButton("HtmlAddAllRevButton", "Reverse", "Add all files in folder, reverse order");
    auto* previous = NamedButton("HtmlPrevButton", "Prev.");
    auto* next = NamedButton("HtmlNextButton", "Next");
    m_cancel = NamedButton("HtmlCancelButton", "Cancel", "Stop adding");
    m_cancel->hide();
    rows->addLayout(Row({add, previous, next, all, reverse, m_cancel}));
    m_link = NamedButton("HtmlLink", "Link", "Set current image as link image");
    m_lastLink = Named(new QLabel(), "HtmlLastLinkFile");
    m_lastFile = Named(new QLabel(), "HtmlLastFile");
    m_advance = m_fields.Check("HtmlAddAutoAdvance", "Add Auto Advance", &HtmlSettings::HtmlAuto);
    m_keptOnly = Named(new QCheckBox(QStringLiteral("Kept only")), "KeptOnlyCheck");
    m_keptOnly->setToolTip(QStringLiteral("Add All adds only files that are marked to keep"));
    rows->addLayout(Row({m_advance, m_keptOnly}));
    rows->addLayout(Row({m_link, m_lastLink}));
    rows->addLayout(Row({Caption("Last added:"), m_lastFile}));
    connect(add, &QPushButton::clicked, this, [this] { HtmlAddButton_Click(); });
    connect(all, &QPushButton::clicked, this, [this] { HtmlAddAll(false); });
    connect(reverse, &QPushButton::clicked, this, [this] { HtmlAddAll(true); });
    connect(previous, &QPushButton::clicked, this, [this] { m.navigation.PrevButton_Click(); });
    connect(next, &QPushButton::clicked, this, [this] { m.navigation.NextButton_Click(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { m.state.BatchCancelled = true; });
    connect(m_link, &QPushButton::clicked, this, [this] {
        m_page.SetLinkTarget(m.state.FileNameOnly);
        m_lastLink->setText(ToQt(m.state.FileNameOnly));
    });
}

void frmHtmlLayout::MakeBottom(QVBoxLayout& all) {
    m_ok = NamedButton("CommandOk", "Write Header / Enable Add");
    m_close = NamedButton("HtmlCloseButton", "Close Html");
    m_closeView = NamedButton("HtmlCloseViewButton", "Close && View",
                              "Close html file then view in default web browser");
    all.addLayout(Row({m_ok, m_close, m_closeView}));
    m_error = Named(new QLabel(), "LabelError");
    m_error->setWordWrap(true);
    for (QLabel* label : {m_error, m_lastFile, m_lastLink}) label->setTextFormat(Qt::PlainText);
    all.addWidget(m_error);
    connect(m_ok, &QPushButton::clicked, this, [this] { CommandOk_Click(); });
    connect(m_close, &QPushButton::clicked, this, [this] { HtmlCloseButton_Click(); });
    connect(m_closeView, &QPushButton::clicked, this, [this] { HtmlCloseViewButton_Click(); });
}

// On clicks alone: what is stored or saved stands as it is. An option that a rule chooses runs its
// own rule once.
void frmHtmlLayout::ConnectRules() {
    const auto linked = [this] {
        if (!m_layouts[1]->isChecked()) m_zoomPan->setChecked(false);
        ShowLinkRule();
    };
    for (QRadioButton* layout : m_layouts) connect(layout, &QRadioButton::clicked, this, linked);
    connect(m_zoomPan, &QCheckBox::clicked, this, [this] {
        m_imageLabel->setChecked(false);
        m_layouts[1]->setChecked(true);
        ShowLinkRule();
    });
    connect(m_imageLabel, &QCheckBox::clicked, this, [this](bool on) {
        if (on) m_zoomPan->setChecked(false);
    });
    for (QRadioButton* size : {m_sizePreview, m_sizeHeight, m_sizeWidth})
        connect(size, &QRadioButton::clicked, this, [this] { ShowSizeRule(); });
    connect(m_sizeFull, &QRadioButton::clicked, this, [this, linked] {
        ShowSizeRule();
        m_layouts[0]->setChecked(true);
        linked();
    });
}

void frmHtmlLayout::ShowLinkRule() {
    m_link->setVisible(m_layouts[2]->isChecked());
    m_lastLink->setVisible(m_layouts[2]->isChecked());
}

void frmHtmlLayout::ShowSizeRule() {
    m_height->setEnabled(m_sizeHeight->isChecked());
    m_width->setEnabled(m_sizeWidth->isChecked());
}

void frmHtmlLayout::Show(Flow flow) {
    m_flow = flow;
    const bool closed = flow == Flow::Closed;
    for (QWidget* frame : {m_frame1, m_frame2, m_frame3, m_frame4})
        frame->setVisible(flow == Flow::Opened);
    m_frameAdd->setVisible(flow == Flow::Writing);
    m_ok->setVisible(!closed);
    m_ok->setEnabled(flow != Flow::Writing);
    m_close->setVisible(!closed);
    m_closeView->setVisible(!closed);
    m_appendOption->setVisible(closed);
    m_view->setEnabled(closed && !m_chosen.empty()); // there is a page to show
    m_edit->setEnabled(closed && !m_chosen.empty());
    m_error->clear();
    setWindowTitle(QString::fromLatin1(closed ? "Closed - " : "Opened - ") +
                   ToQt(LastPart(m_chosen)));
}

} // namespace tarn

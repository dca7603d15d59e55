// The controls of the page form, the rules between them, and its three states.
#include "web/frmHtmlLayout.h"

#include "common/paths.h"
#include "platform/Dialogs.h"
#include "platform/FileListBox.h"
#include "platform/WindowPlaces.h"
#include "web/FormParts.h"
#include "web/HtmlColor.h"
#include "web/PageText.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QPainter>
#include <QRadioButton>
#include <QToolButton>

namespace tarn {

namespace {

constexpr QSize kDesign(560, 0); // logical pixels
constexpr int kMostPixels = 32767;
constexpr int kThickest = 20; // pixels of borders and lines
constexpr int kMostPerPage = 50;
constexpr QSize kSample(72, 54); // logical pixels of a format's sample

// What a format looks like: picture, notes, camera data.
QPixmap SampleOf(int format, qreal scale, const QPalette& palette) {
    QPixmap sample(kSample * scale);
    sample.setDevicePixelRatio(scale);
    sample.fill(palette.base().color());
    QPainter painter(&sample);
    const auto lines = [&](int x, int y, int width, int count) {
        painter.setPen(palette.text().color());
        for (int i = 0; i < count; ++i)
            painter.drawLine(x, y + i * 5, x + width - (i % 2) * 6, y + i * 5);
    };
    const bool beside = format == 1 || format == 4;
    const QRect picture(6, format == 3 ? 8 : 6, beside ? 34 : 60, format == 3 ? 38 : 28);
    painter.fillRect(picture, palette.highlight().color());
    if (format == 1) {
        lines(46, 8, 20, 6);
        lines(6, 40, 34, 2);
    } else if (format == 2) {
        lines(6, 40, 60, 2);
    } else if (format == 4) {
        lines(46, 8, 20, 6);
    }
    painter.setPen(palette.mid().color());
    painter.drawRect(0, 0, kSample.width() - 1, kSample.height() - 1);
    return sample;
}

QLineEdit* NumberEdit(const char* name, const char* spoken) {
    auto* edit = Named(new QLineEdit(), name, spoken);
    edit->setValidator(new QIntValidator(0, kMostPixels, edit));
    constexpr int kWidth = 64; // logical pixels
    edit->setMaximumWidth(kWidth);
    return edit;
}

} // namespace

frmHtmlLayout::frmHtmlLayout(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_page(context.files, context.state.Version), m_place(*this, context.state.HtmlLayoutPlace) {
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
    auto* create = MakeButton("CreateButton_1", "Create/Open");
    auto* append = MakeButton("CreateButton_2", "Append");
    m_view = MakeButton("ViewHtmlFile", "View");
    m_edit = MakeButton("EditHtmlFile", "Edit");
    auto* quit = MakeButton("QuitButton", "Close");
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

void frmHtmlLayout::MakeLinkFrame() {
    auto* rows = MakeFrame(m_frame1, "Frame1", "Link and size of the image");
    auto* links = new QWidget();
    auto* linkRows = new QVBoxLayout(links);
    linkRows->setContentsMargins({});
    const char* captions[] = {"Link image to full size image", "No link to full size image",
                              "Linked to to another selected image"};
    bool HtmlSettings::*const modes[] = {&HtmlSettings::HtmlLayout1, &HtmlSettings::HtmlLayout2,
                                         &HtmlSettings::HtmlLayout3};
    for (std::size_t i = 0; i < m_layouts.size(); ++i) {
        m_layouts[i] = new QRadioButton(QString::fromLatin1(captions[i]));
        m_layouts[i]->setObjectName(QStringLiteral("HtmlLayout%1").arg(i + 1));
        linkRows->addWidget(m_layouts[i]);
        m_fields.Add(m_layouts[i], modes[i]);
    }
    rows->addWidget(links);
    auto* sizes = new QWidget();
    auto* sizeRows = new QGridLayout(sizes);
    sizeRows->setContentsMargins({});
    m_sizePreview =
        Named(new QRadioButton(QStringLiteral("Tarn View preview window")), "HtmlSizeO");
    m_sizeFull = Named(new QRadioButton(QStringLiteral("Full image size")), "HtmlSizeF");
    m_sizeHeight = Named(new QRadioButton(QStringLiteral("Maximum height")), "HtmlSizeH");
    m_sizeWidth = Named(new QRadioButton(QStringLiteral("Maximum width ")), "HtmlSizeW");
    m_height = NumberEdit("HtmlHeight", "Maximum height in pixels");
    m_width = NumberEdit("HtmlWidth", "Maximum width in pixels");
    sizeRows->addWidget(m_sizePreview, 0, 0);
    sizeRows->addWidget(m_sizeFull, 1, 0);
    sizeRows->addWidget(m_sizeHeight, 2, 0);
    sizeRows->addWidget(m_height, 2, 1);
    sizeRows->addWidget(m_sizeWidth, 3, 0);
    sizeRows->addWidget(m_width, 3, 1);
    rows->addWidget(sizes);
    m_fields.Add(m_sizePreview, &HtmlSettings::HtmlSizeO);
    m_fields.Add(m_sizeFull, &HtmlSettings::HtmlSizeF);
    m_fields.Add(m_sizeHeight, &HtmlSettings::HtmlSizeH);
    m_fields.Add(m_sizeWidth, &HtmlSettings::HtmlSizeW);
    m_fields.Add(m_height, &HtmlSettings::HtmlHeight);
    m_fields.Add(m_width, &HtmlSettings::HtmlWidth);
    m_zoomPan = Named(new QCheckBox(QStringLiteral("Zoom and Pan")), "CheckZoomPan");
    rows->addWidget(m_zoomPan);
    m_fields.Add(m_zoomPan, &HtmlSettings::HtmlZoomPan);
}

void frmHtmlLayout::MakePictureFrame() {
    auto* rows = MakeFrame(m_frame2, "Frame2", "Entries of the page");
    auto* formats = new QHBoxLayout();
    auto* group = new QButtonGroup(this);
    const char* tips[] = {"Picture, Notes and Camera data", "Picture and Notes", "Picture only",
                          "Notes to Right"};
    for (std::size_t i = 0; i < m_formats.size(); ++i) {
        auto* format = new QToolButton();
        format->setObjectName(QStringLiteral("Picture%1").arg(i + 1));
        format->setToolTip(QString::fromLatin1(tips[i]));
        format->setAccessibleName(QString::fromLatin1(tips[i]));
        format->setCheckable(true);
        format->setStyleSheet(
            QStringLiteral("QToolButton { border: 2px solid transparent; padding: 1px; }"
                           "QToolButton:checked { border-color: palette(highlight); }"
                           "QToolButton:focus { background: palette(midlight); }"));
        format->setIconSize(kSample);
        format->setIcon(SampleOf(int(i) + 1, devicePixelRatioF(), palette()));
        group->addButton(format, int(i) + 1);
        formats->addWidget(format);
        m_formats[i] = format;
    }
    rows->addLayout(formats);
    m_exifInfo = Named(new QCheckBox(QStringLiteral("Include Exif Info.")), "HtmlIncludeExifInfo");
    auto* top = Named(new QRadioButton(QStringLiteral("Top")), "PnotesTop");
    auto* bottom = Named(new QRadioButton(QStringLiteral("Bottom")), "PnotesBottom");
    auto* center = Named(new QRadioButton(QStringLiteral("Center")), "PCenter");
    auto* left = Named(new QRadioButton(QStringLiteral("Left")), "Pleft");
    auto* notes = new QWidget();
    auto* noteRow = Row({Caption("Notes"), top, bottom});
    noteRow->setContentsMargins({});
    notes->setLayout(noteRow);
    auto* align = new QWidget();
    auto* alignRow = Row({Caption("Entries"), center, left});
    alignRow->setContentsMargins({});
    align->setLayout(alignRow);
    rows->addWidget(m_exifInfo);
    rows->addWidget(notes);
    rows->addWidget(align);
    m_imageLabel = Named(new QCheckBox(QStringLiteral("Use label images with")), "CheckImageLabel");
    auto* label = Named(new QLineEdit(), "TextImageLabel", "Ending of a label image's name");
    label->setPlaceholderText(QStringLiteral("_Caption"));
    rows->addLayout(Row({m_imageLabel, label}));
    auto* video = Named(new QCheckBox(QStringLiteral("Link MP4 video")), "CheckMP4");
    rows->addWidget(video);
    auto* breakLabel = Named(new QLabel(), "LabelPageBreak");
    auto* pageBreak =
        MakeSlider("SliderPageBreak", "Images on a printed page", 0, kMostPerPage, breakLabel);
    pageBreak->setToolTip(
        QStringLiteral("Place a page break after this number of images, for printing web page"));
    rows->addLayout(Row({Caption("Page break after", pageBreak), pageBreak, breakLabel}));
    m_fields.Add(m_exifInfo, &HtmlSettings::HtmlExifInfo);
    m_fields.Add(top, &HtmlSettings::HtmlPnotesTop);
    m_fields.Add(bottom, &HtmlSettings::HtmlPnotesBottom);
    m_fields.Add(center, &HtmlSettings::HtmlPicCenter);
    m_fields.Add(left, &HtmlSettings::HtmlPicLeft);
    m_fields.Add(m_imageLabel, &HtmlSettings::HtmlCheckImageLabel);
    m_fields.Add(label, &HtmlSettings::HtmlTextImageLabel);
    m_fields.Add(video, &HtmlSettings::HtmlMp4Video);
    m_fields.Add(pageBreak, &HtmlSettings::HtmlPageBreak);
    connect(pageBreak, &QSlider::valueChanged, this,
            [this](int value) { m.state.HtmlPageBreak = value; });
    const auto showFormat = [this, group](int format) {
        if (auto* button = group->button(format)) button->setChecked(true);
        m_exifInfo->setEnabled(format == 1);
    };
    connect(group, &QButtonGroup::idClicked, this, showFormat);
    m_fields.Add([showFormat](const HtmlSettings& s) { showFormat(s.HtmlPictureType); },
                 [group](HtmlSettings& s) {
                     if (group->checkedId() > 0) s.HtmlPictureType = group->checkedId();
                 });
}

void frmHtmlLayout::MakeTextFrame() {
    auto* rows = MakeFrame(m_frame4, "Frame4", "Texts of the page");
    auto* title = Named(new QLineEdit(), "HtmlTitle", "Page title");
    auto* email = Named(new QLineEdit(), "Email", "Email address on the page, blank for none");
    m_home = Named(new QLineEdit(), "HomeText", "Link of the home button");
    auto* homeName = Named(new QLineEdit(), "HomeNameText", "Label of the home button");
    auto* lookup = Named(MakeButton("CommandHomePage", "Web page"), "CommandHomePage", "",
                         "Web page and name for a link");
    auto* grid = new QGridLayout();
    grid->addWidget(Caption("&Title", title), 0, 0);
    grid->addWidget(title, 0, 1);
    grid->addWidget(Caption("&Email", email), 1, 0);
    grid->addWidget(email, 1, 1);
    grid->addWidget(lookup, 2, 0);
    grid->addWidget(m_home, 2, 1);
    grid->addWidget(Caption("&Name of link", homeName), 3, 0);
    grid->addWidget(homeName, 3, 1);
    rows->addLayout(grid);
    rows->addStretch();
    m_fields.Add(title, &HtmlSettings::HtmlTitle);
    m_fields.Add(email, &HtmlSettings::HtmlEmail);
    m_fields.Add(m_home, &HtmlSettings::HtmlHomePage);
    m_fields.Add(homeName, &HtmlSettings::HtmlHomeText);
    connect(lookup, &QPushButton::clicked, this, [this] { CommandHomePage_Click(); });
}

void frmHtmlLayout::MakeLookFrame() {
    auto* rows = MakeFrame(m_frame3, "Frame3", "Look of the page");
    const char* captions[] = {"Text", "Page background", "Title background",
                              "Borders && line color"};
    std::string HtmlSettings::*const fields[] = {
        &HtmlSettings::HtmlTextColor, &HtmlSettings::HtmlPageBgColor,
        &HtmlSettings::HtmlTitleBgColor, &HtmlSettings::HtmlBorderColor};
    auto* colors = new QGridLayout();
    for (int i = 0; i < 4; ++i) {
        auto* box = new ColorBox(QString::fromLatin1(captions[i]));
        box->setObjectName(QStringLiteral("PageColors2_%1").arg(i));
        colors->addWidget(box, i / 2, i % 2);
        connect(box, &QPushButton::clicked, this, [this, box] { ChooseColorOf(*box); });
        m_fields.Add(box, fields[i]);
        m_colors[std::size_t(i)] = box;
    }
    rows->addLayout(colors);
    auto* defaults = MakeButton("ColorsDefaultsButton2", "Default colors");
    connect(defaults, &QPushButton::clicked, this, [this] { DefaultColors(); });
    auto* font = MakeButton("FontButton", "Font...", "Set font name ans size, style is ignored.");
    auto* defaultFont =
        MakeButton("FontDefaultButton", "Default font", "Set font to default Verdana");
    m_font = Named(new QLabel(), "FontLabel");
    m_fontSize = Named(new QLabel(), "FsizeLabel");
    rows->addLayout(Row({defaults, font, defaultFont}));
    rows->addLayout(Row({Caption("Font:"), m_font, m_fontSize}));
    m_fields.Add(m_font, &HtmlSettings::HtmlFontname);
    m_fields.Add(m_fontSize, &HtmlSettings::HtmlFontsize);
    connect(font, &QPushButton::clicked, this, [this] {
        std::string name = FromQt(m_font->text());
        int size = m_fontSize->text().toInt();
        if (!m.dialogs.ChooseFont("Font of the page", name, size)) return;
        m_font->setText(ToQt(name));
        m_fontSize->setText(QString::number(size));
    });
    connect(defaultFont, &QPushButton::clicked, this,
            [this] { m_font->setText(QStringLiteral("Verdana")); });
    const auto slider = [&](const char* name, const char* label, const char* caption,
                            int HtmlSettings::*field) {
        auto* value = Named(new QLabel(), label);
        auto* bar = MakeSlider(name, caption, 0, kThickest, value);
        rows->addLayout(Row({Caption(caption, bar), bar, value}));
        m_fields.Add(bar, field);
    };
    slider("HtmlBorder", "HtmlBorderLabel", "Image border", &HtmlSettings::HtmlBorder);
    slider("SliderBorders2", "LabelBorders2", "Title border", &HtmlSettings::HtmlTitleBorderWidth);
    slider("HtmlLine", "HtmlLineWidthLabel", "Line under an entry", &HtmlSettings::HtmlLineWidth);
}

void frmHtmlLayout::MakeAddFrame() {
    auto* rows = MakeFrame(m_frameAdd, "FrameAdd", "Add pictures");
    auto* add = MakeButton("HtmlAddButton", "Add");
    auto* all = MakeButton("HtmlAddAllButton", "Add All", "Add all files in folder");
    auto* reverse =
        MakeButton("HtmlAddAllRevButton", "Reverse", "Add all files in folder, reverse order");
    auto* previous = MakeButton("HtmlPrevButton", "Prev.");
    auto* next = MakeButton("HtmlNextButton", "Next");
    m_cancel = MakeButton("HtmlCancelButton", "Cancel", "Stop adding");
    m_cancel->hide();
    rows->addLayout(Row({add, previous, next, all, reverse, m_cancel}));
    m_link = MakeButton("HtmlLink", "Link", "Set current image as link image");
    m_lastLink = Named(new QLabel(), "HtmlLastLinkFile");
    m_lastFile = Named(new QLabel(), "HtmlLastFile");
    m_advance = Named(new QCheckBox(QStringLiteral("Add Auto Advance")), "HtmlAddAutoAdvance");
    rows->addWidget(m_advance);
    rows->addLayout(Row({m_link, m_lastLink}));
    rows->addLayout(Row({Caption("Last added:"), m_lastFile}));
    m_fields.Add(m_advance, &HtmlSettings::HtmlAuto);
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
    m_ok = MakeButton("CommandOk", "Write Header / Enable Add");
    m_close = MakeButton("HtmlCloseButton", "Close Html");
    m_closeView = MakeButton("HtmlCloseViewButton", "Close && View",
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

void frmHtmlLayout::ChooseColorOf(ColorBox& box) {
    const auto color = m.dialogs.ChooseColor(FromQt(box.text().remove(QLatin1Char('&'))),
                                             NumberOfHtmlColor(box.Color()));
    if (color) box.SetColor(HtmlColorOf(*color));
}

void frmHtmlLayout::DefaultColors() {
    const char* dark[] = {"EEEEEE", "000000", "000000", "00BFFF"};
    for (std::size_t i = 0; i < m_colors.size(); ++i) m_colors[i]->SetColor(dark[i]);
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

// The four frames of the page form in which its look is chosen.
#include "web/frmHtmlLayout.h"

#include "web/FormParts.h"
#include "web/HtmlColor.h"
#include "widgets/Dialogs.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QPainter>
#include <QRadioButton>
#include <QToolButton>

namespace tarn {

namespace {

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

void frmHtmlLayout::MakeLinkFrame() {
    auto* rows = MakeFrame(m_frame1, "Frame1", "Link and size of the image");
    auto* links = new QWidget();
    auto* linkRows = new QVBoxLayout(links);
    linkRows->setContentsMargins({});
    const char* captions[] = {"Link image to full size image", "No link to full size image",
                              "Linked to to another selected image"};
    for (std::size_t i = 0; i < m_layouts.size(); ++i) {
        m_layouts[i] = new QRadioButton(QString::fromLatin1(captions[i]));
        m_layouts[i]->setObjectName(QStringLiteral("HtmlLayout%1").arg(i + 1));
        linkRows->addWidget(m_layouts[i]);
    }
    m_fields.AddChoice(
        {m_layouts.begin(), m_layouts.end()},
        {&HtmlSettings::HtmlLayout1, &HtmlSettings::HtmlLayout2, &HtmlSettings::HtmlLayout3});
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
    m_fields.AddChoice({m_sizePreview, m_sizeFull, m_sizeHeight, m_sizeWidth},
                       {&HtmlSettings::HtmlSizeO, &HtmlSettings::HtmlSizeF,
                        &HtmlSettings::HtmlSizeH, &HtmlSettings::HtmlSizeW});
    m_fields.Add(m_height, &HtmlSettings::HtmlHeight);
    m_fields.Add(m_width, &HtmlSettings::HtmlWidth);
    m_zoomPan = Named(new QCheckBox(QStringLiteral("Zoom and Pan")), "CheckZoomPan");
    rows->addWidget(m_zoomPan);
    m_fields.Add(m_zoomPan, &HtmlSettings::HtmlZoomPan);
}

void frmHtmlLayout::MakePictureFrame() {
    auto* rows = MakeFrame(m_frame2, "Frame2", "Entries of the page");
    MakeFormats(*rows);
    MakePlaces(*rows);
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
    m_fields.Add(m_imageLabel, &HtmlSettings::HtmlCheckImageLabel);
    m_fields.Add(label, &HtmlSettings::HtmlTextImageLabel);
    m_fields.Add(video, &HtmlSettings::HtmlMp4Video);
    m_fields.Add(pageBreak, &HtmlSettings::HtmlPageBreak);
    connect(pageBreak, &QSlider::valueChanged, this,
            [this](int value) { m.state.HtmlPageBreak = value; });
}

void frmHtmlLayout::MakeFormats(QVBoxLayout& rows) {
    auto* formats = new QHBoxLayout();
    const char* tips[] = {"Picture, Notes and Camera data", "Picture and Notes", "Picture only",
                          "Notes to Right"};
    std::vector<QAbstractButton*> buttons;
    for (int i = 0; i < 4; ++i) {
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
        format->setIcon(SampleOf(i + 1, devicePixelRatioF(), palette()));
        formats->addWidget(format);
        buttons.push_back(format);
    }
    rows.addLayout(formats);
    m_exifInfo = Named(new QCheckBox(QStringLiteral("Include Exif Info.")), "HtmlIncludeExifInfo");
    rows.addWidget(m_exifInfo);
    m_fields.Add(m_exifInfo, &HtmlSettings::HtmlExifInfo);
    m_exifInfo->setEnabled(false);
    connect(buttons.front(), &QAbstractButton::toggled, m_exifInfo, &QWidget::setEnabled);
    m_fields.AddChoice(
        buttons, [](const HtmlSettings& s) { return s.HtmlPictureType - 1; },
        [](HtmlSettings& s, int place) { s.HtmlPictureType = place + 1; });
}

// Of the notes in an entry, and of the entries on the page.
void frmHtmlLayout::MakePlaces(QVBoxLayout& rows) {
    const auto pair = [&](const char* caption, QRadioButton* one, QRadioButton* other) {
        auto* both = new QWidget(); // of their own, so that one of the two is on
        auto* row = Row({Caption(caption), one, other});
        row->setContentsMargins({});
        both->setLayout(row);
        rows.addWidget(both);
    };
    auto* top = Named(new QRadioButton(QStringLiteral("Top")), "PnotesTop");
    auto* bottom = Named(new QRadioButton(QStringLiteral("Bottom")), "PnotesBottom");
    pair("Notes", top, bottom);
    m_fields.AddChoice({top, bottom},
                       {&HtmlSettings::HtmlPnotesTop, &HtmlSettings::HtmlPnotesBottom});
    auto* center = Named(new QRadioButton(QStringLiteral("Center")), "PCenter");
    auto* left = Named(new QRadioButton(QStringLiteral("Left")), "Pleft");
    pair("Entries", center, left);
    m_fields.AddChoice({center, left}, {&HtmlSettings::HtmlPicCenter, &HtmlSettings::HtmlPicLeft});
}

void frmHtmlLayout::MakeTextFrame() {
    auto* rows = MakeFrame(m_frame4, "Frame4", "Texts of the page");
    auto* title = Named(new QLineEdit(), "HtmlTitle", "Page title");
    auto* email = Named(new QLineEdit(), "Email", "Email address on the page, blank for none");
    m_home = Named(new QLineEdit(), "HomeText", "Link of the home button");
    auto* homeName = Named(new QLineEdit(), "HomeNameText", "Label of the home button");
    auto* lookup = Named(NamedButton("CommandHomePage", "Web page"), "CommandHomePage", "",
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
    auto* defaults = NamedButton("ColorsDefaultsButton2", "Default colors");
    connect(defaults, &QPushButton::clicked, this, [this] { DefaultColors(); });
    auto* font = NamedButton("FontButton", "Font...", "Set font name ans size, style is ignored.");
    auto* defaultFont =
        NamedButton("FontDefaultButton", "Default font", "Set font to default Verdana");
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

void frmHtmlLayout::ChooseColorOf(ColorBox& box) {
    const auto color = m.dialogs.ChooseColor(FromQt(box.text().remove(QLatin1Char('&'))),
                                             NumberOfHtmlColor(box.Color()));
    if (color) box.SetColor(HtmlColorOf(*color));
}

void frmHtmlLayout::DefaultColors() {
    const char* dark[] = {"EEEEEE", "000000", "000000", "00BFFF"};
    for (std::size_t i = 0; i < m_colors.size(); ++i) m_colors[i]->SetColor(dark[i]);
}

} // namespace tarn

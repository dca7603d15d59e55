// The four frames of the page form in which its look is chosen.
#include "web/frmHtmlLayout.h"

#include "web/FormParts.h"
#include "web/HtmlColor.h"
#include "widgets/Dialogs.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPainter>
#include <QRadioButton>
#include <QToolButton>

namespace tarn {

namespace {

constexpr int kThickest = 20; // pixels of borders and lines
constexpr int kMostPerPage = 50;
constexpr int kNumberWidth = 64; // logical pixels
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
    m_sizePreview = Choice("HtmlSizeO", "Tarn View preview window");
    m_sizeFull = Choice("HtmlSizeF", "Full image size");
    m_sizeHeight = Choice("HtmlSizeH", "Maximum height");
    m_sizeWidth = Choice("HtmlSizeW", "Maximum width ");
    m_height = m_fields.Number("HtmlHeight", "Maximum height in pixels", 0, kNumberWidth,
                               &HtmlSettings::HtmlHeight);
    m_width = m_fields.Number("HtmlWidth", "Maximum width in pixels", 0, kNumberWidth,
                              &HtmlSettings::HtmlWidth);
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
    m_zoomPan = m_fields.Check("CheckZoomPan", "Zoom and Pan", &HtmlSettings::HtmlZoomPan);
    rows->addWidget(m_zoomPan);
}

void frmHtmlLayout::MakePictureFrame() {
    auto* rows = MakeFrame(m_frame2, "Frame2", "Entries of the page");
    MakeFormats(*rows);
    MakePlaces(*rows);
    m_imageLabel = m_fields.Check("CheckImageLabel", "Use label images with",
                                  &HtmlSettings::HtmlCheckImageLabel);
    auto* label = m_fields.Edit("TextImageLabel", "Ending of a label image's name",
                                &HtmlSettings::HtmlTextImageLabel);
    label->setPlaceholderText(QStringLiteral("_Caption"));
    rows->addLayout(Row({m_imageLabel, label}));
    rows->addWidget(m_fields.Check("CheckMP4", "Link MP4 video", &HtmlSettings::HtmlMp4Video));
    auto* breakLabel = Named(new QLabel(), "LabelPageBreak");
    auto* pageBreak =
        MakeSlider("SliderPageBreak", "Images on a printed page", 0, kMostPerPage, breakLabel);
    pageBreak->setToolTip(
        QStringLiteral("Place a page break after this number of images, for printing web page"));
    rows->addLayout(Row({Caption("Page break after", pageBreak), pageBreak, breakLabel}));
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
    m_exifInfo =
        m_fields.Check("HtmlIncludeExifInfo", "Include Exif Info.", &HtmlSettings::HtmlExifInfo);
    rows.addWidget(m_exifInfo);
    m_exifInfo->setEnabled(false);
    connect(buttons.front(), &QAbstractButton::toggled, m_exifInfo, &QWidget::setEnabled);
    m_fields.AddChoice(
        buttons, [](const HtmlSettings& s) { return s.HtmlPictureType - 1; },
        [](HtmlSettings& s, int place) { s.HtmlPictureType = place + 1; });
}

// Of the notes in an entry, and of the entries on the page.
void frmHtmlLayout::MakePlaces(QVBoxLayout& rows) {
    auto* top = Choice("PnotesTop", "Top");
    auto* bottom = Choice("PnotesBottom", "Bottom");
    rows.addWidget(Together({Caption("Notes"), top, bottom}));
    m_fields.AddChoice({top, bottom},
                       {&HtmlSettings::HtmlPnotesTop, &HtmlSettings::HtmlPnotesBottom});
    auto* center = Choice("PCenter", "Center");
    auto* left = Choice("Pleft", "Left");
    rows.addWidget(Together({Caption("Entries"), center, left}));
    m_fields.AddChoice({center, left}, {&HtmlSettings::HtmlPicCenter, &HtmlSettings::HtmlPicLeft});
}

void frmHtmlLayout::MakeTextFrame() {
    auto* rows = MakeFrame(m_frame4, "Frame4", "Texts of the page");
    auto* title = m_fields.Edit("HtmlTitle", "Page title", &HtmlSettings::HtmlTitle);
    auto* email = m_fields.Edit("Email", "Email address on the page, blank for none",
                                &HtmlSettings::HtmlEmail);
    m_home = m_fields.Edit("HomeText", "Link of the home button", &HtmlSettings::HtmlHomePage);
    auto* homeName =
        m_fields.Edit("HomeNameText", "Label of the home button", &HtmlSettings::HtmlHomeText);
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
    connect(lookup, &QPushButton::clicked, this, [this] { CommandHomePage_Click(); });
}

void frmHtmlLayout::MakeLookFrame() {
    auto* rows = MakeFrame(m_frame3, "Frame3", "Look of the page");
    m_colors = m_fields.Colors(*rows, "PageColors2",
                               {{"Text", &HtmlSettings::HtmlTextColor},
                                {"Page background", &HtmlSettings::HtmlPageBgColor},
                                {"Title background", &HtmlSettings::HtmlTitleBgColor},
                                {"Borders && line color", &HtmlSettings::HtmlBorderColor}},
                               [this](ColorBox& box) { ChooseColorOf(box); });
    auto* defaults = NamedButton("ColorsDefaultsButton2", "Default colors");
    connect(defaults, &QPushButton::clicked, this, [this] { DefaultColors(); });
    auto* font = NamedButton("FontButton", "Font...", "Set font name ans size, style is ignored.");
    auto* defaultFont =
        NamedButton("FontDefaultButton", "Default font", "Set font to default Verdana");
    const auto labels = m_fields.Font(&HtmlSettings::HtmlFontname, &HtmlSettings::HtmlFontsize);
    m_font = labels.name;
    m_fontSize = labels.points;
    rows->addLayout(Row({defaults, font, defaultFont}));
    rows->addLayout(Row({Caption("Font:"), m_font, m_fontSize}));
    connect(font, &QPushButton::clicked, this, [this] {
        std::string name = FromQt(m_font->text());
        int size = m_fontSize->text().toInt();
        if (!m.dialogs.ChooseFont("Font of the page", name, size)) return;
        m_font->setText(ToQt(name));
        m_fontSize->setText(QString::number(size));
    });
    connect(defaultFont, &QPushButton::clicked, this,
            [this] { m_font->setText(QStringLiteral("Verdana")); });
    m_fields.Slider(*rows, "HtmlBorder", "HtmlBorderLabel", "Image border", 0, kThickest,
                    &HtmlSettings::HtmlBorder);
    m_fields.Slider(*rows, "SliderBorders2", "LabelBorders2", "Title border", 0, kThickest,
                    &HtmlSettings::HtmlTitleBorderWidth);
    m_fields.Slider(*rows, "HtmlLine", "HtmlLineWidthLabel", "Line under an entry", 0, kThickest,
                    &HtmlSettings::HtmlLineWidth);
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

// The controls of the gallery form, group by group.
#include "web/frmHtmlThumb.h"

#include "desk/controls/Captions.h"
#include "web/FormParts.h"
#include "web/GalleryMiniature.h"
#include "web/HtmlColor.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>

namespace tarn {

namespace {

constexpr int kMostColumns = 20;
constexpr int kMostPixels = 50;
constexpr int kMostRows = 50;
constexpr int kListHeight = 110; // logical pixels
constexpr int kNumberWidth = 56;

} // namespace

frmHtmlThumb::frmHtmlThumb(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_place(*this, context.state.HtmlThumbPlace) {
    setObjectName(QStringLiteral("frmHtmlThumb"));
    auto* all = new QHBoxLayout(this);
    auto* tabs = new QTabWidget();
    tabs->setObjectName(QStringLiteral("GalleryTabs"));
    tabs->setAccessibleName(QStringLiteral("Options of the gallery"));
    const auto tab = [&](const char* title, std::initializer_list<QWidget*> groups) {
        auto* page = new QWidget();
        auto* rows = new QVBoxLayout(page);
        for (QWidget* group : groups) rows->addWidget(group);
        rows->addStretch();
        tabs->addTab(page, QString::fromLatin1(title));
    };
    tab("&Thumbnails", {MakeThumbnails(), MakeCellNotes()});
    tab("&Index page", {MakeIndex(), MakeLinks()});
    tab("&Picture pages", {MakePicture(), MakePageNotes()});
    tab("&Look", {MakeLook()});
    all->addWidget(tabs, 1);
    auto* side = new QVBoxLayout();
    m_miniature = new GalleryMiniature();
    side->addWidget(m_miniature, 1);
    side->addWidget(MakeRun());
    all->addLayout(side);
    Follow(*tabs);
}

void frmHtmlThumb::Follow(QWidget& part) {
    const auto show = [this] { ShowMiniature(); };
    for (auto* box : part.findChildren<QAbstractButton*>())
        if (box->isCheckable()) connect(box, &QAbstractButton::clicked, this, show);
    for (auto* slider : part.findChildren<QSlider*>())
        connect(slider, &QSlider::valueChanged, this, show);
    for (auto* edit : part.findChildren<QLineEdit*>())
        connect(edit, &QLineEdit::textEdited, this, show);
    for (auto* box : part.findChildren<QComboBox*>())
        connect(box, &QComboBox::activated, this, show);
}

QWidget* frmHtmlThumb::MakeThumbnails() {
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameThumbnails", "Thumbnails");
    m_size = Named(new QComboBox(), "GenThumbSize", "Thumbnail size in pixels");
    for (std::size_t i = 1; i < m.controls.ThumbSizeButton.size(); ++i)
        m_size->addItem(CaptionOf(*m.controls.ThumbSizeButton[i]), int(i));
    connect(m_size, &QComboBox::activated, this, [this](int index) {
        m.controls.ThumbSizeButton[std::size_t(index) + 1]->trigger();
        Form_Activate();
    });
    auto* create = NamedButton("GenThumbButton", "Create", "Make all thumbnails anew");
    auto* update = NamedButton("UpdateThumbButton", "Update", "Make those that are missing");
    connect(create, &QPushButton::clicked, this, [this] { GenThumbButton_Click(false); });
    connect(update, &QPushButton::clicked, this, [this] { GenThumbButton_Click(true); });
    m_commands.insert(m_commands.end(), {create, update});
    m_keptOnly = Named(new QCheckBox(QStringLiteral("Kept only")), "KeptOnlyCheck");
    m_keptOnly->setToolTip(QStringLiteral("Only pictures that are marked to keep"));
    connect(m_keptOnly, &QCheckBox::toggled, this, [this] { Form_Activate(); });
    rows->addLayout(Row({Caption("Size", m_size), m_size, create, update, m_keptOnly}));
    m_thumbs = Named(new QListWidget(), "FileThumb", "Thumbnails");
    m_linked = Named(new QListWidget(), "FileLinked", "Pictures of the thumbnails");
    auto* lists = new QHBoxLayout();
    for (QListWidget* list : {m_thumbs, m_linked}) {
        list->setMinimumHeight(kListHeight);
        list->setUniformItemSizes(true);
        lists->addWidget(list);
    }
    rows->addLayout(lists);
    connect(m_thumbs, &QListWidget::currentRowChanged, m_linked, [this](int row) {
        if (row >= 0) m_linked->setCurrentRow(row);
    });
    return frame;
}

QWidget* frmHtmlThumb::MakeIndex() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameIndex", "Index page");
    auto* title = m_fields.Edit("TextTitle", "Title of the gallery", &S::HtmlThumbTitle);
    rows->addLayout(Row({Caption("Title", title), title}));
    m_fields.Slider(*rows, "SliderColumns", "LabelColumns", "Columns", 1, kMostColumns,
                    &S::HtmlThumbSlider);
    m_fields.Slider(*rows, "SliderThumbSpacing", "LabelThumbSpacing", "Space between cells", 0,
                    kMostPixels, &S::ThumbSpacing);
    m_fields.Slider(*rows, "SliderThumbPadding", "LabelThumbPadding", "Space in cells", 0,
                    kMostPixels, &S::ThumbPadding);
    m_fields.Slider(*rows, "SliderPageBreak", "LabelPageBreak", "Rows on a printed page", 0,
                    kMostRows, &S::HtmlThumbPagebreak);
    rows->addLayout(Row({m_fields.Check("SizeCheck", "File sizes", &S::SizeCheck),
                         m_fields.Check("NoLinkCheck", "No picture pages", &S::NoLinkCheck),
                         m_fields.Check("CheckOrder", "Reverse order", &S::CheckOrder),
                         m_fields.Check("CloseCheck", "Close button", &S::HtmlThumbCloseWindow)}));
    return frame;
}

QWidget* frmHtmlThumb::MakeCellNotes() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameCellNotes", "Notes in cells");
    rows->addWidget(m_fields.Check("NotesCheck", "First lines of the note", &S::HtmlThumbNotes));
    m_fields.EndingSlider(*rows, "SliderNotesT", "LabelNotesT", "Lines (10: all)", 1, kAllNoteLines,
                          &S::HtmlThumbNotesT);
    rows->addLayout(Row({m_fields.Check("CheckTele", "Telescope", &S::ThumbCheckTele),
                         m_fields.Check("CheckCamera", "Camera", &S::ThumbCheckCamera),
                         m_fields.Check("CheckFilter", "Filter", &S::ThumbCheckFilter),
                         m_fields.Check("CheckDate", "Date", &S::ThumbCheckDate)}));
    return frame;
}

QWidget* frmHtmlThumb::MakeLinks() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameLinks", "Links");
    auto* home = m_fields.Edit("HomeText", "Link of the home button", &S::HtmlThumbHomeUrl);
    auto* file = m_fields.Edit("FileLinkText", "Link of the file button", &S::ThumbFileLinkURL);
    auto* caption = m_fields.Edit("FileLinkButtonText", "Caption of the file button",
                                  &S::ThumbFileLinkButtonText);
    auto* email =
        m_fields.Edit("Email", "Email address, blank for none", &S::HtmlThumbEmailaddress);
    auto* grid = new QGridLayout();
    grid->addWidget(m_fields.Check("HomeCheck", "Home button", &S::HtmlThumbHomeLink), 0, 0);
    grid->addWidget(home, 0, 1, 1, 2);
    grid->addWidget(m_fields.Check("FileLinkCheck", "File button", &S::ThumbFileLink), 1, 0);
    grid->addWidget(file, 1, 1);
    grid->addWidget(caption, 1, 2);
    grid->addWidget(Caption("Email", email), 2, 0);
    grid->addWidget(email, 2, 1, 1, 2);
    rows->addLayout(grid);
    return frame;
}

QWidget* frmHtmlThumb::MakePicture() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FramePicture", "Picture on its page");
    auto* left = Choice("OptionImageLeft", "Left");
    auto* center = Choice("OptionImageCenter", "Center");
    auto* automatic = Choice("OptionImageAuto", "Fills the window");
    rows->addWidget(Together({left, center, automatic}));
    m_fields.AddChoice(
        {left, center, automatic}, [](const S& s) { return s.ThumbImagePos; },
        [](S& s, int chosen) { s.ThumbImagePos = chosen; });
    auto* width = Choice("ThumbFullWidthOption", "Width");
    auto* height = Choice("ThumbFullHeightOption", "Height");
    auto* limit = m_fields.Number("ThumbWHtext", "Largest width or height in pixels", 1,
                                  kNumberWidth, &S::HtmlThumbCsValue);
    rows->addLayout(Row({m_fields.Check("ThumbWHcheck", "Limit", &S::HtmlThumbCs),
                         Together({width, height}), limit, Caption("pixels")}));
    m_fields.AddChoice({width, height}, {&S::HtmlThumbCsWidth, &S::HtmlThumbCsHeight});
    auto* top = Choice("OptionNavTop", "Buttons on top");
    auto* bottom = Choice("OptionNavBottom", "Notes at the lower edge");
    rows->addWidget(Together({top, bottom}));
    m_fields.AddChoice(
        {top, bottom}, [](const S& s) { return s.ThumbNavTop ? 0 : 1; },
        [](S& s, int chosen) { s.ThumbNavTop = chosen == 0; });
    rows->addLayout(
        Row({m_fields.Check("CheckNavSpace", "Space for the buttons", &S::ThumbNavSpace),
             m_fields.Check("CheckNoLinkPic", "Zoom in place of links", &S::ThumbNoLinkPic),
             m_fields.Check("WrapCheck", "Last leads to first", &S::HtmlThumbWrap)}));
    return frame;
}

QWidget* frmHtmlThumb::MakePageNotes() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FramePageNotes", "Notes on its page");
    m_notesTop = Choice("NotesTopOption", "Top");
    auto* bottom = Choice("NotesBottomOption", "Bottom");
    auto* right = Choice("NotesRightOption", "Right");
    rows->addWidget(Together({Caption("Notes Positon"), m_notesTop, bottom, right}));
    m_fields.AddChoice({m_notesTop, bottom, right},
                       {&S::HtmlThumbNotesTop, &S::HtmlThumbNotesBottom, &S::HtmlThumbNotesRight});
    rows->addLayout(Row({m_fields.Check("NotesCheck2", "Notes", &S::HtmlThumbNotes2),
                         m_fields.Check("CheckLongNotes", "As one long line", &S::LongNotesLine),
                         m_fields.Check("DataCheck", "Camera data", &S::HtmlThumbData)}));
    auto* lines = new QHBoxLayout();
    lines->addWidget(Caption("Only the lines"));
    std::vector<QCheckBox*> boxes;
    for (int i = 0; i < 5; ++i) {
        auto* box = new QCheckBox(QString::number(i + 1));
        box->setObjectName(QStringLiteral("NotesLineBottomCheck_%1").arg(i));
        lines->addWidget(box);
        boxes.push_back(box);
    }
    lines->addStretch();
    rows->addLayout(lines);
    m_fields.Add(
        [boxes](const S& s) {
            for (std::size_t i = 0; i < boxes.size(); ++i)
                boxes[i]->setChecked(i < s.NotesLineBottomCheck.size() &&
                                     s.NotesLineBottomCheck[i] == '1');
        },
        [boxes](S& s) {
            s.NotesLineBottomCheck.clear();
            for (const QCheckBox* box : boxes)
                s.NotesLineBottomCheck += box->isChecked() ? '1' : '0';
        });
    m_topLine = m_fields.Check("NotesTopCheck", "Beginning of the note beside the buttons",
                               &S::HtmlThumbNotesTopLine);
    rows->addWidget(m_topLine);
    m_fields.Slider(*rows, "SliderBNotesTop", "LabelBNotesTop", "From line", 1, kAllNoteLines,
                    &S::HtmlThumbBeginSliderTop);
    m_fields.Slider(*rows, "SliderNotesTop", "LabelNotesTop", "Lines", 1, kAllNoteLines,
                    &S::HtmlThumbSliderTop);
    return frame;
}

QWidget* frmHtmlThumb::MakeLook() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameLook", "Look");
    const auto choose = [this](ColorBox& box) {
        const auto color =
            m.dialogs.ChooseColor(FromQt(box.text()), NumberOfHtmlColor(box.Color()));
        if (color) box.SetColor(HtmlColorOf(*color));
        ShowMiniature();
    };
    m_fields.Colors(*rows, "PageColors",
                    {{"Text", &S::HtmlThumbTextColor},
                     {"Page background", &S::HtmlThumbPageBgColor},
                     {"Thumbnail background", &S::HtmlThumbThumbBgColor},
                     {"Borders", &S::HtmlThumbBorderColor}},
                    choose);
    auto* font = NamedButton("FontButton", "Font...");
    const auto [name, size] = m_fields.Font(&S::HtmlThumbFontname, &S::HtmlThumbFontsize);
    rows->addLayout(Row({font, name, size}));
    connect(font, &QPushButton::clicked, this, [this, name = name, size = size] {
        std::string family = FromQt(name->text());
        int points = size->text().toInt();
        if (!m.dialogs.ChooseFont("Font of the gallery", family, points)) return;
        name->setText(ToQt(family));
        size->setText(QString::number(points));
        ShowMiniature();
    });
    m_fields.Slider(*rows, "SliderBorders", "LabelBorders", "Border", 0, kMostPixels,
                    &S::HtmlThumbBorderWidth);
    auto* style = Named(new QComboBox(), "ComboBstyle", "Border style");
    style->addItems({QStringLiteral("ridge"), QStringLiteral("solid")});
    m_fields.Add(style, &S::ThumbBorderStyle);
    rows->addLayout(Row({Caption("Style", style), style}));
    rows->addLayout(Row({m_fields.Check("CheckTitleBorder", "Title", &S::ThumbTitleBorder),
                         m_fields.Check("CheckTnailBorder", "Thumbnails", &S::ThumbTnailBorder),
                         m_fields.Check("CheckImageBorder", "Picture", &S::ThumbImageBorder)}));
    return frame;
}

QWidget* frmHtmlThumb::MakeRun() {
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameRun", "Gallery");
    auto* plain = NamedButton("HtmlThumbnailButton", "Create Html");
    auto* frames = NamedButton("HtmlFramesThumbnailButton", "Create Html in frames");
    m_view = NamedButton("HtmlViewButton", "View");
    m_cancel = NamedButton("HtmlCancelButton", "Cancel");
    QSizePolicy kept = m_cancel->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_cancel->setSizePolicy(kept);
    m_cancel->hide();
    auto* quit = NamedButton("QuitButton", "Close");
    for (QPushButton* button : {plain, frames, m_view, m_cancel, quit}) rows->addWidget(button);
    m_info = Named(new QLabel(), "LabelInfo");
    m_error = Named(new QLabel(), "LabelError");
    for (QLabel* label : {m_info, m_error}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setMinimumHeight(label->fontMetrics().lineSpacing() * (label == m_error ? 5 : 3));
        label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        rows->addWidget(label);
    }
    m_commands.insert(m_commands.end(), {plain, frames, quit});
    connect(plain, &QPushButton::clicked, this, [this] { MakeGallery(false); });
    connect(frames, &QPushButton::clicked, this, [this] { MakeGallery(true); });
    connect(m_view, &QPushButton::clicked, this, [this] { HtmlViewButton_Click(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { m.state.BatchCancelled = true; });
    connect(quit, &QPushButton::clicked, this, [this] { close(); });
    return frame;
}

} // namespace tarn

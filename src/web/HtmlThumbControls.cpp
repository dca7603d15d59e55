// The controls of the gallery form, group by group.
#include "web/frmHtmlThumb.h"

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
constexpr int kMostLimit = 32767; // pixels of a picture's side
constexpr int kListHeight = 110;  // logical pixels
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

QCheckBox* frmHtmlThumb::Check(const char* name, const char* caption, int GallerySettings::*field) {
    auto* box = Named(new QCheckBox(QString::fromLatin1(caption)), name);
    m_fields.Add(box, field);
    return box;
}

QRadioButton* frmHtmlThumb::Choice(const char* name, const char* caption) {
    return Named(new QRadioButton(QString::fromLatin1(caption)), name);
}

void frmHtmlThumb::AddSlider(QVBoxLayout& to, const char* name, const char* label,
                             const char* caption, int least, int most, int GallerySettings::*field,
                             bool endIsAll) {
    auto* value = Named(new QLabel(), label);
    auto* slider = MakeSlider(name, caption, least, most, value);
    if (endIsAll) // what lies beyond means the same
        m_fields.Add([=](const GallerySettings& s) { slider->setValue(s.*field); },
                     [=](GallerySettings& s) { s.*field = slider->value(); });
    else
        m_fields.Add(slider, field);
    to.addLayout(Row({Caption(caption, slider), slider, value}));
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
        m_size->addItem(m.controls.ThumbSizeButton[i]->text(), int(i));
    connect(m_size, &QComboBox::activated, this, [this](int index) {
        m.controls.ThumbSizeButton[std::size_t(index) + 1]->trigger();
        Form_Activate();
    });
    auto* create = NamedButton("GenThumbButton", "Create", "Make all thumbnails anew");
    auto* update = NamedButton("UpdateThumbButton", "Update", "Make those that are missing");
    connect(create, &QPushButton::clicked, this, [this] { GenThumbButton_Click(false); });
    connect(update, &QPushButton::clicked, this, [this] { GenThumbButton_Click(true); });
    m_commands.insert(m_commands.end(), {create, update});
    rows->addLayout(Row({Caption("Size", m_size), m_size, create, update}));
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
    auto* title = Named(new QLineEdit(), "TextTitle", "Title of the gallery");
    m_fields.Add(title, &S::HtmlThumbTitle);
    rows->addLayout(Row({Caption("Title", title), title}));
    AddSlider(*rows, "SliderColumns", "LabelColumns", "Columns", 1, kMostColumns,
              &S::HtmlThumbSlider);
    AddSlider(*rows, "SliderThumbSpacing", "LabelThumbSpacing", "Space between cells", 0,
              kMostPixels, &S::ThumbSpacing);
    AddSlider(*rows, "SliderThumbPadding", "LabelThumbPadding", "Space in cells", 0, kMostPixels,
              &S::ThumbPadding);
    AddSlider(*rows, "SliderPageBreak", "LabelPageBreak", "Rows on a printed page", 0, kMostRows,
              &S::HtmlThumbPagebreak);
    rows->addLayout(Row({Check("SizeCheck", "File sizes", &S::SizeCheck),
                         Check("NoLinkCheck", "No picture pages", &S::NoLinkCheck),
                         Check("CheckOrder", "Reverse order", &S::CheckOrder),
                         Check("CloseCheck", "Close button", &S::HtmlThumbCloseWindow)}));
    return frame;
}

QWidget* frmHtmlThumb::MakeCellNotes() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameCellNotes", "Notes in cells");
    rows->addWidget(Check("NotesCheck", "First lines of the note", &S::HtmlThumbNotes));
    AddSlider(*rows, "SliderNotesT", "LabelNotesT", "Lines (10: all)", 1, kAllNoteLines,
              &S::HtmlThumbNotesT, true);
    rows->addLayout(Row({Check("CheckTele", "Telescope", &S::ThumbCheckTele),
                         Check("CheckCamera", "Camera", &S::ThumbCheckCamera),
                         Check("CheckFilter", "Filter", &S::ThumbCheckFilter),
                         Check("CheckDate", "Date", &S::ThumbCheckDate)}));
    return frame;
}

QWidget* frmHtmlThumb::MakeLinks() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameLinks", "Links");
    auto* home = Named(new QLineEdit(), "HomeText", "Link of the home button");
    auto* file = Named(new QLineEdit(), "FileLinkText", "Link of the file button");
    auto* caption = Named(new QLineEdit(), "FileLinkButtonText", "Caption of the file button");
    auto* email = Named(new QLineEdit(), "Email", "Email address, blank for none");
    auto* grid = new QGridLayout();
    grid->addWidget(Check("HomeCheck", "Home button", &S::HtmlThumbHomeLink), 0, 0);
    grid->addWidget(home, 0, 1, 1, 2);
    grid->addWidget(Check("FileLinkCheck", "File button", &S::ThumbFileLink), 1, 0);
    grid->addWidget(file, 1, 1);
    grid->addWidget(caption, 1, 2);
    grid->addWidget(Caption("Email", email), 2, 0);
    grid->addWidget(email, 2, 1, 1, 2);
    rows->addLayout(grid);
    m_fields.Add(home, &S::HtmlThumbHomeUrl);
    m_fields.Add(file, &S::ThumbFileLinkURL);
    m_fields.Add(caption, &S::ThumbFileLinkButtonText);
    m_fields.Add(email, &S::HtmlThumbEmailaddress);
    return frame;
}

QWidget* frmHtmlThumb::MakePicture() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FramePicture", "Picture on its page");
    auto* left = Choice("OptionImageLeft", "Left");
    auto* center = Choice("OptionImageCenter", "Center");
    auto* automatic = Choice("OptionImageAuto", "Fills the window");
    auto* place = new QWidget();
    place->setLayout(Row({left, center, automatic}));
    place->layout()->setContentsMargins({});
    rows->addWidget(place);
    m_fields.AddChoice(
        {left, center, automatic}, [](const S& s) { return s.ThumbImagePos; },
        [](S& s, int chosen) { s.ThumbImagePos = chosen; });
    auto* width = Choice("ThumbFullWidthOption", "Width");
    auto* height = Choice("ThumbFullHeightOption", "Height");
    auto* limit = Named(new QLineEdit(), "ThumbWHtext", "Largest width or height in pixels");
    limit->setMaximumWidth(kNumberWidth);
    limit->setValidator(new QIntValidator(1, kMostLimit, limit));
    auto* sides = new QWidget();
    sides->setLayout(Row({width, height}));
    sides->layout()->setContentsMargins({});
    rows->addLayout(
        Row({Check("ThumbWHcheck", "Limit", &S::HtmlThumbCs), sides, limit, Caption("pixels")}));
    m_fields.AddChoice({width, height}, {&S::HtmlThumbCsWidth, &S::HtmlThumbCsHeight});
    m_fields.Add(limit, &S::HtmlThumbCsValue);
    auto* top = Choice("OptionNavTop", "Buttons on top");
    auto* bottom = Choice("OptionNavBottom", "Notes at the lower edge");
    auto* nav = new QWidget();
    nav->setLayout(Row({top, bottom}));
    nav->layout()->setContentsMargins({});
    rows->addWidget(nav);
    m_fields.AddChoice(
        {top, bottom}, [](const S& s) { return s.ThumbNavTop ? 0 : 1; },
        [](S& s, int chosen) { s.ThumbNavTop = chosen == 0; });
    rows->addLayout(Row({Check("CheckNavSpace", "Space for the buttons", &S::ThumbNavSpace),
                         Check("CheckNoLinkPic", "Zoom in place of links", &S::ThumbNoLinkPic),
                         Check("WrapCheck", "Last leads to first", &S::HtmlThumbWrap)}));
    return frame;
}

QWidget* frmHtmlThumb::MakePageNotes() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FramePageNotes", "Notes on its page");
    m_notesTop = Choice("NotesTopOption", "Top");
    auto* bottom = Choice("NotesBottomOption", "Bottom");
    auto* right = Choice("NotesRightOption", "Right");
    auto* place = new QWidget();
    place->setLayout(Row({Caption("Notes Positon"), m_notesTop, bottom, right}));
    place->layout()->setContentsMargins({});
    rows->addWidget(place);
    m_fields.AddChoice({m_notesTop, bottom, right},
                       {&S::HtmlThumbNotesTop, &S::HtmlThumbNotesBottom, &S::HtmlThumbNotesRight});
    rows->addLayout(Row({Check("NotesCheck2", "Notes", &S::HtmlThumbNotes2),
                         Check("CheckLongNotes", "As one long line", &S::LongNotesLine),
                         Check("DataCheck", "Camera data", &S::HtmlThumbData)}));
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
    m_topLine = Check("NotesTopCheck", "Beginning of the note beside the buttons",
                      &S::HtmlThumbNotesTopLine);
    rows->addWidget(m_topLine);
    AddSlider(*rows, "SliderBNotesTop", "LabelBNotesTop", "From line", 1, kAllNoteLines,
              &S::HtmlThumbBeginSliderTop);
    AddSlider(*rows, "SliderNotesTop", "LabelNotesTop", "Lines", 1, kAllNoteLines,
              &S::HtmlThumbSliderTop);
    return frame;
}

QWidget* frmHtmlThumb::MakeLook() {
    using S = GallerySettings;
    QWidget* frame = nullptr;
    auto* rows = MakeFrame(frame, "FrameLook", "Look");
    const char* captions[] = {"Text", "Page background", "Thumbnail background", "Borders"};
    std::string S::*const fields[] = {&S::HtmlThumbTextColor, &S::HtmlThumbPageBgColor,
                                      &S::HtmlThumbThumbBgColor, &S::HtmlThumbBorderColor};
    auto* colors = new QGridLayout();
    for (int i = 0; i < 4; ++i) {
        auto* box = new ColorBox(QString::fromLatin1(captions[i]));
        box->setObjectName(QStringLiteral("PageColors_%1").arg(i));
        colors->addWidget(box, i / 2, i % 2);
        m_fields.Add(box, fields[i]);
        connect(box, &QPushButton::clicked, this, [this, box] {
            const auto color =
                m.dialogs.ChooseColor(FromQt(box->text()), NumberOfHtmlColor(box->Color()));
            if (color) box->SetColor(HtmlColorOf(*color));
            ShowMiniature();
        });
    }
    rows->addLayout(colors);
    auto* font = NamedButton("FontButton", "Font...");
    auto* name = Named(new QLabel(), "FontLabel");
    auto* size = Named(new QLabel(), "FsizeLabel");
    rows->addLayout(Row({font, name, size}));
    m_fields.Add(name, &S::HtmlThumbFontname);
    m_fields.Add(size, &S::HtmlThumbFontsize);
    connect(font, &QPushButton::clicked, this, [this, name, size] {
        std::string family = FromQt(name->text());
        int points = size->text().toInt();
        if (!m.dialogs.ChooseFont("Font of the gallery", family, points)) return;
        name->setText(ToQt(family));
        size->setText(QString::number(points));
        ShowMiniature();
    });
    AddSlider(*rows, "SliderBorders", "LabelBorders", "Border", 0, kMostPixels,
              &S::HtmlThumbBorderWidth);
    auto* style = Named(new QComboBox(), "ComboBstyle", "Border style");
    style->addItems({QStringLiteral("ridge"), QStringLiteral("solid")});
    m_fields.Add(style, &S::ThumbBorderStyle);
    rows->addLayout(Row({Caption("Style", style), style}));
    rows->addLayout(Row({Check("CheckTitleBorder", "Title", &S::ThumbTitleBorder),
                         Check("CheckTnailBorder", "Thumbnails", &S::ThumbTnailBorder),
                         Check("CheckImageBorder", "Picture", &S::ThumbImageBorder)}));
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

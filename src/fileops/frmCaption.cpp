#include "fileops/frmCaption.h"

#include "common/numbers.h"
#include "convert/ConvertPicture.h"
#include "fileops/CopyRoom.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"
#include "widgets/WindowPlaces.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr QSize kPreview(360, 72); // logical pixels; four lines of the text high
constexpr double kPreviewLines = 4;

} // namespace

frmCaption::frmCaption(Context& context, CopyRoom& room)
    : QDialog(context.controls.FileListBox->window()), m(context), m_room(room),
      m_addText(Named(new QCheckBox(QStringLiteral("Add Text")), "CheckAddText")),
      m_lines(Named(new QLineEdit(), "TextFirstLines", "Number of note lines")),
      m_caption(Named(new QLineEdit(), "TextCaption", "Text for the image")),
      m_using(Named(new QLabel(), "Label1")),
      m_preview(Named(new QLabel(), "PreviewImage", "Lower end of the image with the text")),
      m_quality(Named(new QSlider(Qt::Horizontal), "SliderJpgQ", "JPG Quality")),
      m_qualityLabel(Named(new QLabel(QStringLiteral("JPG Quality 75%")), "LabelJpgQ")),
      m_maxSize(Named(new QLineEdit(), "TextMaxSize", "Max width or height")),
      m_maxWidth(Named(new QCheckBox(QStringLiteral("Set Max Width")), "CheckMaxWidth")),
      m_maxHeight(Named(new QCheckBox(QStringLiteral("Set Max Height")), "CheckMaxHeight")),
      m_place(*this, context.state.CaptionPlace) {
    setObjectName(QStringLiteral("frmCaption"));
    setWindowTitle(QStringLiteral("Tarn_View - Convert to Jpg Control"));
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    MakeText(*all);
    MakeSize(*all);
    MakeCommands(*all);
    ShowCopyFolder();
}

QPushButton* frmCaption::Button(const char* name, const char* caption, const char* tip,
                                std::function<void()> act) {
    auto* button = NamedButton(name, caption, tip);
    connect(button, &QPushButton::clicked, this, std::move(act));
    // Most commands change the picture, its note or its name.
    connect(button, &QPushButton::clicked, this, [this] { ShowType(); });
    return button;
}

void frmCaption::MakeText(QVBoxLayout& all) {
    auto* box = new QGroupBox(QStringLiteral("Text"));
    auto* grid = new QGridLayout(box);
    m_addText->setToolTip(QStringLiteral("Add indicated text to botton left of image"));
    grid->addWidget(m_addText, 0, 0);
    grid->addWidget(m_using, 0, 1, 1, 3);
    grid->addWidget(
        Button("CommandUseFilename", "Use Filename", "", [this] { UseText(kFileName); }), 1, 0);
    grid->addWidget(Button("CommandUseNote", "Use Note Lines", "", [this] { UseText(kNoteLines); }),
                    1, 1);
    m_lines->setToolTip(QStringLiteral("Number of lines beginning at 1 to get"));
    m_lines->setMaximumWidth(5 * m_lines->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    grid->addWidget(m_lines, 1, 2);
    grid->addWidget(Button("CommandUseText", "Use Text", "", [this] { UseText(kTyped); }), 1, 3);
    grid->addWidget(m_caption, 2, 0, 1, 4);
    m_preview->setFixedSize(kPreview);
    grid->addWidget(m_preview, 3, 0, 1, 4);
    auto* same = Named(new QLabel(QStringLiteral("Image Text, Font Color and Type same as slides")),
                       "Label2");
    grid->addWidget(same, 4, 0, 1, 4);
    all.addWidget(box);
    QAction* entry = m.controls.ConvertJpgAddFilename;
    connect(entry, &QAction::toggled, m_addText, &QCheckBox::setChecked);
    connect(m_addText, &QCheckBox::toggled, this, [this, entry](bool checked) {
        if (entry->isChecked() != checked) entry->trigger();
        ShowPreview();
    });
    connect(m_lines, &QLineEdit::textChanged, this, [this](const QString& text) {
        m.state.ConvertJpgLines = FromQt(text);
        if (m.state.ConvertJpgType == kNoteLines) m_room.SetNote();
    });
    connect(m_caption, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (m.state.ConvertJpgType == kTyped) m.state.ConvertJpgText = FromQt(text);
        ShowPreview();
    });
}

void frmCaption::MakeSize(QVBoxLayout& all) {
    auto* box = new QGroupBox(QStringLiteral("Quality and size"));
    auto* grid = new QGridLayout(box);
    m_quality->setRange(1, 100);
    grid->addWidget(m_qualityLabel, 0, 0);
    grid->addWidget(m_quality, 0, 1, 1, 3);
    m_maxSize->setToolTip(QStringLiteral("Max width or height of converted jpg"));
    m_maxSize->setMaximumWidth(8 * m_maxSize->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    grid->addWidget(m_maxSize, 1, 0);
    grid->addWidget(m_maxWidth, 1, 1);
    grid->addWidget(m_maxHeight, 1, 2);
    all.addWidget(box);
    connect(m_quality, &QSlider::valueChanged, this, [this](int value) {
        m.state.ConvertJpgQuality = value;
        ShowQuality();
    });
    connect(m_maxSize, &QLineEdit::textChanged, this,
            [this](const QString& text) { m.state.ConvertJpgMaxSize = FromQt(text); });
    connect(m_maxWidth, &QCheckBox::toggled, this,
            [this] { LimitClicked(*m_maxWidth, *m_maxHeight); });
    connect(m_maxHeight, &QCheckBox::toggled, this,
            [this] { LimitClicked(*m_maxHeight, *m_maxWidth); });
}

void frmCaption::MakeCommands(QVBoxLayout& all) {
    auto* grid = new QGridLayout();
    grid->addWidget(Button("CommandCvt", "Convert to Jpg", "",
                           [this] { m.shell.Tell(m_room.ConvertButton_Click()); }),
                    0, 0, 1, 2);
    grid->addWidget(Button("CommandMoveTo", "Convert to Jpg To Copy Folder", "",
                           [this] { m.shell.Tell(m_room.CJMButton_Click()); }),
                    0, 2, 1, 2);
    m_copyTo = Button("CommandCopyTo", "Copy To", "", [this] { m.shell.Tell(m_room.CopyImage()); });
    grid->addWidget(m_copyTo, 1, 0);
    grid->addWidget(Button("CommandDelete", "Delete", "Delete picture only",
                           [this] { m.shell.Tell(m.fileops.DeleteOnlyButton_Click()); }),
                    1, 1);
    grid->addWidget(Button("CommandDeleteN", "Delete", "Delete picture and notes",
                           [this] { m.shell.Tell(m.fileops.DeleteButton_Click()); }),
                    1, 2);
    grid->addWidget(Button("CommandRename", "Rename...", "",
                           [this] { m.shell.Tell(m.fileops.RenameButton_Click()); }),
                    1, 3);
    grid->addWidget(Button("CommandDup", "Duplicate...", "",
                           [this] { m.shell.Tell(m.fileops.DuplicateButton_Click()); }),
                    2, 0);
    grid->addWidget(Button("PrevButton", "Prev.", "Previous picture", [this] { Step(false); }), 2,
                    1);
    grid->addWidget(Button("NextButton", "Next", "Next picture", [this] { Step(true); }), 2, 2);
    grid->addWidget(Button("CloseButton", "Close", "", [this] { close(); }), 2, 3);
    all.addLayout(grid);
}

void frmCaption::OpenForm() {
    const ProgramState& s = m.state;
    m_addText->setChecked(s.ConvertJpgAddFN);
    m_lines->setText(ToQt(s.ConvertJpgLines));
    m_quality->setValue(s.ConvertJpgQuality);
    ShowQuality();
    m_maxSize->setText(ToQt(s.ConvertJpgMaxSize));
    m_maxWidth->setChecked(ParseInt32(s.ConvertJpgMaxWidth).value_or(0) != 0);
    m_maxHeight->setChecked(s.ConvertJpgMaxHeight != 0);
    m_caption->setText(ToQt(s.ConvertJpgText));
    ShowType();
    if (!m_open) m_place.Restore(sizeHint());
    m_open = true;
    show();
    raise();
    activateWindow();
}

void frmCaption::closeEvent(QCloseEvent* event) {
    m_open = false;
    event->accept(); // the dialog's own would reject, which closes
}

// The picture, its note or its size may be others by now.
bool frmCaption::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) ShowType();
    return QDialog::event(event);
}

void frmCaption::ShowCopyFolder() {
    m_copyTo->setToolTip(m.controls.CopyImageButton3->toolTip());
}

void frmCaption::ShowCaptionText(const std::string& text) {
    m_caption->setText(ToQt(text));
    ShowPreview();
}

void frmCaption::UseText(int type) {
    if (type == kTyped) m.state.ConvertJpgText = FromQt(m_caption->text());
    m.state.ConvertJpgType = type;
    ShowType();
}

void frmCaption::ShowType() {
    const ProgramState& s = m.state;
    switch (s.ConvertJpgType) {
    case kNoteLines:
        m_using->setText(QStringLiteral("Using Notes"));
        m_room.SetNote();
        break;
    case kTyped:
        m_using->setText(QStringLiteral("Using Text"));
        break;
    default:
        m_using->setText(QStringLiteral("Using Filename"));
        break;
    }
    ShowPreview();
}

// The two exclude each other.
void frmCaption::LimitClicked(QCheckBox& clicked, QCheckBox& other) {
    if (clicked.isChecked()) other.setChecked(false);
    m.state.ConvertJpgMaxWidth = m_maxWidth->isChecked() ? "1" : "0";
    m.state.ConvertJpgMaxHeight = m_maxHeight->isChecked() ? 1 : 0;
}

void frmCaption::ShowQuality() {
    m_qualityLabel->setText(QStringLiteral("JPG Quality %1%").arg(m.state.ConvertJpgQuality));
}

void frmCaption::Step(bool forward) {
    if (forward)
        m.navigation.NextButton_Click();
    else
        m.navigation.PrevButton_Click();
}

// The left of the lower end, large enough to read.
void frmCaption::ShowPreview() {
    ImgX picture = m.state.ImgXfull; // the copy is upright
    picture.TurnBy(Turn::Upright(m.state.ExpOrientation));
    const QImage& held = picture.SystemPicture();
    if (held.isNull() || picture.Height() < 1) {
        m_preview->clear();
        return;
    }
    // The name costs a look at the folder, which another text does not need.
    const bool named = m.state.ConvertJpgAddFN && m.state.ConvertJpgType == kFileName;
    const ConvertOptions options = m_room.Options(named ? m_room.NextName() : std::string());
    const QSize size = kPreview * devicePixelRatioF();
    const double whole = PlaceOfCaption(picture.Height()).height * kPreviewLines; // pixels high
    const double scale = size.height() / std::max(1.0, whole);
    const double part = double(held.height()) / picture.Height();
    const QRectF strip(0, held.height() - whole * part, size.width() / scale * part, whole * part);
    QImage shown = held.copy(strip.toAlignedRect())
                       .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                       .convertToFormat(QImage::Format_RGB32);
    DrawCaption(shown, options, picture.Height(), scale, picture.Height() - whole);
    shown.setDevicePixelRatio(devicePixelRatioF());
    m_preview->setPixmap(QPixmap::fromImage(shown));
}

} // namespace tarn

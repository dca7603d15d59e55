#include "navigation/frmFileTypes.h"

#include "platform/QtText.h"
#include "widgets/FileListBox.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr QPoint kFromMain(60, 80); // logical pixels from the main window's corner

QLineEdit* AddText(QVBoxLayout& to, const char* name, const char* frame) {
    auto* box = new QGroupBox(QString::fromLatin1(frame));
    auto* text = new QLineEdit();
    text->setObjectName(QString::fromLatin1(name));
    text->setAccessibleName(QString::fromLatin1(frame));
    text->setMinimumWidth(50 * text->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    (new QVBoxLayout(box))->addWidget(text);
    to.addWidget(box);
    return text;
}

QPushButton* AddButton(QHBoxLayout& to, const char* name, const char* caption) {
    auto* button = new QPushButton(QString::fromLatin1(caption));
    button->setObjectName(QString::fromLatin1(name));
    to.addWidget(button);
    return button;
}

} // namespace

frmFileTypes::frmFileTypes(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context) {
    setObjectName(QStringLiteral("frmFileTypes"));
    setWindowTitle(QStringLiteral("Tarn_View - Set File Type Filters"));
    setModal(true);
    auto* all = new QVBoxLayout(this);
    m_pictures = AddText(*all, "FileTypesText", "Picture Filter");
    m_videos = AddText(*all, "VideoTypesText", "Video Filter");
    m_web = AddText(*all, "WebTypesText", "Web Filter");
    m_xisf = AddText(*all, "XisfTypesText", "XISF Filter");
    m_packed = AddText(*all, "PackedFitsTypesText", "Packed FITS Filter");
    auto* example = new QLabel(QStringLiteral("Example:  *.jpg;*.tif"));
    example->setObjectName(QStringLiteral("Label1"));
    all->addWidget(example);
    m_invalid = new QLabel(QStringLiteral("Filter pattern is not valid, check syntax."));
    m_invalid->setObjectName(QStringLiteral("Label2"));
    QSizePolicy kept = m_invalid->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_invalid->setSizePolicy(kept);
    QFont bold = m_invalid->font();
    bold.setBold(true);
    m_invalid->setFont(bold);
    all->addWidget(m_invalid);
    auto* buttons = new QHBoxLayout();
    buttons->addStretch();
    QPushButton* set = AddButton(*buttons, "SetButton", "Set");
    QPushButton* cancel = AddButton(*buttons, "CancelButton", "Cancel");
    set->setDefault(true);
    all->addLayout(buttons);
    connect(set, &QPushButton::clicked, this, [this] { SetButton_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFileTypes::ShowTypes(const ClassBoxes& boxes) {
    m_boxes = boxes;
    m_pictures->setText(ToQt(m.state.PictureTypes));
    m_videos->setText(ToQt(m.state.VideoTypes));
    m_web->setText(ToQt(m.state.WebTypes));
    m_xisf->setText(ToQt(m.state.XisfTypes));
    m_packed->setText(ToQt(m.state.PackedFitsTypes));
    m_invalid->hide();
    m_pictures->setFocus();
    move(parentWidget()->pos() + kFromMain);
    show();
}

void frmFileTypes::SetButton_Click() {
    ProgramState& s = m.state;
    const std::string pictures = FromQt(m_pictures->text());
    const std::string videos = FromQt(m_videos->text());
    const std::string web = FromQt(m_web->text());
    const std::string xisf = FromQt(m_xisf->text());
    const std::string packed = FromQt(m_packed->text());
    const std::string candidate = TypesFromTexts(m_boxes, pictures, videos, web);
    m.controls.FCheck->setChecked(false); // which takes the list back to before its tick
    const auto all = {pictures, videos, web, xisf, packed};
    const bool valid = std::all_of(all.begin(), all.end(), IsPattern);
    m_invalid->setVisible(!valid);
    if (!valid) return; // the old one stays
    m.controls.FileListBox->SetPattern(candidate);
    s.PictureTypes = pictures;
    s.VideoTypes = videos;
    s.WebTypes = web;
    s.XisfTypes = xisf;
    s.PackedFitsTypes = packed;
    s.FileTypes = candidate;
    m.navigation.RefreshDirButton_Click();
    // The types also decide how the file is shown.
    m.navigation.SelectRow(m.controls.FileListBox->RowOf(s.FileNameOnly));
    accept();
}

} // namespace tarn

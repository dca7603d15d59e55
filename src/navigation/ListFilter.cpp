#include "navigation/ListFilter.h"

#include "common/paths.h"
#include "common/patterns.h"
#include "common/text.h"
#include "desk/controls/SlideButtons.h"
#include "navigation/frmFileTypes.h"
#include "navigation/frmFilter.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <array>
#include <utility>

namespace tarn {

ListFilter::ListFilter(Context& context, std::function<void()> hint)
    : m(context), m_hint(std::move(hint)) {}

ListFilter::~ListFilter() = default;

void ListFilter::ConnectControls() {
    MainControls& c = m.controls;
    Connect(c.PCheck, [this] { PCheck_Click(); });
    Connect(c.VCheck, [this] { VCheck_Click(); });
    Connect(c.WCheck, [this] { WCheck_Click(); });
    Connect(c.FCheck, [this] { FCheck_Click(); });
    Connect(c.CCheck, [this] { CCheck_Click(); });
    Connect(c.TCheck, [this] { TCheck_Click(); });
    Connect(c.SetFileTypesButton, [this] { SetFileTypesButton_Click(); });
    Connect(c.FilesFilterButton2, [this] { FilesFilterButton2_Click(); });
    QLabel& label = *c.HiddenFilesLabel;
    label.setTextFormat(Qt::RichText);
    label.setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    QObject::connect(&label, &QLabel::linkActivated, &label, [this] { ShowHiddenFiles(); });
    QObject::connect(c.FileListBox, &FileListBox::leftOutChanged, &label, [this] { TellHidden(); });
}

QCheckBox* ListFilter::BoxOf(FileClass fileClass) const {
    const MainControls& c = m.controls;
    const std::array<QCheckBox*, kFileClasses.size()> boxes{c.PCheck, c.VCheck, c.WCheck,
                                                            c.FCheck, c.CCheck, c.TCheck};
    return boxes[static_cast<std::size_t>(fileClass)];
}

// The filter window says itself what it hides.
void ListFilter::TellHidden() {
    const std::string before = m_hidden;
    m_hidden = m.state.FilterActive
                   ? std::string()
                   : HiddenText(CountHidden(m.state, m.controls.FileListBox->LeftOut()));
    if (m_hidden == before) return;
    QLabel& label = *m.controls.HiddenFilesLabel;
    // All of it is the link, which is at hand where the end is cut off.
    label.setText(QStringLiteral("<a href=\"show\">%1: show them</a>").arg(ToQt(m_hidden)));
    label.setAccessibleName(ToQt(m_hidden));
    label.setToolTip(ToToolTip(m_hidden + ": a click shows them"));
    label.setVisible(!m_hidden.empty());
    m.controls.TextNumOf->setToolTip(
        ToToolTip(m_hidden.empty() ? "Number of current file in list"
                                   : "Number of current file in list; " + m_hidden));
    if (m.controls.FileListBox->Count() < 1) m_hint();
}

// A tick may build the pattern anew and leave out what another box had brought: once more then.
void ListFilter::ShowHiddenFiles() {
    std::string added;
    for (int round = 0; round < 2; ++round) {
        for (const HiddenFiles& hidden : CountHidden(m.state, m.controls.FileListBox->LeftOut())) {
            AddTypes(m.state, hidden.fileClass, hidden.types);
            for (const std::string& type : hidden.types)
                added += (added.empty() ? "" : ", ") + type;
            QCheckBox& box = *BoxOf(hidden.fileClass);
            if (box.isChecked()) { // and yet not in the pattern
                const QSignalBlocker silent(box);
                box.setChecked(false);
            }
            box.setChecked(true);
        }
    }
    if (!added.empty())
        m.shell.ShowMessage(added + " are listed from now on (File, Set File Type Filters...)");
}

ClassBoxes ListFilter::Boxes() const {
    const MainControls& c = m.controls;
    return {c.PCheck->isChecked(), c.VCheck->isChecked(), c.WCheck->isChecked(),
            c.FCheck->isChecked(), c.CCheck->isChecked(), c.TCheck->isChecked()};
}

void ListFilter::PCheck_Click() {
    const ClassBoxes boxes = Boxes();
    m.state.PictureListCheck = boxes.pictures;
    if (HasNoClass(boxes)) {
        m.controls.PCheck->setChecked(true); // which comes here anew
        return;
    }
    m.state.FileTypes = TypesFromPictures(m.state, boxes);
    bool enabled = boxes.pictures;
    EnableSlideCommands(enabled);
    ApplyFileTypes();
}

void ListFilter::VCheck_Click() {
    const ClassBoxes boxes = Boxes();
    m.state.VideoListCheck = boxes.videos;
    if (HasNoClass(boxes)) {
        m.controls.VCheck->setChecked(true);
        return;
    }
    m.state.FileTypes = TypesFromVideos(m.state, boxes);
    bool enabled = boxes.pictures;
    if (!boxes.pictures || !m.state.PictureTypes.empty()) EnableSlideCommands(enabled);
    ApplyFileTypes();
}

void ListFilter::WCheck_Click() {
    const ClassBoxes boxes = Boxes();
    m.state.WebListCheck = boxes.web;
    m.state.FileTypes = TypesFromWeb(m.state, boxes);
    ApplyFileTypes();
}

void ListFilter::FCheck_Click() {
    ProgramState& s = m.state;
    s.FileTypes = TypesAfterTick(Boxes().fits, s.FileTypes, s.FitsClassTypes(), m_fitsSaved);
    ApplyFileTypes();
}

void ListFilter::CCheck_Click() {
    ProgramState& s = m.state;
    s.FileTypes = TypesAfterTick(Boxes().raw, s.FileTypes, s.RawTypes, m_rawSaved);
    ApplyFileTypes();
}

void ListFilter::TCheck_Click() {
    ProgramState& s = m.state;
    s.FileTypes = TypesAfterTick(Boxes().text, s.FileTypes, s.TextTypes, m_textSaved);
    ApplyFileTypes();
}

void ListFilter::ListClassOf(const std::string& path) {
    const ProgramState& s = m.state;
    const std::string name = LastPart(path);
    if (s.FilterActive || NamePatterns(s.FileTypes).Matches(name) || !m.files.Exists(path)) return;
    for (const FileClass each : kFileClasses) {
        const std::string types = TypesOf(s, each);
        QCheckBox* box = BoxOf(each);
        if (types.empty() || box->isChecked() || !NamePatterns(types).Matches(name)) continue;
        box->setChecked(true);
        return;
    }
}

void ListFilter::ApplyFileTypes() {
    ProgramState& s = m.state;
    FileListBox& list = *m.controls.FileListBox;
    const std::string current =
        list.CurrentRow() >= 0 ? list.Text(list.CurrentRow()) : std::string();
    if (StartsWith(s.FileTypes, ";")) s.FileTypes.erase(0, 1);
    list.SetPattern(s.FileTypes);
    s.FileIndex = std::max(0, list.RowOf(current));
    if (list.Count() > 0) {
        m.navigation.SelectRow(s.FileIndex);
    } else {
        m.navigation.Update_Num_Files(0);
        m_hint();
    }
}

void ListFilter::EnableSlideCommands(bool& enabled) {
    if (!m.state.ImageLoaded) enabled = false;
    EnableSlideButtons(m.controls, enabled);
    for (QPushButton* button : {m.controls.ViewButton, m.controls.OneToOneButton})
        SetEnabled(button, enabled);
}

void ListFilter::SetFileTypesButton_Click() {
    if (!m_fileTypes) m_fileTypes = std::make_unique<frmFileTypes>(m);
    m_fileTypes->ShowTypes(Boxes());
}

void ListFilter::FilesFilterButton2_Click() {
    if (m.state.FilterActive) {
        m_filter->close();
        return;
    }
    if (!m_filter) m_filter = std::make_unique<frmFilter>(m);
    m_filter->ShowFilter();
    TellHidden();
}

void ListFilter::SetFilterShown(bool shown) {
    if (m_filter && m.state.FilterActive) m_filter->setVisible(shown);
}

} // namespace tarn

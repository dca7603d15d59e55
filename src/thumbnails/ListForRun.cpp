#include "thumbnails/ListForRun.h"

#include "widgets/FileListBox.h"

#include <QCheckBox>
#include <QSignalBlocker>

#include <algorithm>

namespace tarn {

namespace {

void Tick(QCheckBox* box, bool ticked) {
    const QSignalBlocker silent(box);
    box->setChecked(ticked);
}

} // namespace

ListForRun::ListForRun(Context& context)
    : m(context), m_changed(!m.state.FilterIsCustom), m_boxes{m.controls.PCheck->isChecked(),
                                                              m.controls.VCheck->isChecked(),
                                                              m.controls.WCheck->isChecked(),
                                                              m.controls.FCheck->isChecked(),
                                                              m.controls.CCheck->isChecked()},
      m_types(m.state.FileTypes), m_pattern(m.controls.FileListBox->Pattern()),
      m_row(m.controls.FileListBox->CurrentRow()),
      m_name(m_row >= 0 ? m.controls.FileListBox->Text(m_row) : std::string()) {
    if (!m_changed) return;
    Set({true, false, false, false, false});
    m.state.FileTypes = m.state.PictureTypes;
    m.controls.FileListBox->SetPattern(m.state.PictureTypes);
}

void ListForRun::Set(const Boxes& boxes) {
    const MainControls& c = m.controls;
    Tick(c.PCheck, boxes.pictures);
    Tick(c.VCheck, boxes.videos);
    Tick(c.WCheck, boxes.web);
    Tick(c.FCheck, boxes.fits);
    Tick(c.CCheck, boxes.raw);
    m.state.PictureListCheck = boxes.pictures;
    m.state.VideoListCheck = boxes.videos;
    m.state.WebListCheck = boxes.web;
}

void ListForRun::PutBack() {
    if (!m_changed) return;
    m_changed = false;
    Set(m_boxes);
    m.state.FileTypes = m_types;
    m.controls.FileListBox->SetPattern(m_pattern);
}

void ListForRun::SelectFormerRow() {
    const FileListBox& list = *m.controls.FileListBox;
    const int named = list.RowOf(m_name);
    m.navigation.ClearMultiselect();
    // No step of the user's: the views stay as they are.
    if (!m_name.empty())
        m.navigation.SelectRow(named >= 0 ? named
                                          : std::clamp(m_row, 0, std::max(0, list.Count() - 1)),
                               {.records = false, .turns = {}});
    m.navigation.Update_Num_Files(0);
}

} // namespace tarn

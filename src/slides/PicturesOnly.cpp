#include "slides/PicturesOnly.h"

#include "common/text.h"
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

constexpr char kBetween = ';';

// The list of patterns less those.
std::string Without(const std::string& patterns, const std::vector<std::string>& less) {
    std::string rest;
    for (const std::string& pattern : Split(patterns, kBetween))
        if (!pattern.empty() && std::find(less.begin(), less.end(), pattern) == less.end())
            rest += (rest.empty() ? "" : ";") + pattern;
    return rest;
}

} // namespace

PicturesOnly::PicturesOnly(Context& context, SlideSize area)
    : m(context), m_videos(m.controls.VCheck->isChecked()), m_web(m.controls.WCheck->isChecked()),
      m_pictures(m.controls.PCheck->isChecked()), m_types(m.state.FileTypes),
      m_pattern(m.controls.FileListBox->Pattern()), m_previewWidth(m.state.PreviewWidth),
      m_previewHeight(m.state.PreviewHeight) {
    ProgramState& s = m.state;
    s.PreviewWidth = std::max(s.PreviewWidth, area.width);
    s.PreviewHeight = std::max(s.PreviewHeight, area.height);
    // A filter that is open owns the list; what it lets through is stepped over.
    m_unticked = !s.FilterActive && (m_videos || m_web);
    if (!m_unticked) return;
    const std::string pictures = Without(m_types, Split(s.VideoTypes + ";" + s.WebTypes, kBetween));
    m_unticked = !pictures.empty(); // else no row of the list is a picture
    if (!m_unticked) return;
    Tick(m.controls.VCheck, false);
    Tick(m.controls.WCheck, false);
    s.VideoListCheck = s.WebListCheck = 0;
    s.FileTypes = pictures;
    m.controls.FileListBox->SetPattern(pictures);
}

void PicturesOnly::PutBack() {
    if (m_putBack) return;
    m_putBack = true;
    ProgramState& s = m.state;
    s.PreviewWidth = m_previewWidth;
    s.PreviewHeight = m_previewHeight;
    if (!m_unticked) return;
    Tick(m.controls.PCheck, m_pictures);
    Tick(m.controls.VCheck, m_videos);
    Tick(m.controls.WCheck, m_web);
    s.PictureListCheck = m_pictures;
    s.VideoListCheck = m_videos;
    s.WebListCheck = m_web;
    s.FileTypes = m_types;
    m.controls.FileListBox->SetPattern(m_pattern);
}

} // namespace tarn

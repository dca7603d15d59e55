#include "panel/PictureInfoRoom.h"

#include "desk/controls/DateEntries.h"
#include "panel/frmClock.h"
#include "panel/frmDate.h"
#include "pictureinfo/CameraDataText.h"
#include "platform/QtText.h"

namespace tarn {

PictureInfoRoom::PictureInfoRoom(Context& context) : m(context) {}

PictureInfoRoom::~PictureInfoRoom() = default;

void PictureInfoRoom::ConnectControls() {
    const MainControls& c = m.controls;
    for (QAction* entry : {c.SetFileDatesButton, c.PopupSetFileDatesButton})
        Connect(entry, [this] {
            m.state.DateWasAskedFor(m.state.Filename);
            m.shell.Tell(SetFileDatesButton_Click());
        });
    Connect(c.SyncDatesButton, [this] { SyncDatesButton_Click(); });
    Connect(c.SetClockButton, [this] { SetClockButton_Click(); });
    Connect(c.FixPictureDateButton, [this] { FixPictureDateButton_Click(); });
}

// Closing it needs no further step: each Set has already brought the file's date along.
void PictureInfoRoom::FixPictureDateButton_Click() {
    if (m.state.NoExif) return;
    if (!m_date) m_date = std::make_unique<frmDate>(m, [this] { return SetFileDates(true); });
    m_date->ShowCurrent();
}

void PictureInfoRoom::SetClockButton_Click() {
    if (m.state.BatchRuns || m.state.SlideViewing) return;
    if (!m_clock) m_clock = std::make_unique<frmClock>(m);
    m.shell.Tell(m_clock->ShowCurrent());
}

void PictureInfoRoom::ReadPictureInfo(const PictureFacts& facts) {
    m_reader.ReadPictureInfo(m.state, PictureFile(facts.look, facts.front));
    AddOwnFacts(m.state, facts.sky.cameraDate, facts.sky.lines);
    const MainControls& c = m.controls;
    m.state.HistoryListed = false;
    m.shell.ShowFileTexts();
    m.shell.ShowMessage(m.state.DatesDiffer ? m.state.FileDate : std::string());
    EnableDateEntries(c, !m.state.NoExif);
}

} // namespace tarn

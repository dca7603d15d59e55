// Brings what the reader finds into the window: the camera data panel, the small texts, and the
// commands that need camera data: file dates set to picture dates, and the editor of picture dates.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "pictureinfo/PictureInfoReader.h"

#include <memory>

namespace tarn {

class frmClock;
class frmDate;

class PictureInfoRoom : public InfoCommands, public Room {
public:
    explicit PictureInfoRoom(Context& context);
    ~PictureInfoRoom() override;

    void ConnectControls() override;

    void ReadPictureInfo(const PictureFacts& facts) override;

    // Filename's own times become its camera date.
    Outcome SetFileDatesButton_Click() override { return SetFileDates(false); }

    // The same; `dateChanged`: after a change of the camera date itself, which is told already.
    Outcome SetFileDates(bool dateChanged);

    // The same for every file from the current row to the last, after a question.
    void SyncDatesButton_Click();

    void FixPictureDateButton_Click();
    void SetClockButton_Click();

private:
    bool AskForRange(int first, int last);
    int SyncRange(int first, int last, std::vector<FileFault>& faults);

    Context& m;
    PictureInfoReader m_reader;
    std::unique_ptr<frmDate> m_date; // this and the next made when they are first asked for
    std::unique_ptr<frmClock> m_clock;
};

} // namespace tarn

// Brings what the reader finds into the window: the camera data panel, the small texts, and the
// commands that need camera data.
#pragma once

#include "pictureinfo/PictureInfoReader.h"
#include "shell/Context.h"

namespace tarn {

class PictureInfoRoom : public InfoCommands {
public:
    explicit PictureInfoRoom(Context& context) : m(context) {}

    void ReadPictureInfo() override;
    void SetFileDatesButton_Click() override {}

private:
    Context& m;
    PictureInfoReader m_reader;
};

} // namespace tarn

// The navigation room with real list, tree and controls; the other rooms write down their calls.
#pragma once

#include "support/RoomDesk.h"

#include "navigation/NavigationRoom.h"

#include <string>

namespace tarn::testing {

struct NavDesk : RoomDesk {
    RecordingDisplay display{calls};
    RecordingInfo info{calls};
    NavigationRoom room{context};
    Context context = Join(room, display, info);

    NavDesk() {
        room.ConnectControls();
        state.PictureTypes = "*.jpg;*.txt";
        state.VideoTypes = "*.avi;*.log";
        state.WebTypes = "*.html";
        controls.FileListBox->SetPattern("*.*");
    }

    // A folder of `count` pictures p00.jpg ... shown on its first row.
    void FillWithPictures(int count) {
        for (int i = 0; i < count; ++i) folder.Write(PictureName(i), "x");
        Enter();
    }
    static std::string PictureName(int i) {
        return std::string(i < 10 ? "p0" : "p") + std::to_string(i) + ".jpg";
    }
    void Enter() {
        controls.FolderTreeview1->SetSelectedPath(folder.Path());
        Settle();
    }
    // The display takes the row over, as it does with every picture.
    void Settle() { calls.clear(); }

    int Row() const { return controls.FileListBox->CurrentRow(); }
};

} // namespace tarn::testing

// What the room makes of the player's answers; the player is scripted.
#include "support/RoomDesk.h"

#include "video/VideoRoom.h"

#include <QHBoxLayout>
#include <QLabel>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace tarn::testing {
namespace {

using Replies = std::map<std::string, Mci::Reply>; // by the beginning of the command

struct ScriptedMci : Mci {
    explicit ScriptedMci(Replies& script) : replies(script) {}
    Reply Send(const std::string& command) override {
        for (const auto& [begin, reply] : replies)
            if (command.starts_with(begin)) return reply;
        return {};
    }
    std::string ErrorText(int) override { return {}; }
    Replies& replies;
};

struct ScriptedVideo : RoomDesk {
    Replies replies{{"status VidClip length", {0, "30"}},
                    {"status VidClip position", {0, "4"}},
                    {"status VidClip record", {0, "25000"}},
                    {"Where", {0, "0 0 64 48"}}};
    RecordingNavigation navigation{calls};
    RecordingDisplay display{calls};
    RecordingInfo info{calls};
    Context context = Join(navigation, display, info);
    VideoRoom room{context, [this] { return std::make_unique<ScriptedMci>(replies); }};

    ScriptedVideo() {
        controls.VideoFrame = new QWidget(&window);
        new QHBoxLayout(controls.VideoFrame);
        controls.Picture2->resize(200, 100);
        room.ConnectControls();
        state.Filename = folder.Write("v.avi", "a clip");
    }
    bool Has(const std::string& call) const {
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }
};

TEST(VideoRoom, TellsWhatThePlayerAnswers) {
    ScriptedVideo d;
    d.room.ShowVideoFile();
    EXPECT_TRUE(d.Has("message Video frame 4"));
    EXPECT_TRUE(d.controls.CropLabel->isHidden());
    d.replies["status VidClip position"] = {0, "30"};
    d.room.VideoButton_Click(5);
    d.calls.clear();
    d.room.VideoTimer_Timer();
    EXPECT_EQ(d.calls.back(), "message Video frame 30 end");
    d.replies["Where"] = {0, "0 0 200 48"};
    d.room.ShowVideoFile();
    EXPECT_FALSE(d.controls.CropLabel->isHidden());
    d.replies["status VidClip record"] = {9, {}};
    d.room.ShowVideoFile();
    EXPECT_TRUE(d.Has("error MCI error 9, video Codec may not be installed."));
    d.replies["Open"] = {Mci::kFileNotFound, {}};
    d.room.ShowVideoFile();
    EXPECT_TRUE(d.Has("error File not Found - v.avi"));
}

} // namespace
} // namespace tarn::testing

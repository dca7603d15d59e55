// What the panel says of clips, logs and pages, and the player's replies taken apart. No toolkit.
#pragma once

#include <array>
#include <string>

namespace tarn {

// The clip in the window, as the player tells of it. Frames count from 0.
struct ClipNumbers {
    int lastFrame = 0;
    int width = 0; // pixels
    int height = 0;
    float frameRate = 0; // frames a second
};

using VideoLines = std::array<std::string, 13>; // of the panel; empty ones are left out

// The text up to the first blank, with it, which is taken off the text. A mark of ".,?!" at the end
// of a longer word stays in front of the rest.
std::string GetFirstWord(std::string& text);

// Width and height of "0 0 WIDTH HEIGHT"; 0 for what is no number.
void TakeSize(std::string reply, ClipNumbers& clip);

// "07/01/2008 5:27:03 PM  Tuesday" of a file's last change; empty when it is not there.
std::string DateAndWeekday(const std::string& path);

// A log, page or text: its name and date.
VideoLines TextLines(const std::string& path);

// A clip that is played outside.
VideoLines SummaryLines(const std::string& path, const std::string& camera, long long bytes);

// A clip in the window.
VideoLines ClipLines(const std::string& path, const ClipNumbers& clip, long long bytes);

// "65 seconds" is "1.1 minutes".
std::string PlayingTime(const ClipNumbers& clip);

} // namespace tarn

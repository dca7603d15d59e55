// What the keys of a show do, as tables. Key codes are those of common/keys.h.
#pragma once

#include "common/keys.h"
#include "common/mark.h"

#include <optional>
#include <vector>

namespace tarn {

// Where a show goes from the picture that stands.
enum class SlideMove { Next, Previous, Again, First, Last, PageBack, PageOn };

enum class SlideAction {
    None,
    Move,       // amount: a SlideMove
    Rotate,     // amount: degrees, clockwise
    Mirror,     // amount: 0 left to right, 1 top to bottom
    Zoom,       // amount: steps closer, 0 for the whole picture
    Brightness, // amount: steps of the slider
    ResetBrightness,
    AdjustWindow,
    CameraSettings,
    Notes,
    Title,
    TextColor,
    TextFont,
    TextSize,
    Background,
    HistoryBack,
    HistoryForward,
    Copy,
    Convert,
    Delete,
    Keep,
    Reject,
    ClearMark,
    Stars, // amount: how many
    Frame, // amount: a FrameWay
    Help,
    Done,
};

// Where the frame goes from the picture that it stands round.
enum class FrameWay { Left, Up, Right, Down };

struct SlideEffect {
    SlideAction action = SlideAction::None;
    int amount = 0;
};

// The full-screen show; with the alternate layout the arrows change their parts.
SlideEffect FullEffectOf(int keycode, bool alternateArrows);

// Shows of two and four pictures.
SlideEffect ManyEffectOf(int keycode);

// The same tables as they are read, a line for each thing that keys do.
std::vector<keys::KeyLine> FullKeyLines(bool alternateArrows);
std::vector<keys::KeyLine> ManyKeyLines();

// What an effect makes of the picture's mark; none: it has nothing to do with it.
std::optional<MarkChange> MarkChangeOf(const SlideEffect& effect);

// Whether the key goes on while it is held down.
bool IsSlideStep(const SlideEffect& effect);

// Whether files that cannot be shown are passed over backwards after this key.
bool SkipsBack(int keycode);

} // namespace tarn

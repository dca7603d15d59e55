// The desk: what the whole program knows about itself, as plain values. A function that needs one
// subject takes that record alone.
#pragma once

#include "desk/state/BlinkState.h"
#include "desk/state/DisplayState.h"
#include "desk/state/FileOpsState.h"
#include "desk/state/GallerySettings.h"
#include "desk/state/HtmlSettings.h"
#include "desk/state/MarkState.h"
#include "desk/state/NightState.h"
#include "desk/state/NotesState.h"
#include "desk/state/PrintState.h"
#include "desk/state/SelectionState.h"
#include "desk/state/ShellState.h"
#include "desk/state/SlideState.h"
#include "desk/state/ThumbState.h"
#include "desk/state/VideoState.h"
#include "desk/state/WindowState.h"
#include "pictureinfo/PictureInfo.h"

namespace tarn {

struct ProgramState : PictureInfo,
                      SelectionState,
                      DisplayState,
                      NotesState,
                      MarkState,
                      NightState,
                      BlinkState,
                      SlideState,
                      FileOpsState,
                      ThumbState,
                      VideoState,
                      PrintState,
                      HtmlSettings,
                      GallerySettings,
                      WindowState,
                      ShellState {};

} // namespace tarn

// The desk: what the whole program knows about itself, as plain values. A function that needs one
// subject takes that record alone.
#pragma once

#include "pictureinfo/PictureInfo.h"
#include "shell/state/DisplayState.h"
#include "shell/state/FileOpsState.h"
#include "shell/state/GallerySettings.h"
#include "shell/state/HtmlSettings.h"
#include "shell/state/NotesState.h"
#include "shell/state/PrintState.h"
#include "shell/state/SelectionState.h"
#include "shell/state/ShellState.h"
#include "shell/state/SlideState.h"
#include "shell/state/ThumbState.h"
#include "shell/state/VideoState.h"
#include "shell/state/WindowState.h"

namespace tarn {

struct ProgramState : PictureInfo,
                      SelectionState,
                      DisplayState,
                      NotesState,
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

// What the module that reads first frames has: without the player and all that it brings.
#pragma once

#include "clips/ClipFrames.h"

#include <QImage>

#include <string>

namespace tarn {

struct FramesModule {
    static constexpr char kModule[] = "frames";
    QImage (*first)(const std::string& path, int side); // as FirstFrame of ClipFrame.h
    bool (*each)(const std::string& path, const ClipSink& sink, std::string& error);
};

} // namespace tarn

// What the module that links the libraries of clips has.
#pragma once

#include "clips/ClipPlayer.h"

namespace tarn {

struct ClipsModule {
    static constexpr char kModule[] = "clips";
    std::unique_ptr<ClipPlayer> (*player)(const std::string& path, const ClipPlayer::Wait& wait,
                                          std::string& error);

    // Of the library that runs, by its name in MciLibraries.
    std::string (*version)(const std::string& library);
};

// What stands in the module.
std::unique_ptr<ClipPlayer> OpenWithMpv(const std::string& path, const ClipPlayer::Wait& wait,
                                        std::string& error);

} // namespace tarn

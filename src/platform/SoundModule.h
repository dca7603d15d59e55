// What the module that plays sounds has.
#pragma once

#include "platform/Sound.h"

namespace tarn {

struct SoundModule {
    static constexpr char kModule[] = "sound";
    std::unique_ptr<Sound> (*make)();
};

} // namespace tarn

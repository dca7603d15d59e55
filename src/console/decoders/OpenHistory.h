// The history that window and console share, with nobody to be asked: where it cannot be written
// this is told, and commands go on without it.
#pragma once

#include "history/History.h"
#include "platform/Files.h"

#include <cstdio>
#include <memory>

namespace tarn {

struct OpenHistory {
    std::unique_ptr<Files> files = MakeFiles();
    History history{*files};

    OpenHistory() {
        history.onUnwritable = [](const std::string& text) {
            const std::string said = text.substr(0, text.rfind(" Go on without?"));
            std::fprintf(stderr, "tarn: %s\n", said.c_str());
            return true;
        };
    }
};

} // namespace tarn

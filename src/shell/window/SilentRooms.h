// Answers for rooms that have not moved in: what is rung there has no effect.
#pragma once

#include "shell/Context.h"

namespace tarn {

class SilentNotes : public NotesCommands {
public:
    void CheckForNotes() override {}
};

class SilentVideo : public VideoCommands {
public:
    explicit SilentVideo(Context& context) : m(context) {}
    void ShowVideoFile() override { Say("Videos"); }
    void CloseVideoClip() override {}
    void Load_web() override { Say("Web and text files"); }

private:
    void Say(const char* what) {
        m.shell.ShowMessage(std::string(what) + " are not shown in this version");
    }
    Context& m;
};

} // namespace tarn

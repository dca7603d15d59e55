// Answers for rooms that have not moved in: what is rung there has no effect.
#pragma once

#include "common/paths.h"
#include "shell/Context.h"

namespace tarn {

class SilentVideo : public VideoCommands {
public:
    explicit SilentVideo(Context& context) : m(context) {}
    void ShowVideoFile() override { Say("Videos"); }
    void CloseVideoClip() override {}
    void Load_web() override { Say("Web and text files"); }

private:
    // Every file has its note, also one that is not shown.
    void Say(const char* what) {
        m.state.FileNameOnly = LastPart(m.state.Filename);
        m.shell.ShowMessage(std::string(what) + " are not shown in this version");
        m.notes.CheckForNotes();
    }
    Context& m;
};

} // namespace tarn

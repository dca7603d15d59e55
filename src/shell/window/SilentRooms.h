// Answers for rooms that have not moved in: what is rung there has no effect.
#pragma once

#include "common/paths.h"
#include "shell/Context.h"

namespace tarn {

class SilentVideo : public VideoCommands {
public:
    explicit SilentVideo(Context& context) : m(context) {}
    void ShowVideoFile() override { Say(m.controls.Picture2, "Videos and logs"); }
    void CloseVideoClip() override {}
    void Load_web() override { Say(m.controls.Picture1, "Web and text files"); }

private:
    // Nothing of the file before may stand under the name of this one.
    void Say(PictureBox* pane, const std::string& what);

    Context& m;
};

} // namespace tarn

// Plays the program's short sounds by name. Silent where there is no sound device or no such file.
#pragma once

#include <memory>
#include <string>

namespace tarn {

class Sound {
public:
    virtual ~Sound() = default;
    virtual void Play(const std::string& name) = 0; // "picture.wav"; returns at once

    // Returns when the sound has ended, after half a second at most; keys and clicks that come in
    // the meantime wait.
    virtual void PlayAndWait(const std::string& name) = 0;
};

std::unique_ptr<Sound> MakeSound();

} // namespace tarn

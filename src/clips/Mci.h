// The player of clips, driven by command strings. One clip at a time, under the alias VidClip:
//
//   Open "PATH" alias VidClip          code 275 when there is no such file
//   status VidClip length              frames, exact
//   Window VidClip handle N            the pane; frames go to onFrame
//   Where VidClip destination          "0 0 WIDTH HEIGHT", the clip's own size in pixels
//   Put VidClip destination at 0 0 W H frames are made at this size from here on
//   status VidClip record frame rate   frames in 1000 seconds
//   Play VidClip [to N]                with N: from the start to frame N, where it stops
//   status VidClip position            the frame shown, from 0; the count of frames at the end
//   seek VidClip to start|end|N        exactly; the frame is shown when it returns
//   setaudio VidClip on|off            sound is off at first
//   pause VidClip, stop VidClip, close VidClip
#pragma once

#include <QImage>

#include <functional>
#include <memory>
#include <string>

namespace tarn {

class ClipPlayer;

inline constexpr int kFirstShown = 4; // frame of a clip that is opened

class Mci {
public:
    static constexpr int kFileNotFound = 275;

    struct Reply {
        int code = 0; // 0: done
        std::string text;
    };

    virtual ~Mci() = default;
    virtual Reply Send(const std::string& command) = 0;

    // What a code means; empty when it is not known.
    virtual std::string ErrorText(int code) = 0;

    // Gets each frame that is to be seen, on the thread that sends.
    std::function<void(const QImage&)> onFrame;

    // Asked every few milliseconds while a command waits for the player; false breaks it off.
    std::function<bool()> onWait;
};

std::unique_ptr<Mci> MakeMci();

// With a player of the caller's: null and an error text when the file cannot be played.
std::unique_ptr<Mci>
MakeMci(std::function<std::unique_ptr<ClipPlayer>(
            const std::string& path, const std::function<bool()>& wait, std::string& error)>
            open);

} // namespace tarn

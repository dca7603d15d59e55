// What the command strings ask of a player. Frames count from 0; all on the thread that asks.
#pragma once

#include "clips/FrameTimes.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>
#include <string>

namespace tarn {

class ClipPlayer {
public:
    // Asked every few milliseconds while the player is waited for; false breaks the wait off.
    using Wait = std::function<bool()>;

    virtual ~ClipPlayer() = default;

    const ClipFacts& Facts() const { return m_clip; }
    int Count() const { return m_clip.frames; }

    // Shows exactly this frame and stands on it. An error text, empty when it is on show.
    virtual std::string ShowFrame(int frame) = 0;

    // From where it stands, in the time of its frames.
    virtual void Play() = 0;
    virtual void Pause() = 0;

    virtual void SetSound(bool) {} // off at first

    // The frame that play has come to; the count of frames at its end.
    virtual int PlayedTo() = 0;

    QSize size; // of the frames that are made, pixels
    std::function<void(const QImage&)> onFrame;

protected:
    ClipFacts m_clip;
};

// Null and an error text when the file cannot be played.
using OpenPlayer = std::function<std::unique_ptr<ClipPlayer>(
    const std::string& path, const ClipPlayer::Wait& wait, std::string& error)>;

// By the file's first bytes: SER, or what the libraries know.
std::unique_ptr<ClipPlayer> OpenClip(const std::string& path, const ClipPlayer::Wait& wait,
                                     std::string& error);
std::unique_ptr<ClipPlayer> OpenSer(const std::string& path, const ClipPlayer::Wait& wait,
                                    std::string& error);

} // namespace tarn

// The panel "Sky" beside the camera data: what stood in the sky when the picture shown was taken.
#pragma once

#include "desk/Context.h"
#include "sky/night/LateSky.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace tarn {

class SkyPanel {
public:
    explicit SkyPanel(Context& context);
    ~SkyPanel();

    void ShowSettings();
    void Switched(); // by its menu entry
    void Follow();   // another picture is shown, or the sites have changed
    void BreakOff();

private:
    void Ask();
    void TakeAnswer();

    Context& m;
    QObject m_here; // what comes from the thread is done in its thread
    QTimer m_rest;  // of stepping, before a header is read
    std::unique_ptr<LateSky> m_sky;
};

} // namespace tarn

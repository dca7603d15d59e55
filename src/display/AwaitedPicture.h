// A picture that is not at hand yet: while workers read it the window goes on. Steps pass it over;
// whatever else the user does is meant for it, and waits for it.
#pragma once

#include "desk/commands/PictureRequest.h"
#include "desk/controls/MainControls.h"

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>

namespace tarn {

class AwaitedPicture : public QObject {
public:
    explicit AwaitedPicture(MainControls& controls);
    ~AwaitedPicture() override;

    // Interface thread, as all but what NewCall gives.
    std::function<void(const PictureRequest&)> onReady;  // it has been read
    std::function<void(const PictureRequest&)> onWanted; // it is to be shown now, however long
    std::function<void(bool reads)> onLong; // so long that a word is due, until it is no more

    // What a worker calls once the picture to be begun next has been read.
    std::function<void()> NewCall();
    void Begin(const PictureRequest& request);
    void End();
    bool IsAwaited() const { return m_request.has_value(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Ready(std::uint64_t number);
    bool Steps(const QObject* watched, const QEvent& event) const;
    std::optional<PictureRequest> Taken();

    MainControls& m_controls;
    std::optional<PictureRequest> m_request;
    std::uint64_t m_number = 0; // of the picture, so that a late call is known
    QTimer m_long;
    bool m_told = false;
};

} // namespace tarn

// The commands of the menu "Sky" that look at a series of frames as one: blink.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"

#include <QObject>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class frmBlink;

class BlinkRoom : public Room {
public:
    explicit BlinkRoom(Context& context);
    ~BlinkRoom() override;

    void ConnectControls() override;
    void BreakOff() override;

    void BlinkButton_Click();

private:
    std::vector<std::string> Chosen() const;

    Context& m;
    QObject m_here;
    std::unique_ptr<frmBlink> m_blink; // when it is first asked for
};

} // namespace tarn

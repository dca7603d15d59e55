// The commands of the menu "Sky" that look at a series of frames as one: blink, what
// moves, their sum.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"

#include <QObject>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class frmBlink;
class frmMovers;
class frmSum;

class BlinkRoom : public Room {
public:
    explicit BlinkRoom(Context& context);
    ~BlinkRoom() override;

    void ConnectControls() override;
    void BreakOff() override;

    void BlinkButton_Click();
    void MoversButton_Click();
    void SumButton_Click();

private:
    struct Choice {
        std::vector<std::string> paths;
        bool isSelected = false; // by the user, one by one
    };
    Choice Chosen() const;
    bool MayBegin() const;
    Decision DecisionOf(const std::string& path) const;
    frmBlink& Blink();

    Context& m;
    QObject m_here;
    std::unique_ptr<frmBlink> m_blink; // these when they are first asked for
    std::unique_ptr<frmMovers> m_movers;
    std::unique_ptr<frmSum> m_sum;
};

} // namespace tarn

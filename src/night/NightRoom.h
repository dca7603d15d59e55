// The commands of the menu "Sky": the night's frames and their report, what stood in the sky,
// circles on stars, corners, and the sharpest of a burst.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "night/NightFolder.h"
#include "night/SkyPanel.h"
#include "sky/night/LateStars.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tarn {

class frmCorners;
class frmNight;
class frmNightReport;
class frmSites;

class NightRoom : public Room, public NightCommands {
public:
    explicit NightRoom(Context& context);
    ~NightRoom() override;

    void ConnectControls() override;
    void ShowSettings() override;
    void BreakOff() override;

    void WantFrames(const void* by, bool wanted) override;
    const JudgedFrame* FrameOf(const std::string& path) override;
    bool AllMeasured() override;
    std::string MeasuringSaid() override;
    void FollowFrames(std::function<void()> follower) override;

    void NightButton_Click();
    void NightReportButton_Click();
    void SitesButton_Click();
    void StarCirclesButton_Click();
    void CornersButton_Click();
    Outcome BurstButton_Click();

private:
    NightFolder& Folder();
    void ShowFrames();
    void FramesChanged();
    void TakeMarks();
    void FollowCurrent();
    void AskForStars();
    void TakeStars();
    bool IsNightUp() const;
    bool AreCornersUp() const;
    bool WantsStars() const;
    bool MeasureAll();

    Context& m;
    QObject m_here;                        // what comes from threads is done in its thread
    QTimer m_rest;                         // of stepping, before stars are listed
    std::unique_ptr<NightFolder> m_folder; // these when they are first asked for
    std::unique_ptr<LateStars> m_stars;
    std::set<const void*> m_wanting; // who does not wait is not among them
    std::vector<std::function<void()>> m_followers;
    std::unique_ptr<frmNight> m_night;
    std::unique_ptr<frmCorners> m_corners;
    std::unique_ptr<frmNightReport> m_report;
    std::unique_ptr<frmSites> m_sites;
    SkyPanel m_sky;
};

} // namespace tarn

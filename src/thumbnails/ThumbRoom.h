// The thumbnails of the folder shown: made, brought up to date, deleted.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "thumbnails/ListForRun.h"
#include "thumbnails/ThumbGrid.h"
#include "thumbnails/ThumbRun.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace tarn {

class frmThumbFolder;

class ThumbRoom : public ThumbnailCommands, public Room {
public:
    explicit ThumbRoom(Context& context);
    ~ThumbRoom() override;

    void ConnectControls() override;
    void ShowSettings() override;
    void Started() override { m_grid.ShowSettings(); }
    void BreakOff() override;

    Outcome GenerateThumbnails(bool updateOnly, const ThumbnailTold& told,
                               QPushButton* ownCancel) override;
    std::string ThumbnailNameOf(const std::string& picture) override;
    std::string ThumbnailFolderPath() override;

    void GenerateThumbButton_Click();
    void GenerateThumbCButton_Click();
    void ThumbFolderButton_Click();
    void ThumbFolderDeleteButton_Click();

    frmThumbFolder* Folder() const { return m_window.get(); } // null before its first opening

private:
    ThumbRequest Request() const;
    Outcome MayBegin();
    std::string MakeReady(const std::string& folder, std::string& remain, Changes& changes);
    std::vector<ThumbJob> Jobs(const ThumbRequest& request) const;
    Outcome WholeRun(const ThumbnailTold& told, QPushButton* ownCancel);
    bool Make(ThumbRun& run, const ThumbnailTold& told, QPushButton* ownCancel);
    void ShowPicture(int row, QPushButton* ownCancel);
    bool SetSubFolder(const std::string& name);
    void ShowSubFolder();

    Context& m;
    ThumbGrid m_grid;
    std::unique_ptr<frmThumbFolder> m_window;
    std::optional<ListForRun> m_list; // while a run lasts
    std::chrono::steady_clock::time_point m_nextShow;
};

} // namespace tarn

// Files that are no pictures: clips in the window, summaries of clips that are played outside,
// logs, pages and texts.
#pragma once

#include "clips/Mci.h"
#include "common/keys.h"
#include "desk/Context.h"
#include "desk/Room.h"
#include "desk/batch/BatchRun.h"
#include "platform/LogFile.h"
#include "video/VideoText.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

class QSlider;

namespace tarn {

class frmBestFrames;

class VideoRoom : public QObject, public VideoCommands, public Room {
public:
    // The player is made with the first clip.
    VideoRoom(Context& context, std::function<std::unique_ptr<Mci>()> makeMci);
    ~VideoRoom() override;

    static std::vector<keys::KeyLine> KeyLines(); // of the frames, as they are read

    void ConnectControls() override;
    void BreakOff() override;

    using VideoCommands::Load_web;
    using VideoCommands::ShowVideoFile;
    void ShowVideoFile(const PictureRequest& request) override;
    void CloseVideoClip() override;
    void Load_web(const PictureRequest& request) override;

    void VideoButton_Click(int index);
    void VideoTimer_Timer();
    void SaveFrame();
    void CopyFrame();
    void BestFramesButton_Click();

    bool ClipIsOpen() const { return m_open; }
    int Position() const { return m_position; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Mci& Player();
    Mci::Reply Send(const std::string& command);
    bool WaitsOn();
    bool SendChecked(const std::string& command, std::string* reply = nullptr);
    bool OpenVideoClip(const std::string& path);
    bool OpenPlayer(const std::string& path);
    std::optional<ClipNumbers> AskForNumbers();
    void ShowNumbers(const std::string& path);
    void PlayClip(const std::string& alias);
    void ErrorStep(int code);
    void BeginFile();
    void TellShown();
    void ShowSummary(const std::string& camera, bool placeholder);
    void ShowClip();
    void ShowText(FileKind kind);
    void ShowPage();
    void ShowPicture2(bool transport);
    void Seek(const std::string& target);
    void Play();
    bool ReadPosition(); // false: the player did not tell
    void ShowPosition();
    void Halt();
    void SetPlayCaption(bool plays);
    void ShiftShown(QPoint by);
    long long FileBytes() const;

    Context& m;
    std::function<std::unique_ptr<Mci>()> m_makeMci;
    std::unique_ptr<Mci> m_mci;
    QElapsedTimer m_sends;            // since the command under way
    std::unique_ptr<BatchRun> m_wait; // for a slow answer
    bool m_closes = false;            // as soon as that has come
    QTimer m_timer;                   // VideoTimer
    QSlider* m_slider = nullptr;
    ClipNumbers m_clip;
    int m_position = 0;     // the frame shown; the count of frames at the end of play
    bool m_open = false;    // there is a clip, shown
    bool m_running = false; // the timer follows the position
    bool m_sound = false;   // of the clips of this run
    std::unique_ptr<frmBestFrames> m_best;
    LogFile m_text;
    VideoLines m_lines;
};

} // namespace tarn

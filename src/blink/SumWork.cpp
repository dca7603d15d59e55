// The work of the window "Sum", on a thread of its own, and the file that it becomes.
#include "blink/BlinkWords.h"
#include "blink/frmSum.h"
#include "common/paths.h"
#include "history/Changes.h"
#include "imaging/fits/KeptCards.h"
#include "imaging/fits/SkyFile.h"
#include "platform/Files.h"
#include "platform/WriteInPlace.h"
#include "sky/night/MeasuresFile.h"
#include "sky/planes/FramesOfFiles.h"
#include "sky/series/SumCards.h"
#include "sky/series/SumFile.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace tarn {

// The mean of several filters is a picture of none; who selects them wants it all the same.
bool frmSum::LeaveOtherFilters(const Finished& finished, AwaitedFrames::Known& known) const {
    if (m_isSelected) return false;
    const std::string& filter = known.frames[*finished.plan.reference].filter;
    bool any = false;
    for (const SeriesFrame& frame : finished.plan.frames) {
        const std::string& other = known.frames[frame.number].filter;
        if (other == filter) continue;
        known.left[frame.number] = "another filter: " + (other.empty() ? "none" : other);
        any = true;
    }
    return any;
}

LateWork::Answer frmSum::Work(AwaitedFrames::Known known, StackOrder order,
                              std::shared_ptr<Growing> growing) {
    constexpr int kSeen = 1400; // samples along a side, of what is shown meanwhile
    auto finished = std::make_shared<Finished>();
    for (const JudgedFrame& frame : known.frames) {
        const std::size_t i = finished->paths.size();
        finished->paths.push_back(frame.path);
        if (known.left[i].empty() && IsSumOfFrames(frame.path))
            known.left[i] = "itself a sum of frames";
    }
    finished->plan = PlanSeries(known.measures, known.left);
    if (finished->plan.reference && LeaveOtherFilters(*finished, known))
        finished->plan = PlanSeries(known.measures, known.left);
    const auto end = [this, finished] { End(finished); };
    if (!finished->plan.reference) return end;
    const std::size_t reference = *finished->plan.reference;
    std::string error;
    const auto header = ReadSkyHeader(finished->paths[reference], error);
    finished->bottomUp = header && !header->topDown;
    const FrameMeasures& size = known.measures[reference];
    {
        const std::lock_guard lock(growing->mutex);
        growing->total = finished->plan.frames.size();
        growing->shrink = std::max(1, std::max(size.width, size.height) / kSeen);
        growing->bottomUp = finished->bottomUp;
        order.watch.shrink = growing->shrink;
    }
    order.scratch = CacheFolder();
    order.watch.told = [this, growing](std::size_t done, const PartialSum& sum) {
        auto copy = std::make_shared<const PartialSum>(sum);
        {
            const std::lock_guard lock(growing->mutex);
            growing->done = done;
            growing->sum = std::move(copy);
        }
        QMetaObject::invokeMethod(
            this, [this] { Grown(); }, Qt::QueuedConnection);
    };
    finished->pixels = std::make_shared<SumPixels>(order.scratch);
    const auto read = [&](std::size_t number, std::string& fault) {
        return ReadFrameColours(finished->paths[number], fault);
    };
    finished->result = StackSeries(finished->plan, read, order, *finished->pixels);
    return end;
}

void frmSum::SaveButton_Click() {
    if (!m_finished || m_work->IsBusy()) return;
    const std::string& reference = m_finished->paths[*m_finished->plan.reference];
    const std::string target = m.dialogs.SaveFile(
        "Save the Sum", JoinPath(FolderOf(reference), "sum.fits"), "FITS files (*.fits)");
    if (target.empty() || !m_finished) return;
    const std::string stands = m.files.FindAnyCase(target).value_or(target);
    for (const std::string& path : m_finished->paths)
        if (m.files.IsSameFile(path, stands) && !IsSumOfFrames(path))
            return Say("Not saved: '" + LastPart(stands) + "' is itself one of the frames");
    if (stands != target && !m.files.Exists(target)) // nobody was asked about it
        return Say("Not saved: '" + LastPart(stands) + "' stands there");
    Say("Writing '" + LastPart(target) + "'");
    SetRunning(true);
    m_saves = target;
    m_work->Begin([this, target, finished = m_finished](std::atomic<bool>&) -> LateWork::Answer {
        auto file = std::make_shared<SumFile>(CacheFolder(), finished->plan.frames.size());
        if (finished->pixels->WriteInto(*file))
            file->Close(CardsOfSum(finished->paths, finished->plan, finished->result));
        const std::size_t count = CountOfSum(finished->result);
        return [this, file, target, count] { Save(file, target, count); };
    });
}

// Not in the middle of another command, nor under a show that goes by the list's rows.
void frmSum::Save(const std::shared_ptr<SumFile>& file, const std::string& target,
                  std::size_t count) {
    constexpr int kLater = 300; // milliseconds
    if (m_saves.empty()) return;
    if (m.state.BatchRuns || m.state.SlideViewing)
        return QTimer::singleShot(kLater, this, [=, this] { Save(file, target, count); });
    m_saves.clear();
    SetRunning(false);
    std::string error = file->Error();
    const std::string sum = "Sum of " + FramesText(count);
    if (error.empty()) {
        Changes changes(m.history, sum + " to '" + LastPart(target) + "'");
        WriteInPlace(changes, target, file->Bytes(), &error);
    }
    if (!error.empty()) {
        m.shell.ShowMessage("ERROR - '" + LastPart(target) + "' not saved: " + error);
        return Say("Not saved: " + error);
    }
    m.shell.ShowMessage(sum + " saved as '" + LastPart(target) + "'");
    Say("Saved as " + target);
    if (FolderOf(target) == m.controls.FileListBox->Path()) m.navigation.ReadAgain();
}

} // namespace tarn

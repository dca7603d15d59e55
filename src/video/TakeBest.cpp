// The chosen frames of the window "Best Frames" taken out.
#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "history/Changes.h"
#include "sky/clips/TakeFrames.h"
#include "video/frmBestFrames.h"
#include "widgets/Dialogs.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MeasureGraph.h"

#include <QCheckBox>
#include <QProgressBar>
#include <QPushButton>

namespace tarn {

namespace {

constexpr const char* kTitle = "Take frames out";

std::string CountedFrames(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

// All of it goes back; what cannot is told, beside why the command ended.
Outcome NothingTaken(const std::string& said, Changes& changes, std::vector<FileFault> faults) {
    std::string why;
    changes.TakeBack(&why);
    const std::vector<Step> stays = changes.Done();
    for (const Step& step : stays) faults.push_back({step.from, why});
    return {false, stays.empty() ? said : "Not all could be taken back", {}, std::move(faults)};
}

} // namespace

TakeOrder frmBestFrames::OrderFor(const std::string& folder) const {
    TakeOrder order;
    order.clip = m_path;
    order.folder = folder;
    order.frames = m.state.BestByTime ? InTime(m_chosen) : m_chosen;
    order.rated = m_whole.get();
    order.align = m.state.BestAligned;
    order.asClip = m.state.BestAsClip;
    return order;
}

// Whether the clip is still the one that was rated, and what stands at the targets may go.
bool frmBestFrames::MayTake(const TakeOrder& order, std::vector<std::string>& standing) {
    const auto look = m.files.Look(order.clip);
    if (!look || *look != order.rated->look) {
        m.dialogs.Message(Dialogs::Icon::Exclamation, kTitle,
                          "'" + LastPart(order.clip) +
                              "' has changed since its frames were rated. It is rated again.");
        Begin(m_path);
        return false;
    }
    for (const auto& stands : StandingAt(TargetsOf(order, m.files), m.files)) {
        if (!stands) continue;
        if (m.files.IsFolder(*stands) || m.files.IsSameFile(*stands, order.clip)) {
            m.dialogs.Message(Dialogs::Icon::Exclamation, kTitle,
                              "'" + LastPart(*stands) + "' stands there, and stays.");
            return false;
        }
        standing.push_back(*stands);
    }
    if (standing.empty()) return true;
    const std::string which = standing.size() == 1
                                  ? "'" + LastPart(standing.front()) + "' stands"
                                  : std::to_string(standing.size()) + " of these files stand";
    return m.dialogs.Choose(Dialogs::Icon::Exclamation, kTitle,
                            which + " there already. Replace? What stands there goes to the "
                                    "wastebasket.",
                            {"Replace", "Cancel"}) == 0;
}

Outcome frmBestFrames::Take(const TakeOrder& order, const std::vector<std::string>& standing) {
    const std::string what =
        CountedFrames(order.frames.size()) + " of '" + LastPart(order.clip) + "'";
    Changes changes(m.history, "Take out " + what);
    const BatchRun batch(m, m_cancel);
    for (const std::string& path : standing) {
        std::string error;
        if (changes.ThrowAway(path, &error)) continue;
        return NothingTaken("Nothing was taken out", changes, {{path, error}});
    }
    bool cancelled = false;
    m_progress->setFormat(QStringLiteral("%v of %m"));
    m_progress->setMaximum(int(order.frames.size()));
    m_progress->show();
    const std::vector<TakenFrame> taken = TakeFrames(order, changes, [&](std::size_t done) {
        m_progress->setValue(int(done));
        cancelled = !batch.Step("Taking out " + std::to_string(done) + " of " +
                                std::to_string(order.frames.size()));
        return !cancelled;
    });
    if (cancelled) return NothingTaken("Cancelled; nothing was taken out", changes, {});
    Outcome outcome = Outcome::Did(what + " taken out");
    std::size_t written = 0;
    for (const TakenFrame& file : taken) {
        if (file.error.empty())
            ++written;
        else
            outcome.faults.push_back({file.path, file.error});
    }
    if (!outcome.faults.empty())
        outcome.text = (order.asClip ? std::string("Nothing") : CountedFrames(written)) + " of '" +
                       LastPart(order.clip) + "' taken out, " +
                       std::to_string(outcome.faults.size()) + " failed";
    return outcome;
}

void frmBestFrames::TakeButton_Click() {
    if (m.state.BatchRuns || !m_whole || m_chosen.empty()) return;
    const std::string start = m.state.BestFolder.empty() || !m.files.IsFolder(m.state.BestFolder)
                                  ? FolderOf(m_path)
                                  : m.state.BestFolder;
    const std::string path = m_path;
    const std::string folder = m.dialogs.ChooseFolder(kTitle, start);
    // While it was asked for, another clip may have come to be shown.
    if (folder.empty() || m_path != path || !m_whole || m_chosen.empty()) return;
    m.state.BestFolder = folder;
    const auto rated = m_whole; // also while another clip is selected
    const TakeOrder order = OrderFor(folder);
    std::vector<std::string> standing;
    if (!MayTake(order, standing)) return;
    const Outcome outcome = Take(order, standing);
    ShowSummary();
    ShowActs();
    m.shell.Tell(outcome);
    m_summary->SetText(outcome.text);
    m_graph->setFocus(); // a number would take Ctrl+Z for itself
}

} // namespace tarn

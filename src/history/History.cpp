#include "history/History.h"

#include "common/paths.h"
#include "common/sidecar_names.h"
#include "history/StepsOnDisk.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr const char* kLocked = "another program is changing files just now, nothing was done";

// The first few by name.
std::string ListOf(const std::vector<std::string>& paths) {
    constexpr std::size_t kNamed = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(paths.size(), kNamed); ++i)
        text += (i > 0 ? ", '" : "'") + LastPart(paths[i]) + "'";
    if (paths.size() > kNamed) text += " and " + std::to_string(paths.size() - kNamed) + " more";
    return text;
}

StepState StateOf(Stands stands) {
    return stands == Stands::Whole ? StepState::Done
           : stands == Stands::Not ? StepState::Undone
                                   : StepState::Planned; // in part: goes both ways
}

// Only what the command changed: the rest may be another program's by now.
MarkChange ChangeOf(const Step& step, bool back) {
    const Mark before = UnpackMark(step.oldBytes.value_or(""));
    const Mark after = UnpackMark(step.newBytes.value_or(""));
    const Mark& put = back ? before : after;
    MarkChange change;
    if (before.decision != after.decision) change.decision = put.decision;
    if (before.stars != after.stars) change.stars = put.stars;
    return change;
}

// What a fault is told of: a copy that stays, else what does not come back.
std::string NamedBy(const Step& step) {
    return LastPart(step.kind == StepKind::Made ? step.to : step.from);
}

// What the killed command has left beside its files.
void SweepFolders(const std::vector<Step>& steps, Files& files) {
    std::set<std::string> folders;
    for (const Step& step : steps) {
        folders.insert(FolderOf(step.from));
        const bool isThere = step.kind == StepKind::Made || step.kind == StepKind::Renamed;
        if (isThere) folders.insert(FolderOf(step.to));
    }
    for (const std::string& folder : folders) files.Sweep(folder);
}

bool BringsBack(const Step& step) {
    switch (step.kind) {
    case StepKind::Made:
    case StepKind::FolderMade:
    case StepKind::Dated:
    case StepKind::Marked:
        return false;
    case StepKind::Written:
        return step.before.inode != 0 && !IsSidecarName(LastPart(step.from));
    default:
        return true;
    }
}

} // namespace

std::string PackMark(const Mark& mark) {
    return std::to_string(static_cast<int>(mark.decision)) + std::to_string(mark.stars);
}

Mark UnpackMark(const std::string& text) {
    if (text.size() != 2) return {};
    return {static_cast<Decision>(text[0] - '0'), text[1] - '0'};
}

History::Ledger History::Book() {
    const std::lock_guard lock(m_mutex);
    if (m_isShared && !m_journal) m_file = JoinPath(m_files.StateFolder(), "history.db");
    if (!m_journal) m_journal = std::make_shared<Journal>(m_file);
    return m_journal;
}

History::Ledger History::Standing() {
    {
        const std::lock_guard lock(m_mutex);
        if (m_isShared) m_file = JoinPath(m_files.StateFolder(), "history.db");
        if (!m_journal && !m_file.empty() && !m_files.Look(m_file)) return nullptr;
    }
    return Book();
}

std::string History::Notice() {
    const Ledger journal = Standing();
    if (!journal || journal->PutAside().empty()) return {};
    return "The history was damaged and is put aside as '" + journal->PutAside() + "'";
}

std::optional<CommandRow> History::NextToUndo() {
    const Ledger journal = Standing();
    return journal ? journal->NextToUndo() : std::nullopt;
}

std::optional<CommandRow> History::NextToRedo() {
    const Ledger journal = Standing();
    return journal ? journal->NextToRedo() : std::nullopt;
}

std::vector<CommandRow> History::List(const Listing& which) {
    const Ledger journal = Standing();
    return journal ? journal->List(which) : std::vector<CommandRow>();
}

std::vector<CommandRow> History::BrokenOff() {
    const Ledger journal = Standing();
    return journal ? journal->BrokenOff() : std::vector<CommandRow>();
}

bool History::Forget() {
    const Ledger journal = Standing();
    if (!journal) return true;
    for (const CommandRow& row : journal->BrokenOff()) journal->Drop(row.id);
    return journal->Forget() == Wrote::Yes;
}

bool History::Prune(std::int64_t days, std::int64_t bytes, const std::atomic<bool>& stop) {
    const Ledger journal = Standing();
    return !journal || journal->Prune(days, bytes, stop) == Wrote::Yes;
}

void History::Detach() {
    const std::lock_guard lock(m_telling);
    m_isDetached = true;
}

void History::TellEnd() {
    const std::lock_guard lock(m_telling);
    if (!m_isDetached && onEnd) onEnd();
}

// The history cannot be written: once a run somebody says whether it goes on in memory alone.
// Another thread may have asked meanwhile, or begun a new one: then it is tried again.
bool History::MayGoOn(const Ledger& failed, Wrote wrote, std::string* error) {
    if (wrote == Wrote::Locked) {
        if (error) *error = kLocked;
        return false;
    }
    if (!m_isRefused && Book() != failed) return true;
    const std::string text = "History cannot be written: " + failed->Reason();
    bool mayAsk = false;
    {
        const std::lock_guard lock(m_telling);
        mayAsk = !m_isDetached && onUnwritable;
    }
    m_isRefused =
        m_isRefused || m_goesWithout || !mayAsk || !onUnwritable(text + ". Go on without?");
    if (m_isRefused) {
        if (error) *error = text;
        return false;
    }
    const std::lock_guard lock(m_mutex);
    m_goesWithout = true;
    if (m_journal == failed) m_journal = std::make_shared<Journal>(std::string());
    return true;
}

bool History::Begin(const NewCommand& command, std::span<const Step> plan, Ledger& book,
                    std::int64_t* id, std::string* error) {
    EndLate();
    for (const bool isFirst : {true, false}) {
        book = Book();
        const Wrote wrote = book->Begin(command, plan, id);
        if (wrote == Wrote::Yes) return true;
        if (isFirst && wrote == Wrote::No && BeginAnew(book)) continue;
        if (!MayGoOn(book, wrote, error)) return false;
    }
    book = Book();
    return book->Begin(command, plan, id) == Wrote::Yes;
}

// Where somebody has said so, the rest of the command goes on without being written down.
bool History::Add(const Ledger& book, std::int64_t id, std::span<const Step> steps,
                  std::string* error) {
    const Wrote wrote = book->AddSteps(id, steps);
    if (wrote == Wrote::Yes) return true;
    // In the midst of a command another try costs nothing, a command in halves does.
    if (wrote == Wrote::Locked && book->AddSteps(id, steps) == Wrote::Yes) return true;
    return MayGoOn(book, wrote, error);
}

bool History::Change(const Ledger& book, std::int64_t id, const Step& step, std::string* error) {
    Wrote wrote = book->Change(id, step);
    if (wrote == Wrote::Locked) wrote = book->Change(id, step); // as above
    return wrote == Wrote::Yes || MayGoOn(book, wrote, error);
}

// A damaged one is put aside; the next command has a new one.
bool History::BeginAnew(const Ledger& damaged) {
    if (!damaged->IsDamaged()) return false;
    const std::lock_guard lock(m_mutex);
    if (m_journal == damaged) m_journal = std::make_shared<Journal>(m_file, damaged.get());
    return m_journal->IsOpen();
}

void History::EndLate() {
    std::vector<std::function<bool()>> late;
    {
        const std::lock_guard lock(m_mutex);
        late.swap(m_late);
    }
    std::erase_if(late, [](const auto& end) { return end(); });
    const std::lock_guard lock(m_mutex);
    m_late.insert(m_late.begin(), std::make_move_iterator(late.begin()),
                  std::make_move_iterator(late.end()));
}

// Where this fails it is tried again with the next command; or the next run finds it broken off,
// and all of it done.
void History::End(const Ledger& book, std::int64_t id, const std::string& what, std::size_t files,
                  std::span<const Step> changed, Ended how) {
    const auto end = [=, steps = std::vector<Step>(changed.begin(), changed.end())] {
        const auto count = static_cast<std::int64_t>(files);
        if (files == 0) return book->Drop(id) == Wrote::Yes;
        if (how == Ended::Unasked) return book->EndQuietly(id, what, count, steps) == Wrote::Yes;
        return book->End(id, what, count, steps,
                         how == Ended::ForGood ? CommandState::Final : CommandState::Done) ==
               Wrote::Yes;
    };
    if (!end()) {
        const std::lock_guard lock(m_mutex);
        m_late.emplace_back(end);
    }
    TellEnd();
}

std::vector<Step> History::StepsOf(const CommandRow& row) {
    std::vector<Step> steps = Book()->StepsOf(row.id);
    if (HasEnded(row.state)) {
        const StepState asItsCommand =
            row.state == CommandState::Undone ? StepState::Undone : StepState::Done;
        for (Step& step : steps)
            if (step.state == StepState::Planned) step.state = asItsCommand;
        return steps;
    }
    const std::vector<Stands> stands = TellSteps(steps, m_files);
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (steps[i].state != StepState::NotDone) steps[i].state = StateOf(stands[i]);
    return steps;
}

std::size_t History::StepsToGo(const CommandRow& row) {
    const std::vector<Step> steps = StepsOf(row);
    const StepState goes = row.state == CommandState::Undone ? StepState::Undone : StepState::Done;
    return std::size_t(std::count_if(steps.begin(), steps.end(),
                                     [&](const Step& step) { return step.state == goes; }));
}

UndoResult History::Undo(const GoOn& goOn) {
    EndLate();
    const auto row = NextToUndo();
    return row ? Turn(*row, Way::Back, goOn) : UndoResult();
}

UndoResult History::Redo(const GoOn& goOn) {
    const auto row = NextToRedo();
    return row ? Turn(*row, Way::Again, goOn) : UndoResult();
}

// The command that has one of its files since; empty when none has.
std::string History::TouchedSince(const CommandRow& row) {
    std::set<std::string> paths;
    for (const Step& step : Book()->StepsOf(row.id)) paths.insert({step.from, step.to});
    paths.erase("");
    for (const CommandRow& later : Book()->Later(row.id))
        for (const Step& step : Book()->StepsOf(later.id))
            if (paths.count(step.from) > 0 || paths.count(step.to) > 0) return later.what;
    return {};
}

UndoResult History::UndoOf(std::int64_t id, const GoOn& goOn) {
    const auto row = Book()->Find(id);
    if (!row) return {false, "There is no command " + std::to_string(id), {}, {}};
    if (row->isBrokenOff)
        return Turn(*row, row->state == CommandState::Undoing ? Way::Again : Way::Back, goOn);
    if (row->state != CommandState::Done)
        return {false,
                "NOT undone: " + row->what +
                    (row->state == CommandState::Undone  ? "; it is undone already"
                     : row->state == CommandState::Final ? "; it was deleted for good"
                                                         : "; it is being done just now"),
                {},
                {}};
    if (const std::string since = TouchedSince(*row); !since.empty())
        return {false,
                "NOT undone: " + row->what + "; its files were changed since by: " + since,
                {},
                {}};
    return Turn(*row, Way::Back, goOn);
}

bool History::MayFinish(const CommandRow& row) {
    if (row.state != CommandState::Running) return true; // taken back, or done again
    const std::vector<Step> steps = StepsOf(row);
    return row.isWhole && std::all_of(steps.begin(), steps.end(), [](const Step& step) {
               return step.state == StepState::Done || step.kind != StepKind::Written ||
                      step.newBytes;
           });
}

bool History::Leave(const CommandRow& row) {
    const Ledger book = Book();
    const auto now = book->Find(row.id);
    if (!now || !now->isBrokenOff || now->state != row.state) return false;
    std::vector<Step> steps = StepsOf(row);
    if (book->Turn(row, CommandState::Redoing) != Wrote::Yes) return false; // in hand
    for (Step& step : steps)
        if (step.state == StepState::Planned) step.state = StepState::Done;
    const bool isDone = std::any_of(steps.begin(), steps.end(),
                                    [](const Step& step) { return step.state == StepState::Done; });
    SweepFolders(steps, m_files);
    if (!isDone && row.state == CommandState::Running) return book->Drop(row.id) == Wrote::Yes;
    return book->EndTurn(row.id, isDone ? CommandState::Done : CommandState::Undone, steps) ==
           Wrote::Yes;
}

UndoResult History::RedoOf(std::int64_t id, const GoOn& goOn) {
    const auto row = Book()->Find(id);
    if (!row) return {false, "There is no command " + std::to_string(id), {}, {}};
    if (row->isBrokenOff && !MayFinish(*row))
        return {false,
                "NOT done again: " + row->what + "; what was still to be done is not known",
                {},
                {}};
    if (row->isBrokenOff)
        return Turn(*row, row->state == CommandState::Undoing ? Way::Back : Way::Again, goOn);
    if (row->state != CommandState::Undone)
        return {false, "NOT done again: " + row->what + "; it is not undone", {}, {}};
    if (const std::string since = TouchedSince(*row); !since.empty())
        return {false,
                "NOT done again: " + row->what + "; its files were changed since by: " + since,
                {},
                {}};
    return Turn(*row, Way::Again, goOn);
}

namespace {

// One way through the steps of a command.
struct Walk {
    UndoResult result;
    std::set<std::string> touched; // folders of renamed files
    std::size_t gone = 0;
    std::size_t left = 0;
    bool stopped = false;
    std::string why;
};

// Its original is thrown away behind it: onto another disk it goes with all that it has.
bool IsMoved(const Step& copy, const std::vector<Step>& steps) {
    return copy.kind == StepKind::Made &&
           std::any_of(steps.begin(), steps.end(), [&](const Step& step) {
               return step.kind == StepKind::ThrownAway && step.from == copy.from &&
                      step.number > copy.number;
           });
}

// What the command itself has put there could not be looked at when it was planned.
void KnowOwn(Step& thrown, const std::vector<Step>& steps, const Files& files) {
    if (thrown.kind != StepKind::ThrownAway || thrown.before.inode != 0) return;
    const bool isOwn = std::any_of(steps.begin(), steps.end(), [&](const Step& step) {
        return (step.kind == StepKind::Made || step.kind == StepKind::Renamed) &&
               step.to == thrown.from && step.number < thrown.number &&
               step.state == StepState::Done;
    });
    if (isOwn) thrown.before = IdentityOf(files, thrown.from);
}

// A step just before has written into the file, and so changed its time.
void KnowTime(Step& dated, const std::vector<Step>& steps, const Files& files) {
    if (dated.kind != StepKind::Dated || &dated == steps.data()) return;
    const Step& before = *(&dated - 1);
    if (before.kind == StepKind::WrittenAt && before.from == dated.from &&
        before.state == StepState::Done)
        dated.before = IdentityOf(files, dated.from);
}

bool CarryOut(Step& step, const std::vector<Step>& steps, Files& files, std::string* error) {
    KnowOwn(step, steps, files);
    KnowTime(step, steps, files);
    return IsMoved(step, steps) ? MoveAgain(step, files, error) : DoStep(step, files, error);
}

void WalkStep(Step& step, const std::vector<Step>& steps, bool back, Files& files, const GoOn& goOn,
              Walk& walk) {
    std::string error = "cancelled";
    walk.stopped = walk.stopped || !goOn(walk.gone + walk.left + 1);
    const bool went = !walk.stopped && (back ? TakeBackStep(step, files, &error)
                                             : CarryOut(step, steps, files, &error));
    if (!went) {
        ++walk.left;
        if (walk.why.empty()) walk.why = NamedBy(step) + " - " + error;
        return;
    }
    ++walk.gone;
    step.state = back ? StepState::Undone : StepState::Done;
    if (step.kind == StepKind::Renamed)
        walk.touched.insert({FolderOf(step.from), FolderOf(step.to)});
    if (step.kind == StepKind::Marked)
        walk.result.marks.push_back({step.from, ChangeOf(step, back)});
    if (back && BringsBack(step)) walk.result.back.push_back(step.from);
    if (!back && (step.kind == StepKind::Renamed || step.kind == StepKind::Made))
        walk.result.back.push_back(step.to);
}

// What writes into a file changes its time: the step that dates it next is done again, too.
void DateAfter(const Step& written, std::vector<Step>& steps) {
    const auto next = std::size_t(&written - steps.data()) + 1;
    if (written.kind == StepKind::WrittenAt && written.state == StepState::Done &&
        next < steps.size() && steps[next].kind == StepKind::Dated &&
        steps[next].from == written.from && steps[next].state == StepState::Done)
        steps[next].state = StepState::Undone;
}

} // namespace

UndoResult History::Turn(const CommandRow& row, Way way, const GoOn& goOn) {
    const bool back = way == Way::Back;
    const std::string not_ = back ? "NOT undone: " : "NOT done again: ";
    std::vector<Step> steps = StepsOf(row);
    const Wrote begun = Book()->Turn(row, back ? CommandState::Undoing : CommandState::Redoing);
    if (begun != Wrote::Yes)
        return {false,
                not_ + row.what + "; " + (begun == Wrote::Locked ? kLocked : Book()->Reason()),
                {},
                {}};
    Walk walk;
    const StepState stays = back ? StepState::Undone : StepState::Done;
    const auto visit = [&](Step& step) {
        if (step.state == stays || step.state == StepState::NotDone) return;
        WalkStep(step, steps, back, m_files, goOn, walk);
        if (!back) DateAfter(step, steps);
    };
    if (back)
        std::for_each(steps.rbegin(), steps.rend(), visit);
    else
        std::for_each(steps.begin(), steps.end(), visit);
    for (const std::string& folder : walk.touched) m_files.Flush(folder);
    if (row.isBrokenOff) SweepFolders(steps, m_files);
    // Steps that were not reached say what they are, whatever their command is now.
    for (Step& step : steps)
        if (step.state == StepState::Planned) step.state = StepState::Done;
    const bool isDone =
        back ? walk.left > 0 : walk.gone > 0 || walk.left == 0 || row.state != CommandState::Undone;
    Book()->EndTurn(row.id, isDone ? CommandState::Done : CommandState::Undone, steps,
                    back && walk.left > 0 && !walk.stopped ? Journal::Behind::AllOthers
                                                           : Journal::Behind::None);
    UndoResult result = std::move(walk.result);
    if (back) std::reverse(result.back.begin(), result.back.end());
    result.done = walk.left == 0;
    result.text = (walk.gone > 0 ? (back ? "Undone: " : "Done again: ") : not_) + row.what;
    if (!result.back.empty() && back) result.text += "; back again: " + ListOf(result.back);
    if (walk.left > 0)
        result.text += "; " + std::to_string(walk.left) +
                       (back ? " not taken back" : " not done again") + ", first " + walk.why;
    return result;
}

} // namespace tarn

#include "history/Changes.h"

#include "common/paths.h"
#include "history/History.h"
#include "history/StepsOnDisk.h"

#include <algorithm>
#include <unordered_set>

namespace tarn {

namespace {

constexpr std::size_t kMostAgain = 1U << 20U; // bytes of a new file kept for doing it again

bool Refuse(std::string* error, const char* why) {
    if (error) *error = why;
    return false;
}

std::optional<std::string> IfFew(std::string_view bytes) {
    return bytes.size() <= kMostAgain ? std::optional<std::string>(bytes) : std::nullopt;
}

} // namespace

Changes::Changes(History& history, std::string what)
    : m_history(history), m_files(history.Disk()), m_what(std::move(what)) {}

Changes::~Changes() {
    Close();
}

FileLook Changes::LookAt(const std::string& path) {
    auto look = m_files.Look(path);
    if (!look) return {};
    if (look->device != m_device) {
        m_device = look->device;
        m_volume = m_files.Volume(path);
    }
    look->device = m_volume;
    return *look;
}

Step Changes::NewStep(StepKind kind, const std::string& from, const std::string& to) {
    Step step;
    step.kind = kind;
    step.from = from;
    step.to = to;
    const auto planned = m_planned.empty() ? m_planned.end() : m_planned.find(from);
    step.before = planned == m_planned.end() ? LookAt(from) : planned->second;
    return step;
}

std::optional<std::size_t> Changes::FindPlanned(StepKind kind, const std::string& from,
                                                const std::string& to, std::int64_t offset) const {
    for (std::size_t i = m_next; i < m_steps.size(); ++i)
        if (m_steps[i].kind == kind && m_steps[i].from == from &&
            (kind == StepKind::ThrownAway || m_steps[i].to == to) && m_steps[i].offset == offset)
            return i;
    return {};
}

// Once refused, the rest of the command is, too: it is not done in halves, nor asked for again.
bool Changes::MayWrite(bool written, std::string* error) {
    if (!written && m_refusal.empty()) m_refusal = error ? *error : "the history refused it";
    return written;
}

bool Changes::TellRefused(std::string* error) const {
    if (m_isClosed) return !Refuse(error, "the command has ended");
    if (!m_refusal.empty() && error) *error = m_refusal;
    return !m_refusal.empty();
}

bool Changes::Begin(std::string* error) {
    return m_id != 0 || MayWrite(m_history.Begin({.what = m_what,
                                                  .folder = FolderOf(m_steps.front().from),
                                                  .isWhole = m_isWhole},
                                                 m_steps, m_book, &m_id, error),
                                 error);
}

std::size_t Changes::GoTo(std::size_t at) {
    for (; m_next < at; ++m_next) m_steps[m_next].state = StepState::NotDone;
    return m_next++;
}

std::optional<std::size_t> Changes::WriteDown(StepKind kind, const std::string& from,
                                              const std::string& to, std::string* error) {
    if (TellRefused(error)) return {};
    const auto at = FindPlanned(kind, from, to, 0);
    if (!at || m_steps[*at].before.inode == 0) return WriteDown(NewStep(kind, from, to), error);
    if (!Begin(error)) return {};
    return GoTo(*at);
}

// What was not there to be looked at when it was planned, or has changed since: written down before
// it is done, too.
bool Changes::KnowBetter(Step& planned, Step now, std::string* error) {
    if (planned.kind == StepKind::Dropped) {
        planned.after = now.after;
        m_changed.insert(planned.number);
    }
    // An earlier step of the same file has changed its time.
    if (planned.kind == StepKind::Dated && planned.before.inode == now.before.inode &&
        planned.before != now.before) {
        planned.before = now.before;
        m_changed.insert(planned.number);
    }
    const bool isOther = planned.oldBytes != now.oldBytes;
    const bool isNew =
        planned.before.inode == 0 && now.before.inode != 0 && planned.kind != StepKind::Written;
    if (!isOther && !isNew) return true;
    planned.before = now.before;
    planned.oldBytes = std::move(now.oldBytes);
    m_changed.insert(planned.number);
    return MayWrite(m_history.Change(m_book, m_id, planned, error), error);
}

std::optional<std::size_t> Changes::WriteDown(Step step, std::string* error) {
    if (TellRefused(error)) return {};
    const auto at = FindPlanned(step.kind, step.from, step.to, step.offset);
    if (at && !Begin(error)) return {};
    if (at && !KnowBetter(m_steps[*at], std::move(step), error)) return {};
    if (at) return GoTo(*at);
    step.number = (m_next > 0 ? m_steps[m_next - 1].number : 0) + 1;
    m_steps.insert(m_steps.begin() + std::ptrdiff_t(m_next), std::move(step));
    const bool written =
        m_id != 0 ? MayWrite(m_history.Add(m_book, m_id, {&m_steps[m_next], 1}, error), error)
                  : Begin(error);
    if (written) return m_next++;
    m_steps.erase(m_steps.begin() + std::ptrdiff_t(m_next));
    return {};
}

void Changes::SetState(Step& step, StepState state) {
    m_done -= step.state == StepState::Done ? 1 : 0;
    m_done += state == StepState::Done ? 1 : 0;
    step.state = state;
}

bool Changes::Finish(std::size_t at, bool done) {
    SetState(m_steps[at], done ? StepState::Done : StepState::NotDone);
    return done;
}

void Changes::Touch(const std::string& path) {
    const std::string_view folder = std::string_view(path).substr(0, path.rfind(kSeparator));
    if (std::find(m_touched.rbegin(), m_touched.rend(), folder) == m_touched.rend())
        m_touched.emplace_back(folder);
}

bool Changes::Trash(const std::string& path, std::string* error, std::string* where) {
    const auto at = WriteDown(StepKind::ThrownAway, path, {}, error);
    if (!at) return false;
    std::string lies;
    if (!Finish(*at, m_files.Trash(path, error, &lies))) return false;
    m_steps[*at].to = lies;
    m_changed.insert(m_steps[*at].number);
    if (where) *where = lies;
    return true;
}

std::vector<std::string> Changes::TrashAll(const std::vector<std::string>& paths) {
    std::vector<std::string> allowed;
    std::vector<std::size_t> steps;
    std::vector<Step> plan;
    for (const std::string& path : paths) plan.push_back(PlanThrow(path));
    Plan(std::move(plan));
    for (const std::string& path : paths) {
        const auto at = WriteDown(StepKind::ThrownAway, path, {}, nullptr);
        if (!at) break;
        allowed.push_back(path);
        steps.push_back(*at);
    }
    std::vector<std::string> where = m_files.TrashAll(allowed);
    where.resize(paths.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (!Finish(steps[i], !where[i].empty())) continue;
        m_steps[steps[i]].to = where[i];
        m_changed.insert(m_steps[steps[i]].number);
    }
    return where;
}

// Of a file that this command threw away: its step is as if it had not been.
bool Changes::Restore(const std::string& where, const std::string& path, std::string* error) {
    if (!m_files.Restore(where, path, error)) return false;
    for (Step& step : m_steps)
        if (step.kind == StepKind::ThrownAway && step.to == where)
            SetState(step, StepState::NotDone);
    return true;
}

bool Changes::Remove(const std::string& path, std::string* error) {
    const auto at = WriteDown(StepKind::Removed, path, {}, error);
    return at && Finish(*at, m_files.Remove(path, error));
}

bool Changes::Rename(const std::string& from, const std::string& to, std::string* error) {
    const auto at = WriteDown(StepKind::Renamed, from, to, error);
    if (!at || !Finish(*at, m_files.Rename(from, to, error))) return false;
    Touch(from);
    Touch(to);
    return true;
}

bool Changes::CopyTo(const std::string& from, const std::string& to, std::string* error,
                     Standing standing) {
    std::string replaced;
    return Copy(from, to, error, standing == Standing::Refuse ? nullptr : &replaced);
}

// What stands there is thrown away by the copy itself, between writing and placing.
std::optional<std::size_t> Changes::WriteDownReplaced(const std::string& to, std::string* error,
                                                      bool* refused) {
    *refused = false;
    if (LookAt(to).inode == 0) return {};
    const auto at = WriteDown(StepKind::ThrownAway, to, {}, error);
    *refused = !at;
    return at;
}

void Changes::FinishReplaced(std::optional<std::size_t> at, const std::string& replaced) {
    if (!at || !Finish(*at, !replaced.empty())) return;
    m_steps[*at].to = replaced;
    m_changed.insert(m_steps[*at].number);
}

bool Changes::Copy(const std::string& from, const std::string& to, std::string* error,
                   std::string* replaced) {
    bool refused = false;
    const auto thrown = replaced ? WriteDownReplaced(to, error, &refused) : std::nullopt;
    if (refused) return false;
    const auto at = WriteDown(StepKind::Made, from, to, error);
    if (!at) return false;
    Finish(*at, m_files.Copy(from, to, error, replaced));
    FinishReplaced(thrown, replaced ? *replaced : std::string());
    return m_steps[*at].state == StepState::Done;
}

bool Changes::MoveTo(const std::string& from, const std::string& to, std::string* error,
                     Standing standing) {
    std::string replaced;
    return Move(from, to, error, standing == Standing::Refuse ? nullptr : &replaced) != Moved::No;
}

Moved Changes::Move(const std::string& from, const std::string& to, std::string* error,
                    std::string* replaced) {
    const auto before = m_files.Look(from);
    bool refused = false;
    const auto thrown = replaced ? WriteDownReplaced(to, error, &refused) : std::nullopt;
    const bool elsewhere = m_files.Volume(FolderOf(from)) != m_files.Volume(FolderOf(to));
    const auto kind = elsewhere ? StepKind::Made : StepKind::Renamed;
    const auto at = refused ? std::nullopt : WriteDown(kind, from, to, error);
    if (!at) return Moved::No;
    const Moved moved = m_files.Move(from, to, error, replaced);
    Finish(*at, moved != Moved::No);
    FinishReplaced(thrown, replaced ? *replaced : std::string());
    if (moved == Moved::Copied) {
        m_steps[*at].kind = StepKind::Made;
        m_changed.insert(m_steps[*at].number);
        m_moving[from] = before;
    } else if (moved == Moved::Renamed) {
        Touch(from);
        Touch(to);
    }
    return moved;
}

bool Changes::EndMove(const std::string& from, std::string* error) {
    const auto moving = m_moving.find(from);
    if (moving == m_moving.end()) return true;
    const auto before = moving->second;
    const auto now = m_files.Look(from);
    m_moving.erase(moving);
    if (!before || !now || !now->IsSameContent(*before))
        return Refuse(error, "it has changed since it was copied");
    return ThrowAway(from, error);
}

bool Changes::EndRename(const std::string& from, const std::string& to, std::string* error) {
    const auto made = std::find_if(m_steps.begin(), m_steps.end(), [&](const Step& step) {
        return step.kind == StepKind::Made && step.state == StepState::Done && step.from == from &&
               step.to == to;
    });
    const auto old = m_files.Look(from);
    const auto copy = m_files.Look(to);
    // No rename leads back from another disk, nor to what stood there before.
    const bool elsewhere = old && copy && old->device != copy->device;
    if (made == m_steps.end() || elsewhere) return ThrowAway(from, error);
    const FileLook& before = made->before;
    if (!old || old->bytes != before.bytes || old->seconds != before.seconds ||
        old->nanoseconds != before.nanoseconds)
        return Refuse(error, "it has changed since it was copied");
    Step step = NewStep(StepKind::Dropped, from, to);
    step.after = LookAt(to);
    const auto at = WriteDown(std::move(step), error);
    if (!at || !Finish(*at, m_files.Remove(from, error))) return false;
    Touch(from);
    return true;
}

// Again over what it has written itself: one step.
bool Changes::WriteOver(const std::string& path, std::optional<std::string> newBytes,
                        const std::function<bool()>& write, std::string* error) {
    const bool again = m_next > 0 && m_steps[m_next - 1].kind == StepKind::Written &&
                       m_steps[m_next - 1].from == path &&
                       m_steps[m_next - 1].state == StepState::Done;
    std::size_t at = m_next - (again ? 1 : 0);
    if (!again) {
        const auto place = WriteDown(PlanWrite(path, newBytes), error);
        if (!place) return false;
        at = *place;
    }
    if (!write()) return again ? false : Finish(at, false);
    Finish(at, true);
    m_steps[at].after = LookAt(path);
    m_steps[at].newBytes = std::move(newBytes);
    m_changed.insert(m_steps[at].number);
    return true;
}

bool Changes::Write(const std::string& path, std::string_view bytes, std::string* error) {
    return WriteOver(
        path, m_keepsNewBytes ? IfFew(bytes) : std::nullopt,
        [&] { return m_files.Write(path, bytes, error); }, error);
}

bool Changes::Extend(const std::string& path, std::size_t offset, std::string_view bytes,
                     std::string* error) {
    return WriteOver(
        path, {}, [&] { return m_files.Extend(path, offset, bytes, error); }, error);
}

bool Changes::WriteAt(const std::string& path, std::size_t offset, std::string_view bytes,
                      std::string* error) {
    auto old = m_files.Read(path, bytes.size(), error, offset);
    if (!old) return false;
    const auto at =
        WriteDown(PlanWriteAt(path, offset, std::move(*old), std::string(bytes)), error);
    if (!at || !Finish(*at, m_files.WriteAt(path, offset, bytes, error))) return false;
    m_steps[*at].after = LookAt(path);
    m_changed.insert(m_steps[*at].number);
    return true;
}

bool Changes::SetTimes(const std::string& path, std::int64_t when, std::string* error) {
    const auto at = WriteDown(PlanTimes(path, when), error);
    if (!at || !Finish(*at, m_files.SetTimes(path, when, error))) return false;
    KnowTime(m_steps[*at]);
    return true;
}

bool Changes::PutTimeBack(const std::string& path, const FileLook& then, std::string* error) {
    Step step = PlanTimes(path, then.seconds);
    step.after.nanoseconds = then.nanoseconds;
    const auto at = WriteDown(std::move(step), error);
    if (!at || !Finish(*at, m_files.PutTimeBack(path, then, error))) return false;
    KnowTime(m_steps[*at]);
    return true;
}

// Some disks keep every other second only.
void Changes::KnowTime(Step& dated) {
    const auto now = m_files.Look(dated.from);
    if (!now || now->seconds == dated.after.seconds) return;
    dated.after.seconds = now->seconds;
    dated.after.nanoseconds = now->nanoseconds;
    m_changed.insert(dated.number);
}

bool Changes::MakeFolder(const std::string& path, std::string* error) {
    if (m_files.Look(path)) return m_files.MakeFolder(path, error); // which says why not
    const auto at = WriteDown(StepKind::FolderMade, path, {}, error);
    return at && Finish(*at, m_files.MakeFolder(path, error));
}

int Changes::RemoveFolder(const std::string& path, std::string* error) {
    const auto at = WriteDown(StepKind::FolderRemoved, path, {}, error);
    if (!at) return EPERM;
    const int failed = m_files.RemoveFolder(path, error);
    Finish(*at, failed == 0);
    return failed;
}

bool Changes::Marked(Step planned, std::string* error) {
    const auto at = WriteDown(std::move(planned), error);
    return at && Finish(*at, true);
}

void Changes::TakeBack(std::size_t kept, std::string* error) {
    std::size_t done = Count();
    for (std::size_t i = m_next; i-- > 0 && done > kept;) {
        Step& step = m_steps[i];
        if (step.state != StepState::Done) continue;
        --done;
        std::string why;
        if (TakeBackStep(step, m_files, &why))
            SetState(step, StepState::NotDone);
        else if (error && error->empty())
            *error = why;
    }
}

std::vector<Step> Changes::Done() const {
    std::vector<Step> done;
    std::copy_if(m_steps.begin(), m_steps.end(), std::back_inserter(done),
                 [](const Step& step) { return step.state == StepState::Done; });
    return done;
}

bool Changes::Has(StepKind kind, const std::string& from) const {
    return std::any_of(m_steps.begin(), m_steps.end(), [&](const Step& step) {
        return step.kind == kind && step.state == StepState::Done && step.from == from;
    });
}

void Changes::Close() {
    for (const std::string& folder : m_touched) m_files.Flush(folder);
    m_touched.clear();
    if (m_id == 0 || m_isClosed) return;
    m_isClosed = true;
    std::vector<Step> changed;
    std::unordered_set<std::string_view> files;
    for (Step& step : m_steps) {
        if (step.state == StepState::Planned) step.state = StepState::NotDone;
        if (step.state == StepState::Done) files.insert(step.from);
        if (step.state == StepState::NotDone || m_changed.count(step.number) > 0)
            changed.push_back(step);
    }
    const bool isForGood = std::all_of(m_steps.begin(), m_steps.end(), [](const Step& step) {
        return step.state != StepState::Done || step.kind == StepKind::Removed;
    });
    m_history.End(m_book, m_id, m_what, files.size(), changed,
                  m_isUnasked ? History::Ended::Unasked
                  : isForGood ? History::Ended::ForGood
                              : History::Ended::CanGoBack);
}

} // namespace tarn

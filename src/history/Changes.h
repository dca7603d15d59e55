// One command in the making: changes of the disk that are written down in the journal, each before
// it is done. It is itself the file system, so that whoever changes files for a command is given
// it in place of the bare one.
#pragma once

#include "common/mark.h"
#include "history/Step.h"
#include "platform/Files.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarn {

class History;
class Journal;

// Whether what stands at the target of a copy or a move is thrown away, once all bytes are there.
enum class Standing { Refuse, ThrowAway };

// Each verb is false, with the reason, when it could not be done or may not be: a change that
// cannot be written down is refused unless the user said otherwise. At the end of its life the
// folders of renamed files are flushed, once for the whole command, and the command is ended; one
// that did nothing leaves no trace.
class Changes : public Files {
public:
    Changes(History& history, std::string what);
    ~Changes() override;
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    // What the history says it was: "Delete 'M31.jpg'".
    void SetWhat(std::string what) { m_what = std::move(what); }
    // Done by the program unasked: the history lists it, Undo passes it over.
    void SetUnasked() { m_isUnasked = true; }
    // What it writes is not kept here to be written again: Redo has it from the wastebasket alone.
    void KeepNoNewBytes() { m_keepsNewBytes = false; }

    // What is going to be done, in its order, written down at once or together with the first
    // change, so that none of these asks the disk by itself. What is done otherwise is written down
    // when it is.
    bool Plan(std::vector<Step> steps, std::string* error = nullptr);
    // All that the command will do, before its first change: after a kill the rest can be done.
    void PlanWhole(std::vector<Step> steps);
    Step PlanRename(const std::string& from, const std::string& to);
    // What a step that is planned leaves at a path, where another one takes it up.
    void WillStand(const std::string& path, const FileLook& look) { m_planned[path] = look; }
    Step PlanCopy(const std::string& from, const std::string& to);
    Step PlanThrow(const std::string& path);
    Step PlanWriteAt(const std::string& path, std::size_t offset, std::string oldBytes,
                     std::string newBytes);
    // Without new bytes it cannot be done again.
    Step PlanWrite(const std::string& path, std::optional<std::string> newBytes);
    Step PlanMark(const std::string& path, const Mark& before, const Mark& after);
    Step PlanTimes(const std::string& path, std::int64_t when);

    bool ThrowAway(const std::string& path, std::string* error) {
        return Trash(path, error, nullptr);
    }
    bool CopyTo(const std::string& from, const std::string& to, std::string* error,
                Standing standing = Standing::Refuse);
    // Onto another disk it is copied, and stands in both places until EndMove.
    bool MoveTo(const std::string& from, const std::string& to, std::string* error,
                Standing standing = Standing::Refuse);
    // What was moved is thrown away where it still stands, unless it has changed since.
    bool EndMove(const std::string& from, std::string* error);
    // A copy that stood for a rename: the old file goes, for its bytes are in the new one. Where it
    // cannot, `error` says why, and both stay.
    bool EndRename(const std::string& from, const std::string& to, std::string* error);
    // A mark that the command changes, and no sidecar takes; as it was planned or not.
    bool Marked(Step planned, std::string* error);
    bool Marked(const std::string& path, const Mark& before, const Mark& after,
                std::string* error) {
        return Marked(PlanMark(path, before, after), error);
    }

    // All is done, ahead of what only shows it: the command ends now, not with its scope.
    void Close();

    // Everything that was done, or all but the first `kept`, taken back, the last first; what could
    // not be stays written down, and the first failure's text is in `error`.
    void TakeBack(std::string* error) { TakeBack(0, error); }
    void TakeBack(std::size_t kept, std::string* error);

    std::vector<Step> Done() const;              // what was done and stands
    std::size_t Count() const { return m_done; } // of what was done and stands
    // It cannot be written down, and nobody lets it go on without: it changes nothing any more.
    bool IsRefused() const { return !m_refusal.empty(); }
    bool HasThrown(const std::string& path) const { return Has(StepKind::ThrownAway, path); }

    // What the real file system answers.
    bool Exists(const std::string& path) const override;
    bool IsFolder(const std::string& path) const override;
    bool IsSameFile(const std::string& a, const std::string& b) const override;
    bool IsWritable(const std::string& path) const override;
    bool LeadsOut(const std::string& path) const override;
    std::int64_t Volume(const std::string& path) const override;
    std::optional<FileLook> Look(const std::string& path, std::string* error) const override;
    std::optional<std::vector<std::string>> FileNames(const std::string& folder,
                                                      std::string* error) const override;
    std::vector<std::string> FolderNames(const std::string& folder) const override;
    std::optional<std::string> FindAnyCase(const std::string& path) const override;
    std::optional<std::string> Read(const std::string& path, std::size_t most, std::string* error,
                                    std::size_t from) const override;
    std::string FindThrown(const std::string& path, const FileLook& look) const override;
    std::string Absolute(const std::string& path) const override;
    std::string HomeFolder() const override;
    std::string PicturesFolder() const override;
    std::string StateFolder() const override;

    // Its changes, written down.
    bool Write(const std::string& path, std::string_view bytes, std::string* error) override;
    bool Trash(const std::string& path, std::string* error, std::string* where) override;
    std::vector<std::string> TrashAll(const std::vector<std::string>& paths) override;
    bool Restore(const std::string& where, const std::string& path, std::string* error) override;
    void Sweep(const std::string& folder) override;
    bool Remove(const std::string& path, std::string* error) override;
    bool Rename(const std::string& from, const std::string& to, std::string* error) override;
    bool Copy(const std::string& from, const std::string& to, std::string* error,
              std::string* replaced = nullptr) override;
    Moved Move(const std::string& from, const std::string& to, std::string* error,
               std::string* replaced = nullptr) override;
    void Flush(const std::string& folder) override;
    bool WriteAt(const std::string& path, std::size_t offset, std::string_view bytes,
                 std::string* error) override;
    bool Extend(const std::string& path, std::size_t offset, std::string_view bytes,
                std::string* error) override;
    std::unique_ptr<StagedFiles> Stage(const std::string& folder, std::string* error) override;
    bool SetTimes(const std::string& path, std::int64_t when, std::string* error) override;
    bool PutTimeBack(const std::string& path, const FileLook& then, std::string* error) override;
    bool MakeFolder(const std::string& path, std::string* error) override;
    int RemoveFolder(const std::string& path, std::string* error) override;

private:
    class Staged;

    FileLook LookAt(const std::string& path);
    Step NewStep(StepKind kind, const std::string& from, const std::string& to = {});
    // The place of the step in the list, once it is written down; none, with the reason, when it
    // may not be done.
    std::optional<std::size_t> WriteDown(Step step, std::string* error);
    std::optional<std::size_t> WriteDown(StepKind kind, const std::string& from,
                                         const std::string& to, std::string* error);
    std::optional<std::size_t> FindPlanned(StepKind kind, const std::string& from,
                                           const std::string& to, std::int64_t offset) const;
    bool KnowBetter(Step& planned, Step now, std::string* error);
    bool Begin(std::string* error);
    bool MayWrite(bool written, std::string* error);
    bool TellRefused(std::string* error) const;
    std::size_t GoTo(std::size_t at);
    std::optional<std::size_t> WriteDownReplaced(const std::string& to, std::string* error,
                                                 bool* refused);
    void FinishReplaced(std::optional<std::size_t> at, const std::string& replaced);
    void SetState(Step& step, StepState state);
    bool Finish(std::size_t at, bool done);
    bool WriteOver(const std::string& path, std::optional<std::string> newBytes,
                   const std::function<bool()>& write, std::string* error);
    bool Has(StepKind kind, const std::string& from) const;
    void Touch(const std::string& path);
    void KnowTime(Step& dated);

    History& m_history;
    Files& m_files;
    std::string m_what;
    bool m_isUnasked = false;
    bool m_keepsNewBytes = true;
    bool m_isClosed = false;
    bool m_isWhole = false;          // in the plan
    std::string m_refusal;           // why it may change nothing any more
    std::shared_ptr<Journal> m_book; // in which it began, also when another one stands by now
    std::int64_t m_id = 0;           // 0: not begun
    std::vector<Step> m_steps;
    std::size_t m_done = 0;
    std::size_t m_next = 0;           // first step that is not done with
    std::set<std::int64_t> m_changed; // numbers of steps that know more than was written down
    std::unordered_map<std::string, FileLook> m_planned; // what the plan will have made of a path
    std::int64_t m_device = 0;                           // of the last look, and its volume
    std::int64_t m_volume = 0;
    std::map<std::string, std::optional<FileLook>>
        m_moving;                       // copies that have not ended their move
    std::vector<std::string> m_touched; // folders
};

} // namespace tarn

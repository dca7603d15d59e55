// What the last file commands did, so that it can be taken back from the wastebasket and by the old
// names. For the run of the program. No widgets.
#pragma once

#include "common/mark.h"
#include "platform/Files.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// One change of the disk, to be taken back.
struct Done {
    enum class Kind {
        ThrownAway, // `from` stands in the wastebasket as `to`
        Renamed,    // from `from` to `to`
        Made        // `to` is a copy of `from`; taking it back throws it away, as long as it is
                    // the copy still and `from` is there
    };
    Kind kind = Kind::Made;
    std::string from;
    std::string to;
};

// A mark that a command took away or replaced.
struct MarkBefore {
    std::string path;
    Mark mark;
};

// One command's changes in their order.
struct UndoEntry {
    std::string what; // "Delete 'M31.jpg'"
    std::vector<Done> done;
    std::vector<MarkBefore> marks = {};
};

struct UndoResult {
    std::string text;              // for the message line
    std::vector<std::string> back; // full paths of what came back, in the order it had gone
    std::vector<MarkBefore> marks; // for the caller to set again
};

// Whether what stands at the target of a copy or a move is thrown away, once all bytes are there.
enum class Standing { Refuse, ThrowAway };

// Changes the disk and writes down what it did; each is false, with the system's text, when it
// could not. At the end the folders of renamed files are flushed, once for the whole command.
class Changes {
public:
    explicit Changes(Files& files) : m_files(files) {}
    ~Changes();
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    bool ThrowAway(const std::string& path, std::string* error);
    bool Rename(const std::string& from, const std::string& to, std::string* error);
    bool Copy(const std::string& from, const std::string& to, std::string* error,
              Standing standing = Standing::Refuse);
    // Onto another disk it is copied, and stands in both places until EndMove.
    bool Move(const std::string& from, const std::string& to, std::string* error,
              Standing standing = Standing::Refuse);
    // What was moved is thrown away where it still stands, unless it has changed since.
    bool EndMove(const std::string& from, std::string* error);
    // A copy that stood for a rename: the old file goes, for its bytes are in the new one. Where it
    // cannot, `error` says why, and both stay.
    bool EndRename(const std::string& from, const std::string& to, std::string* error);
    void Note(Done done) { m_done.push_back(std::move(done)); }

    // Everything that was done, or all but the first `kept`, taken back, the last first; what could
    // not be stays written down, and the first failure's text is in `error`.
    void TakeBack(std::string* error) { TakeBack(0, error); }
    void TakeBack(std::size_t kept, std::string* error);

    const std::vector<Done>& Written() const { return m_done; }

private:
    void Touch(const std::string& path);

    Files& m_files;
    std::vector<Done> m_done;
    std::map<std::string, std::optional<FileLook>>
        m_moving;                       // copies that have not ended their move
    std::vector<std::string> m_touched; // folders
};

class UndoLog {
public:
    // An entry without changes is not kept.
    void Push(UndoEntry entry);
    bool IsEmpty() const { return m_entries.empty(); }
    const std::string& NextText() const { return m_entries.back().what; }

    // Takes the last entry back, as long as `goOn` (asked with the number of the change to come,
    // from 1) says so. What could not be taken back stays for
    // another try, behind all others; what was not begun stays next.
    UndoResult Undo(Files& files, const std::function<bool(std::size_t number)>& goOn);
    std::size_t NextSize() const { return m_entries.back().done.size(); }

private:
    std::vector<UndoEntry> m_entries;
};

} // namespace tarn

// Text that no note file holds yet, in a small file of its own, so that a crash or a power cut
// costs nothing: the next start finds it.
#pragma once

#include "platform/Files.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

struct Draft {
    std::string fileName; // the picture it was written for
    std::string text;     // UTF-8
    bool operator==(const Draft&) const = default;
};

// Where text is being written.
enum class DraftPlace { Box, Manager };

// The drafts as a file, and back; what is cut off or was never such a file gives the whole ones
// before it.
std::string PackDrafts(const std::vector<Draft>& drafts);
std::vector<Draft> UnpackDrafts(std::string_view bytes);

class Drafts {
public:
    explicit Drafts(Files& files) : m_files(files) {}

    // What an earlier run left, oldest first. It stays in the file until it is saved, or restored
    // by a run that ends well.
    const std::vector<Draft>& TakeUp();

    // What an earlier run left for this picture; null when there is nothing.
    const Draft* TakenUpFor(const std::string& fileName) const;

    // Text in the making.
    void Set(DraftPlace place, Draft draft);
    void Forget(DraftPlace place);

    // Text that left its place unsaved: each is kept, whatever follows.
    void Drop(const Draft& draft);

    // The user has taken this text back into the box.
    void Restored(const std::string& text) { m_restored = text; }

    // This text is in a note file now, and with it what it was restored from.
    void Saved(const std::string& text);

    // Writes what has changed, beside what another window has written meanwhile; false, with the
    // reason, when the file cannot be written.
    bool Write(std::string* error);

    // At a good end: what was restored is the user's again, and is not offered again.
    bool EndRun(std::string* error);

private:
    std::string FilePath() const;
    void Settle(const std::string& text);
    void TakeInOthers();

    Files& m_files;
    std::vector<Draft> m_takenUp;
    std::vector<Draft> m_others; // of another window
    std::vector<Draft> m_dropped;
    std::array<std::optional<Draft>, 2> m_places;
    std::string m_restored;
    std::string m_written; // what the file holds
};

} // namespace tarn

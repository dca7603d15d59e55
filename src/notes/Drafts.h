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

// Where unsaved text can be: in the note box, in the restore buffer, in the notes manager.
enum class DraftPlace { Box, Buffer, Manager };

// The drafts as a file, and back; what is cut off or was never such a file gives the whole ones
// before it.
std::string PackDrafts(const std::vector<Draft>& drafts);
std::vector<Draft> UnpackDrafts(std::string_view bytes);

class Drafts {
public:
    explicit Drafts(Files& files) : m_files(files) {}

    // What an earlier run left. It stays in the file until it is saved or this run ends well.
    const std::vector<Draft>& TakeUp();

    void Set(DraftPlace place, Draft draft);
    void Forget(DraftPlace place);

    // This text is in a note file now.
    void Saved(const std::string& text);

    // Writes what has changed; false, with the reason, when the file cannot be written.
    bool Write(std::string* error);

    // At a good end: what was taken up was offered, and is not offered again.
    bool EndRun(std::string* error);

private:
    std::string FilePath() const;

    Files& m_files;
    std::vector<Draft> m_takenUp;
    std::array<std::optional<Draft>, 3> m_places;
    std::string m_written; // what the file holds
};

} // namespace tarn

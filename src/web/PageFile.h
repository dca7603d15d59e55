// The file of a hand-laid page while it is open for writing: from its header, or the beginning of
// an append, to its close.
#pragma once

#include "platform/Files.h"

#include <string>
#include <string_view>

namespace tarn {

// A whole file in place of what stands there, which goes to the wastebasket; never through a link
// that leads out of the folder.
bool ReplaceFile(Files& files, const std::string& path, std::string_view bytes, std::string* error);

class PageFile {
public:
    // Each writes by the `files` of the command that it belongs to.
    //
    // A new page, in place of what stood there, that begins with these bytes. False, with the
    // system's text, when it cannot be written; as the others.
    bool Create(Files& files, const std::string& path, std::string_view bytes, std::string* error);

    // Goes on with an old page over its close. Refused, before anything is written, for a page that
    // is too long or too short.
    bool Append(Files& files, const std::string& path, std::string_view now, std::string* error);

    // The next bytes. A failure leaves the page as it was, and open.
    bool Add(Files& files, std::string_view bytes, std::string* error);

    // With its last lines. The page is closed in any case.
    bool Close(Files& files, std::string* error);

    // Closed as it stands, without its last lines.
    void Leave() { m_open = false; }

    bool IsOpen() const { return m_open; }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
    std::size_t m_end = 0; // where the next bytes go
    bool m_open = false;
};

} // namespace tarn

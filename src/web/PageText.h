// Pages are bytes of code page 1252 with CR LF behind each line. What the emitters are given is in
// these bytes already: convert at the edge with ToPageBytes; notes and text files come as they are.
#pragma once

#include "common/text.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// UTF-8 as page bytes. A character without a place in the code page becomes the byte of its code
// when that is below 256, else "?". Nothing is escaped.
std::string ToPageBytes(std::string_view text);

// Whether browsers cannot follow a link to this file, whose UTF-8 name goes into the page as it is.
bool BreaksItsLink(std::string_view name);

// Whether a file is a page by its name, in any case.
bool IsPageName(std::string_view name);

// Lines of a page, one after the other.
class PageText {
public:
    // One line, joined from its parts.
    template <class... Parts> void Line(const Parts&... parts) {
        (m_bytes.append(parts), ...);
        m_bytes.append(kLineEnd);
    }

    // What is lines already.
    void Add(std::string_view lines) { m_bytes.append(lines); }

    const std::string& Bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

inline std::string NumberText(long long value) {
    return std::to_string(value);
}

// Lines of a note: parted at CR LF pairs only; an empty note has none.
std::vector<std::string> NoteLines(std::string_view note);

// The lines that let the wheel zoom the pictures of a page.
void AddZoomLines(PageText& page);

// The head of every page from the meta line to the author.
void AddHeadLines(PageText& page, std::string_view version);

// The style sheet of a gallery, as its pages name it.
void AddStyleLink(PageText& page);

inline constexpr char kStyleName[] = "slides.css";
inline constexpr char kZoomScript[] = "wheelzoom.js";
inline constexpr std::size_t kLargestScript = 1U << 20U; // bytes, and of the picture of clips
inline constexpr char kDocumentType[] = "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\">";
inline constexpr char kZoomHint[] = "Use mouse wheel to zoom, left click and hold to pan";

} // namespace tarn

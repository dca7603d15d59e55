// The XMP library behind values that free themselves. Its tables are the whole program's, so that
// one packet at a time is worked on.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace tarn {

class XmpPacket {
public:
    XmpPacket(); // an empty one
    ~XmpPacket();
    XmpPacket(const XmpPacket&) = delete;
    XmpPacket& operator=(const XmpPacket&) = delete;

    // False, and why, when the bytes are no XMP in UTF-8.
    bool Parse(std::string_view bytes, std::string* error);

    // A simple property's text.
    std::optional<std::string> Text(const char* space, const char* name) const;
    bool SetText(const char* space, const char* name, const std::string& text);
    void Delete(const char* space, const char* name);
    // Asked for or written in this space, which has this prefix unless a file has given it another.
    void NameSpace(const char* space, const char* prefix) const;

    // An XML file in UTF-8; empty when it cannot be made.
    std::string Bytes() const;

private:
    struct Own;
    std::lock_guard<std::mutex> m_lock;
    std::unique_ptr<Own> m_own;
};

} // namespace tarn

#include "marks/XmpLibrary.h"

#include <exempi/xmp.h>

#include <cstdint>
#include <iostream>

namespace tarn {

namespace {

std::mutex& LibraryLock() {
    static std::mutex lock;
    return lock;
}

// Begun at the first packet; its end is the program's.
std::mutex& BegunLibrary() {
    static const bool begun = ::xmp_init();
    (void)begun;
    return LibraryLock();
}

struct FreeString {
    void operator()(XmpStringPtr text) const { ::xmp_string_free(text); }
};
using OwnText = std::unique_ptr<_XmpString, FreeString>;

std::string StringOf(const OwnText& text) {
    return {::xmp_string_cstr(text.get()), ::xmp_string_len(text.get())};
}

// The library writes its faults to the standard error stream; they are told by whoever asked.
class Hushed {
public:
    Hushed() : m_before(std::cerr.rdbuf(nullptr)) {}
    ~Hushed() {
        std::cerr.rdbuf(m_before); // which clears the state, too
    }
    Hushed(const Hushed&) = delete;
    Hushed& operator=(const Hushed&) = delete;

private:
    std::streambuf* m_before;
};

} // namespace

struct XmpPacket::Own {
    XmpPtr xmp = ::xmp_new_empty();
    ~Own() { ::xmp_free(xmp); }
};

XmpPacket::XmpPacket() : m_lock(BegunLibrary()), m_own(std::make_unique<Own>()) {}

XmpPacket::~XmpPacket() = default;

bool XmpPacket::Parse(std::string_view bytes, std::string* error) {
    const Hushed hushed;
    if (::xmp_parse(m_own->xmp, bytes.data(), bytes.size())) return true;
    if (error) *error = "it is no XMP";
    return false;
}

std::optional<std::string> XmpPacket::Text(const char* space, const char* name) const {
    const OwnText text(::xmp_string_new());
    std::uint32_t kind = 0;
    if (!::xmp_get_property(m_own->xmp, space, name, text.get(), &kind) ||
        !XMP_IS_PROP_SIMPLE(kind))
        return {};
    return StringOf(text);
}

bool XmpPacket::SetText(const char* space, const char* name, const std::string& text) {
    return ::xmp_set_property(m_own->xmp, space, name, text.c_str(), 0);
}

void XmpPacket::Delete(const char* space, const char* name) {
    ::xmp_delete_property(m_own->xmp, space, name);
}

std::string XmpPacket::Bytes() const {
    const OwnText text(::xmp_string_new());
    if (!::xmp_serialize_and_format(m_own->xmp, text.get(),
                                    XMP_SERIAL_OMITPACKETWRAPPER | XMP_SERIAL_USECOMPACTFORMAT, 0,
                                    "\n", " ", 0))
        return {};
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + StringOf(text);
}

void XmpPacket::NameSpace(const char* space, const char* prefix) const {
    const OwnText given(::xmp_string_new());
    ::xmp_register_namespace(space, prefix, given.get());
}

} // namespace tarn

// Numbers and texts one after the other, as what is too varied for a packet's head travels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tarn {

class WireWriter {
public:
    template <typename Number> void Put(Number number) {
        static_assert(std::is_trivially_copyable_v<Number>);
        m_bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    void PutText(std::string_view text) {
        Put(std::uint32_t(text.size()));
        m_bytes += text;
    }
    std::string Take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

// What is not there reads as nothing, and IsRight says so in the end.
class WireReader {
public:
    explicit WireReader(std::string_view bytes) : m_bytes(bytes) {}

    template <typename Number> Number Get() {
        static_assert(std::is_arithmetic_v<Number>);
        Number number{};
        if (m_bytes.size() < sizeof number) {
            m_right = false;
            return number;
        }
        std::memcpy(&number, m_bytes.data(), sizeof number);
        m_bytes.remove_prefix(sizeof number);
        return number;
    }
    std::string GetText() {
        const auto size = Get<std::uint32_t>();
        if (size > m_bytes.size()) {
            m_right = false;
            return {};
        }
        std::string text(m_bytes.substr(0, size));
        m_bytes.remove_prefix(size);
        return text;
    }

    // All was there, and nothing is left.
    bool IsRight() const { return m_right && m_bytes.empty(); }

private:
    std::string_view m_bytes;
    bool m_right = true;
};

} // namespace tarn

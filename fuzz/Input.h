// The input of one run, taken apart from its front.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarn::fuzz {

class Input {
public:
    Input(const std::uint8_t* bytes, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(bytes), size) {}

    bool IsEmpty() const { return m_rest.empty(); }

    // 0 at the end.
    std::uint8_t Byte() {
        if (m_rest.empty()) return 0;
        const auto byte = static_cast<std::uint8_t>(m_rest.front());
        m_rest.remove_prefix(1);
        return byte;
    }

    // Two's complement, the low byte first.
    std::int32_t Number() {
        std::uint32_t number = 0;
        for (int i = 0; i < 4; ++i) number |= std::uint32_t(Byte()) << (8 * i);
        return static_cast<std::int32_t>(number);
    }

    // Up to the next line end, which is taken off too.
    std::string Line() {
        const std::size_t end = m_rest.find('\n');
        std::string line(m_rest.substr(0, end));
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return line;
    }

    std::string Rest() const { return std::string(m_rest); }

private:
    std::string_view m_rest;
};

} // namespace tarn::fuzz

#include "history/StepBytes.h"

namespace tarn {

namespace {

// Numbers of any size in as few bytes as they need, those below 0 as well.
void PutNumber(std::string& bytes, std::int64_t number) {
    auto rest = static_cast<std::uint64_t>(number) << 1U ^ static_cast<std::uint64_t>(number >> 63);
    for (; rest >= 0x80; rest >>= 7U) bytes.push_back(static_cast<char>(rest | 0x80U));
    bytes.push_back(static_cast<char>(rest));
}

void PutText(std::string& bytes, const std::string& text) {
    PutNumber(bytes, static_cast<std::int64_t>(text.size()));
    bytes += text;
}

void PutOptional(std::string& bytes, const std::optional<std::string>& text) {
    PutNumber(bytes, text ? 1 : 0);
    if (text) PutText(bytes, *text);
}

void PutLook(std::string& bytes, const FileLook& look) {
    for (const std::int64_t number :
         {look.inode, look.device, look.bytes, look.seconds, look.nanoseconds, look.changed}) {
        PutNumber(bytes, number);
        if (look.inode == 0) return; // nothing stood there
    }
}

class Reader {
public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes) {}

    bool IsGood() const { return m_good; }
    bool IsAtEnd() const { return m_bytes.empty(); }
    std::int64_t Number() {
        std::uint64_t number = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            if (m_bytes.empty()) return m_good = false, 0;
            const auto byte = static_cast<unsigned char>(m_bytes.front());
            m_bytes.remove_prefix(1);
            number |= std::uint64_t(byte & 0x7fU) << shift;
            if (byte < 0x80)
                return static_cast<std::int64_t>(number >> 1U) ^
                       -static_cast<std::int64_t>(number & 1U);
        }
        return m_good = false, 0;
    }
    std::string Text() {
        const std::int64_t size = Number();
        if (size < 0 || std::uint64_t(size) > m_bytes.size()) return m_good = false, std::string();
        std::string text(m_bytes.substr(0, std::size_t(size)));
        m_bytes.remove_prefix(std::size_t(size));
        return text;
    }
    std::optional<std::string> Optional() {
        return Number() == 1 ? std::optional(Text()) : std::nullopt;
    }
    FileLook Look() {
        FileLook look;
        look.inode = Number();
        // Written in full, or as the single 0 of a place where nothing stood.
        if (look.inode == 0) return look;
        for (std::int64_t* number :
             {&look.device, &look.bytes, &look.seconds, &look.nanoseconds, &look.changed})
            *number = Number();
        return look;
    }

private:
    std::string_view m_bytes;
    bool m_good = true;
};

} // namespace

std::string PackSteps(std::span<const Step> steps) {
    std::string bytes;
    bytes.reserve(steps.size() * 160);
    for (const Step& step : steps) {
        PutNumber(bytes, step.number);
        PutNumber(bytes, static_cast<std::int64_t>(step.kind));
        PutNumber(bytes, static_cast<std::int64_t>(step.state));
        PutText(bytes, step.from);
        PutText(bytes, step.to);
        PutLook(bytes, step.before);
        PutLook(bytes, step.after);
        PutNumber(bytes, step.offset);
        PutOptional(bytes, step.oldBytes);
        PutOptional(bytes, step.newBytes);
        PutText(bytes, step.aside);
    }
    return bytes;
}

std::vector<Step> UnpackSteps(std::string_view bytes) {
    std::vector<Step> steps;
    Reader read(bytes);
    while (!read.IsAtEnd()) {
        Step step;
        step.number = read.Number();
        step.kind = static_cast<StepKind>(read.Number());
        step.state = static_cast<StepState>(read.Number());
        step.from = read.Text();
        step.to = read.Text();
        step.before = read.Look();
        step.after = read.Look();
        step.offset = read.Number();
        step.oldBytes = read.Optional();
        step.newBytes = read.Optional();
        step.aside = read.Text();
        if (!read.IsGood()) break;
        steps.push_back(std::move(step));
    }
    return steps;
}

} // namespace tarn

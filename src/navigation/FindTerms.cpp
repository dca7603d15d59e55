#include "navigation/FindTerms.h"

#include "common/numbers.h"
#include "common/text.h"
#include "sky/judging/FrameNumbers.h"

#include <array>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

using Compare = bool (*)(double, double);
struct Sign {
    std::string_view text;
    Compare holds;
};
// The longer ones first. As they are shown, 3.0 is 3.
constexpr double kAlike = 1e-9;
constexpr std::array<Sign, 5> kSigns{{
    {"<=", [](double a, double b) { return a <= b; }},
    {">=", [](double a, double b) { return a >= b; }},
    {"<", [](double a, double b) { return a < b; }},
    {">", [](double a, double b) { return a > b; }},
    {"=", [](double a, double b) { return std::abs(a - b) <= kAlike * std::abs(b); }},
}};

struct Comparison {
    std::string_view name;
    Compare holds = nullptr;
    double value = 0;
};

std::optional<Comparison> ComparisonOf(std::string_view word) {
    const std::size_t at = word.find_first_of("<>=");
    if (at == std::string_view::npos) return {};
    for (const Sign& sign : kSigns) {
        if (word.substr(at, sign.text.size()) != sign.text) continue;
        const auto value = ParseNumber(std::string(word.substr(at + sign.text.size())));
        if (!value) return {};
        return Comparison{word.substr(0, at), sign.holds, *value};
    }
    return {};
}

// Names of terms, in any case.
std::string Named(std::string_view word) {
    std::string name(word);
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
    return name;
}

std::optional<Decision> DecisionOf(std::string_view word) {
    if (word == "keep" || word == "kept") return Decision::Keep;
    if (word == "reject" || word == "rejected") return Decision::Reject;
    if (word == "none") return Decision::None;
    return {};
}

} // namespace

FindTerms::FindTerms(std::string_view typed) {
    const std::string folded = FoldCase(typed);
    std::string_view rest = folded;
    std::string text;
    bool isPlain = true;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        const std::string_view word = rest.substr(0, end);
        const std::size_t next = std::min(end + 1, rest.size());
        if (auto term = word.empty() ? std::nullopt : TermOf(word)) {
            m_terms.push_back(std::move(*term));
            isPlain = isPlain && word.find_first_of("<>=:") == std::string_view::npos;
        } else {
            text += rest.substr(0, next);
        }
        rest.remove_prefix(next);
    }
    // Blanks at its end are the user's own, those beside a term are not.
    m_text = m_terms.empty() ? text : std::string(Trim(text));
    if (isPlain) m_whole = folded;
}

std::optional<FindTerms::Term> FindTerms::TermOf(std::string_view word) {
    if (const auto found = ComparisonOf(word)) {
        const auto [named, holds, value] = *found;
        const std::string name = Named(named);
        if (name == "rating")
            return [holds = holds, value = value](const FoundFile& file) {
                return holds(file.mark.stars, value);
            };
        if (name == "exposure") {
            m_needsMeasures = true;
            return [holds = holds, value = value](const FoundFile& file) {
                const auto seconds = file.frame ? ParseNumber(file.frame->exposure) : std::nullopt;
                return seconds && holds(*seconds, value);
            };
        }
        const std::size_t number = FrameNumberNamed(name);
        if (number == std::size(kFrameNumbers)) return {};
        m_needsMeasures = true;
        return [number, holds = holds, value = value](const FoundFile& file) {
            const double is = file.frame ? kFrameNumbers[number].value(*file.frame) : kNotMeasured;
            return std::isfinite(is) && holds(is, value);
        };
    }
    const std::size_t colon = word.find(':');
    const std::string asked = Named(word.substr(0, colon));
    if (colon != std::string_view::npos && asked == "filter") {
        m_needsMeasures = true;
        return [filter = std::string(word.substr(colon + 1))](const FoundFile& file) {
            return file.frame && FoldCase(file.frame->filter) == filter;
        };
    }
    const bool isMark = colon != std::string_view::npos && asked == "mark";
    const auto decision = DecisionOf(Named(isMark ? word.substr(colon + 1) : word));
    if (!decision || (!isMark && *decision == Decision::None)) return {};
    return [decision = *decision, isMark, word = std::string(word)](const FoundFile& file) {
        return file.mark.decision == decision || (!isMark && Contains(file.text, word));
    };
}

bool FindTerms::Takes(const FoundFile& file) const {
    if (!m_whole.empty() && Contains(file.text, m_whole)) return true;
    for (const Term& term : m_terms)
        if (!term(file)) return false;
    return m_text.empty() || Contains(file.text, m_text);
}

} // namespace tarn

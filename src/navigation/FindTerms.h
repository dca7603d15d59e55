// What is typed to find files: plain text, and terms of marks and measures. No widgets.
#pragma once

#include "common/mark.h"
#include "sky/judging/JudgedFrame.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// What is known of a file.
struct FoundFile {
    std::string_view text;              // name and note, folded
    const JudgedFrame* frame = nullptr; // null: not measured, or not yet
    Mark mark;
};

class FindTerms {
public:
    // "hfr>3 filter:Ha stars<200 rating>=3 reject": each term must hold. A term is a number of
    // frames (kFrameNumbers, or "exposure", "rating") with <, <=, >, >=, = and a value; or
    // "filter:", "mark:" with a word. "keep" and "reject" alone also find the word. All else is one
    // text, blanks and all, that name or note must have.
    explicit FindTerms(std::string_view typed);

    bool IsEmpty() const { return m_terms.empty() && m_text.empty(); }
    bool HasTerms() const { return !m_terms.empty(); }
    bool NeedsMeasures() const { return m_needsMeasures; }
    bool Takes(const FoundFile& file) const;

private:
    using Term = std::function<bool(const FoundFile& file)>;
    std::optional<Term> TermOf(std::string_view word);

    std::vector<Term> m_terms;
    std::string m_text;  // folded
    std::string m_whole; // all of it, where each term may be meant as a word as well
    bool m_needsMeasures = false;
};

} // namespace tarn

#include "common/mark_text.h"

namespace tarn {

namespace {

constexpr char kStar[] = "\u2605";

const char* WordOf(Decision decision, const char* kept, const char* rejected) {
    if (decision == Decision::Keep) return kept;
    return decision == Decision::Reject ? rejected : "";
}

std::string Stars(int stars) {
    if (stars == 0) return "No stars";
    return std::to_string(stars) + (stars == 1 ? " star" : " stars");
}

std::string Together(std::string word, const char* between, const std::string& stars) {
    return word.empty() || stars.empty() ? word + stars : word + between + stars;
}

} // namespace

std::string MarkText(const Mark& mark) {
    return Together(WordOf(mark.decision, "Kept", "Rejected"), " ",
                    mark.stars > 0 ? std::to_string(mark.stars) + kStar : std::string());
}

std::string SpokenMark(const Mark& mark) {
    return Together(WordOf(mark.decision, "kept", "rejected"), ", ",
                    mark.stars > 0 ? Stars(mark.stars) : std::string());
}

std::string SaidOfChange(const MarkChange& change) {
    if (!change.decision) return Stars(change.stars.value_or(0));
    const std::string word = WordOf(*change.decision, "Kept", "Rejected");
    return word.empty() ? "Mark cleared" : word;
}

} // namespace tarn

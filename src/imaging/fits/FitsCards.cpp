#include "imaging/fits/FitsCards.h"

#include "platform/OpenRegular.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace tarn {

namespace {

constexpr std::size_t kCard = 80;               // bytes
constexpr std::size_t kMostOfNumber = 28;       // characters that the message has room for
constexpr int kMostCards = 30'000;              // far more than any program writes
constexpr std::string_view kLong = "HIERARCH "; // in front of words that are longer than 8

// Words of packed pictures that are whole numbers, or begin so.
constexpr std::string_view kNumbers[] = {"ZBITPIX", "ZNAXIS", "ZTILE", "ZVAL", "ZBLANK", "ZDITHER"};

// The library divides by these, and by the last where the method is Rice's.
constexpr std::string_view kDivisors[] = {"ZNAXIS1", "ZNAXIS2", "ZNAXIS3", "ZNAXIS4",
                                          "ZNAXIS5", "ZNAXIS6", "ZTILE"};
constexpr std::string_view kRiceBlock = "ZVAL1 ";
constexpr std::string_view kMethod = "ZCMPTYPE";

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool StartsWithOneOf(std::string_view name, std::span<const std::string_view> starts) {
    return std::any_of(starts.begin(), starts.end(),
                       [&](std::string_view start) { return name.starts_with(start); });
}

// As the library reads it, which takes numbers between quotes too; 0 for what is none.
double Number(std::string_view value) {
    if (value.starts_with('\'')) value.remove_prefix(1);
    return std::strtod(std::string(value).c_str(), nullptr);
}

bool IsReadable(std::string_view card, bool rice) {
    if (card.starts_with(kLong)) card = Trimmed(card.substr(kLong.size()));
    const auto sign = card.find('=');
    if (sign == std::string_view::npos || !StartsWithOneOf(card, kNumbers)) return true;
    std::string_view value = Trimmed(card.substr(sign + 1));
    if (value.starts_with('\''))
        value = value.substr(0, value.find('\'', 1)); // without the mark at its end
    else
        value = Trimmed(value.substr(0, value.find('/')));
    const bool divides = StartsWithOneOf(card, kDivisors) || (rice && card.starts_with(kRiceBlock));
    return value.size() < kMostOfNumber && !(divides && std::abs(Number(value)) < 1);
}

// Calls `look` with each card of a header until it answers false. False where there are more than
// anybody should look through.
template <typename Look> bool EachCard(const std::string& path, long long begin, const Look& look) {
    std::string error;
    const FileHandle file = OpenRegular(path, error);
    if (!file || ::fseeko(file.get(), begin, SEEK_SET) != 0) return true;
    std::array<char, kCard> bytes{};
    for (int i = 0; i < kMostCards; ++i) {
        if (std::fread(bytes.data(), 1, kCard, file.get()) != kCard) return true;
        const std::string_view card(bytes.data(), kCard);
        if (Trimmed(card) == "END" || !look(card)) return true;
    }
    return false;
}

} // namespace

bool HasFewCards(const std::string& path) {
    return EachCard(path, 0, [](std::string_view) { return true; });
}

bool HasReadableCards(const std::string& path, long long begin) {
    bool rice = false;
    bool readable = true;
    bool riceReadable = true; // the method may stand behind its numbers
    const bool few = EachCard(path, begin, [&](std::string_view card) {
        rice = rice || (card.starts_with(kMethod) && card.find("RICE") != std::string_view::npos);
        readable = readable && IsReadable(card, false);
        riceReadable = riceReadable && IsReadable(card, true);
        return readable;
    });
    return few && (rice ? riceReadable : readable);
}

} // namespace tarn

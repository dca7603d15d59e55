#include "platform/imaging/fits/FitsCards.h"

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

namespace tarn {

namespace {

constexpr std::size_t kCard = 80;               // bytes
constexpr std::size_t kMostOfNumber = 28;       // characters that the message has room for
constexpr int kMostCards = 100'000;             // far more than any program writes
constexpr std::string_view kLong = "HIERARCH "; // in front of words that are longer than 8

// Words of packed pictures that are whole numbers, or begin so.
constexpr std::string_view kNumbers[] = {"ZBITPIX", "ZNAXIS", "ZTILE", "ZVAL", "ZBLANK", "ZDITHER"};

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool IsReadable(std::string_view card) {
    if (card.starts_with(kLong)) card = Trimmed(card.substr(kLong.size()));
    bool isNumber = false;
    for (const std::string_view name : kNumbers) isNumber = isNumber || card.starts_with(name);
    const auto sign = card.find('=');
    if (!isNumber || sign == std::string_view::npos) return true;
    std::string_view value = Trimmed(card.substr(sign + 1));
    if (value.starts_with('\''))
        value = value.substr(0, value.find('\'', 1)); // without the mark at its end
    else
        value = Trimmed(value.substr(0, value.find('/')));
    return value.size() < kMostOfNumber;
}

} // namespace

bool HasReadableCards(const std::string& path, long long begin) {
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rb"));
    if (!file || ::fseeko(file.get(), begin, SEEK_SET) != 0) return true;
    std::array<char, kCard> bytes{};
    for (int i = 0; i < kMostCards; ++i) {
        if (std::fread(bytes.data(), 1, kCard, file.get()) != kCard) return true;
        const std::string_view card(bytes.data(), kCard);
        if (Trimmed(card) == "END") return true;
        if (!IsReadable(card)) return false;
    }
    return true;
}

} // namespace tarn

#include "console/Arguments.h"

#include <algorithm>

namespace tarn {

std::optional<Arguments> Arguments::Parse(std::span<const std::string> words,
                                          std::span<const OptionRule> rules, std::string& fault) {
    Arguments arguments;
    std::size_t next = 0;
    for (; next < words.size() && words[next].size() > 1 && words[next][0] == '-'; ++next) {
        const std::string& word = words[next];
        if (word == "--") {
            ++next;
            break;
        }
        const auto rule = std::find_if(rules.begin(), rules.end(),
                                       [&](const OptionRule& known) { return known.name == word; });
        if (rule == rules.end()) {
            fault = "unknown option " + word;
            return std::nullopt;
        }
        if (rule->takesValue && next + 1 == words.size()) {
            fault = "option " + word + " needs a value";
            return std::nullopt;
        }
        arguments.options_.push_back({word, rule->takesValue ? words[++next] : std::string()});
    }
    arguments.operands_.assign(words.begin() + static_cast<std::ptrdiff_t>(next), words.end());
    return arguments;
}

bool Arguments::Has(std::string_view option) const {
    return std::any_of(options_.begin(), options_.end(),
                       [&](const Option& given) { return given.name == option; });
}

std::vector<std::string> Arguments::Values(std::string_view option) const {
    std::vector<std::string> values;
    for (const Option& given : options_) {
        if (given.name == option) values.push_back(given.value);
    }
    return values;
}

} // namespace tarn

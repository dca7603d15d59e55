#include "console/Arguments.h"

#include <algorithm>
#include <charconv>
#include <climits>

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
        const bool takesValue = !rule->value.empty();
        if (takesValue && next + 1 == words.size()) {
            fault = "option " + word + " needs a value";
            return std::nullopt;
        }
        arguments.m_options.push_back({word, takesValue ? words[++next] : std::string()});
    }
    for (std::size_t i = 0; i + 1 < rules.size(); ++i) {
        if (!rules[i].excludesNext) continue;
        if (!arguments.Has(rules[i].name) || !arguments.Has(rules[i + 1].name)) continue;
        fault = "only one of " + std::string(rules[i].name) + " and " +
                std::string(rules[i + 1].name) + " can be given";
        return std::nullopt;
    }
    arguments.m_operands.assign(words.begin() + static_cast<std::ptrdiff_t>(next), words.end());
    return arguments;
}

bool Arguments::Has(std::string_view option) const {
    return std::any_of(m_options.begin(), m_options.end(),
                       [&](const Option& given) { return given.name == option; });
}

std::vector<std::string> Arguments::Values(std::string_view option) const {
    std::vector<std::string> values;
    for (const Option& given : m_options) {
        if (given.name == option) values.push_back(given.value);
    }
    return values;
}

std::string Arguments::ValueOf(std::string_view option) const {
    const auto values = Values(option);
    return values.empty() ? std::string() : values.back();
}

bool Arguments::ReadNumber(std::string_view option, int least, int most, int& value,
                           std::string& fault) const {
    if (!Has(option)) return true;
    const std::string text = ValueOf(option);
    int number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (code == std::errc() && end == text.data() + text.size() && number >= least &&
        number <= most) {
        value = number;
        return true;
    }
    fault = std::string(option) + " must be a whole number, " +
            (most == INT_MAX ? "at least " + std::to_string(least)
                             : std::to_string(least) + " to " + std::to_string(most));
    return false;
}

} // namespace tarn

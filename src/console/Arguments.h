// The words of a command line behind the subcommand's name: options first, then the rest.
#pragma once

#include "console/Usage.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

class Arguments {
public:
    // None when an option is unknown, lacks its value or excludes another; `fault` then says which.
    // "--" ends the options.
    static std::optional<Arguments> Parse(std::span<const std::string> words,
                                          std::span<const OptionRule> rules, std::string& fault);

    bool Has(std::string_view option) const;

    // Values of an option, in the order given, and the last of them, which counts.
    std::vector<std::string> Values(std::string_view option) const;
    std::string ValueOf(std::string_view option) const; // empty when it was not given

    // A plain whole number of the range into `value`, which stays when the option was not given.
    // False with the fault when it is none.
    bool ReadNumber(std::string_view option, int least, int most, int& value,
                    std::string& fault) const;

    const std::vector<std::string>& Operands() const { return m_operands; }

private:
    struct Option {
        std::string name;
        std::string value;
    };
    std::vector<Option> m_options;
    std::vector<std::string> m_operands;
};

} // namespace tarn

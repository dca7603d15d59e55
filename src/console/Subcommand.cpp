#include "console/Subcommand.h"

#include <cstdio>

namespace tarn {

int ComplainOfUsage(std::string_view fault, const Usage& usage) {
    const std::string message = "tarn: " + std::string(fault) + "\nusage: " + TextOf(usage) + "\n";
    std::fputs(message.c_str(), stderr);
    return kExitBadUsage;
}

void ComplainOfFile(const std::string& path, std::string_view fault) {
    const std::string message = "tarn: " + path + ": " + std::string(fault) + "\n";
    std::fputs(message.c_str(), stderr);
}

} // namespace tarn

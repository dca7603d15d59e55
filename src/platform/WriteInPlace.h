// A new file where another may stand.
#pragma once

#include "platform/Descriptors.h"
#include "platform/Files.h"

#include <string>
#include <string_view>

namespace tarn {

// What stands there in any case goes to the wastebasket first, and comes back when the new one
// cannot be written.
inline bool WriteInPlace(Files& files, const std::string& target, std::string_view bytes,
                         std::string* error) {
    std::string thrown;
    if (IsPipeOrDevice(target)) {
        *error = "is a pipe or a device";
        return false;
    }
    const auto stands = files.FindAnyCase(target);
    if (stands && files.IsFolder(*stands)) {
        *error = "a folder of that name stands there";
        return false;
    }
    if (stands && !files.Trash(*stands, error, &thrown)) return false;
    if (files.Write(target, bytes, error)) return true;
    std::string stays;
    if (stands && !files.Restore(thrown, *stands, &stays))
        *error += "; what stood there is in the wastebasket: " + thrown;
    return false;
}

} // namespace tarn

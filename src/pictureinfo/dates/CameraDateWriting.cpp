#include "pictureinfo/dates/CameraDateWriting.h"

#include "common/codepage.h"
#include "pictureinfo/dates/CameraDateText.h"

namespace tarn {

std::string DateAt(const Files& files, const std::string& path, std::size_t position) {
    const auto start = files.Read(path, position + kCameraDateLength);
    if (!start || start->size() <= position) return {};
    return FromCodePage(std::string_view(*start).substr(position));
}

DateWritten WriteDate(Files& files, const std::string& path, std::size_t position,
                      const std::string& oldDate, const std::string& newBytes) {
    DateWritten done;
    if (position >= kDateReach - kCameraDateLength) {
        done.result = DateWriting::OutOfReach;
        return done;
    }
    const auto start = files.Read(path, position + kCameraDateLength, &done.error);
    if (!start) return done;
    done.found = FromCodePage(std::string_view(*start).substr(std::min(position, start->size())));
    if (done.found != oldDate) {
        done.result = DateWriting::Differs;
        return done;
    }
    if (files.WriteAt(path, position, newBytes, &done.error)) done.result = DateWriting::Written;
    return done;
}

} // namespace tarn

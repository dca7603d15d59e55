#include "follow/FinishedFile.h"

#include "common/numbers.h"
#include "common/text.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::int64_t kBlock = 2880;
constexpr std::size_t kCard = 80;
constexpr int kMostBlocks = 2000;  // of a header
constexpr int kMostParts = 10'000; // of a file
constexpr std::int64_t kMostBytes = std::int64_t(1) << 50;
constexpr std::int64_t kTail = 64 * 1024; // in which the end of a JPEG stands, whatever follows it

std::string BytesAt(int file, std::int64_t place, std::int64_t count) {
    std::string bytes(std::size_t(count), '\0');
    const ssize_t got = ::pread(file, bytes.data(), bytes.size(), place);
    bytes.resize(got > 0 ? std::size_t(got) : 0);
    return bytes;
}

// What a header says of the bytes behind it.
struct DataSize {
    std::int64_t bits = 8;
    std::int64_t axes = 0;
    std::int64_t product = 1;
    std::int64_t heap = 0;   // PCOUNT
    std::int64_t groups = 1; // GCOUNT

    void Take(std::string_view card) {
        if (card.substr(8, 2) != "= ") return;
        const std::string_view word = Trim(card.substr(0, 8));
        const std::string_view rest = card.substr(10);
        const auto value = ParseInt32(Trim(rest.substr(0, rest.find('/'))));
        if (!value) return;
        if (word == "BITPIX") bits = std::abs(std::int64_t(*value));
        if (word == "NAXIS") axes = *value;
        if (word == "PCOUNT") heap = *value;
        if (word == "GCOUNT") groups = *value;
        if (word.starts_with("NAXIS") && word.size() > 5) {
            const auto axis = std::max<std::int64_t>(0, *value);
            product = axis * std::min(product, kMostBytes / std::max<std::int64_t>(1, axis));
        }
    }
    std::int64_t Bytes() const {
        if (axes < 1) return 0;
        const std::int64_t samples =
            std::min(kMostBytes, product + std::max<std::int64_t>(0, heap));
        return std::min(kMostBytes, bits / 8 * std::max<std::int64_t>(1, groups) * samples);
    }
};

// The place behind the header at `place`; 0 where it does not end.
std::int64_t ReadHeader(int file, std::int64_t place, DataSize& data) {
    for (int block = 0; block < kMostBlocks; ++block, place += kBlock) {
        const std::string bytes = BytesAt(file, place, kBlock);
        if (bytes.size() < std::size_t(kBlock)) return 0;
        for (std::size_t at = 0; at < bytes.size(); at += kCard) {
            const std::string_view card = std::string_view(bytes).substr(at, kCard);
            if (card.starts_with("END     ")) return place + kBlock;
            data.Take(card);
        }
    }
    return 0;
}

Finished FinishedFits(int file, std::int64_t size) {
    std::int64_t place = 0;
    for (int part = 0; part < kMostParts && place < size; ++part) {
        DataSize data;
        place = ReadHeader(file, place, data);
        if (place == 0) return Finished::No;
        const std::int64_t bytes = data.Bytes();
        if (place + bytes > size) return Finished::No;
        place += (bytes + kBlock - 1) / kBlock * kBlock;
    }
    return Finished::Yes;
}

} // namespace

Finished FinishedOf(const std::string& path, const FileLook& look) {
    std::string error;
    const OpenFile file(path, error);
    struct stat status {};
    if (!file || ::fstat(file.Number(), &status) != 0) return Finished::Unknown;
    if (LookOf(status) != look) return Finished::No;
    const std::string start = BytesAt(file.Number(), 0, 9);
    if (start == "SIMPLE  =") return FinishedFits(file.Number(), status.st_size);
    if (!start.starts_with("\xFF\xD8\xFF")) return Finished::Unknown;
    const std::int64_t from = std::max<std::int64_t>(2, status.st_size - kTail);
    return BytesAt(file.Number(), from, kTail).find("\xFF\xD9") != std::string::npos ? Finished::Yes
                                                                                     : Finished::No;
}

} // namespace tarn

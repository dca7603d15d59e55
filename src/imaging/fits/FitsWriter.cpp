#include "imaging/fits/FitsWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kCard = 80;
constexpr long long kBlock = 2880;
constexpr std::size_t kTextWidth = 67;
constexpr std::size_t kHistoryWidth = 72;
constexpr std::size_t kOwnCards = 7; // of every file, and the one that ends the header

std::string Plain(std::string_view text) {
    std::string plain(text);
    for (char& sign : plain)
        if (sign < ' ' || sign > '~') sign = '?';
    return plain;
}

std::string Named(std::string_view word) {
    std::string card(word);
    card.resize(8, ' ');
    return card + "= ";
}

std::string Right(std::string value) {
    constexpr std::size_t kColumn = 20;
    return value.size() < kColumn ? std::string(kColumn - value.size(), ' ') + value : value;
}

std::string Remark(std::string_view comment) {
    return comment.empty() ? std::string() : " / " + Plain(comment);
}

} // namespace

void FitsCards::Put(std::string card) {
    card.resize(kCard, ' ');
    m_cards.push_back(std::move(card));
}

void FitsCards::Add(std::string_view word, double value, std::string_view comment) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.14G", value);
    std::string number = text.data();
    if (number.find_first_of(".EN") == std::string::npos) number += ".0";
    Put(Named(word) + Right(number) + Remark(comment));
}

void FitsCards::Add(std::string_view word, long long value, std::string_view comment) {
    Put(Named(word) + Right(std::to_string(value)) + Remark(comment));
}

void FitsCards::Add(std::string_view word, std::string_view text, std::string_view comment) {
    std::string quoted;
    for (const char sign : Plain(text)) {
        quoted += sign;
        if (sign == '\'') quoted += sign;
    }
    if (quoted.size() > kTextWidth) quoted.resize(kTextWidth);
    if (std::count(quoted.begin(), quoted.end(), '\'') % 2 == 1) quoted.pop_back(); // cut in a pair
    if (quoted.size() < 8) quoted.resize(8, ' ');
    Put(Named(word) + "'" + quoted + "'" + Remark(comment));
}

void FitsCards::AddHistory(std::string_view text) {
    const std::string plain = Plain(text);
    for (std::size_t at = 0; at == 0 || at < plain.size(); at += kHistoryWidth)
        Put("HISTORY " + plain.substr(at, kHistoryWidth));
}

void FitsCards::AddWhole(std::string_view card) {
    Put(Plain(card));
}

FitsWriter::~FitsWriter() {
    if (m_file >= 0) ::close(m_file);
}

bool FitsWriter::Fail() {
    const int number = errno;
    const std::lock_guard lock(m_mutex);
    m_error = std::strerror(number);
    return false;
}

bool FitsWriter::Create(const std::string& path, int width, int height, int planes,
                        std::size_t cards) {
    return CreateIn(::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666), width,
                    height, planes, cards);
}

bool FitsWriter::CreateIn(int file, int width, int height, int planes, std::size_t cards) {
    m_file = file;
    if (m_file < 0) return Fail();
    m_width = width;
    m_height = height;
    m_planes = planes;
    m_begin = static_cast<long long>((cards + kOwnCards) * kCard + kBlock - 1) / kBlock * kBlock;
    // Where the file system can reserve it.
    if (::fallocate(m_file, 0, 0, WholeBytes()) != 0 && errno == ENOSPC) return Fail();
    return true;
}

long long FitsWriter::WholeBytes() const {
    const long long end = m_begin + 4LL * m_width * m_height * m_planes;
    return (end + kBlock - 1) / kBlock * kBlock;
}

bool FitsWriter::PutHeader(const FitsCards& cards) {
    FitsCards start;
    start.AddWhole("SIMPLE  =                    T");
    start.Add("BITPIX", -32LL);
    start.Add("NAXIS", m_planes > 1 ? 3LL : 2LL);
    start.Add("NAXIS1", static_cast<long long>(m_width));
    start.Add("NAXIS2", static_cast<long long>(m_height));
    if (m_planes > 1) start.Add("NAXIS3", static_cast<long long>(m_planes));
    std::string header;
    for (const std::string& card : start.All()) header += card;
    for (const std::string& card : cards.All())
        if (header.size() + 2 * kCard <= std::size_t(m_begin)) header += card;
    header += "END";
    header.resize(std::size_t(m_begin), ' ');
    return Put(0, header.data(), header.size());
}

bool FitsWriter::Put(long long at, const void* bytes, std::size_t count) {
    const char* from = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t written = ::pwrite(m_file, from, count, at);
        if (written <= 0) return Fail();
        from += written;
        at += written;
        count -= std::size_t(written);
    }
    return true;
}

bool FitsWriter::WriteRows(int plane, int row, int rows, const float* values) {
    const std::size_t count = std::size_t(rows) * std::size_t(m_width);
    std::vector<std::uint32_t> bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto bits = std::bit_cast<std::uint32_t>(values[i]);
        bytes[i] = std::endian::native == std::endian::little ? __builtin_bswap32(bits) : bits;
    }
    const long long at = (1LL * plane * m_height + row) * m_width;
    if (!Put(m_begin + at * 4, bytes.data(), count * 4)) return false;
    m_rows += rows;
    return true;
}

bool FitsWriter::Close(const FitsCards& cards) {
    const long long end = m_begin + 4LL * m_width * m_height * m_planes;
    const std::string rest(std::size_t(WholeBytes() - end), '\0');
    if (m_rows != 1LL * m_height * m_planes) {
        m_error = "rows of the picture are missing";
        return false;
    }
    const bool written = Put(end, rest.data(), rest.size()) && PutHeader(cards);
    const bool closed = ::close(m_file) == 0;
    m_file = -1;
    return written && (closed || Fail());
}

} // namespace tarn

// A FITS picture of 32-bit floats written row by row.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// Lines of a header, 80 signs each.
class FitsCards {
public:
    void Add(std::string_view word, double value, std::string_view comment = {});
    void Add(std::string_view word, long long value, std::string_view comment = {});
    void Add(std::string_view word, std::string_view text, std::string_view comment = {});
    // As many lines as it takes; what is no plain sign becomes "?".
    void AddHistory(std::string_view text);
    void AddWhole(std::string_view card); // a line of another header

    const std::vector<std::string>& All() const { return m_cards; }

private:
    void Put(std::string card);

    std::vector<std::string> m_cards;
};

class FitsWriter {
public:
    FitsWriter() = default;
    ~FitsWriter();
    FitsWriter(const FitsWriter&) = delete;
    FitsWriter& operator=(const FitsWriter&) = delete;

    // A new file with room for so many lines of its header; refused where something stands, or
    // where the disk has no room for all of it. False, as below, with `Error`.
    bool Create(const std::string& path, int width, int height, int planes, std::size_t cards);
    // Into a file that is open and empty, which is closed with this.
    bool CreateIn(int file, int width, int height, int planes, std::size_t cards);

    // Rows of a plane, in the order of the file; any thread.
    bool WriteRows(int plane, int row, int rows, const float* values);

    // Its header, as many lines as there is room for; the file is whole after this. Refused where
    // rows are missing.
    bool Close(const FitsCards& cards);

    const std::string& Error() const { return m_error; } // once all threads are done

private:
    bool PutHeader(const FitsCards& cards);
    bool Put(long long at, const void* bytes, std::size_t count);
    long long WholeBytes() const;
    bool Fail();

    int m_file = -1;
    int m_width = 0;
    int m_height = 0;
    int m_planes = 1;
    long long m_begin = 0;             // of the samples
    std::atomic<long long> m_rows = 0; // that are written, of all planes
    std::mutex m_mutex;                // of m_error
    std::string m_error;
};

} // namespace tarn

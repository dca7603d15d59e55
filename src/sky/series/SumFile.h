// A sum on its way into a file: a nameless one of a folder, which is gone with this however it
// ends.
#pragma once

#include "imaging/fits/FitsWriter.h"
#include "sky/stack/Scratch.h"
#include "sky/stack/Stack.h"

#include <string>
#include <string_view>

namespace tarn {

class SumFile : public SumTarget {
public:
    SumFile(const std::string& folder, std::size_t frames) : m_file(folder), m_frames(frames) {}
    ~SumFile() override;
    SumFile(const SumFile&) = delete;
    SumFile& operator=(const SumFile&) = delete;

    bool Begin(int width, int height, int colours) override;
    bool Write(int colour, int row, int rows, const float* values) override;
    // With this header it is whole. False, as above, with `Error`.
    bool Close(const FitsCards& cards);
    const std::string& Error() const { return m_error.empty() ? m_writer.Error() : m_error; }

    std::string_view Bytes() const { return {static_cast<const char*>(m_bytes), m_count}; }

private:
    Scratch m_file;
    std::size_t m_frames;
    FitsWriter m_writer;
    std::string m_error;
    void* m_bytes = nullptr;
    std::size_t m_count = 0;
};

} // namespace tarn

// A sum kept to be looked at: in a nameless file of a folder, which the system holds in memory as
// far as it can spare that.
#pragma once

#include "sky/stack/Scratch.h"
#include "sky/stack/Stack.h"

#include <memory>
#include <string>

namespace tarn {

class SumPixels : public SumTarget, public std::enable_shared_from_this<SumPixels> {
public:
    explicit SumPixels(const std::string& folder) : m_file(folder) {}
    ~SumPixels() override;
    SumPixels(const SumPixels&) = delete;
    SumPixels& operator=(const SumPixels&) = delete;

    bool Begin(int width, int height, int colours) override; // false: the disk has no room
    bool Write(int colour, int row, int rows, const float* values) override;

    FrameSamples Samples() const;        // of which this is kept
    bool WriteInto(SumTarget& to) const; // all of it

private:
    std::size_t Bytes() const;

    Scratch m_file;
    int m_width = 0;
    int m_height = 0;
    int m_colours = 0;
    float* m_values = nullptr;
};

} // namespace tarn

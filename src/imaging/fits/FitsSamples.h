// The samples of a telescope's picture as they are stored, whatever the kind of file.
#pragma once

#include "imaging/fits/FitsHeader.h"
#include "imaging/fits/ScreenStretch.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>

#include <sys/mman.h>

namespace tarn {

// Samples are this process's own, or so many bytes of memory that another one has filled.
struct FreeSamples {
    FreeSamples() = default;
    explicit FreeSamples(std::size_t bytes) : mapped(bytes) {}
    template <typename Sample> FreeSamples(std::default_delete<Sample[]>) {}

    template <typename Sample> void operator()(Sample* samples) const {
        if (mapped > 0)
            ::munmap(samples, mapped);
        else
            delete[] samples;
    }

    std::size_t mapped = 0;
};
template <typename Sample> using SamplesOf = std::unique_ptr<Sample[], FreeSamples>;

// The samples of one picture in the order of the file: row after row, plane after plane. Those of 8
// and 16 bits stand in `words`, all others in `floats`, where NaN means that there is none.
struct FitsSamples {
    FitsHeader header;
    SamplesOf<std::uint16_t> words;
    SamplesOf<float> floats; // the file's scale is in them already
    double zero = 0;         // value of a word = zero + scale * word
    double scale = 1;
    std::optional<ValueRange> range; // where the file says what is black and what is white
    std::size_t count = 0; // samples from the start that could be read; all others are not set

    std::size_t PerPlane() const { return std::size_t(header.width) * std::size_t(header.height); }
    std::size_t All() const { return PerPlane() * std::size_t(header.planes); }
};

// Null where there is no memory for so many.
template <typename Sample> std::unique_ptr<Sample[]> RoomFor(std::size_t count) {
    return std::unique_ptr<Sample[]>(new (std::nothrow) Sample[count]);
}

} // namespace tarn

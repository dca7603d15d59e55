// Which picture of a file that has several is shown. One choice for the whole program, of one file,
// and guarded, since decoders on all threads ask it; of all other files it is the first.
#pragma once

#include <cstdint>

namespace tarn {

struct ImageChoice {
    std::int64_t device = 0;
    std::int64_t inode = 0;
    int image = 0; // from 0
};

void ChooseImage(const ImageChoice& choice);

// The first, too, where AutomaticStretchOnly holds.
int ChosenImage(std::int64_t device, std::int64_t inode);

// While one lives, its thread reads this image of every file, whatever is chosen meanwhile.
class ReadsImage {
public:
    explicit ReadsImage(int image);
    ~ReadsImage();
    ReadsImage(const ReadsImage&) = delete;
    ReadsImage& operator=(const ReadsImage&) = delete;

private:
    int m_before;
};

} // namespace tarn

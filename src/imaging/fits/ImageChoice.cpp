#include "imaging/fits/ImageChoice.h"

#include "imaging/fits/ScreenStretch.h"

#include <mutex>
#include <utility>

namespace tarn {

namespace {

constexpr int kAsChosen = -1;

thread_local int readsImage = kAsChosen;

std::mutex& Guard() {
    static std::mutex mutex;
    return mutex;
}

ImageChoice& Chosen() {
    static ImageChoice choice;
    return choice;
}

} // namespace

void ChooseImage(const ImageChoice& choice) {
    const std::lock_guard lock(Guard());
    Chosen() = choice;
}

int ChosenImage(std::int64_t device, std::int64_t inode) {
    if (readsImage != kAsChosen) return readsImage;
    if (IsAutomaticOnly()) return 0;
    const std::lock_guard lock(Guard());
    const ImageChoice& choice = Chosen();
    return choice.device == device && choice.inode == inode ? choice.image : 0;
}

ReadsImage::ReadsImage(int image) : m_before(std::exchange(readsImage, image)) {}

ReadsImage::~ReadsImage() {
    readsImage = m_before;
}

} // namespace tarn

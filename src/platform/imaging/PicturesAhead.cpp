#include "platform/imaging/PicturesAhead.h"

namespace tarn {

PicturesAhead::PicturesAhead() = default;
PicturesAhead::~PicturesAhead() = default;

void PicturesAhead::Expect(const std::vector<PictureWish>&) {}

std::shared_ptr<PictureSource> PicturesAhead::Take(const std::string&, QSize) {
    return nullptr;
}

} // namespace tarn

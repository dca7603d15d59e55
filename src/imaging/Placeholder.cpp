#include "imaging/Placeholder.h"

namespace tarn {

Placeholder PlaceholderFor(std::string_view fileType) {
    if (fileType == "FITS" || fileType == ".FIT") return {"FITS_image.jpg", true, true, false};
    if (fileType == ".CR2") return {"Canon_raw.jpg", false, false, false};
    if (fileType == ".MP4") return {"MP4.jpg", false, false, false};
    return {"No_image.jpg", true, false, true};
}

} // namespace tarn

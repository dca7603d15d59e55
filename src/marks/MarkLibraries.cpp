#include "marks/MarkLibraries.h"

namespace tarn {

std::vector<Library> MarkLibraries() {
    return {{"exempi", TARN_EXEMPI_VERSION, ""}};
}

} // namespace tarn

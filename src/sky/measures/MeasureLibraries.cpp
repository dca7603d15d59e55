#include "sky/measures/MeasureLibraries.h"

#include <sqlite3.h>

namespace tarn {

std::vector<Library> MeasureLibraries() {
    return {{"SQLite", SQLITE_VERSION, ::sqlite3_libversion()}};
}

} // namespace tarn

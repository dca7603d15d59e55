// What was measured once, kept in a database of the cache folder: it may be thrown away.
#pragma once

#include "common/file_look.h"
#include "sky/stars/FrameMeasures.h"

#include <memory>
#include <optional>
#include <string>

struct sqlite3;

namespace tarn {

// For one thread. A database that is damaged is begun anew; one that cannot be had, is locked or
// cannot be written holds nothing, and nothing is told of it.
class MeasureStore {
public:
    // The file, whose folder is there; it is made when it is missing.
    explicit MeasureStore(const std::string& file);
    ~MeasureStore();
    MeasureStore(const MeasureStore&) = delete;
    MeasureStore& operator=(const MeasureStore&) = delete;

    // Of a file as it was at this look, measured by the method of this program.
    std::optional<FrameMeasures> Find(const std::string& path, const FileLook& look);

    void Put(const std::string& path, const FileLook& look, const FrameMeasures& measures);

    // Drops what is kept of files directly in the folder that are not there any more.
    void DropVanished(const std::string& folder);

private:
    bool Open(const std::string& file);
    void Close();

    sqlite3* m_database = nullptr;
};

} // namespace tarn

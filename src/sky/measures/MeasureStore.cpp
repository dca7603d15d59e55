#include "sky/measures/MeasureStore.h"

#include "common/paths.h"
#include "platform/Statement.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/stat.h>
#include <vector>

#include <sqlite3.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr int kPatience = 200; // milliseconds for another program that writes
constexpr char kTable[] =
    "CREATE TABLE IF NOT EXISTS measures(path BLOB PRIMARY KEY, bytes INTEGER, seconds INTEGER,"
    " nanoseconds INTEGER, method INTEGER, width INTEGER, height INTEGER, stars INTEGER,"
    " saturated INTEGER, hfr REAL, fwhm REAL, eccentricity REAL, background REAL, noise REAL,"
    " sharpness REAL, brightest BLOB, series TEXT, fault TEXT) WITHOUT ROWID";

// The real columns, in the order of the table.
constexpr double FrameMeasures::*kReals[] = {
    &FrameMeasures::hfr,        &FrameMeasures::fwhm,  &FrameMeasures::eccentricity,
    &FrameMeasures::background, &FrameMeasures::noise, &FrameMeasures::sharpness};
constexpr int FrameMeasures::*kWholes[] = {&FrameMeasures::width, &FrameMeasures::height,
                                           &FrameMeasures::stars, &FrameMeasures::saturated};

std::vector<StarPlace> PlacesOf(const std::string& bytes) {
    std::vector<StarPlace> places(bytes.size() / sizeof(StarPlace));
    if (!places.empty())
        std::memcpy(places.data(), bytes.data(), places.size() * sizeof(StarPlace));
    return places;
}

bool IsDamaged(int code) {
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

} // namespace

MeasureStore::MeasureStore(const std::string& file) {
    if (Open(file)) return;
    const bool damaged = m_database && IsDamaged(::sqlite3_errcode(m_database));
    Close();
    if (!damaged) return;
    for (const char* part : {"", "-wal", "-shm"}) ::unlink((file + part).c_str());
    if (!Open(file)) Close();
}

MeasureStore::~MeasureStore() {
    Close();
}

bool MeasureStore::Open(const std::string& file) {
    if (::sqlite3_open_v2(file.c_str(), &m_database,
                          SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                          nullptr) != SQLITE_OK)
        return false;
    ::sqlite3_busy_timeout(m_database, kPatience);
    // What a power cut takes is measured again.
    for (const char* order : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=OFF", kTable})
        if (::sqlite3_exec(m_database, order, nullptr, nullptr, nullptr) != SQLITE_OK) return false;
    return true;
}

void MeasureStore::Close() {
    ::sqlite3_close(m_database);
    m_database = nullptr;
}

std::optional<FrameMeasures> MeasureStore::Find(const std::string& path, const FileLook& look) {
    Statement find(m_database,
                   "SELECT width, height, stars, saturated, hfr, fwhm, eccentricity, background,"
                   " noise, sharpness, brightest, series, fault FROM measures"
                   " WHERE path=? AND bytes=? AND seconds=? AND nanoseconds=? AND method=?");
    find.Add(path).Add(look.bytes).Add(look.seconds).Add(look.nanoseconds);
    find.Add(std::int64_t(kMeasuringMethod));
    if (!find.HasRow()) return std::nullopt;
    FrameMeasures measures;
    int column = 0;
    for (const auto whole : kWholes) measures.*whole = int(find.Whole(column++));
    for (const auto real : kReals) measures.*real = find.Real(column++);
    measures.brightest = PlacesOf(find.Bytes(column++));
    measures.series = find.Bytes(column++);
    measures.fault = find.Bytes(column++);
    return measures;
}

void MeasureStore::Put(const std::string& path, const FileLook& look,
                       const FrameMeasures& measures) {
    Statement put(m_database, "INSERT OR REPLACE INTO measures"
                              " VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    put.Add(path).Add(look.bytes).Add(look.seconds).Add(look.nanoseconds);
    put.Add(std::int64_t(kMeasuringMethod));
    for (const auto whole : kWholes) put.Add(std::int64_t(measures.*whole));
    for (const auto real : kReals) put.Add(measures.*real);
    put.AddBytes(measures.brightest.data(), measures.brightest.size() * sizeof(StarPlace));
    put.Add(measures.series).Add(measures.fault);
    put.Run();
}

void MeasureStore::DropVanished(const std::string& folder) {
    const std::string start = JoinPath(folder, "");
    std::vector<std::string> gone;
    {
        Statement all(m_database, "SELECT path FROM measures WHERE substr(path, 1, ?) = ?");
        all.Add(std::int64_t(start.size())).Add(start);
        while (all.HasRow()) {
            const std::string path = all.Bytes(0);
            struct stat status {};
            const bool isBelow = path.find('/', start.size()) != std::string::npos;
            if (!isBelow && ::lstat(path.c_str(), &status) != 0 && errno == ENOENT)
                gone.push_back(path);
        }
    }
    for (const std::string& path : gone)
        Statement(m_database, "DELETE FROM measures WHERE path=?").Add(path).Run();
}

} // namespace tarn

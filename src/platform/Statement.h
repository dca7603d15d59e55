// One statement of an SQLite database, bound from the left.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace tarn {

class Statement {
public:
    Statement(sqlite3* database, const char* text) {
        if (database) ::sqlite3_prepare_v2(database, text, -1, &m_statement, nullptr);
    }
    ~Statement() { ::sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& Add(std::int64_t value) {
        if (m_statement) ::sqlite3_bind_int64(m_statement, ++m_bound, value);
        return *this;
    }
    Statement& Add(double value) { // what is not a number becomes none
        if (m_statement) ::sqlite3_bind_double(m_statement, ++m_bound, value);
        return *this;
    }
    Statement& AddBytes(const void* bytes, std::size_t count) {
        if (m_statement)
            ::sqlite3_bind_blob64(m_statement, ++m_bound, count ? bytes : "", count,
                                  SQLITE_TRANSIENT);
        return *this;
    }
    Statement& Add(std::string_view bytes) { return AddBytes(bytes.data(), bytes.size()); }
    Statement& AddText(std::string_view text) {
        if (m_statement)
            ::sqlite3_bind_text64(m_statement, ++m_bound, text.empty() ? "" : text.data(),
                                  text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
        return *this;
    }
    Statement& AddNone() {
        if (m_statement) ::sqlite3_bind_null(m_statement, ++m_bound);
        return *this;
    }

    bool HasRow() { return m_statement && ::sqlite3_step(m_statement) == SQLITE_ROW; }
    bool Run() { return m_statement && ::sqlite3_step(m_statement) == SQLITE_DONE; }

    // For other values.
    void Reset() {
        ::sqlite3_reset(m_statement);
        m_bound = 0;
    }

    std::int64_t Whole(int column) const { return ::sqlite3_column_int64(m_statement, column); }
    bool IsNone(int column) const {
        return ::sqlite3_column_type(m_statement, column) == SQLITE_NULL;
    }
    double Real(int column) const { // not a number where there is none
        return IsNone(column) ? std::numeric_limits<double>::quiet_NaN()
                              : ::sqlite3_column_double(m_statement, column);
    }
    std::string Bytes(int column) const {
        const void* bytes = ::sqlite3_column_blob(m_statement, column);
        const int count = ::sqlite3_column_bytes(m_statement, column);
        return bytes ? std::string(static_cast<const char*>(bytes), std::size_t(count))
                     : std::string();
    }

private:
    sqlite3_stmt* m_statement = nullptr;
    int m_bound = 0;
};

} // namespace tarn

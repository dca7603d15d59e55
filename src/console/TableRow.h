// Rows of a table on the standard output.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace tarn {

// Fields of one row, divided by commas or, not for other programs, by tabs.
class TableRow {
public:
    explicit TableRow(bool csv) : m_csv(csv) {}

    TableRow& Add(std::string_view field);
    TableRow& Add(int number);
    TableRow& Add(double value, int decimals); // empty for what is not a number
    // Of any size, in the shortest form.
    TableRow& AddValue(double value);
    void Print() const;

private:
    bool m_csv;
    bool m_begun = false;
    std::string m_text;
};

void PrintColumnNames(bool csv, std::initializer_list<const char*> names);

} // namespace tarn

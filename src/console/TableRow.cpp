#include "console/TableRow.h"

#include "common/csv.h"
#include "common/numbers.h"

#include <cmath>
#include <cstdio>

namespace tarn {

namespace {

std::string OnOneLine(std::string_view field) {
    std::string line(field);
    for (char& sign : line)
        if (sign == '\t' || sign == '\n' || sign == '\r') sign = ' ';
    return line;
}

} // namespace

TableRow& TableRow::Add(std::string_view field) {
    if (m_begun) m_text += m_csv ? ',' : '\t';
    m_begun = true;
    m_text += m_csv ? CsvField(field) : OnOneLine(field);
    return *this;
}

TableRow& TableRow::Add(int number) {
    return Add(std::to_string(number));
}

TableRow& TableRow::Add(double value, int decimals) {
    return Add(std::isfinite(value) ? FormatFixed(value, decimals) : std::string());
}

TableRow& TableRow::AddValue(double value) {
    return Add(std::isfinite(value) ? ShortestSingle(float(value)) : std::string());
}

void TableRow::Print() const {
    std::puts(m_text.c_str());
}

void PrintColumnNames(bool csv, std::initializer_list<const char*> names) {
    TableRow row(csv);
    for (const char* name : names) row.Add(name);
    row.Print();
}

} // namespace tarn

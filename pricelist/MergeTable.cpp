// Column positions of a table.
#include "pricelist/MergeTable.h"

namespace {

// One character of text is 0.9 of a width unit.
constexpr double kCharacterWidth = 0.9;

}  // namespace

MergeTable::MergeTable(double keptDouble, double scale, const std::int32_t* widths,
                       std::int32_t columnCount, std::int32_t keptValue)
    : m_columnCount(columnCount),
      m_keptValue(keptValue),
      m_totalWidth(0.0),
      m_keptDouble(keptDouble),
      m_scale(scale),
      m_widths(widths) {
    m_totalWidth = ColumnStart(columnCount);
}

// Columns past the last one start where the table ends.
double MergeTable::ColumnStart(int column) const {
    long long sum = 0;
    for (int k = 0; k < column && k < m_columnCount; ++k) sum += m_widths[k];
    return static_cast<double>(sum) * m_scale;
}

double MergeTable::CentredTextStart(unsigned textLength, int column) const {
    const double width =
        (column >= 0 && column < m_columnCount) ? static_cast<double>(m_widths[column]) : 0.0;
    return ColumnStart(column) + (width - kCharacterWidth * textLength) * m_scale * 0.5;
}

// Horizontal positions in a table of columns given in character widths: column starts and the start
// of a text centred in a column.
#pragma once

#include <cstdint>

class MergeTable {
public:
    // `widths` (one per column, in characters) belongs to the caller and must outlive the table.
    // The kept values mean what the creator wants them to mean (the price table: row height, rows).
    MergeTable(double keptDouble, double scale, const std::int32_t* widths, std::int32_t columnCount,
               std::int32_t keptValue);
    virtual ~MergeTable() = default;

    double ColumnStart(int column) const;
    double CentredTextStart(unsigned textLength, int column) const;

    double TotalWidth() const { return m_totalWidth; }
    double KeptDouble() const { return m_keptDouble; }
    std::int32_t KeptValue() const { return m_keptValue; }
    std::int32_t ColumnCount() const { return m_columnCount; }
    double Scale() const { return m_scale; }

private:
    std::int32_t m_columnCount;
    std::int32_t m_keptValue;
    double m_totalWidth;
    double m_keptDouble;
    double m_scale;
    const std::int32_t* m_widths;
};

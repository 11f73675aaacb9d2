// The bill of materials drawn into the working drawing as a table block: ruled lines and one
// attribute definition per heading and cell, named "QTB" and four digits, in the style "QTBTABLE".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bom/BomRows.h"
#include "host/api/acdbdatabase.h"
#include "pricelist/MergeTable.h"

inline constexpr const wchar_t* kTableTextStyle = L"QTBTABLE";
inline constexpr const wchar_t* kTableFontFile = L"simpheb.shx";

// Attribute tags of the heading row; data rows append their 1-based row number.
inline constexpr const wchar_t* kTableColumnTags[kBomColumnCount] = {
    L"BLOCKNAME", L"PRICE", L"QUANTITY", L"DESCRIPTION", L"TOTAL"};

// 1 when "QTBTABLE" exists already, 0 when it was created (or there is no drawing).
int EnsureTableTextStyle();

// Whether a block is named as the tables are: "QTB" and four characters, without regard to case.
bool IsTableBlockName(const std::wstring& name);

// The next free name "QTB%04i" after the highest QTB number of the block table. False, after the
// alert "Too large number for name of table price", when it would pass 9999.
bool NextTableBlockName(std::wstring& name);

// The largest text length + 1 of each column over the headings and the rows; columns 1 and 4 are
// 0 wide while prices are hidden.
void ComputeColumnChars(const std::vector<BomRow>& rows, bool showPrices, std::int32_t* widths,
                        int count);

// How a table shows its cells: attribute definitions with an attributed reference (the CAD
// program's form), or plain texts at the same points that every viewer draws, each naming its
// cell in extended data.
enum class TableForm { Attributes, Texts };

// The extended data item that names a text's cell ("QUANTITY3") in the text form.
inline constexpr const wchar_t* kTableCellKey = L"CELL";

struct PriceTableExtent {
    double width = 0.0;
    double height = 0.0;
};

// Draws the rows (as the grid shows them) into the block, creating it when it does not exist, with
// its base point at the table's upper left corner. 1 on success with the table's size at this
// scale; 0 after an alert.
int DrawPriceTable(const std::vector<BomRow>& rows, bool showPrices, const wchar_t* blockName,
                   const wchar_t* styleName, double scale, PriceTableExtent& extent,
                   TableForm form = TableForm::Attributes);

// Justification: 0 left, 1 centre, 2 right. The text keeps 1 drawing unit from the column's rules.
AcDbAttributeDefinition MakeAttributeDefinition(const AcGePoint3d& position, double height,
                                                double widthFactor, const std::wstring& text,
                                                const std::wstring& tag, AcDbObjectId textStyle,
                                                const MergeTable& layout, int column,
                                                int justification);

Acad::ErrorStatus AddLine(AcDbDatabase& database, AcDbObjectId record, const AcGePoint3d& start,
                          const AcGePoint3d& end);

// Whether a description reads right to left: a letter of the 8-bit Hebrew code page (224..250) or
// a Hebrew letter U+05D0..U+05EA.
bool IsRightToLeft(const std::wstring& text);

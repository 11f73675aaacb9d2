// Drawing the price table block.
#include "bom/PriceTable.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

#include "bom/TableSource.h"
#include "host/api/acededitor.h"
#include "text/CaseRules.h"
#include "text/Numbers.h"

namespace {

constexpr int kHighestSerial = 9999;
constexpr double kTextMargin = 1.0;  // drawing units, not scaled

bool IsPriceColumn(int column) { return column == kPriceColumn || column == kTotalColumn; }

// Looks the block up and creates it when missing; 0 after the alert when the table fails otherwise.
bool OpenTableBlock(AcDbDatabase& database, const wchar_t* blockName, AcDbObjectId& record) {
    const Acad::ErrorStatus status = database.getBlockTableRecordId(blockName, record);
    if (status == Acad::eOk) return true;
    if (status == Acad::eKeyNotFound && database.addBlockTableRecord(blockName, record) == Acad::eOk)
        return true;
    acedAlert(L"Cannot get an object \"AcDbBlockTableRecord\" for the price table");
    return false;
}

bool FindTextStyle(const AcDbDatabase& database, const wchar_t* styleName, AcDbObjectId& style) {
    if (database.getTextStyleId(styleName, style) == Acad::eOk) return true;
    if (database.getTextStyleId(L"Standard", style) == Acad::eOk) return true;
    acedAlert(L"Cannot get an object \"AcDbTextStyleTableRecord\" for the price table");
    return false;
}

// Draws the table's cells, in the form asked for, and its rules.
class TableWriter {
public:
    TableWriter(AcDbDatabase& database, AcDbObjectId record, AcDbObjectId style,
                const MergeTable& layout, double scale, TableForm form)
        : m_database(database),
          m_record(record),
          m_style(style),
          m_layout(layout),
          m_scale(scale),
          m_form(form) {}

    void Text(double y, const std::wstring& text, const std::wstring& tag, int column,
              int justification) {
        const AcDbAttributeDefinition definition =
            MakeAttributeDefinition({0.0, y, 0.0}, m_scale, 1.0, text, tag, m_style, m_layout,
                                    column, justification);
        AcDbObjectId id;
        if (m_form == TableForm::Attributes) {
            m_database.appendAttributeDefinition(m_record, definition, id);
            return;
        }
        const AcDbText plain{definition.position,    definition.alignmentPoint,
                             definition.height,      definition.widthFactor,
                             definition.textString,  definition.textStyle,
                             definition.horizontalMode, definition.verticalMode};
        if (m_database.appendText(m_record, plain, id) != Acad::eOk) return;
        m_database.setXData(id, kTableApplication,
                            {resbuf::groupCode(1000, kTableCellKey), resbuf::groupCode(1000, tag)});
    }

    void Rule(double y) { AddLine(m_database, m_record, {Width(), y, 0.0}, {0.0, y, 0.0}); }

    void Vertical(int column, double bottom, double top) {
        const double x = m_layout.ColumnStart(column);
        AddLine(m_database, m_record, {x, bottom, 0.0}, {x, top, 0.0});
    }

    double Width() const { return m_layout.ColumnStart(kBomColumnCount); }

private:
    AcDbDatabase& m_database;
    AcDbObjectId m_record;
    AcDbObjectId m_style;
    const MergeTable& m_layout;
    double m_scale;
    TableForm m_form;
};

}  // namespace

int EnsureTableTextStyle() {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) return 0;
    AcDbObjectId id;
    if (database->getTextStyleId(kTableTextStyle, id) == Acad::eOk) return 1;
    database->addTextStyle(AcDbTextStyleTableRecord{kTableTextStyle, kTableFontFile}, id);
    return 0;
}

bool IsTableBlockName(const std::wstring& name) {
    return name.size() == 7 && MakeUpper(name.substr(0, 3)) == L"QTB";
}

bool NextTableBlockName(std::wstring& name) {
    int highest = 0;
    if (const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase()) {
        for (const AcDbObjectId id : database->blockTableRecordIds()) {
            std::wstring recordName;
            if (database->getBlockTableRecordName(id, recordName) != Acad::eOk) continue;
            if (!IsTableBlockName(recordName)) continue;
            highest = std::max(highest, WToI(std::wstring_view(MakeUpper(recordName)).substr(3)));
        }
    }
    const int next = highest + 1;
    if (next > kHighestSerial) {
        acedAlert(L"Too large number for name of table price");
        return false;
    }
    wchar_t buffer[16];
    std::swprintf(buffer, 16, L"QTB%04i", next);
    name = buffer;
    return true;
}

void ComputeColumnChars(const std::vector<BomRow>& rows, bool showPrices, std::int32_t* widths,
                        int count) {
    for (int k = 0; k < count; ++k) {
        const auto column = static_cast<std::size_t>(k);
        std::size_t widest = k < kBomColumnCount ? std::wcslen(BomColumnTitles[column]) + 1 : 0;
        for (const auto& row : rows) {
            if (k < kBomColumnCount) widest = std::max(widest, row[column].size() + 1);
        }
        widths[k] = static_cast<std::int32_t>(widest);
    }
    if (!showPrices) {
        if (count > kPriceColumn) widths[kPriceColumn] = 0;
        if (count > kTotalColumn) widths[kTotalColumn] = 0;
    }
}

int DrawPriceTable(const std::vector<BomRow>& rows, bool showPrices, const wchar_t* blockName,
                   const wchar_t* styleName, double scale, PriceTableExtent& extent,
                   TableForm form) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectId record;
    AcDbObjectId style;
    if (database == nullptr || !OpenTableBlock(*database, blockName, record)) return 0;
    if (!FindTextStyle(*database, styleName, style)) return 0;

    const double s = scale;
    std::int32_t widths[kBomColumnCount];
    ComputeColumnChars(rows, showPrices, widths, kBomColumnCount);
    const MergeTable layout(s, 1.2 * s, widths, kBomColumnCount, static_cast<std::int32_t>(rows.size()));
    // The texts' cells are named under the application the tables record their source with.
    if (form == TableForm::Texts) database->registerApplication(kTableApplication);
    TableWriter table(*database, record, style, layout, s, form);

    const double top = 2.0 * s;
    double y = 0.0;
    table.Rule(top);
    for (int k = 0; k < kBomColumnCount; ++k) {
        if (IsPriceColumn(k) && !showPrices) continue;
        table.Text(y, BomColumnTitles[static_cast<std::size_t>(k)], kTableColumnTags[k], k, 1);
    }
    y -= s;
    table.Rule(y);
    y -= 2.0 * s;

    for (std::size_t i = 0; i < rows.size(); ++i) {
        const BomRow& row = rows[i];
        if (row[kNameColumn] == kSummaryName && !showPrices) continue;
        const std::wstring number = std::to_wstring(i + 1);
        auto tag = [&number](int column) { return kTableColumnTags[column] + number; };
        table.Text(y, row[kNameColumn], tag(kNameColumn), kNameColumn, 0);
        if (showPrices) table.Text(y, row[kPriceColumn], tag(kPriceColumn), kPriceColumn, 2);
        table.Text(y, row[kQuantityColumn], tag(kQuantityColumn), kQuantityColumn, 2);
        table.Text(y, row[kDescriptionColumn], tag(kDescriptionColumn), kDescriptionColumn,
                   IsRightToLeft(row[kDescriptionColumn]) ? 2 : 0);
        if (showPrices) table.Text(y, row[kTotalColumn], tag(kTotalColumn), kTotalColumn, 2);
        y -= s;
        table.Rule(y);
        y -= 2.0 * s;
    }
    const double bottom = y + 2.0 * s;
    for (int k = 0; k <= kBomColumnCount; ++k) table.Vertical(k, bottom, top);

    database->setBlockTableRecordOrigin(record, {0.0, top, 0.0});
    extent.width = table.Width();
    extent.height = top - bottom;
    return 1;
}

AcDbAttributeDefinition MakeAttributeDefinition(const AcGePoint3d& position, double height,
                                                double widthFactor, const std::wstring& text,
                                                const std::wstring& tag, AcDbObjectId textStyle,
                                                const MergeTable& layout, int column,
                                                int justification) {
    AcDbAttributeDefinition definition;
    definition.position = {position.x, position.y, 0.0};
    definition.alignmentPoint = {0.0, position.y, 0.0};
    definition.textString = text;
    definition.tag = tag;
    definition.prompt = tag;
    definition.textStyle = textStyle;
    definition.height = height;
    definition.widthFactor = widthFactor;
    definition.invisible = false;
    definition.verifiable = false;
    definition.preset = false;

    const double left = layout.ColumnStart(column) + kTextMargin;
    const double right = layout.ColumnStart(column + 1) - kTextMargin;
    switch (justification) {
        case 1:
            definition.horizontalMode = AcDb::kTextCenter;
            definition.position.x = left;
            definition.alignmentPoint.x = (left + right) * 0.5;
            break;
        case 2:
            definition.horizontalMode = AcDb::kTextRight;
            definition.alignmentPoint.x = right;
            break;
        default:
            definition.horizontalMode = AcDb::kTextLeft;
            definition.position.x = left;
            break;
    }
    return definition;
}

Acad::ErrorStatus AddLine(AcDbDatabase& database, AcDbObjectId record, const AcGePoint3d& start,
                          const AcGePoint3d& end) {
    AcDbObjectId id;
    return database.appendLine(record, AcDbLine{start, end}, id);
}

bool IsRightToLeft(const std::wstring& text) {
    return std::any_of(text.begin(), text.end(), [](wchar_t c) {
        return (c >= 224 && c <= 250) || (c >= 0x05D0 && c <= 0x05EA);
    });
}

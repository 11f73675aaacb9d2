// The demo's grid: set-up, sorting by heading clicks and starting edits.
#include "grid/demo/DemoGrid.h"

#include <QFontMetrics>
#include <array>
#include <string>

#include "grid/UGKeys.h"

namespace {

enum Column { kPart, kDescription, kCategory, kQuantity, kPrice, kInStock, kColumnCount };

constexpr std::array<const wchar_t*, kColumnCount> kTitles{
    L"Part", L"Description", L"Category", L"Qty", L"Unit price", L"In stock"};
constexpr std::array<int, kColumnCount> kWidths{96, 220, 120, 64, 92, 76};
constexpr long kRows = 1000;
constexpr std::array<const wchar_t*, 6> kCategories{L"Hinge", L"Handle", L"Lock",
                                                     L"Panel", L"Frame",  L"Fitting"};
constexpr std::array<const wchar_t*, 8> kMaterials{L"Oak", L"Steel", L"Brass", L"Birch",
                                                    L"Walnut", L"Aluminium", L"Glass", L"Beech"};

// A fixed sequence, so the demo and its screenshot look the same on every run.
unsigned Next(unsigned& seed) {
    seed = seed * 1103515245u + 12345u;
    return (seed >> 16) & 0x7FFF;
}

}  // namespace

void DemoGrid::OnGridSetup() {
    const QFontMetrics metrics(font());
    SetStandardRowHeight(metrics.height() + 10);
    SetTH_Height(metrics.height() + 12);
    SetSideHdgWidth(0);
    SetNumberCols(kColumnCount);

    CUGCell heading;
    GetHeadingDefault(&heading);
    heading.SetAlignment(UG_ALIGNVCENTER);
    QFont bold = font();
    bold.setWeight(QFont::DemiBold);
    heading.SetFont(AddFont(bold));
    SetHeadingDefault(&heading);

    std::wstring categories;
    for (const wchar_t* category : kCategories) categories += std::wstring(category) + L"\n";
    for (int col = 0; col < kColumnCount; ++col) {
        SetColWidth(col, kWidths[col]);
        QuickSetText(col, -1, kTitles[col]);
        CUGCell defaults;
        if (col == kQuantity || col == kPrice) defaults.SetAlignment(UG_ALIGNRIGHT);
        if (col == kCategory) {
            defaults.SetCellType(UGCT_DROPLIST);
            defaults.SetLabelText(categories);
        }
        if (col == kInStock) {
            defaults.SetCellType(UGCT_CHECKBOX);
            defaults.SetAlignment(UG_ALIGNCENTER);
        }
        SetColDefault(col, &defaults);
    }
    m_sortArrowIndex = AddCellType(&m_sortArrow);

    SetNumberRows(kRows, 0);
    unsigned seed = 7;
    CUGCell cell;
    for (long row = 0; row < kRows; ++row) {
        const unsigned category = Next(seed) % kCategories.size();
        const std::wstring code = std::wstring(kCategories[category]).substr(0, 3);
        QuickSetText(kPart, row, code + L"-" + std::to_wstring(1000 + Next(seed) % 9000));
        QuickSetText(kDescription, row, std::wstring(kMaterials[Next(seed) % kMaterials.size()]) + L" " +
                                            kCategories[category] + L", " +
                                            std::to_wstring(20 + Next(seed) % 80) + L" mm");
        QuickSetText(kCategory, row, kCategories[category]);
        cell.ClearAll();
        cell.SetNumber(1 + Next(seed) % 240);
        SetCell(kQuantity, row, &cell);
        wchar_t price[32];
        std::swprintf(price, 32, L"%.2f", (Next(seed) % 25000) / 100.0 + 0.5);
        cell.ClearAll();
        cell.SetText(price);
        cell.SetDataType(UGCELLDATA_CURRENCY);
        SetCell(kPrice, row, &cell);
        cell.ClearAll();
        cell.SetBool(Next(seed) % 4 != 0);
        SetCell(kInStock, row, &cell);
    }
    SortColumn(kPart);
}

void DemoGrid::SortColumn(int col) {
    if (m_sortCol >= 0) QuickSetCellType(m_sortCol, -1, UGCT_NORMAL);
    m_ascending = col == m_sortCol ? !m_ascending : true;
    m_sortCol = col;
    SortBy(col, m_ascending ? 1 : UG_SORT_DESCENDING);
    QuickSetCellType(col, -1, m_sortArrowIndex);
    QuickSetCellTypeEx(col, -1, m_ascending ? UGCT_SORTARROWUP : UGCT_SORTARROWDOWN);
    RedrawAll();
}

void DemoGrid::OnTopHdgLeftClick(int col, long, int updn, const QRect&, const QPoint&, int) {
    if (updn) SortColumn(col);
}

bool DemoGrid::Editable(int col) const { return col != kInStock; }

void DemoGrid::OnCellDoubleClick(int col, long row, const QRect&, const QPoint&, int processed) {
    if (!processed && Editable(col)) StartEdit(col, row, 0);
}

void DemoGrid::OnGridKeyDown(int* vcKey, int processed) {
    if (!processed && *vcKey == VK_F1 + 1 && Editable(GetCurrentCol())) StartEdit();
}

void DemoGrid::OnGridCharDown(int* vcKey, int processed) {
    if (!processed && *vcKey >= 32 && Editable(GetCurrentCol())) StartEdit(*vcKey);
}

int DemoGrid::OnEditKeystroke(int col, long, CUGEdit*, int* vcKey) {
    // Numbers where numbers belong; the base filter's columns are those of the price list.
    if (col != kQuantity && col != kPrice) return 1;
    const int c = *vcKey;
    return (c < 32 || (c >= '0' && c <= '9') || (col == kPrice && c == '.')) ? 1 : 0;
}

// Loading a price list into result rows and counting the selected block references into them.
#include "bom/BomCalculation.h"

#include "host/api/acdbdatabase.h"
#include "host/api/acededitor.h"
#include "pricelist/PriceListFile.h"
#include "text/CaseRules.h"
#include "text/Numbers.h"

namespace {

// Frees the selection set however the counting ends.
class SelectionSetGuard {
public:
    explicit SelectionSetGuard(const ads_name& set) : m_set(set) {}
    ~SelectionSetGuard() { acedSSFree(m_set); }
    SelectionSetGuard(const SelectionSetGuard&) = delete;
    SelectionSetGuard& operator=(const SelectionSetGuard&) = delete;

private:
    ads_name m_set;
};

}  // namespace

bool BomCalculation::LoadPriceList(const std::wstring& path) {
    std::vector<PriceListRow> lines;
    TextFormat format;
    if (!LoadPriceListFile(path, lines, format)) return false;
    m_results.clear();
    m_results.reserve(lines.size());
    for (auto& line : lines) {
        m_results.push_back(ResultString{std::move(line.name), WToF(line.price), 0,
                                         std::move(line.description), 0.0});
    }
    m_priceListFormat = format;
    return true;
}

void BomCalculation::RebuildNameIndex() {
    m_nameIndex.clear();
    m_nameIndex.reserve(m_results.size());
    for (std::size_t i = 0; i < m_results.size(); ++i) {
        m_results[i].name = MakeLower(std::move(m_results[i].name));
        m_nameIndex[FoldCase(m_results[i].name)] = i;  // a later row of the same name wins
    }
}

bool BomCalculation::SelectBlockReferences(ads_name& selectionSet) {
    const std::vector<resbuf> filter{resbuf::groupCode(0, L"INSERT")};
    return acedSSGet(nullptr, nullptr, nullptr, &filter, selectionSet) == RTNORM;
}

void BomCalculation::BeginCounting() { RebuildNameIndex(); }

int BomCalculation::CountBlock(const std::wstring& name, std::int32_t references) {
    if (references <= 0) return -1;
    std::wstring lowerName = MakeLower(name);
    std::wstring key = FoldCase(lowerName);
    const auto found = m_nameIndex.find(key);
    if (found != m_nameIndex.end()) {
        ResultString& row = m_results[found->second];
        row.quantity += references;
        // One addition a reference, as counting them one by one gives: the same total to the bit.
        if (row.price != 0.0) {
            for (std::int32_t i = 0; i < references; ++i) row.total += row.price;
        }
        return static_cast<int>(found->second);
    }
    if (m_listOnlyPricedBlocks) return -1;
    m_results.push_back(ResultString{std::move(lowerName), 0.0, references, {}, 0.0});
    m_nameIndex.emplace(std::move(key), m_results.size() - 1);
    return static_cast<int>(m_results.size() - 1);
}

bool BomCalculation::CountSelection() {
    RebuildNameIndex();
    ads_name selectionSet;
    if (!SelectBlockReferences(selectionSet)) return false;
    const SelectionSetGuard guard(selectionSet);

    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    std::int32_t length = 0;
    acedSSLength(selectionSet, &length);
    m_counted.clear();
    m_countedWholeSpace = acedSelectsWholeSpace();
    for (std::int32_t i = 0; i < length; ++i) {
        ads_name entity;
        AcDbObjectId id;
        AcDbBlockReference reference;
        if (acedSSName(selectionSet, i, entity) != RTNORM || acdbGetObjectId(id, entity) != Acad::eOk ||
            database == nullptr || database->openBlockReference(id, reference) != Acad::eOk) {
            acedAlert(L"\nCannot open the object INSERT");
            return false;
        }
        std::wstring name;
        if (database->getBlockTableRecordName(reference.blockTableRecord, name) != Acad::eOk) {
            acedAlert(L"\nCannot open the object BlockTableRecord");
            return false;
        }
        CountBlock(name, 1);
        m_counted.push_back(id);
    }
    return true;
}

std::optional<TableSource> BomCalculation::CountedSource() const {
    // Counted as the module counts: record names, an array once, a selected table as a block.
    TableSource source;
    source.recordNames = true;
    source.arraysAsOne = true;
    source.countsTables = true;
    source.onlyPriced = m_listOnlyPricedBlocks;
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (m_countedWholeSpace || database == nullptr) return source;
    if (!RecordPickedReferences(*database, m_counted, source)) return std::nullopt;
    return source;
}

// Symbol table look-ups.
#include "host/dxf/dxfsymboltable.h"

#include "text/CaseRules.h"

// Names that differ only in case are one entry, in every script and whatever the locale.
std::wstring DxfSymbolTable::folded(std::wstring_view name) { return FoldCase(name); }

std::size_t DxfSymbolTable::add(std::uint32_t record, std::wstring name) {
    const std::size_t index = m_entries.size();
    m_byName.emplace(folded(name), index);
    m_byRecord.emplace(record, index);
    m_entries.push_back(Entry{record, std::move(name)});
    return index;
}

std::optional<std::size_t> DxfSymbolTable::find(std::wstring_view name) const {
    const auto it = m_byName.find(folded(name));
    if (it == m_byName.end()) return std::nullopt;
    return it->second;
}

std::optional<std::size_t> DxfSymbolTable::findRecord(std::uint32_t record) const {
    const auto it = m_byRecord.find(record);
    if (it == m_byRecord.end()) return std::nullopt;
    return it->second;
}

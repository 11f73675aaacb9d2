// The entries of a symbol table (blocks, text styles) as the host sees them: decoded names, looked
// up without regard to case, and the record that holds each entry.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class DxfSymbolTable {
public:
    // A name already present keeps its first entry for look-ups.
    std::size_t add(std::uint32_t record, std::wstring name);
    std::optional<std::size_t> find(std::wstring_view name) const;
    std::optional<std::size_t> findRecord(std::uint32_t record) const;

    std::size_t size() const { return m_entries.size(); }
    std::uint32_t record(std::size_t index) const { return m_entries[index].record; }
    const std::wstring& name(std::size_t index) const { return m_entries[index].name; }

private:
    struct Entry {
        std::uint32_t record;
        std::wstring name;
    };
    static std::wstring folded(std::wstring_view name);

    std::vector<Entry> m_entries;
    std::unordered_map<std::wstring, std::size_t> m_byName;
    std::unordered_map<std::uint32_t, std::size_t> m_byRecord;
};

// Counting one drawing's references by block name.
#include "host/console/blocktally.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) {
    return a > kTallyLimit - b ? kTallyLimit : a + b;
}

// How the references of one block record are counted.
struct Naming {
    std::wstring name;
    bool variant = false;   // a dynamic block's variant, counted under that block's name
    bool unlinked = false;  // a "*U" record without a link
    std::wstring recordName;
};

// Records met under a block for one reference of it, with their counts, first met first.
using Expansion = std::vector<std::pair<AcDbObjectId, std::int64_t>>;

class Tally {
public:
    Tally(const DxfDocument& document, std::string name, const TallyOptions& options)
        : m_document(document), m_name(std::move(name)), m_options(options) {
        if (options.recordNames) return;
        for (const auto& link : document.dynamicBlockLinks()) m_links.emplace(link.anonymous, link.dynamic);
    }

    bool countSelection() {
        for (const auto& reference : m_document.blockReferences(DxfSpace::Model)) {
            if (!isSelected(reference, m_options.filter)) continue;
            const AcDbObjectId record = recordOf(reference.blockName);
            if (record.isNull()) return false;
            add(record, 1);
            if (!m_options.nested) continue;
            const Expansion* inside = expansion(record);
            if (inside == nullptr) return false;
            for (const auto& [nestedRecord, count] : *inside) add(nestedRecord, count);
        }
        return true;
    }

    DrawingTally take() { return std::move(m_result); }
    const std::string& error() const { return m_error; }

private:
    AcDbObjectId recordOf(std::wstring_view blockName) {
        const auto cached = m_records.find(blockName.data());
        if (cached != m_records.end()) return cached->second;
        AcDbObjectId record;
        if (m_document.getBlockTableRecordId(std::wstring(blockName), record) != Acad::eOk) {
            m_error = m_name + ": a reference names the block \"" +
                      EncodeText(blockName, TextFormat{}) + "\", which the drawing does not define";
            return {};
        }
        m_records.emplace(blockName.data(), record);
        return record;
    }

    std::wstring recordName(AcDbObjectId record) const {
        std::wstring name;
        (void)m_document.getBlockTableRecordName(record, name);
        return name;
    }

    const Naming& namingOf(AcDbObjectId record) {
        const auto known = m_namings.find(record);
        if (known != m_namings.end()) return known->second;
        Naming naming;
        naming.recordName = recordName(record);
        naming.name = naming.recordName;
        const auto link = m_links.find(record);
        if (link != m_links.end() && !link->second.isNull()) {
            naming.name = recordName(link->second);
            naming.variant = true;
        } else if (!m_options.recordNames && isDynamicVariantName(naming.name)) {
            naming.unlinked = true;
        }
        return m_namings.emplace(record, std::move(naming)).first->second;
    }

    void add(AcDbObjectId record, std::int64_t count) {
        const Naming& naming = namingOf(record);
        std::wstring key = FoldCase(MakeLower(naming.name));
        auto [entry, isNew] = m_index.try_emplace(std::move(key), m_result.blocks.size());
        if (isNew) m_result.blocks.push_back(TalliedBlock{naming.name, 0, {}, false});
        TalliedBlock& block = m_result.blocks[entry->second];
        block.references = saturatingAdd(block.references, count);
        if (naming.unlinked) {
            block.unlinked = true;
            m_result.unlinkedReferences = saturatingAdd(m_result.unlinkedReferences, count);
        }
        if (naming.variant && std::find(block.variants.begin(), block.variants.end(),
                                        naming.recordName) == block.variants.end())
            block.variants.push_back(naming.recordName);
    }

    // What one reference of the block holds, nested references multiplied along; null after an
    // error. A block met again while its own content is being counted closes a cycle: it is
    // counted where it is met, but not gone into again.
    const Expansion* expansion(AcDbObjectId record) {
        const auto known = m_expansions.find(record);
        if (known != m_expansions.end()) return &known->second;
        m_path.push_back(record);
        Expansion result;
        std::unordered_map<AcDbObjectId, std::size_t> position;
        auto merge = [&](AcDbObjectId nested, std::int64_t count) {
            const auto [at, isNew] = position.try_emplace(nested, result.size());
            if (isNew) result.emplace_back(nested, 0);
            result[at->second].second = saturatingAdd(result[at->second].second, count);
        };
        for (const auto& reference : m_document.referencesInBlock(record)) {
            const AcDbObjectId nested = recordOf(reference.blockName);
            if (nested.isNull()) return nullptr;
            merge(nested, 1);
            if (const auto loop = std::find(m_path.begin(), m_path.end(), nested); loop != m_path.end()) {
                noteCycle(loop, nested);
                continue;
            }
            const Expansion* inside = expansion(nested);
            if (inside == nullptr) return nullptr;
            for (const auto& [deeper, count] : *inside) merge(deeper, count);
        }
        m_path.pop_back();
        return &m_expansions.emplace(record, std::move(result)).first->second;
    }

    void noteCycle(std::vector<AcDbObjectId>::const_iterator from, AcDbObjectId closing) {
        std::wstring cycle;
        for (auto it = from; it != m_path.end(); ++it) cycle += recordName(*it) + L" > ";
        cycle += recordName(closing);
        if (std::find(m_result.cycles.begin(), m_result.cycles.end(), cycle) == m_result.cycles.end())
            m_result.cycles.push_back(std::move(cycle));
    }

    const DxfDocument& m_document;
    std::string m_name;
    const TallyOptions& m_options;
    std::unordered_map<AcDbObjectId, AcDbObjectId> m_links;
    std::unordered_map<const wchar_t*, AcDbObjectId> m_records;  // by the interned name's text
    std::unordered_map<AcDbObjectId, Naming> m_namings;
    std::unordered_map<AcDbObjectId, Expansion> m_expansions;
    std::vector<AcDbObjectId> m_path;
    std::unordered_map<std::wstring, std::size_t> m_index;
    DrawingTally m_result;
    std::string m_error;
};

}  // namespace

bool isDynamicVariantName(std::wstring_view name) {
    return name.size() >= 2 && name[0] == L'*' && (name[1] == L'U' || name[1] == L'u');
}

DxfResult<DrawingTally> tallyDrawing(const DxfDocument& document, const std::string& name,
                                     const TallyOptions& options) {
    try {
        Tally tally(document, name, options);
        if (!tally.countSelection()) return DxfError(tally.error());
        return tally.take();
    } catch (const std::exception& e) {
        return DxfError(name + ": " + e.what());
    }
}

// Counting one drawing's references by block name.
#include "host/dxf/dxfblocktally.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) {
    return a > kTallyLimit - b ? kTallyLimit : a + b;
}

std::int64_t saturatingMultiply(std::int64_t a, std::int64_t b) {
    if (a == 0 || b == 0) return 0;
    return a > kTallyLimit / b ? kTallyLimit : a * b;
}

// How the references of one block record are counted.
struct Naming {
    std::wstring name;
    bool variant = false;   // a dynamic block's variant, counted under that block's name
    bool unlinked = false;  // a "*U" record without a link
    std::wstring recordName;
};

// The blocks one block holds references to, first met first, with how many of each. A reference
// that leads back to a block whose content is being walked closes a cycle: the block is counted
// where it is met but not gone into again.
struct NestedBlock {
    AcDbObjectId record;
    std::int64_t references = 0;
    bool closesCycle = false;
};

// What the walk knows of a block: its content and whether the walk is inside it or done with it.
struct BlockVisit {
    std::vector<NestedBlock> content;
    std::size_t depth = 0;  // its place on the walk's path while the walk is inside it
    bool finished = false;
    bool listed = false;  // everything it holds is among the counted blocks already
};

class Tally {
public:
    Tally(const DxfDocument& document, std::string name, const TallyOptions& options)
        : m_document(document), m_name(std::move(name)), m_options(options) {
        if (options.recordNames) return;
        for (const auto& link : document.dynamicBlockLinks())
            m_links.emplace(link.anonymous, link.dynamic);
    }

    bool countSelection() {
        std::vector<SelectedBlock> selected;
        if (!selectBlocks(selected)) return false;
        if (m_options.leaveOut) {
            std::erase_if(selected, [&](const SelectedBlock& block) {
                return m_options.leaveOut(block.record);
            });
        }
        if (!m_options.nested) {
            for (const SelectedBlock& block : selected)
                add(block.record, block.references, block.fromArrays);
            return true;
        }
        // Nested: the selection's blocks in the order they are met, each with its own count.
        for (const SelectedBlock& block : selected) {
            m_reached[block.record] = saturatingAdd(m_reached[block.record], block.references);
            if (block.fromArrays) m_fromArrays.insert(block.record);
        }
        for (const SelectedBlock& block : selected) {
            if (!walkFrom(block.record)) return false;
        }
        multiplyAlongTheNesting();
        for (const SelectedBlock& block : selected) listInOrderMet(block.record);
        return true;
    }

    DrawingTally take() { return std::move(m_result); }
    const std::string& error() const { return m_error; }

private:
    struct SelectedBlock {
        AcDbObjectId record;
        std::int64_t references = 0;
        bool fromArrays = false;
    };

    // The selected references by block record, first met first. They are counted by their
    // names' bytes, and each name is looked up once: a million references name a few hundred
    // blocks.
    bool selectBlocks(std::vector<SelectedBlock>& selected) {
        if (m_options.picked) return selectPicked(selected);
        std::vector<DxfNameCount> byName;
        const SelectionFilter& filter = m_options.filter;
        const std::optional<std::size_t> layout = m_options.layout;
        if (!filter.window && filter.layers.empty()) {
            byName = layout ? m_document.layoutReferenceCountsByName(*layout)
                            : m_document.referenceCountsByName(DxfSpace::Model);
        } else {
            std::unordered_map<std::string_view, std::size_t> slots;
            forEachReference([&](AcDbObjectId id, std::string_view name) {
                if (!isSelected(m_document, id, filter)) return;
                const auto [slot, isNew] = slots.try_emplace(name, byName.size());
                if (isNew) byName.push_back(DxfNameCount{name, 0, 0, 0});
                DxfNameCount& count = byName[slot->second];
                const std::int64_t instances = m_document.referenceInstances(id);
                ++count.references;
                count.instances += instances;
                count.arrays += instances > 1 ? 1 : 0;
            });
        }
        for (const DxfNameCount& name : byName) {
            const AcDbObjectId record = recordOf(m_document.decodeText(name.nameBytes));
            if (record.isNull()) return false;
            if (m_options.arraysAsOne)
                selected.push_back(SelectedBlock{record, name.references, false});
            else
                selected.push_back(SelectedBlock{record, name.instances, name.arrays > 0});
        }
        return true;
    }

    void forEachReference(const std::function<void(AcDbObjectId, std::string_view)>& visit) const {
        if (m_options.layout)
            m_document.forEachLayoutReference(*m_options.layout, visit);
        else
            m_document.forEachReference(DxfSpace::Model, visit);
    }

    bool selectPicked(std::vector<SelectedBlock>& selected) {
        std::unordered_map<AcDbObjectId, std::size_t> slots;
        for (const AcDbObjectId id : *m_options.picked) {
            AcDbBlockReference reference;
            if (m_document.openBlockReference(id, reference) != Acad::eOk) continue;
            if (reference.blockTableRecord.isNull()) {
                recordOf(m_document.referenceName(id));  // names the missing block
                return false;
            }
            const auto [slot, isNew] =
                slots.try_emplace(reference.blockTableRecord, selected.size());
            if (isNew) selected.push_back(SelectedBlock{reference.blockTableRecord, 0, false});
            const std::int64_t instances =
                m_options.arraysAsOne ? 1 : m_document.referenceInstances(id);
            SelectedBlock& block = selected[slot->second];
            block.references = saturatingAdd(block.references, instances);
            block.fromArrays = block.fromArrays || instances > 1;
        }
        return true;
    }

    AcDbObjectId recordOf(std::wstring_view blockName) {
        const auto cached = m_records.find(std::wstring(blockName));
        if (cached != m_records.end()) return cached->second;
        AcDbObjectId record;
        if (m_document.getBlockTableRecordId(std::wstring(blockName), record) != Acad::eOk) {
            m_error = m_name + ": a reference names the block \"" +
                      EncodeText(blockName, TextFormat{}) + "\", which the drawing does not define";
            return {};
        }
        m_records.emplace(blockName, record);
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

    void add(AcDbObjectId record, std::int64_t count, bool fromArrays) {
        const Naming& naming = namingOf(record);
        std::wstring key = FoldCase(MakeLower(naming.name));
        auto [entry, isNew] = m_index.try_emplace(std::move(key), m_result.blocks.size());
        if (isNew) m_result.blocks.push_back(TalliedBlock{naming.name, 0, {}, false});
        TalliedBlock& block = m_result.blocks[entry->second];
        block.references = saturatingAdd(block.references, count);
        block.fromArrays = block.fromArrays || fromArrays;
        if (naming.unlinked) {
            block.unlinked = true;
            m_result.unlinkedReferences = saturatingAdd(m_result.unlinkedReferences, count);
        }
        if (naming.variant && std::find(block.variants.begin(), block.variants.end(),
                                        naming.recordName) == block.variants.end())
            block.variants.push_back(naming.recordName);
    }

    // The block's content, the first time it is met; false after an error.
    bool enter(AcDbObjectId record) {
        BlockVisit& visit = m_visits[record];
        std::unordered_map<AcDbObjectId, std::size_t> position;
        for (const auto& reference : m_document.referencesInBlock(record)) {
            const AcDbObjectId nested = recordOf(reference.blockName);
            if (nested.isNull()) return false;
            if (m_options.leaveOut && m_options.leaveOut(nested)) continue;
            const auto [at, isNew] = position.try_emplace(nested, visit.content.size());
            if (isNew) visit.content.push_back({nested, 0, false});
            NestedBlock& entry = visit.content[at->second];
            const bool array = reference.instances > 1 && !m_options.arraysAsOne;
            entry.references = saturatingAdd(entry.references, array ? reference.instances : 1);
            if (array) m_fromArrays.insert(nested);
        }
        return true;
    }

    // A depth-first walk with a stack of its own, as deep as the nesting may be. Blocks are
    // finished in an order that puts each after every block that holds it (cycles cut).
    bool walkFrom(AcDbObjectId root) {
        if (m_visits.contains(root)) return true;
        if (!enter(root)) return false;
        struct Frame {
            AcDbObjectId record;
            std::size_t next = 0;
        };
        std::vector<Frame> stack{{root, 0}};
        m_path = {root};
        while (!stack.empty()) {
            Frame& frame = stack.back();
            std::vector<NestedBlock>& content = m_visits[frame.record].content;
            if (frame.next == content.size()) {
                m_visits[frame.record].finished = true;
                m_finishOrder.push_back(frame.record);
                stack.pop_back();
                m_path.pop_back();
                continue;
            }
            NestedBlock& nested = content[frame.next++];
            const auto known = m_visits.find(nested.record);
            if (known == m_visits.end()) {
                const AcDbObjectId record = nested.record;
                if (!enter(record)) return false;
                m_visits[record].depth = m_path.size();
                stack.push_back({record, 0});
                m_path.push_back(record);
            } else if (!known->second.finished) {
                nested.closesCycle = true;
                noteCycle(m_path.begin() + static_cast<std::ptrdiff_t>(known->second.depth),
                          nested.record);
            }
        }
        return true;
    }

    // Each block is reached as often as the selection and the blocks that hold it say; holders
    // come first in reverse finishing order. A reference that closes a cycle counts, but what it
    // leads to is not reached through it again.
    void multiplyAlongTheNesting() {
        for (auto it = m_finishOrder.rbegin(); it != m_finishOrder.rend(); ++it) {
            const std::int64_t reached = m_reached[*it];
            for (const NestedBlock& nested : m_visits[*it].content) {
                const std::int64_t count = saturatingMultiply(reached, nested.references);
                auto& target =
                    nested.closesCycle ? m_closingCycles[nested.record] : m_reached[nested.record];
                target = saturatingAdd(target, count);
            }
        }
    }

    // The blocks in the order a reference of the block and then its content, each block
    // followed by its own, would meet them; each is added once with everything counted for it.
    void listInOrderMet(AcDbObjectId root) {
        addOnce(root);
        if (std::exchange(m_visits[root].listed, true)) return;
        struct Frame {
            AcDbObjectId record;
            std::size_t next = 0;
        };
        std::vector<Frame> stack{{root, 0}};
        while (!stack.empty()) {
            Frame& frame = stack.back();
            const std::vector<NestedBlock>& content = m_visits[frame.record].content;
            if (frame.next == content.size()) {
                stack.pop_back();
                continue;
            }
            const NestedBlock& nested = content[frame.next++];
            addOnce(nested.record);
            if (!nested.closesCycle && !std::exchange(m_visits[nested.record].listed, true))
                stack.push_back({nested.record, 0});
        }
    }

    void addOnce(AcDbObjectId record) {
        if (!m_added.insert(record).second) return;
        add(record, saturatingAdd(m_reached[record], m_closingCycles[record]),
            m_fromArrays.contains(record));
    }

    void noteCycle(std::vector<AcDbObjectId>::const_iterator from, AcDbObjectId closing) {
        std::wstring cycle;
        for (auto it = from; it != m_path.end(); ++it) cycle += recordName(*it) + L" > ";
        cycle += recordName(closing);
        if (std::find(m_result.cycles.begin(), m_result.cycles.end(), cycle) ==
            m_result.cycles.end())
            m_result.cycles.push_back(std::move(cycle));
    }

    const DxfDocument& m_document;
    std::string m_name;
    const TallyOptions& m_options;
    std::unordered_map<AcDbObjectId, AcDbObjectId> m_links;
    std::unordered_map<std::wstring, AcDbObjectId> m_records;  // by the name as the file has it
    std::unordered_map<AcDbObjectId, Naming> m_namings;
    std::unordered_map<AcDbObjectId, BlockVisit> m_visits;
    std::vector<AcDbObjectId> m_finishOrder;
    std::vector<AcDbObjectId> m_path;  // the blocks the walk is inside, outermost first
    std::unordered_map<AcDbObjectId, std::int64_t> m_reached;
    std::unordered_map<AcDbObjectId, std::int64_t> m_closingCycles;
    std::unordered_set<AcDbObjectId> m_added;
    std::unordered_set<AcDbObjectId> m_fromArrays;  // reached through an array
    std::unordered_map<std::wstring, std::size_t> m_index;
    DrawingTally m_result;
    std::string m_error;
};

}  // namespace

DxfResult<std::vector<SpaceTally>> tallySpaces(const DxfDocument& document, const std::string& name,
                                               const TallyOptions& options) {
    std::vector<std::wstring> names{kModelSpaceName};
    for (std::wstring& layout : document.layoutNames()) names.push_back(std::move(layout));
    std::vector<SpaceTally> spaces;
    for (std::size_t space = 0; space < names.size(); ++space) {
        TallyOptions spaceOptions = options;
        if (space > 0) spaceOptions.layout = space - 1;
        auto tally = tallyDrawing(document, name, spaceOptions);
        if (!tally.isOk()) return tally.error();
        spaces.push_back({std::move(names[space]), tally.takeValue()});
    }
    return spaces;
}

DrawingTally mergeTallies(const std::vector<SpaceTally>& spaces) {
    DrawingTally merged;
    std::unordered_map<std::wstring, std::size_t> index;
    for (const SpaceTally& space : spaces) {
        const DrawingTally* tally = &space.tally;
        for (const TalliedBlock& block : tally->blocks) {
            const auto [at, isNew] =
                index.try_emplace(FoldCase(MakeLower(block.name)), merged.blocks.size());
            if (isNew) {
                merged.blocks.push_back(block);
                continue;
            }
            TalliedBlock& into = merged.blocks[at->second];
            into.references = saturatingAdd(into.references, block.references);
            for (const std::wstring& variant : block.variants) {
                if (std::find(into.variants.begin(), into.variants.end(), variant) ==
                    into.variants.end())
                    into.variants.push_back(variant);
            }
            into.unlinked = into.unlinked || block.unlinked;
            into.fromArrays = into.fromArrays || block.fromArrays;
        }
        merged.unlinkedReferences =
            saturatingAdd(merged.unlinkedReferences, tally->unlinkedReferences);
        for (const std::wstring& cycle : tally->cycles) {
            if (std::find(merged.cycles.begin(), merged.cycles.end(), cycle) == merged.cycles.end())
                merged.cycles.push_back(cycle);
        }
    }
    return merged;
}

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

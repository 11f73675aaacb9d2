// The drawing's edits as they stand, kept to be put back: what undoes a command whole.
#include "host/dxf/dxfdocument.h"

// Everything an edit may change; the tag file only grows, so the records of an earlier state
// still name tags it holds.
class DxfDocument::EditState {
public:
    DxfRecords records;
    DxfStructure structure;
    DxfHeader header;
    DxfSymbolTable blocks;
    std::vector<BlockInfo> blockInfo;
    DxfSymbolTable styles;
    std::vector<std::uint32_t> modelInserts;
    std::vector<std::uint32_t> paperInserts;
    std::optional<std::uint64_t> nextHandle;
    std::vector<InsertedReference> insertedReferences;
};

std::shared_ptr<const DxfDocument::EditState> DxfDocument::saveEditState() const {
    return std::make_shared<const EditState>(
        EditState{m_records, m_structure, m_header, m_blocks, m_blockInfo, m_styles, m_modelInserts,
                  m_paperInserts, m_nextHandle, m_insertedReferences});
}

void DxfDocument::restoreEditState(const EditState& state) {
    const std::uint64_t edits = m_records.editCount();
    m_records = state.records;
    m_records.continueEditCountFrom(edits);
    m_structure = state.structure;
    m_header = state.header;
    m_blocks = state.blocks;
    m_blockInfo = state.blockInfo;
    m_styles = state.styles;
    m_modelInserts = state.modelInserts;
    m_paperInserts = state.paperInserts;
    m_nextHandle = state.nextHandle;
    m_insertedReferences = state.insertedReferences;
    m_handleIndexEdits.reset();
}

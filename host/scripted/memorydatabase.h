// A drawing held in memory, for tests of the module: the database calls plus ways to build and inspect.
#pragma once

#include <map>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "host/api/acdbdatabase.h"

class MemoryDatabase final : public AcDbDatabase {
public:
    using Entity = std::variant<AcDbLine, AcDbAttributeDefinition, AcDbText>;

    struct BlockRecord {
        std::wstring name;
        AcGePoint3d origin;
        std::vector<Entity> entities;
        std::vector<AcDbObjectId> entityIds;  // parallel to entities
        bool erased = false;
    };

    struct Reference {
        AcDbBlockReference reference;
        std::vector<AcDbAttributeDefinition> attributes;  // as inserted: default texts, placed
        std::wstring layer = L"0";
    };

    // Starts like a new drawing: "*Model_Space", "*Paper_Space" and the text style "Standard".
    MemoryDatabase();

    // Building a drawing.
    AcDbObjectId addBlock(const std::wstring& name);
    AcDbObjectId addReference(const std::wstring& blockName, AcGePoint3d position = {},
                              const std::wstring& layer = L"0");
    // Moves a reference of model space; its attributes stay where they were, as a plain move of
    // the insertion point leaves them in a file.
    void moveReference(AcDbObjectId reference, AcGePoint3d position);
    void eraseRecord(AcDbObjectId record);
    void removeTextStyle(const std::wstring& name);
    // Faults: the object cannot be opened; the block table answers look-ups with this status.
    void makeUnopenable(AcDbObjectId id);
    void setBlockTableLookupStatus(Acad::ErrorStatus status);

    // Inspecting it.
    const BlockRecord* record(AcDbObjectId id) const;
    const BlockRecord* recordNamed(const std::wstring& name) const;
    std::vector<std::wstring> blockNames() const;
    const std::vector<AcDbTextStyleTableRecord>& textStyles() const { return m_styles; }
    AcDbObjectId textStyleIdAt(std::size_t index) const { return m_styleIds.at(index); }
    std::vector<Reference> modelSpaceReferences() const;

    // AcDbDatabase
    std::vector<AcDbObjectId> blockTableRecordIds() const override;
    Acad::ErrorStatus getBlockTableRecordId(const std::wstring& name,
                                            AcDbObjectId& id) const override;
    Acad::ErrorStatus addBlockTableRecord(const std::wstring& name, AcDbObjectId& id) override;
    Acad::ErrorStatus getBlockTableRecordName(AcDbObjectId record,
                                              std::wstring& name) const override;
    Acad::ErrorStatus setBlockTableRecordOrigin(AcDbObjectId record,
                                                const AcGePoint3d& origin) override;
    Acad::ErrorStatus appendLine(AcDbObjectId record, const AcDbLine& line,
                                 AcDbObjectId& id) override;
    Acad::ErrorStatus appendAttributeDefinition(AcDbObjectId record,
                                                const AcDbAttributeDefinition& definition,
                                                AcDbObjectId& id) override;
    Acad::ErrorStatus appendText(AcDbObjectId record, const AcDbText& text,
                                 AcDbObjectId& id) override;
    Acad::ErrorStatus getTextStyleId(const std::wstring& name, AcDbObjectId& id) const override;
    Acad::ErrorStatus addTextStyle(const AcDbTextStyleTableRecord& style,
                                   AcDbObjectId& id) override;
    Acad::ErrorStatus openBlockReference(AcDbObjectId entity,
                                         AcDbBlockReference& reference) const override;
    Acad::ErrorStatus insertBlockReference(const AcDbBlockReference& reference,
                                           AcDbObjectId& id) override;
    Acad::ErrorStatus getBlockEntityIds(AcDbObjectId record,
                                        std::vector<AcDbObjectId>& ids) const override;
    Acad::ErrorStatus getModelSpaceEntityIds(std::vector<AcDbObjectId>& ids) const override;
    Acad::ErrorStatus openAttributeDefinition(AcDbObjectId entity,
                                              AcDbAttributeDefinition& definition) const override;
    Acad::ErrorStatus openText(AcDbObjectId entity, AcDbText& text) const override;
    Acad::ErrorStatus eraseEntity(AcDbObjectId entity) override;
    Acad::ErrorStatus getBlockReferenceIds(AcDbObjectId record,
                                           std::vector<AcDbObjectId>& ids) const override;
    Acad::ErrorStatus syncBlockReferenceAttributes(AcDbObjectId reference) override;
    // A handle is the id's number in hexadecimal.
    Acad::ErrorStatus getHandle(AcDbObjectId object, std::wstring& handle) const override;
    Acad::ErrorStatus getObjectId(const std::wstring& handle, AcDbObjectId& id) const override;
    Acad::ErrorStatus registerApplication(const std::wstring& name) override;
    Acad::ErrorStatus getXData(AcDbObjectId object, const std::wstring& application,
                               std::vector<resbuf>& data) const override;
    Acad::ErrorStatus setXData(AcDbObjectId object, const std::wstring& application,
                               const std::vector<resbuf>& data) override;
    // Model space's references or the ones picked, by block record name; nested counting is the
    // DXF database's alone (eNotImplemented).
    Acad::ErrorStatus countBlockReferences(const AcDbReferenceSelection& selection,
                                           std::vector<AcDbBlockCount>& counts) const override;

private:
    AcDbObjectId newId() { return AcDbObjectId(m_nextId++); }
    BlockRecord* writableRecord(AcDbObjectId id);
    Acad::ErrorStatus appendEntity(AcDbObjectId record, Entity entity, AcDbObjectId& id);
    template <typename Kind>
    Acad::ErrorStatus openEntity(AcDbObjectId entity, Kind& out) const;
    std::vector<AcDbAttributeDefinition> placedAttributes(
        const AcDbBlockReference& reference) const;
    bool holds(AcDbObjectId id) const;

    std::uint64_t m_nextId = 1;
    std::vector<AcDbObjectId> m_recordOrder;
    std::map<AcDbObjectId, BlockRecord> m_records;
    std::vector<AcDbTextStyleTableRecord> m_styles;
    std::vector<AcDbObjectId> m_styleIds;
    std::map<AcDbObjectId, Reference> m_references;
    std::vector<AcDbObjectId> m_referenceOrder;
    std::set<AcDbObjectId> m_unopenable;
    Acad::ErrorStatus m_lookupStatus = Acad::eOk;
    AcDbObjectId m_modelSpace;
    std::set<std::wstring> m_applications;                                         // folded names
    std::map<std::pair<AcDbObjectId, std::wstring>, std::vector<resbuf>> m_xdata;  // by folded name
};

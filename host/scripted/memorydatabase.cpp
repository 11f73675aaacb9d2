// The in-memory drawing of the tests.
#include "host/scripted/memorydatabase.h"

#include <cmath>

#include "text/CaseRules.h"

namespace {

bool sameName(const std::wstring& a, const std::wstring& b) { return CompareNoCase(a, b) == 0; }

AcGePoint3d placed(const AcGePoint3d& p, const AcGePoint3d& origin,
                   const AcDbBlockReference& reference) {
    const double x = (p.x - origin.x) * reference.scaleFactors.sx;
    const double y = (p.y - origin.y) * reference.scaleFactors.sy;
    const double c = std::cos(reference.rotation);
    const double s = std::sin(reference.rotation);
    return {reference.position.x + x * c - y * s, reference.position.y + x * s + y * c,
            reference.position.z + (p.z - origin.z) * reference.scaleFactors.sz};
}

}  // namespace

MemoryDatabase::MemoryDatabase() {
    m_modelSpace = addBlock(L"*Model_Space");
    addBlock(L"*Paper_Space");
    AcDbObjectId standard;
    addTextStyle({L"Standard", L"txt"}, standard);
}

AcDbObjectId MemoryDatabase::addBlock(const std::wstring& name) {
    AcDbObjectId id;
    addBlockTableRecord(name, id);
    return id;
}

AcDbObjectId MemoryDatabase::addReference(const std::wstring& blockName, AcGePoint3d position) {
    AcDbObjectId block;
    if (getBlockTableRecordId(blockName, block) != Acad::eOk) block = addBlock(blockName);
    AcDbBlockReference reference;
    reference.blockTableRecord = block;
    reference.position = position;
    AcDbObjectId id;
    insertBlockReference(reference, id);
    return id;
}

void MemoryDatabase::eraseRecord(AcDbObjectId record) {
    if (auto* r = writableRecord(record)) r->erased = true;
}

void MemoryDatabase::removeTextStyle(const std::wstring& name) {
    for (std::size_t i = 0; i < m_styles.size(); ++i) {
        if (sameName(m_styles[i].name, name)) {
            m_styles.erase(m_styles.begin() + static_cast<std::ptrdiff_t>(i));
            m_styleIds.erase(m_styleIds.begin() + static_cast<std::ptrdiff_t>(i));
            return;
        }
    }
}

void MemoryDatabase::makeUnopenable(AcDbObjectId id) { m_unopenable.insert(id); }

void MemoryDatabase::setBlockTableLookupStatus(Acad::ErrorStatus status) { m_lookupStatus = status; }

const MemoryDatabase::BlockRecord* MemoryDatabase::record(AcDbObjectId id) const {
    const auto it = m_records.find(id);
    return it == m_records.end() ? nullptr : &it->second;
}

const MemoryDatabase::BlockRecord* MemoryDatabase::recordNamed(const std::wstring& name) const {
    AcDbObjectId id;
    return getBlockTableRecordId(name, id) == Acad::eOk ? record(id) : nullptr;
}

std::vector<std::wstring> MemoryDatabase::blockNames() const {
    std::vector<std::wstring> names;
    for (const auto id : m_recordOrder) {
        const auto& r = m_records.at(id);
        if (!r.erased) names.push_back(r.name);
    }
    return names;
}

std::vector<MemoryDatabase::Reference> MemoryDatabase::modelSpaceReferences() const {
    std::vector<Reference> references;
    for (const auto id : m_referenceOrder) references.push_back(m_references.at(id));
    return references;
}

MemoryDatabase::BlockRecord* MemoryDatabase::writableRecord(AcDbObjectId id) {
    const auto it = m_records.find(id);
    if (it == m_records.end() || it->second.erased || m_unopenable.contains(id)) return nullptr;
    return &it->second;
}

std::vector<AcDbObjectId> MemoryDatabase::blockTableRecordIds() const {
    std::vector<AcDbObjectId> ids;
    for (const auto id : m_recordOrder) {
        if (!m_records.at(id).erased) ids.push_back(id);
    }
    return ids;
}

Acad::ErrorStatus MemoryDatabase::getBlockTableRecordId(const std::wstring& name,
                                                        AcDbObjectId& id) const {
    if (m_lookupStatus != Acad::eOk) return m_lookupStatus;
    for (const auto candidate : m_recordOrder) {
        const auto& r = m_records.at(candidate);
        if (!r.erased && sameName(r.name, name)) {
            id = candidate;
            return Acad::eOk;
        }
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus MemoryDatabase::addBlockTableRecord(const std::wstring& name, AcDbObjectId& id) {
    if (name.empty()) return Acad::eInvalidSymbolTableName;
    AcDbObjectId existing;
    if (getBlockTableRecordId(name, existing) == Acad::eOk) return Acad::eDuplicateRecordName;
    id = newId();
    m_records.emplace(id, BlockRecord{name, {}, {}, false});
    m_recordOrder.push_back(id);
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::getBlockTableRecordName(AcDbObjectId record,
                                                          std::wstring& name) const {
    const auto it = m_records.find(record);
    if (it == m_records.end()) return Acad::eWrongObjectType;
    if (it->second.erased) return Acad::eWasErased;
    if (m_unopenable.contains(record)) return Acad::eWasErased;
    name = it->second.name;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::setBlockTableRecordOrigin(AcDbObjectId record,
                                                            const AcGePoint3d& origin) {
    auto* r = writableRecord(record);
    if (r == nullptr) return Acad::eWasErased;
    r->origin = origin;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::appendEntity(AcDbObjectId record, Entity entity,
                                               AcDbObjectId& id) {
    auto* r = writableRecord(record);
    if (r == nullptr) return Acad::eWasErased;
    r->entities.push_back(std::move(entity));
    id = newId();
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::appendLine(AcDbObjectId record, const AcDbLine& line,
                                             AcDbObjectId& id) {
    return appendEntity(record, line, id);
}

Acad::ErrorStatus MemoryDatabase::appendAttributeDefinition(
    AcDbObjectId record, const AcDbAttributeDefinition& definition, AcDbObjectId& id) {
    return appendEntity(record, definition, id);
}

Acad::ErrorStatus MemoryDatabase::getTextStyleId(const std::wstring& name, AcDbObjectId& id) const {
    for (std::size_t i = 0; i < m_styles.size(); ++i) {
        if (sameName(m_styles[i].name, name)) {
            id = m_styleIds[i];
            return Acad::eOk;
        }
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus MemoryDatabase::addTextStyle(const AcDbTextStyleTableRecord& style,
                                               AcDbObjectId& id) {
    AcDbObjectId existing;
    if (getTextStyleId(style.name, existing) == Acad::eOk) return Acad::eDuplicateRecordName;
    id = newId();
    m_styles.push_back(style);
    m_styleIds.push_back(id);
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::openBlockReference(AcDbObjectId entity,
                                                     AcDbBlockReference& reference) const {
    const auto it = m_references.find(entity);
    if (it == m_references.end()) return Acad::eWrongObjectType;
    if (m_unopenable.contains(entity)) return Acad::eWasErased;
    reference = it->second.reference;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::insertBlockReference(const AcDbBlockReference& reference,
                                                       AcDbObjectId& id) {
    const auto* block = record(reference.blockTableRecord);
    if (block == nullptr || block->erased) return Acad::eKeyNotFound;
    Reference inserted{reference, {}};
    for (const auto& entity : block->entities) {
        if (const auto* definition = std::get_if<AcDbAttributeDefinition>(&entity)) {
            AcDbAttributeDefinition attribute = *definition;
            attribute.position = placed(definition->position, block->origin, reference);
            attribute.alignmentPoint = placed(definition->alignmentPoint, block->origin, reference);
            attribute.height *= reference.scaleFactors.sy;
            inserted.attributes.push_back(attribute);
        }
    }
    id = newId();
    m_references.emplace(id, std::move(inserted));
    m_referenceOrder.push_back(id);
    return Acad::eOk;
}

// The in-memory drawing of the tests.
#include "host/scripted/memorydatabase.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

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

AcDbObjectId MemoryDatabase::addReference(const std::wstring& blockName, AcGePoint3d position,
                                          const std::wstring& layer) {
    AcDbObjectId block;
    if (getBlockTableRecordId(blockName, block) != Acad::eOk) block = addBlock(blockName);
    AcDbBlockReference reference;
    reference.blockTableRecord = block;
    reference.position = position;
    AcDbObjectId id;
    insertBlockReference(reference, id);
    m_references.at(id).layer = layer;
    return id;
}

void MemoryDatabase::moveReference(AcDbObjectId reference, AcGePoint3d position) {
    if (const auto it = m_references.find(reference); it != m_references.end())
        it->second.reference.position = position;
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
    m_records.emplace(id, BlockRecord{name, {}, {}, {}, false});
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
    r->entityIds.push_back(id);
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

Acad::ErrorStatus MemoryDatabase::appendText(AcDbObjectId record, const AcDbText& text,
                                             AcDbObjectId& id) {
    return appendEntity(record, text, id);
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
    id = newId();
    m_references.emplace(id, Reference{reference, placedAttributes(reference)});
    m_referenceOrder.push_back(id);
    return Acad::eOk;
}

std::vector<AcDbAttributeDefinition> MemoryDatabase::placedAttributes(
    const AcDbBlockReference& reference) const {
    std::vector<AcDbAttributeDefinition> attributes;
    const auto* block = record(reference.blockTableRecord);
    if (block == nullptr) return attributes;
    for (const auto& entity : block->entities) {
        if (const auto* definition = std::get_if<AcDbAttributeDefinition>(&entity)) {
            AcDbAttributeDefinition attribute = *definition;
            attribute.position = placed(definition->position, block->origin, reference);
            attribute.alignmentPoint = placed(definition->alignmentPoint, block->origin, reference);
            attribute.height *= reference.scaleFactors.sy;
            attributes.push_back(attribute);
        }
    }
    return attributes;
}

bool MemoryDatabase::holds(AcDbObjectId id) const {
    if (m_references.contains(id)) return true;
    if (const auto* r = record(id)) return !r->erased;
    for (const auto& [recordId, r] : m_records) {
        if (std::find(r.entityIds.begin(), r.entityIds.end(), id) != r.entityIds.end()) return true;
    }
    return std::find(m_styleIds.begin(), m_styleIds.end(), id) != m_styleIds.end();
}

Acad::ErrorStatus MemoryDatabase::getBlockEntityIds(AcDbObjectId record,
                                                    std::vector<AcDbObjectId>& ids) const {
    const auto* r = this->record(record);
    if (r == nullptr || r->erased) return Acad::eWrongObjectType;
    ids = record == m_modelSpace ? m_referenceOrder : r->entityIds;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::getModelSpaceEntityIds(std::vector<AcDbObjectId>& ids) const {
    ids = m_referenceOrder;
    return Acad::eOk;
}

// An entity of some block record, when it is of the kind asked for.
template <typename Kind>
Acad::ErrorStatus MemoryDatabase::openEntity(AcDbObjectId entity, Kind& out) const {
    for (const auto& [id, r] : m_records) {
        for (std::size_t i = 0; i < r.entityIds.size(); ++i) {
            if (r.entityIds[i] != entity) continue;
            const auto* found = std::get_if<Kind>(&r.entities[i]);
            if (found == nullptr) return Acad::eWrongObjectType;
            out = *found;
            return Acad::eOk;
        }
    }
    return Acad::eWrongObjectType;
}

Acad::ErrorStatus MemoryDatabase::openAttributeDefinition(
    AcDbObjectId entity, AcDbAttributeDefinition& definition) const {
    return openEntity(entity, definition);
}

Acad::ErrorStatus MemoryDatabase::openText(AcDbObjectId entity, AcDbText& text) const {
    return openEntity(entity, text);
}

Acad::ErrorStatus MemoryDatabase::eraseEntity(AcDbObjectId entity) {
    if (m_references.erase(entity) == 1) {
        std::erase(m_referenceOrder, entity);
        return Acad::eOk;
    }
    for (auto& [id, r] : m_records) {
        const auto at = std::find(r.entityIds.begin(), r.entityIds.end(), entity);
        if (at == r.entityIds.end()) continue;
        r.entities.erase(r.entities.begin() + (at - r.entityIds.begin()));
        r.entityIds.erase(at);
        return Acad::eOk;
    }
    return Acad::eWrongObjectType;
}

Acad::ErrorStatus MemoryDatabase::getBlockReferenceIds(AcDbObjectId record,
                                                       std::vector<AcDbObjectId>& ids) const {
    if (this->record(record) == nullptr) return Acad::eWrongObjectType;
    ids.clear();
    for (const auto id : m_referenceOrder) {
        if (m_references.at(id).reference.blockTableRecord == record) ids.push_back(id);
    }
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::syncBlockReferenceAttributes(AcDbObjectId reference) {
    const auto it = m_references.find(reference);
    if (it == m_references.end()) return Acad::eWrongObjectType;
    it->second.attributes = placedAttributes(it->second.reference);
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::getHandle(AcDbObjectId object, std::wstring& handle) const {
    if (!holds(object)) return Acad::eKeyNotFound;
    wchar_t text[24];
    std::swprintf(text, 24, L"%llX", static_cast<unsigned long long>(object.value()));
    handle = text;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::getObjectId(const std::wstring& handle, AcDbObjectId& id) const {
    wchar_t* end = nullptr;
    const unsigned long long value = std::wcstoull(handle.c_str(), &end, 16);
    if (handle.empty() || *end != L'\0') return Acad::eInvalidInput;
    if (!holds(AcDbObjectId(value))) return Acad::eKeyNotFound;
    id = AcDbObjectId(value);
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::registerApplication(const std::wstring& name) {
    if (name.empty()) return Acad::eInvalidSymbolTableName;
    m_applications.insert(FoldCase(name));
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::getXData(AcDbObjectId object, const std::wstring& application,
                                           std::vector<resbuf>& data) const {
    const auto it = m_xdata.find({object, FoldCase(application)});
    if (it == m_xdata.end()) return Acad::eKeyNotFound;
    data = it->second;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::setXData(AcDbObjectId object, const std::wstring& application,
                                           const std::vector<resbuf>& data) {
    if (!m_applications.contains(FoldCase(application))) return Acad::eKeyNotFound;
    if (!holds(object)) return Acad::eWrongObjectType;
    for (const resbuf& item : data) {
        if (item.restype >= 1000 && item.restype <= 1009 && item.resval.rstring.size() > 255)
            return Acad::eInvalidInput;
    }
    if (data.empty()) {
        m_xdata.erase({object, FoldCase(application)});
    } else {
        m_xdata[{object, FoldCase(application)}] = data;
    }
    return Acad::eOk;
}

Acad::ErrorStatus MemoryDatabase::countBlockReferences(const AcDbReferenceSelection& selection,
                                                       std::vector<AcDbBlockCount>& counts) const {
    if (selection.nested) return Acad::eNotImplemented;
    counts.clear();
    auto inWindow = [&selection](const AcGePoint3d& p) {
        if (!selection.window) return true;
        const AcDbSelectionWindow& w = *selection.window;
        return p.x >= std::min(w.x1, w.x2) && p.x <= std::max(w.x1, w.x2) &&
               p.y >= std::min(w.y1, w.y2) && p.y <= std::max(w.y1, w.y2);
    };
    auto onLayer = [&selection](const std::wstring& layer) {
        return selection.layers.empty() ||
               std::any_of(selection.layers.begin(), selection.layers.end(),
                           [&](const std::wstring& name) { return sameName(name, layer); });
    };
    const std::vector<AcDbObjectId>& ids =
        selection.references ? *selection.references : m_referenceOrder;
    for (const AcDbObjectId id : ids) {
        const auto it = m_references.find(id);
        if (it == m_references.end()) continue;
        if (!selection.references &&
            (!inWindow(it->second.reference.position) || !onLayer(it->second.layer)))
            continue;
        std::wstring name;
        if (getBlockTableRecordName(it->second.reference.blockTableRecord, name) != Acad::eOk)
            return Acad::eKeyNotFound;
        const auto known = std::find_if(counts.begin(), counts.end(), [&](const auto& count) {
            return sameName(count.name, name);
        });
        if (known != counts.end()) {
            ++known->references;
        } else {
            counts.push_back(AcDbBlockCount{name, 1});
        }
    }
    return Acad::eOk;
}

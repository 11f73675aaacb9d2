// The working drawing as the module sees it: block table, text styles, block references.
#pragma once

#include <string>
#include <vector>

#include "host/api/acadstatus.h"
#include "host/api/acdbentities.h"
#include "host/api/acdbobjectid.h"
#include "host/api/adscodes.h"
#include "host/api/hostexport.h"

// Each operation stands for one open-call-close sequence of the host's object model; the database
// implementation (DXF file, memory) decides what an id is. Nothing here throws.
class ACHOST_EXPORT AcDbDatabase {
public:
    virtual ~AcDbDatabase();

    // Block table: the records in table order, erased records skipped (`newIterator(it, true, true)`).
    virtual std::vector<AcDbObjectId> blockTableRecordIds() const = 0;
    // `AcDbBlockTable::getAt`: eOk, eKeyNotFound, or another status when the table cannot be read.
    virtual Acad::ErrorStatus getBlockTableRecordId(const std::wstring& name,
                                                    AcDbObjectId& id) const = 0;
    // `AcDbBlockTable::add` of a new record with this name.
    virtual Acad::ErrorStatus addBlockTableRecord(const std::wstring& name, AcDbObjectId& id) = 0;

    // Block table records.
    virtual Acad::ErrorStatus getBlockTableRecordName(AcDbObjectId record,
                                                      std::wstring& name) const = 0;
    virtual Acad::ErrorStatus setBlockTableRecordOrigin(AcDbObjectId record,
                                                        const AcGePoint3d& origin) = 0;
    virtual Acad::ErrorStatus appendLine(AcDbObjectId record, const AcDbLine& line,
                                         AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus appendAttributeDefinition(AcDbObjectId record,
                                                        const AcDbAttributeDefinition& definition,
                                                        AcDbObjectId& id) = 0;

    // Text style table.
    virtual Acad::ErrorStatus getTextStyleId(const std::wstring& name, AcDbObjectId& id) const = 0;
    virtual Acad::ErrorStatus addTextStyle(const AcDbTextStyleTableRecord& style,
                                           AcDbObjectId& id) = 0;

    // `acdbOpenObject(reference, id, AcDb::kForRead)`: eWrongObjectType when the entity is no INSERT.
    virtual Acad::ErrorStatus openBlockReference(AcDbObjectId entity,
                                                 AcDbBlockReference& reference) const = 0;

    // What the host's ".INSERT" does with ATTREQ 0: a reference in the current space, its attributes
    // taking the definitions' default values.
    virtual Acad::ErrorStatus insertBlockReference(const AcDbBlockReference& reference,
                                                   AcDbObjectId& id) = 0;
};

class ACHOST_EXPORT AcDbHostApplicationServices {
public:
    AcDbDatabase* workingDatabase() const { return m_workingDatabase; }
    void setWorkingDatabase(AcDbDatabase* database) { m_workingDatabase = database; }

private:
    AcDbDatabase* m_workingDatabase = nullptr;
};

ACHOST_EXPORT AcDbHostApplicationServices* acdbHostApplicationServices();

// Turns an entity name (from a selection set) into the object id of that entity.
ACHOST_EXPORT Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name& entity);
ACHOST_EXPORT void acdbGetAdsName(ads_name& entity, AcDbObjectId id);

// The working drawing as the module sees it: block table, text styles, block references.
#pragma once

#include <string>
#include <vector>

#include "host/api/acadstatus.h"
#include "host/api/acdbentities.h"
#include "host/api/acdbobjectid.h"
#include "host/api/acdbreferencecount.h"
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
    virtual Acad::ErrorStatus appendText(AcDbObjectId record, const AcDbText& text,
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

    // The entities of a block record in order (`AcDbBlockTableRecord::newIterator`).
    virtual Acad::ErrorStatus getBlockEntityIds(AcDbObjectId record,
                                                std::vector<AcDbObjectId>& ids) const = 0;
    // The entities of model space (`blockModelSpaceId` and its iterator), also in a drawing that
    // keeps no record for it (R12).
    virtual Acad::ErrorStatus getModelSpaceEntityIds(std::vector<AcDbObjectId>& ids) const = 0;
    // `acdbOpenObject` of an attribute definition: eWrongObjectType for any other entity.
    virtual Acad::ErrorStatus openAttributeDefinition(
        AcDbObjectId entity, AcDbAttributeDefinition& definition) const = 0;
    // `acdbOpenObject` of a text: eWrongObjectType for any other entity.
    virtual Acad::ErrorStatus openText(AcDbObjectId entity, AcDbText& text) const = 0;
    // `AcDbEntity::erase`: the entity, and the attributes of a reference with it.
    virtual Acad::ErrorStatus eraseEntity(AcDbObjectId entity) = 0;
    // The references to a block record, wherever they stand (`getBlockReferenceIds`).
    virtual Acad::ErrorStatus getBlockReferenceIds(AcDbObjectId record,
                                                   std::vector<AcDbObjectId>& ids) const = 0;
    // The reference's attributes made again from its block's attribute definitions, with their
    // default values, as ".INSERT" makes them with ATTREQ 0 (what the host's ATTSYNC does).
    virtual Acad::ErrorStatus syncBlockReferenceAttributes(AcDbObjectId reference) = 0;

    // Handles as hexadecimal text (`getAcDbHandle`, `getAcDbObjectId`): eNotApplicable in a
    // drawing without handles, eKeyNotFound for a handle no object has (any longer).
    virtual Acad::ErrorStatus getHandle(AcDbObjectId object, std::wstring& handle) const = 0;
    virtual Acad::ErrorStatus getObjectId(const std::wstring& handle, AcDbObjectId& id) const = 0;

    // Applications that keep extended data in the drawing (`acdbRegApp`); eOk when the name is
    // registered already.
    virtual Acad::ErrorStatus registerApplication(const std::wstring& name) = 0;
    // An object's extended data under one registered application (`xData`, `setXData`): the items
    // after the application's name, each resbuf's restype its group code (1000 text, 1002 "{" or
    // "}", 1005 handle, 1010 point, 1040 real, 1070 16-bit, 1071 32-bit). getXData answers
    // eKeyNotFound when the object has none; setXData with no items removes them, and refuses a
    // text longer than the drawing allows (255 bytes) with eInvalidInput.
    virtual Acad::ErrorStatus getXData(AcDbObjectId object, const std::wstring& application,
                                       std::vector<resbuf>& data) const = 0;
    virtual Acad::ErrorStatus setXData(AcDbObjectId object, const std::wstring& application,
                                       const std::vector<resbuf>& data) = 0;

    // The host counts the references a selection names, as it selects them (see
    // AcDbReferenceSelection): one count per block name, first met first.
    virtual Acad::ErrorStatus countBlockReferences(const AcDbReferenceSelection& selection,
                                                   std::vector<AcDbBlockCount>& counts) const = 0;
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

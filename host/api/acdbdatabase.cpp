// The working-database pointer and the entity-name conversions.
#include "host/api/acdbdatabase.h"

AcDbDatabase::~AcDbDatabase() = default;

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services;
    return &services;
}

// An entity name carries the object id in its first word; the second word stays 0.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name& entity) {
    if (entity.value[0] == 0) return Acad::eNullObjectId;
    id = AcDbObjectId(static_cast<std::uint64_t>(entity.value[0]));
    return Acad::eOk;
}

void acdbGetAdsName(ads_name& entity, AcDbObjectId id) {
    entity.value[0] = static_cast<std::int64_t>(id.value());
    entity.value[1] = 0;
}

// The module's per-document data manager, alive from load to unload.
#include "frame/DocData.h"

AsdkDataManager<CDocData> DocDataManager;

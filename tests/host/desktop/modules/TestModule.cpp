// A tiny module for the loader's tests. Compile definitions choose how it behaves, well or badly:
// NO_ENTRY_POINT, NO_API_VERSION, API_VERSION=0x..., INIT_ANSWER=..., NO_UNLOCK, NO_CLEANUP,
// THROW_AT_INIT, USES_QT, PLACES_BLOCK (a command that places the block DOOR as the module places
// its table), DOC_RECORDS (the module's per-document data: a record for the current drawing, and
// their count); MODULE_GROUP names its command group.
#include <memory>
#include <stdexcept>

#ifdef PLACES_BLOCK
#include "frame/TablePlacement.h"
#endif
#ifdef DOC_RECORDS
#include "frame/DocData.h"
#endif
#ifdef USES_QT
#include <QObject>
#include <QString>
#include <QWidget>
#endif

#include "host/api/acadstatus.h"
#include "host/api/acapdocmanager.h"
#include "host/api/acededitor.h"
#include "host/api/acrxregistry.h"

#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))

#ifndef API_VERSION
#define API_VERSION 0x00160000
#endif
#ifndef INIT_ANSWER
#define INIT_ANSWER AcRx::kRetOK
#endif
#ifndef MODULE_GROUP
#define MODULE_GROUP L"TEST_GROUP"
#endif

namespace {

[[maybe_unused]] AcApDocManagerReactor reactor;

#ifdef USES_QT
// As the module's dialogs will: Qt objects of its own, some alive from load to unload.
const QString greeting = QStringLiteral("Hello from a module with Qt");
std::unique_ptr<QObject> holder;
#endif

[[maybe_unused]] void Hello() {
#ifdef USES_QT
    acutPrintf(L"\n%ls\n", greeting.toStdWString().c_str());
    // Widgets need an application; only the meta-object system is exercised without one.
    QObject child(holder.get());
    child.setObjectName(greeting);
#else
    acutPrintf(L"\nHello from %ls\n", MODULE_GROUP);
#endif
}

// Transparent: it may run while another command prompts.
[[maybe_unused]] void Echo() { acutPrintf(L"\nEcho from %ls\n", MODULE_GROUP); }

[[maybe_unused]] void Warn() { acedAlert(L"\nSomething to see"); }

#ifdef PLACES_BLOCK
// The table placement of the module, on a door of 0.9 by 0.9 units.
void PlaceDoor() { PlaceTable(L"DOOR", 0.9, 0.9); }
#endif

#ifdef DOC_RECORDS
// Registered on the document manager from load to unload, as the module's own manager is.
AsdkDataManager<int> records;
void MakeRecord() { records.docData(acDocManagerPtr()->curDocument()) = 1; }
void CountRecords() { acutPrintf(L"\n%d records\n", static_cast<int>(records.documentCount())); }
#endif

[[maybe_unused]] AcEdCommandStack* Commands() {
    return AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

}  // namespace

#ifndef NO_ENTRY_POINT
MODULE_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, [[maybe_unused]] void* appId) {
    switch (msg) {
        case AcRx::kInitAppMsg:
#ifdef THROW_AT_INIT
            throw std::runtime_error("no licence");
#endif
#ifndef NO_UNLOCK
            AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))
                ->unlockApplication(appId);
#endif
            Commands()->addCommand(MODULE_GROUP, L"Hello_Global", L"HELLO", ACRX_CMD_MODAL, Hello);
            Commands()->addCommand(MODULE_GROUP, L"Echo_Global", L"ECHO", ACRX_CMD_TRANSPARENT,
                                   Echo);
            Commands()->addCommand(MODULE_GROUP, L"Warn_Global", L"WARN", ACRX_CMD_MODAL, Warn);
#ifdef PLACES_BLOCK
            Commands()->addCommand(MODULE_GROUP, L"PlaceDoor_Global", L"PLACEDOOR", ACRX_CMD_MODAL,
                                   PlaceDoor);
#endif
#ifdef DOC_RECORDS
            Commands()->addCommand(MODULE_GROUP, L"DocRecord_Global", L"DOCRECORD", ACRX_CMD_MODAL,
                                   MakeRecord);
            Commands()->addCommand(MODULE_GROUP, L"DocRecords_Global", L"DOCRECORDS",
                                   ACRX_CMD_MODAL, CountRecords);
#endif
            acDocManagerPtr()->addReactor(&reactor);
#ifdef USES_QT
            holder = std::make_unique<QObject>();
            holder->setObjectName(greeting);
#endif
            return INIT_ANSWER;
        case AcRx::kUnloadAppMsg:
#ifndef NO_CLEANUP
            Commands()->removeGroup(MODULE_GROUP);
            acDocManagerPtr()->removeReactor(&reactor);
#endif
#ifdef USES_QT
            holder.reset();
#endif
            return AcRx::kRetOK;
        case AcRx::kNullMsg:
            break;
    }
    return AcRx::kRetOK;
}
#endif

#ifndef NO_API_VERSION
MODULE_EXPORT unsigned acrxGetApiVersion() { return API_VERSION; }
#endif

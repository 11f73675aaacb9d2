// Registration of the module's commands with the host's command stack.
#include "frame/CommandRegistration.h"

#include <iterator>

#include "frame/BlockPriceCmd.h"
#include "frame/CalcPriceCmd.h"
#include "frame/RefreshTablesCmd.h"

namespace {

// The price-list editor is modal; the calculation is registered as transparent, on purpose. The
// refresh changes the drawing's tables, so it waits for other commands to end.
constexpr CommandTableRow kCommands[] = {
    {kCommandGroup, L"BlockPrice_Global", L"RZBOMT", ACRX_CMD_MODAL, BlockPriceCmd},
    {kCommandGroup, L"CalcPrice_Global", L"RZBOMC", ACRX_CMD_TRANSPARENT, CalcPriceCmd},
    {kCommandGroup, L"RefreshTables_Global", L"RZBOMU", ACRX_CMD_MODAL, RefreshTablesCmd},
};

AcEdCommandStack* CommandStack() {
    return AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

}  // namespace

const CommandTableRow* CommandTable() { return kCommands; }

int CommandTableSize() { return static_cast<int>(std::size(kCommands)); }

void RegisterCommands() {
    for (const CommandTableRow& row : kCommands) {
        // The host always provides its command stack; without one there is nothing to add to.
        AcEdCommandStack* stack = CommandStack();
        if (stack == nullptr) return;
        stack->addCommand(row.group, row.globalName, row.localName, row.flags, row.handler, nullptr,
                          -1, AcRxResourceInstance::empty());
    }
}

void UnregisterCommands() {
    if (AcEdCommandStack* stack = CommandStack()) stack->removeGroup(kCommandGroup);
}

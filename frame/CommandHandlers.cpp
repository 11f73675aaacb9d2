// The command handlers. Their bodies come with the two dialogs they run.
#include "frame/CommandHandlers.h"

std::wstring lastCalcFileName;

void BlockPriceCmd() {}

void CalcPriceCmd() {}

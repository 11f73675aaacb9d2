// The refresh command's handler.
#include "frame/RefreshTablesCmd.h"

#include "bom/TableRefresh.h"
#include "host/api/acededitor.h"

namespace {

void PrintLine(const std::wstring& text) { acutPrintf(L"\n%ls", text.c_str()); }

}  // namespace

void RefreshTablesCmd() {
    int redrawn = 0;
    for (const PriceTableCheck& check : CheckPriceTables()) {
        switch (check.state) {
            case TableState::OutOfDate:
                if (RefreshPriceTable(check) != 1) break;
                PrintLine(check.name + L" redrawn: " + DescribeTableChanges(check));
                ++redrawn;
                break;
            case TableState::ListMissing:
            case TableState::NotCounted:
                PrintLine(DescribeTableCheck(check) + L"; left as it is");
                break;
            case TableState::SourceUnknown:
                PrintLine(check.name + L": source unknown; left as it is");
                break;
            case TableState::Current:
                break;
        }
    }
    if (redrawn == 0) PrintLine(L"No price table is out of date.");
}

// The line that tells of out-of-date price tables when a drawing is opened.
#include "frame/StaleTableNotice.h"

#include "bom/TableRefresh.h"
#include "host/api/acdbdatabase.h"
#include "host/api/acededitor.h"

namespace {

// The module's one notice, registered while the module is loaded.
StaleTableNotice notice;

}  // namespace

std::wstring StaleTablesLine() {
    std::vector<std::wstring> stale;
    for (const PriceTableCheck& check : CheckPriceTables()) {
        if (check.state == TableState::OutOfDate) stale.push_back(check.name);
    }
    if (stale.empty()) return {};
    std::wstring names;
    for (std::size_t i = 0; i < stale.size(); ++i)
        names += (i == 0 ? L"" : i + 1 == stale.size() ? L" and " : L", ") + stale[i];
    return stale.size() == 1 ? names + L" is out of date; RZBOMU draws it again."
                             : names + L" are out of date; RZBOMU draws them again.";
}

void StaleTableNotice::documentCreated(AcApDocument* document) {
    // The tables are read from the working drawing, which the host makes of the new document.
    if (document == nullptr ||
        document->database() != acdbHostApplicationServices()->workingDatabase())
        return;
    if (const std::wstring line = StaleTablesLine(); !line.empty())
        acutPrintf(L"\n%ls", line.c_str());
}

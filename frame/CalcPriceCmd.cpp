// The calculation command's handler.
#include "frame/CalcPriceCmd.h"

#include <QWidget>

#include "bom/CalcPriceDialog.h"
#include "bom/CalcPriceState.h"
#include "frame/ResourceOverride.h"
#include "frame/TablePlacement.h"
#include "host/api/acapwindow.h"
#include "host/api/acededitor.h"

namespace {

constexpr int kOpenExisting = 2;

}  // namespace

void CalcPriceCmd() {
    const ResourceOverride resources;
    CalcPriceDialog dialog(static_cast<QWidget*>(adsw_acadMainWnd()));
    dialog.LoadSettings();
    dialog.SetPriceListLoaded(false);

    resbuf chosen;
    if (acedGetFileD(L"Open", lastCalcFileName.c_str(), L"prc", kOpenExisting, &chosen) == RTNORM) {
        if (!dialog.LoadPriceList(chosen.resval.rstring)) return;
        lastCalcFileName = chosen.resval.rstring;
        dialog.SetPriceListLoaded(true);
    } else {
        // Cancel is no error: the bill is shown without prices, and the next prompt proposes none.
        lastCalcFileName.clear();
    }

    if (!dialog.CountSelection()) return;
    if (dialog.DoModal() != IDOK) return;
    PlaceTable(dialog.TableBlockName().c_str(), dialog.TableWidth(), dialog.TableHeight());
}

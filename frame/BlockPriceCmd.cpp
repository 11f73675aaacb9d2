// The price-list command: the editor as a modal dialog of the host's main window.
#include "frame/BlockPriceCmd.h"

#include <QWidget>

#include "frame/ResourceOverride.h"
#include "host/api/acapwindow.h"
#include "pricelist/BlockPriceDialog.h"

void BlockPriceCmd() {
    const ResourceOverride resources;
    BlockPriceDialog dialog(static_cast<QWidget*>(adsw_acadMainWnd()));
    dialog.DoModal();
}

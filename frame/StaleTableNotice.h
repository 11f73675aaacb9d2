// A drawing opened with price tables that are out of date says so in one line on the command line.
#pragma once

#include "host/api/acapdocmanager.h"

// Hears of every drawing the host opens while the module is loaded.
class StaleTableNotice final : public AcApDocManagerReactor {
public:
    StaleTableNotice() { acDocManagerPtr()->addReactor(this); }
    ~StaleTableNotice() override { acDocManagerPtr()->removeReactor(this); }
    StaleTableNotice(const StaleTableNotice&) = delete;
    StaleTableNotice& operator=(const StaleTableNotice&) = delete;

    void documentCreated(AcApDocument* document) override;
};

// "QTB0001 and QTB0002 are out of date; RZBOMU draws them again."; empty when none is.
std::wstring StaleTablesLine();

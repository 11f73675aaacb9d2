// The refresh command ("RZBOMU"): every price table of the drawing that no longer shows what its
// source counts to now is drawn again where it stands, and the command line says what changed.
#pragma once

void RefreshTablesCmd();

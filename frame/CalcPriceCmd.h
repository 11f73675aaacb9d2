// The calculation command ("RZBOMC"): a price list, the selected block references counted against
// it, the bill of materials in its dialog, and the table placed when the dialog drew one.
#pragma once

void CalcPriceCmd();

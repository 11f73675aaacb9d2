// Several drawings read and counted at once, on as many threads as asked: each drawing is read and
// counted on its own, so nothing is shared but the progress line.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/dxf/dxfblocktally.h"
#include "host/dxf/dxfdocument.h"

struct CountedDrawing {
    std::string path;
    DrawingTally tally;                     // every space counted, together
    std::vector<SpaceTally> spaces;         // with layouts counted: model space, then each layout
    std::unique_ptr<DxfDocument> document;  // kept only when asked for
    std::string error;                      // why the drawing could not be read or counted
    std::vector<std::string> repairs;       // what a recovering read mended
};

struct BatchOptions {
    TallyOptions tally;
    unsigned jobs = 1;           // threads; never more than there are drawings
    bool keepDocuments = false;  // for drawings that are written to afterwards
    bool showProgress = true;    // a progress line on a terminal
    DxfReading reading = DxfReading::Strict;
    bool layouts = false;  // count the paper-space layouts' references too, space by space
};

// One entry per path, in the order given; every drawing is tried, whatever the others give. The
// repairs of a recovering read are told on standard error, drawing by drawing, once all are read.
std::vector<CountedDrawing> countDrawings(const std::vector<std::string>& paths,
                                          const BatchOptions& options);

// The number of threads when none is asked for: the machine's cores.
unsigned defaultJobs();

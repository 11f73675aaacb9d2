// The loader's attach and detach of Tarnwick.arx: a static object constructed when the module is
// mapped into the host's process and destroyed when it is taken out.
#include "frame/LibraryEntry.h"

namespace {

class LibraryEntryObject final {
public:
    LibraryEntryObject() { LibraryMain(ModuleInstance(), LibraryReason::ProcessAttach); }
    ~LibraryEntryObject() { LibraryMain(ModuleInstance(), LibraryReason::ProcessDetach); }
    LibraryEntryObject(const LibraryEntryObject&) = delete;
    LibraryEntryObject& operator=(const LibraryEntryObject&) = delete;
};

const LibraryEntryObject libraryEntry;

}  // namespace

// Makes the module's own resources current for as long as a command handler runs.
#pragma once

#include "host/api/acapwindow.h"

// Dialog templates and strings are then taken from the module, not from the host; the previous
// resource handle comes back when the object goes, also when an exception leaves the scope.
class ResourceOverride final {
public:
    ResourceOverride();
    ~ResourceOverride();
    ResourceOverride(const ResourceOverride&) = delete;
    ResourceOverride& operator=(const ResourceOverride&) = delete;

private:
    HINSTANCE m_saved;
};

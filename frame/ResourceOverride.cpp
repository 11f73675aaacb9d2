// The resource override of the command handlers.
#include "frame/ResourceOverride.h"

#include "frame/LibraryEntry.h"

ResourceOverride::ResourceOverride() : m_saved(AfxGetResourceHandle()) {
    AfxSetResourceHandle(ExtensionModule.moduleResource);
}

ResourceOverride::~ResourceOverride() { AfxSetResourceHandle(m_saved); }

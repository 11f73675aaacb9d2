// The registered commands as a table for people: group, global name, local name and flags.
#pragma once

#include <string>

#include "host/api/acrxregistry.h"

// One row a command in the order they were registered, under a heading; columns padded to align.
std::string listCommands(const AcEdCommandStack& stack);

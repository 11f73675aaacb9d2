// Runs one database call so that no exception leaves the database: memory running out becomes a
// status the host's callers check.
#pragma once

#include <exception>

#include "host/api/acadstatus.h"

template <typename Call>
Acad::ErrorStatus guarded(Call&& call) noexcept {
    try {
        return call();
    } catch (const std::exception&) {
        return Acad::eOutOfMemory;
    }
}

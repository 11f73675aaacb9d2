// The console's messages on standard error: one line each, location first, lower case.
#pragma once

#include <string>

#include "files/filestatus.h"

// Exit statuses of the `tarnwick` command.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailure = 1;  // a user error: missing file, unreadable list, bad drawing
inline constexpr int kExitUsage = 2;
inline constexpr int kExitFound = 3;  // `check` found something to look at

// "where: what" on standard error; returns kExitFailure so that a handler can `return fail(...)`.
int fail(const std::string& where, const std::string& what);
// "tarnwick: what" and a hint at --help; returns kExitUsage.
int usageError(const std::string& what);
// Empty when the file can be read; else the reason.
std::string unreadableReason(const std::string& path);

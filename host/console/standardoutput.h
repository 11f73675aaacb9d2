// Standard output, checked: a failed write or flush is an error like any other file's, and a reader
// that went away (`| head`) ends the program quietly.
#pragma once

#include <string_view>

// Writes through stdio; after the first failure nothing more is written.
void writeStandardOutput(std::string_view text);
// The same, formatted as printf does.
void printStandardOutput(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Flushes and closes standard output, and returns `status` when all went out. On a failure it says
// "standard output: <reason>" on standard error and returns kExitFailure; a closed pipe ends the
// process as SIGPIPE does, without a word.
int finishStandardOutput(int status);

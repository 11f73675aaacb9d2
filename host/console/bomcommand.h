// `tarnwick bom`: the bill of materials of a drawing against a price list, as the report prints it
// or as JSON, with the report file and the price table drawn into a copy of the drawing on request.
#pragma once

#include <string>
#include <vector>

int runBomCommand(const std::vector<std::string>& arguments);

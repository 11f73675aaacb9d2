// `tarnwick check`: a drawing and a price list looked over before a bill of materials is made:
// blocks without a price, prices of blocks the drawing lacks, names listed twice, prices that are
// not numbers, lines the reader skips, and dynamic-block variants without a link.
#pragma once

#include <string>
#include <vector>

int runCheckCommand(const std::vector<std::string>& arguments);

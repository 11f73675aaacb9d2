// `tarnwick refresh`: the price tables of a drawing that no longer show what their sources count
// to now, drawn again in place and the drawing written with them.
#pragma once

#include <string>
#include <vector>

int runRefreshCommand(const std::vector<std::string>& arguments);

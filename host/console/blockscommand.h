// `tarnwick blocks`: the drawing's block names as the price-list editor sorts them, with their
// reference counts and, against a price list, which of them have no price yet.
#pragma once

#include <string>
#include <vector>

int runBlocksCommand(const std::vector<std::string>& arguments);

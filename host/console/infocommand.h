// `tarnwick info`: what a drawing is made of: version, encoding, handle seed, entities per space
// and references per block name.
#pragma once

#include <string>
#include <vector>

int runInfoCommand(const std::vector<std::string>& arguments);

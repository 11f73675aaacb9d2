// Where a drawing is written to: a function handed the bytes piece by piece, in order.
#pragma once

#include <functional>
#include <string_view>

using DxfSink = std::function<void(std::string_view)>;

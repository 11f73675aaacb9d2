// System reasons in the console's shape.
#include "files/filestatus.h"

#include <cctype>
#include <cstring>

std::string systemReason(int error) {
    std::string reason = std::strerror(error);
    if (!reason.empty()) reason[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(reason[0])));
    return reason;
}

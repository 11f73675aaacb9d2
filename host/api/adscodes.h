// Status codes, result-buffer types and the small value types that every host call speaks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/api/acgepoint3d.h"
#include "host/api/hostexport.h"

// Results of the editor's functions.
constexpr int RTNONE = 5000;   // no result (empty input)
constexpr int RTNORM = 5100;   // request completed
constexpr int RTERROR = -5001; // failed; also what the file dialog answers when cancelled
constexpr int RTCAN = -5002;   // the user cancelled (Escape)
constexpr int RTREJ = -5003;   // request rejected by the host

// Value types of a result buffer.
constexpr short RTREAL = 5001;
constexpr short RTPOINT = 5002;
constexpr short RTSHORT = 5003;
constexpr short RTSTR = 5005;
constexpr short RT3DPOINT = 5009;
constexpr short RTLONG = 5010;

using ads_point = AcGePoint3d;

// An entity or a selection set, as the editor's functions name them.
struct ads_name {
    std::int64_t value[2] = {0, 0};
    friend bool operator==(const ads_name&, const ads_name&) = default;
};

// One typed value. The host's result buffers are linked lists; a std::vector<resbuf> takes that role.
struct ACHOST_EXPORT resbuf {
    short restype = static_cast<short>(RTNONE);
    struct {
        short rint = 0;
        std::int32_t rlong = 0;
        double rreal = 0.0;
        ads_point rpoint;
        std::wstring rstring;
    } resval;

    static resbuf shortValue(short v);
    static resbuf realValue(double v);
    static resbuf pointValue(const ads_point& p);
    static resbuf stringValue(std::wstring s);
    // A selection filter item: DXF group code and its value.
    static resbuf groupCode(short code, std::wstring value);
};

// Constructors of typed result buffers.
#include "host/api/adscodes.h"

#include <utility>

resbuf resbuf::shortValue(short v) {
    resbuf rb;
    rb.restype = RTSHORT;
    rb.resval.rint = v;
    return rb;
}

resbuf resbuf::realValue(double v) {
    resbuf rb;
    rb.restype = RTREAL;
    rb.resval.rreal = v;
    return rb;
}

resbuf resbuf::pointValue(const ads_point& p) {
    resbuf rb;
    rb.restype = RT3DPOINT;
    rb.resval.rpoint = p;
    return rb;
}

resbuf resbuf::stringValue(std::wstring s) {
    resbuf rb;
    rb.restype = RTSTR;
    rb.resval.rstring = std::move(s);
    return rb;
}

resbuf resbuf::groupCode(short code, std::wstring value) {
    resbuf rb;
    rb.restype = code;
    rb.resval.rstring = std::move(value);
    return rb;
}

// A point in drawing units, the one geometric type the host interface passes around.
#pragma once

struct AcGePoint3d {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    friend bool operator==(const AcGePoint3d&, const AcGePoint3d&) = default;
};

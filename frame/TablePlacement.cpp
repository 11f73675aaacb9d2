// Interactive placement of the price table.
#include "frame/TablePlacement.h"

#include <cmath>

#include "host/api/acdbdatabase.h"
#include "host/api/acededitor.h"

namespace {

constexpr int kTrackFlags = 9;
constexpr int kKeyInput = 2;
constexpr int kPickedPoint = 3;
constexpr short kReturnKey = 13;

// Attribute prompting, command echo, snap and object snaps are off while the table is placed.
constexpr const wchar_t* kHeldVariables[] = {L"ATTREQ", L"CMDECHO", L"SNAPMODE", L"OSMODE"};
constexpr int kHeldCount = 4;
constexpr int kSnapMode = 2;

void DrawVector(double x0, double y0, double x1, double y1) {
    acedGrDraw({x0, y0, 0.0}, {x1, y1, 0.0}, -1, 1);
}

double CancelTracking(const ads_point& p0, const ads_point& p1) {
    DrawFrame(p0, p1);
    acutPrintf(L"\n*CANCEL*\n");
    return 1.0;
}

}  // namespace

void DrawFrame(const ads_point& p0, const ads_point& p1) {
    DrawVector(p0.x, p1.y, p1.x, p1.y);
    DrawVector(p1.x, p1.y, p1.x, p0.y);
    DrawVector(p1.x, p0.y, p0.x, p0.y);
    DrawVector(p0.x, p0.y, p0.x, p1.y);
}

double TrackTableScale(const ads_point& p0, ads_point& p1) {
    const double w0 = std::fabs(p0.x - p1.x);
    const double h0 = std::fabs(p0.y - p1.y);
    const double ratio = w0 / h0;
    bool first = true;
    // A pick before any cursor sample keeps scale 1.
    double lastWidth = w0;

    int type = 0;
    resbuf input;
    if (acedGrRead(kTrackFlags, &type, &input) == RTCAN) return CancelTracking(p0, p1);
    for (;;) {
        if (type == kKeyInput && input.resval.rint == kReturnKey) {
            DrawFrame(p0, p1);
            return 1.0;
        }
        if (type == kPickedPoint) {
            DrawFrame(p0, p1);
            return lastWidth / w0;
        }
        ads_point c = input.resval.rpoint;
        const double dy = std::fabs(c.y - p0.y);
        const double dx = std::fabs(c.x - p0.x);
        if (dy > dx) {
            const double w = dy * ratio;
            c.x = p0.x + w;
            lastWidth = w;
        } else {
            lastWidth = dx;
            c.y = p0.y - dx / ratio;
        }
        if (!first) DrawFrame(p0, p1);
        first = false;
        DrawFrame(p0, c);
        p1 = c;
        if (acedGrRead(kTrackFlags, &type, &input) == RTCAN) return CancelTracking(p0, p1);
    }
}

double ScaledFrameCorner(const ads_point& p0, double width, double height) {
    ads_point p1{p0.x + width, p0.y - height, p0.z};
    return TrackTableScale(p0, p1);
}

int InsertTableBlock(const wchar_t* blockName, const ads_point& corner, double scale) {
    return acedCommandS({resbuf::stringValue(L".INSERT"), resbuf::stringValue(blockName),
                         resbuf::pointValue(corner), resbuf::realValue(scale),
                         resbuf::realValue(scale), resbuf::stringValue(L"0")});
}

void PlaceTable(const wchar_t* blockName, double width, double height) {
    resbuf saved[kHeldCount];
    for (int i = 0; i < kHeldCount; ++i) {
        resbuf working;
        acedGetVar(kHeldVariables[i], &saved[i]);
        acedGetVar(kHeldVariables[i], &working);
        working.restype = RTSHORT;
        working.resval.rint = 0;
        acedSetVar(kHeldVariables[i], &working);
    }

    ads_point p0;
    acedInitGet(1, nullptr);
    if (acedGetPoint(nullptr, L"\nUpper left corner of table: ", p0) != RTCAN) {
        acutPrintf(L"\nLower right corner (or RETURN): ");
        ads_point p1{p0.x + width, p0.y - height, p0.z};
        const double scale = TrackTableScale(p0, p1);
        InsertTableBlock(blockName, p0, scale);
    }

    for (int i = 0; i < kHeldCount; ++i) {
        const int source = i == kHeldCount - 1 ? kSnapMode : i;
        acedSetVar(kHeldVariables[i], &saved[source]);
    }
}

bool GetInsertPoint(const ads_name& entity, ads_point& point) {
    AcDbObjectId id;
    AcDbBlockReference reference;
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (acdbGetObjectId(id, entity) != Acad::eOk || database == nullptr ||
        database->openBlockReference(id, reference) != Acad::eOk) {
        acedAlert(L"\nGetInsertPoint:Cannot open an object");
        return false;
    }
    point = {reference.position.x, reference.position.y, 0.0};
    return true;
}

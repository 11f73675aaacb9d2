// Placing the drawn price table: a picked upper left corner, a rubber-band frame that keeps the
// table's proportions and sets its scale, and the host's ".INSERT" with the system variables held.
#pragma once

#include "host/api/adscodes.h"

// The whole placement: ATTREQ, CMDECHO, SNAPMODE and OSMODE are 0 while it runs and restored after,
// OSMODE from the value SNAPMODE had (kept as the original host module does it).
void PlaceTable(const wchar_t* blockName, double width, double height);

// Rubber band from the upper left corner p0; p1, the lower right corner at scale 1, follows the
// cursor. Returns the scale of the frame last drawn, or 1.0 on RETURN or cancel.
double TrackTableScale(const ads_point& p0, ads_point& p1);

// The rectangle p0-p1 as four vectors in exclusive-or ink: drawing it twice removes it.
void DrawFrame(const ads_point& p0, const ads_point& p1);

double ScaledFrameCorner(const ads_point& p0, double width, double height);

// ".INSERT" of the block at the corner with equal X and Y scale and rotation "0".
int InsertTableBlock(const wchar_t* blockName, const ads_point& corner, double scale);

// The insertion point (Z = 0) of the block reference the entity name names.
bool GetInsertPoint(const ads_name& entity, ads_point& point);

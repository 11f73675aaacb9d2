// The AutoCAD Color Index: the 256 colours that DXF code 62 numbers.
#pragma once

#include "host/desktop/scene/scenecolor.h"

// Colours 1 to 255; 7 is the foreground. 0 (BYBLOCK), 256 (BYLAYER) and numbers out of range
// give the foreground too: the scene resolves those before asking.
SceneRgb aciColor(int index);

// Curves the entities describe indirectly: the arc of a polyline's bulge, and B-splines.
#pragma once

#include <span>
#include <vector>

#include "host/desktop/scene/sceneshape.h"

// The arc from p0 to p1 whose bulge (code 42) is the tangent of a quarter of its angle; positive
// bulges turn counter-clockwise.
SceneArc bulgeArc(ScenePoint p0, ScenePoint p1, double bulge);

// Points along a (rational) B-spline of the given degree, `segments` + 1 of them from the first
// knot to the last that the curve spans. Empty when the knots do not fit the control points.
// `weights` is empty for a non-rational curve.
std::vector<ScenePoint> bsplinePoints(int degree, std::span<const double> knots,
                                      std::span<const ScenePoint> control,
                                      std::span<const double> weights, int segments);

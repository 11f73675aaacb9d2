// Geometric tests of one entity of a scene (by its place in drawing order) against a point or a
// rectangle, through the block references it holds, as selection needs them.
#pragma once

#include "host/desktop/scene/drawingscene.h"

// The distance from the point to the nearest line the entity draws (0 inside a text's box);
// stops looking once something lies within `enough`.
double entityDistance(const DrawingScene& scene, std::size_t entity, ScenePoint point,
                      double enough);
// Whether something the entity draws lies inside the rectangle or crosses its edges.
bool entityMeets(const DrawingScene& scene, std::size_t entity, const SceneRect& rect);

#pragma once

#include "core/common/Point.h"

#include <vector>

namespace ZemCalculate {

// Whether `point` lies in the closed polygon whose corners are given in order; the last corner joins the first.
// - A point on an edge or on a corner counts as inside. "On" allows for the rounding of floats: a point closer to
//   an edge than a millionth of the polygon's larger side (plus the float resolution at its coordinates) is on it.
// - Elsewhere the even-odd rule decides, so concave and self-crossing polygons are handled; for a polygon that
//   crosses itself, a region covered twice is outside.
// - Fewer than three corners, a NaN or infinite coordinate of the point or of a corner: false.
bool isPointInPoligon(const std::vector<Zem::PointF>& polygon, const Zem::PointF& point);

} // namespace ZemCalculate

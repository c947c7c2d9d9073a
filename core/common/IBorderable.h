#pragma once

namespace Zem {

// Something that occupies a part of the plane and can tell it, so that axes can be scaled to hold it.
// The range operations widen the range they are given and never narrow it; a caller starts with an empty range
// (min above max) or with what other objects already need.
class IBorderable {
public:
    virtual ~IBorderable() = default;

    // Widens [min, max] to the object's extent along x. Nothing by default: the object takes no room.
    virtual void getRangeX(float& /*min*/, float& /*max*/) const {}
    // The same along y.
    virtual void getRangeY(float& /*min*/, float& /*max*/) const {}
    // Both at once: getRangeX with the first two arguments, getRangeY with the last two.
    virtual void getRangeXY(float& minX, float& maxX, float& minY, float& maxY) const
    {
        getRangeX(minX, maxX);
        getRangeY(minY, maxY);
    }
};

} // namespace Zem

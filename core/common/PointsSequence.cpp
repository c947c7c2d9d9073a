#include "core/common/PointsSequence.h"

#include <utility>

namespace Zem {

PointsSequence::PointsSequence(std::vector<PointF> points, Color color, std::string name, bool isMarkersVisible,
                               bool isLinesVisible, bool isClosed)
    : _points(std::move(points)), _color(color), _name(std::move(name)), _isMarkersVisible(isMarkersVisible),
      _isLinesVisible(isLinesVisible), _isClosed(isClosed)
{
}

void PointsSequence::getRangeX(float& min, float& max) const
{
    for (const PointF& point : _points) {
        if (min > point.x)
            min = point.x;
        if (point.x > max)
            max = point.x;
    }
}

void PointsSequence::getRangeY(float& min, float& max) const
{
    for (const PointF& point : _points) {
        if (min > point.y)
            min = point.y;
        if (point.y > max)
            max = point.y;
    }
}

} // namespace Zem

#pragma once

#include "core/common/Color.h"
#include "core/common/Figure.h"
#include "core/common/Point.h"

#include <string>
#include <vector>

namespace Zem {

// A curve or a polygon given by its points in order, drawn in one colour with markers at the points, lines
// between them, or both.
class PointsSequence : public Figure {
public:
    // A closed sequence is a polygon: its lines also join the last point back to the first.
    PointsSequence(std::vector<PointF> points, Color color, std::string name, bool isMarkersVisible,
                   bool isLinesVisible, bool isClosed = false);

    const std::vector<PointF>& getPoints() const { return _points; }
    Color getColor() const { return _color; }
    const std::string& getName() const { return _name; }
    // Whether a marker is drawn at every point.
    bool getIsMarkersVisible() const { return _isMarkersVisible; }
    // Whether consecutive points are joined by lines.
    bool getIsLinesVisible() const { return _isLinesVisible; }
    bool getIsClosed() const { return _isClosed; }

    // For each point in turn: min takes x when it is greater than x, max takes x when x is greater than it.
    // A NaN coordinate therefore never enters the range; an infinite one does. No points: nothing changes.
    void getRangeX(float& min, float& max) const override;
    // The same with y.
    void getRangeY(float& min, float& max) const override;

private:
    std::vector<PointF> _points;
    Color _color;
    std::string _name;
    bool _isMarkersVisible;
    bool _isLinesVisible;
    bool _isClosed;
};

} // namespace Zem

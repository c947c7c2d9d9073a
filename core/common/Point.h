#pragma once

namespace Zem {

// A point of a measured curve: x then y, in the units of the quantities measured.
struct Point {
    double x = 0.0;
    double y = 0.0;

    constexpr Point() = default;
    constexpr Point(double pointX, double pointY) : x(pointX), y(pointY) {}

    constexpr bool operator==(const Point& other) const { return x == other.x && y == other.y; }
    constexpr bool operator!=(const Point& other) const { return !(*this == other); }
};

// The same in floats: what is drawn, and the corners of setting polygons.
struct PointF {
    float x = 0.0f;
    float y = 0.0f;

    constexpr PointF() = default;
    constexpr PointF(float pointX, float pointY) : x(pointX), y(pointY) {}

    constexpr bool operator==(const PointF& other) const { return x == other.x && y == other.y; }
    constexpr bool operator!=(const PointF& other) const { return !(*this == other); }
};

} // namespace Zem

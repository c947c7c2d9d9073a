#pragma once

#include <cstdint>

namespace Zem {

// A colour of a figure: red, green, blue and opacity, one byte each; 255 is full intensity and fully opaque.
struct Color {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 255;

    constexpr Color() = default;
    constexpr Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha = 255)
        : r(red), g(green), b(blue), a(alpha)
    {
    }

    constexpr bool operator==(const Color& other) const
    {
        return r == other.r && g == other.g && b == other.b && a == other.a;
    }
    constexpr bool operator!=(const Color& other) const { return !(*this == other); }

    static constexpr Color Black() { return Color(0, 0, 0); }
    static constexpr Color White() { return Color(255, 255, 255); }
    static constexpr Color Red() { return Color(255, 0, 0); }
    static constexpr Color Green() { return Color(0, 160, 0); }
    static constexpr Color Blue() { return Color(0, 0, 255); }
    static constexpr Color Gray() { return Color(128, 128, 128); }
    static constexpr Color Orange() { return Color(255, 140, 0); }
    static constexpr Color Transparent() { return Color(0, 0, 0, 0); }
};

} // namespace Zem

#include "core/common/NumericHelper.h"

#include <charconv>
#include <cmath>

namespace Zem {

namespace {

// How far below an exact half step a quotient may lie and still count as the half step, relative to the
// magnitudes involved: it covers the error of the decimal inputs' binary forms and of the subtraction and
// division, a few units in the last place, with a wide margin. The cap keeps huge values from rounding up
// where no binary noise can reach.
constexpr double halfStepTolerance = 1e-12;
constexpr double maxHalfStepTolerance = 1e-3;

// Beyond this many steps from the origin a double has no fraction left to round.
constexpr double maxSteps = 4503599627370496.0; // 2^52

// The double nearest to the decimal text of `x` to 15 significant digits. This removes the binary noise of
// k * step (0.13000000000000000444 from 13 * 0.01) without touching any digit a person entered.
double cleanDecimal(double x)
{
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof(buffer), x, std::chars_format::general, 15);
    if (written.ec != std::errc())
        return x;
    double cleaned = x;
    const auto read = std::from_chars(buffer, written.ptr, cleaned);
    return read.ec == std::errc() ? cleaned : x;
}

} // namespace

double NumericHelper::stepRounding(double value, double step, double origin)
{
    if (!std::isfinite(value) || !std::isfinite(step) || !(step > 0.0) || !std::isfinite(origin))
        return value;
    const double quotient = (value - origin) / step;
    if (!std::isfinite(quotient) || std::fabs(quotient) >= maxSteps)
        return value;

    // Push the quotient slightly away from the origin, so that a half step that binary arithmetic left just
    // below .5 still rounds away; std::round then rounds halves away from zero.
    const double scale = (std::fabs(value) + std::fabs(origin)) / step;
    const double tolerance = std::fmin(halfStepTolerance * scale, maxHalfStepTolerance);
    const double nudged = quotient + std::copysign(tolerance, quotient);
    const double steps = std::round(nudged);

    const double raw = origin + steps * step;
    double result = cleanDecimal(raw);
    // A step finer than 15 significant digits can show keeps the raw multiple: cleaning would move it by a
    // noticeable part of a step.
    if (std::fabs(result - raw) > step * 1e-2)
        result = raw;
    return result == 0.0 ? 0.0 : result;
}

} // namespace Zem

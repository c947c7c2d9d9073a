#pragma once

namespace Zem {

// Rounding of measured numbers to the steps in which they are shown and compared.
class NumericHelper {
public:
    NumericHelper() = delete;

    // `value` rounded to the nearest multiple of `step` counted from `origin`: origin + k * step.
    // An exact half step rounds away from the origin: stepRounding(0.125, 0.01) is 0.13,
    // stepRounding(-0.125, 0.01) is -0.13, stepRounding(2.5, 1.0, 1.0) is 3.0.
    // "Exact" is judged on the decimal text, not on the binary double: 1.005 counts as a half step although the
    // nearest double lies just below it, since otherwise the result would surprise anybody reading the number.
    // The result is the double nearest to the decimal multiple (0.13, not 0.13000000000000001) wherever 15
    // significant digits can show it; zero is +0.0.
    // A NaN or infinite value, or a step that is not a positive finite number, returns `value` unchanged;
    // so does a value too far from the origin for any step to be resolved in a double.
    static double stepRounding(double value, double step, double origin = 0.0);
};

} // namespace Zem

#include "core/calculate/Complex.h"

#include <cmath>

namespace ZemCalculate {

double Complex::abs(const Complex& value)
{
    return std::hypot(value._real, value._imaginary);
}

double Complex::arg(const Complex& value)
{
    return std::atan2(value._imaginary, value._real);
}

Complex Complex::fromPolar(double modulus, double argument)
{
    return Complex(modulus * std::cos(argument), modulus * std::sin(argument));
}

Complex Complex::operator/(const Complex& other) const
{
    // Smith's method: scaling by the larger part of the divisor keeps the intermediate products in range.
    if (std::fabs(other._real) >= std::fabs(other._imaginary)) {
        if (other._real == 0.0 && other._imaginary == 0.0)
            return Complex(_real / 0.0, _imaginary / 0.0);
        const double ratio = other._imaginary / other._real;
        const double denominator = other._real + other._imaginary * ratio;
        return Complex((_real + _imaginary * ratio) / denominator, (_imaginary - _real * ratio) / denominator);
    }
    const double ratio = other._real / other._imaginary;
    const double denominator = other._real * ratio + other._imaginary;
    return Complex((_real * ratio + _imaginary) / denominator, (_imaginary * ratio - _real) / denominator);
}

} // namespace ZemCalculate

#pragma once

namespace ZemCalculate {

// A complex number, such as an impedance R + jX.
class Complex {
public:
    constexpr Complex() = default;
    constexpr Complex(double real, double imaginary) : _real(real), _imaginary(imaginary) {}

    constexpr double getReal() const { return _real; }
    constexpr double getImaginary() const { return _imaginary; }

    // The modulus, |c|, computed without overflow or underflow of the intermediate squares.
    static double abs(const Complex& value);
    // The argument in radians, from -pi to pi; the argument of zero is 0.
    static double arg(const Complex& value);
    // The number of the given modulus and argument (radians).
    static Complex fromPolar(double modulus, double argument);
    static constexpr Complex conjugate(const Complex& value) { return Complex(value._real, -value._imaginary); }

    constexpr Complex operator-() const { return Complex(-_real, -_imaginary); }
    constexpr Complex operator+(const Complex& other) const
    {
        return Complex(_real + other._real, _imaginary + other._imaginary);
    }
    constexpr Complex operator-(const Complex& other) const
    {
        return Complex(_real - other._real, _imaginary - other._imaginary);
    }
    constexpr Complex operator*(const Complex& other) const
    {
        return Complex(_real * other._real - _imaginary * other._imaginary,
                       _real * other._imaginary + _imaginary * other._real);
    }
    // Division by zero gives NaN or infinite parts, as a division of doubles does.
    Complex operator/(const Complex& other) const;

    constexpr bool operator==(const Complex& other) const
    {
        return _real == other._real && _imaginary == other._imaginary;
    }
    constexpr bool operator!=(const Complex& other) const { return !(*this == other); }

private:
    double _real = 0.0;
    double _imaginary = 0.0;
};

} // namespace ZemCalculate

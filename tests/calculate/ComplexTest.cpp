#include "core/calculate/Complex.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {

using ZemCalculate::Complex;

TEST(ComplexTest, AbsTable)
{
    struct Row {
        const char* name;
        Complex value;
        double expected;
    };
    const std::vector<Row> rows = {
        {"3 + 4j", Complex(3, 4), 5.0},
        {"negative imaginary", Complex(0, -2.5), 2.5},
        {"squares would overflow", Complex(3e200, 4e200), 5e200},
        {"squares would underflow", Complex(3e-200, -4e-200), 5e-200},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_DOUBLE_EQ(Complex::abs(row.value), row.expected);
    }
}

TEST(ComplexTest, ArgCoversAllQuadrants)
{
    EXPECT_DOUBLE_EQ(Complex::arg(Complex(-1, 0)), M_PI);
    EXPECT_DOUBLE_EQ(Complex::arg(Complex(0, -1)), -M_PI / 2);
    EXPECT_EQ(Complex::arg(Complex()), 0.0);

    const Complex polar = Complex::fromPolar(2.0, M_PI / 2);
    EXPECT_NEAR(polar.getReal(), 0.0, 1e-15);
    EXPECT_DOUBLE_EQ(polar.getImaginary(), 2.0);
}

TEST(ComplexTest, Arithmetic)
{
    const Complex a(1, 2);
    const Complex b(3, -4);
    EXPECT_EQ(a + b, Complex(4, -2));
    EXPECT_EQ(a * b, Complex(11, 2));
    EXPECT_EQ(Complex::conjugate(b), Complex(3, 4));

    const Complex quotient = Complex(11, 2) / b;
    EXPECT_DOUBLE_EQ(quotient.getReal(), 1.0);
    EXPECT_DOUBLE_EQ(quotient.getImaginary(), 2.0);
    // Divisor parts whose squares overflow still divide.
    const Complex huge = Complex(1e300, 1e300) / Complex(2e300, 2e300);
    EXPECT_DOUBLE_EQ(huge.getReal(), 0.5);
    EXPECT_DOUBLE_EQ(huge.getImaginary(), 0.0);

    const Complex byZero = Complex(1, 1) / Complex(0, 0);
    EXPECT_FALSE(std::isfinite(byZero.getReal()));
}

} // namespace

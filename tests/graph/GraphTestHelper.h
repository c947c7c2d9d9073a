#pragma once

#include "XmlTestSupport.h"

#include <cmath>
#include <string>

namespace ZemTreeTest {

// Equal, or both NaN.
inline bool sameNumber(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || a == b;
}

} // namespace ZemTreeTest

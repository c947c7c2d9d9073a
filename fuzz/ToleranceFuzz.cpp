// Feeds arbitrary texts to the text forms of tolerances: a whole Tolerance, one reduced tolerance and one range.
// Whatever a reader accepts must write a text that reads back to the same object and the same text; a refused
// text must leave the object as it was. A broken promise stops the run with a trap.

#include "core/tree/RangeStructure.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceHelper.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/ToleranceReducedTypeConverter.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <sstream>
#include <string>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

template <class T> std::string textOf(const T& object)
{
    std::ostringstream stream;
    object >> stream;
    return stream.str();
}

void fuzzTolerance(const std::string& text)
{
    ZemTree::Tolerance tolerance;
    tolerance.add(std::make_unique<ZemTree::ToleranceItem>(ZemTree::RangeStructure::Standart(1.0, 2.0),
                                                           ZemTree::RangeStructure::Standart(-1.0, 1.0),
                                                           Zem::Nullable<ZemTree::RangeStructure>()));
    const std::string before = textOf(tolerance);
    std::istringstream stream(text);
    tolerance << stream;
    if (stream.bad()) {
        check(textOf(tolerance) == before);
        return;
    }
    const std::string written = textOf(tolerance);
    ZemTree::Tolerance back;
    std::istringstream again(written);
    back << again;
    check(!again.bad());
    check(back.isEqualTo(tolerance));
    check(textOf(back) == written);

    const double probes[] = {-std::numeric_limits<double>::infinity(), -1.0, 0.0, 0.5, 1.0, 10.0, 1e300,
                             std::numeric_limits<double>::quiet_NaN()};
    for (const double value : probes)
        check(ZemTree::ToleranceHelper::reduce(tolerance, value) != nullptr);
}

void fuzzReduced(const std::string& text)
{
    const ZemTree::ToleranceReduced initial(ZemTree::RangeStructure::Standart(3.0, 4.0), {});
    ZemTree::ToleranceReduced tolerance = initial;
    if (!ZemTree::ToleranceReducedTypeConverter::fromStringData(text, tolerance)) {
        check(tolerance == initial);
        return;
    }
    const std::string written = ZemTree::ToleranceReducedTypeConverter::toStringData(tolerance);
    check(!written.empty());
    ZemTree::ToleranceReduced back;
    check(ZemTree::ToleranceReducedTypeConverter::fromStringData(written, back));
    check(back == tolerance);
    check(ZemTree::ToleranceReducedTypeConverter::toStringData(back) == written);
}

void fuzzRange(const std::string& text)
{
    ZemTree::RangeStructure range = ZemTree::RangeStructure::Standart(5.0, 6.0);
    std::istringstream stream(text);
    range << stream;
    if (stream.bad()) {
        check(range == ZemTree::RangeStructure::Standart(5.0, 6.0));
        return;
    }
    check(range.isEmpty() || range.getLow() <= range.getHigh());
    ZemTree::RangeStructure back;
    std::istringstream again(textOf(range));
    back << again;
    check(!again.bad() && back == range);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    fuzzTolerance(text);
    fuzzReduced(text);
    fuzzRange(text);
    return 0;
}

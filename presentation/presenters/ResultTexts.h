#pragma once

#include <string>

namespace ZemTree {

class ResultNumeric;
class ResultString;

// The texts of a result's cells, each "-" when there is nothing to show.
struct ResultTexts {
    static ResultTexts of(const ResultNumeric* result);
    static ResultTexts of(const ResultString* result);

    std::string setting;
    std::string measurment;
    std::string deviation;
};

} // namespace ZemTree

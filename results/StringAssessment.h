#pragma once

#include <string>

namespace ZemTree {

// What a text measurement is compared with. Immutable and shared between results, owned by a std::shared_ptr
// made with std::make_shared; the destructor is protected for the same reason as NumericAssessment's.
class StringAssessment {
public:
    virtual bool isValidMeasurment(const std::string& measurment) const = 0;
    virtual const std::string& getValidValue() const = 0;

protected:
    StringAssessment() = default;
    StringAssessment(const StringAssessment&) = default;
    StringAssessment& operator=(const StringAssessment&) = default;
    ~StringAssessment() = default;
};

} // namespace ZemTree

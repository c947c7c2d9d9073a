#include "core/tree/DataObj.h"

#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <string>

using ZemTree::DataObj;

namespace {

struct Opaque {
    int number = 0;
};

// A writer that fails with something other than a missing text form.
class Failing {
public:
    void operator>>(std::ostringstream&) const { throw std::runtime_error("disk on fire"); }
};

} // namespace

TEST(DataObjTest, TypeWithoutTextFormAnswersFalseAndLeavesTheText)
{
    std::string text = "untouched";
    EXPECT_FALSE(DataObj<Opaque>(Opaque{4}).tryConvertToString(text));
    EXPECT_EQ(text, "untouched");
    // Only the refusal of the conversion is an answer; other failures are not hidden.
    EXPECT_THROW(DataObj<Failing>(Failing{}).tryConvertToString(text), std::runtime_error);
    EXPECT_EQ(text, "untouched");

    EXPECT_TRUE(DataObj<double>(0.1 + 0.2).tryConvertToString(text));
    EXPECT_EQ(text, "0.3");
}

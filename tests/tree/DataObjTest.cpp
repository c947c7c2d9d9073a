#include "core/tree/DataObj.h"

#include "core/tree/Measures.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using ZemTree::DataObj;
using ZemTree::IDataContainer;

namespace {

struct Opaque {
    int number = 0;
};

class Written {
public:
    void operator>>(std::ostringstream& stream) const { stream << "written"; }
};

// A writer that fails with something other than a missing text form.
class Failing {
public:
    void operator>>(std::ostringstream&) const { throw std::runtime_error("disk on fire"); }
};

} // namespace

TEST(DataObjTest, TextFormFollowsTheHeldType)
{
    std::string text = "untouched";
    EXPECT_TRUE(DataObj<double>(0.1 + 0.2).tryConvertToString(text));
    EXPECT_EQ(text, "0.3");
    EXPECT_TRUE(DataObj<std::string>("as is").tryConvertToString(text));
    EXPECT_EQ(text, "as is");
    EXPECT_TRUE(DataObj<bool>(true).tryConvertToString(text));
    EXPECT_EQ(text, "true");
    EXPECT_TRUE(DataObj<ZemTree::Measure*>(ZemTree::Measures::Volt()).tryConvertToString(text));
    EXPECT_EQ(text, "Volt");
    EXPECT_TRUE(DataObj<std::shared_ptr<Written>>(std::make_shared<Written>()).tryConvertToString(text));
    EXPECT_EQ(text, "written");
}

TEST(DataObjTest, TypeWithoutTextFormAnswersFalseAndLeavesTheText)
{
    std::string text = "untouched";
    EXPECT_FALSE(DataObj<Opaque>(Opaque{4}).tryConvertToString(text));
    EXPECT_FALSE(DataObj<std::vector<int>>({1, 2}).tryConvertToString(text));
    EXPECT_EQ(text, "untouched");
    // Only the refusal of the conversion is an answer; other failures are not hidden.
    EXPECT_THROW(DataObj<Failing>(Failing{}).tryConvertToString(text), std::runtime_error);
}

TEST(DataObjTest, DataIsTheHeldCopy)
{
    std::vector<int> source{1, 2, 3};
    const std::shared_ptr<IDataContainer> container = std::make_shared<DataObj<std::vector<int>>>(source);
    source.push_back(4);
    ASSERT_EQ(container->getType(), typeid(std::vector<int>));
    const auto* held = static_cast<const std::vector<int>*>(container->getData());
    EXPECT_EQ(*held, (std::vector<int>{1, 2, 3}));
    EXPECT_NE(container->getType(), typeid(std::vector<long>));
}

#include "core/tree/ExtendedTypeInfo.h"

#include "core/tree/ExtendedTypeInfoTypeConverter.h"

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>

namespace {

using ZemTree::ExtendedTypeInfo;
using ZemTree::ExtendedTypeInfoTypeConverter;

struct SampleType {};

TEST(ExtendedTypeInfoTest, TextRoundTrip)
{
    struct Row {
        const char* text;
        ExtendedTypeInfo info;
    };
    const Row rows[] = {
        {"undefined", ExtendedTypeInfo()},
        {"template name", ExtendedTypeInfo::of<std::map<int, SampleType>>()},
        {"qualifier holding the separator", ExtendedTypeInfo("ZemTree::Unit", "a#b#")},
        {"qualifier without name", ExtendedTypeInfo("", "q")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string text = ExtendedTypeInfoTypeConverter::toStringData(row.info);
        const ExtendedTypeInfo read = ExtendedTypeInfoTypeConverter::fromStringData(text);
        EXPECT_EQ(row.info, read);
        EXPECT_EQ(text, ExtendedTypeInfoTypeConverter::toStringData(read));
    }
}

TEST(ExtendedTypeInfoTest, ParsesAnyText)
{
    EXPECT_FALSE(ExtendedTypeInfoTypeConverter::fromStringData("").isDefined());
    const ExtendedTypeInfo info = ExtendedTypeInfoTypeConverter::fromStringData("#");
    EXPECT_FALSE(info.isDefined());
    EXPECT_EQ("", info.getQualifier());
    EXPECT_EQ("T", ExtendedTypeInfoTypeConverter::fromStringData("T#").getTypeName());
    EXPECT_THROW(ExtendedTypeInfo("a#b"), std::logic_error);
}

} // namespace

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

TEST(ExtendedTypeInfoTest, OfNamesTheFullType)
{
    const ExtendedTypeInfo info = ExtendedTypeInfo::of<std::map<int, SampleType>>();
    EXPECT_TRUE(info.isDefined());
    EXPECT_NE(std::string::npos, info.getTypeName().find("SampleType"));
    using SampleMap = std::map<int, SampleType>;
    EXPECT_EQ(info, ExtendedTypeInfo::of<SampleMap>());
    EXPECT_NE(info, ExtendedTypeInfo::of<SampleType>());
    EXPECT_NE(ExtendedTypeInfo::of<SampleType>(), ExtendedTypeInfo::of<SampleType>("double"));
    EXPECT_FALSE(ExtendedTypeInfo().isDefined());
}

TEST(ExtendedTypeInfoTest, TextRoundTrip)
{
    struct Row {
        const char* text;
        ExtendedTypeInfo info;
    };
    const Row rows[] = {
        {"undefined", ExtendedTypeInfo()},
        {"plain name", ExtendedTypeInfo("ZemTree::TestContainer")},
        {"template name", ExtendedTypeInfo::of<std::map<int, SampleType>>()},
        {"with qualifier", ExtendedTypeInfo("ZemTree::Unit", "double")},
        {"qualifier holding the separator", ExtendedTypeInfo("ZemTree::Unit", "a#b#")},
        {"qualifier without name", ExtendedTypeInfo("", "q")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string text = ExtendedTypeInfoTypeConverter::toStringData(row.info);
        const ExtendedTypeInfo read = ExtendedTypeInfoTypeConverter::fromStringData(text);
        EXPECT_EQ(row.info, read);
        EXPECT_EQ(row.info.isDefined(), read.isDefined());
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
}

TEST(ExtendedTypeInfoTest, RefusesSeparatorInTypeName)
{
    EXPECT_THROW(ExtendedTypeInfo("a#b"), std::logic_error);
}

} // namespace

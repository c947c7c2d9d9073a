#include "core/formula/ValueExpression.h"

#include "FormulaTestNodes.h"
#include "core/common/ConvertionHelper.h"
#include "core/tree/DataObj.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using Formula::ValueExpression;

TEST(ValueExpressionTest, NumberTextReadsBackExactly)
{
    const double rows[] = {0.0,
                           -0.5,
                           1.25,
                           0.1,
                           -1.23456789,
                           1e20,
                           1e-300,
                           5e-324,
                           1.0 / 3,
                           123456789012345678.0,
                           -std::numeric_limits<double>::max()};
    for (const double row : rows) {
        const std::string text = ValueExpression::numberToText(row);
        SCOPED_TRACE(text);
        double back = 0.0;
        ASSERT_TRUE((Zem::tryConvert<double, true>(text, back)));
        EXPECT_EQ(back, row);
    }
    EXPECT_EQ(ValueExpression::numberToText(0.1), "0.1");
    EXPECT_EQ(ValueExpression::numberToText(-0.5), "-0.5");
}

TEST(ValueExpressionTest, SpecialNumbersHaveWords)
{
    EXPECT_EQ(ValueExpression::numberToText(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(ValueExpression::numberToText(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(ValueExpression::numberToText(-std::numeric_limits<double>::infinity()), "-inf");
}

// A decimal comma and a grouping dot, as a user's locale may have them.
class CommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(ValueExpressionTest, NumberTextIgnoresTheGlobalLocale)
{
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
    std::ostringstream probe;
    probe << 1234.5;
    std::string text;
    ValueExpression::number(1234.5)->tryConvertToString(text);
    std::locale::global(before);
    ASSERT_EQ(probe.str(), "1.234,5");
    EXPECT_EQ(text, "1234.5");
}

TEST(ValueExpressionTest, DataContainerFollowsTheKind)
{
    const auto number = ValueExpression::number(2.5)->getDataContainer();
    ASSERT_EQ(number->getType(), typeid(double));
    EXPECT_EQ(*static_cast<const double*>(number->getData()), 2.5);

    const auto text = ValueExpression::text("abc")->getDataContainer();
    ASSERT_EQ(text->getType(), typeid(std::string));
    EXPECT_EQ(*static_cast<const std::string*>(text->getData()), "abc");

    const auto gadget = std::make_shared<ZemTree::DataObj<FormulaTest::Gadget>>(FormulaTest::Gadget{3});
    EXPECT_EQ(ValueExpression::object(gadget)->getDataContainer(), gadget);
}

TEST(ValueExpressionTest, TextFormOfAnObjectComesFromItsContainer)
{
    std::string out = "untouched";
    EXPECT_TRUE(ValueExpression::object(std::make_shared<ZemTree::DataObj<int>>(42))->tryConvertToString(out));
    EXPECT_EQ(out, "42");
    EXPECT_FALSE(ValueExpression::object(std::make_shared<ZemTree::DataObj<FormulaTest::Gadget>>(FormulaTest::Gadget{}))
                     ->tryConvertToString(out));
}

TEST(ValueExpressionTest, WrongKindAndNullObjectAreRefused)
{
    EXPECT_THROW(ValueExpression::text("1")->getNumber(), std::logic_error);
    EXPECT_THROW(ValueExpression::number(1.0)->getText(), std::logic_error);
    EXPECT_THROW(ValueExpression::object(nullptr), std::logic_error);
}

} // namespace

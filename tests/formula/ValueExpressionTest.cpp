#include "core/formula/ValueExpression.h"

#include "FormulaTestNodes.h"
#include "core/common/ConvertionHelper.h"
#include "core/tree/DataObj.h"

#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

using Formula::ValueExpression;

TEST(ValueExpressionTest, NumberTextReadsBackExactly)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (const double row : {0.1, -1.23456789, 5e-324, 1.0 / 3, -std::numeric_limits<double>::max()}) {
        const std::string text = ValueExpression::numberToText(row);
        SCOPED_TRACE(text);
        double back = 0.0;
        ASSERT_TRUE((Zem::tryConvert<double, true>(text, back)));
        EXPECT_EQ(back, row);
    }
    EXPECT_EQ(ValueExpression::numberToText(0.1), "0.1");
    EXPECT_EQ(ValueExpression::numberToText(nan), "nan");
    EXPECT_EQ(ValueExpression::numberToText(-inf), "-inf");
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

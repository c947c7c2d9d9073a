#include "core/formula/FormulaEvaluator.h"

#include "FormulaTestNodes.h"
#include "core/formula/FormulaParser.h"
#include "core/tree/DataObj.h"
#include "core/tree/ValueErrors.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Formula::FormulaEvaluator;
using Formula::FormulaParser;
using Formula::ValueExpression;

const double inf = std::numeric_limits<double>::infinity();
const double nan = std::numeric_limits<double>::quiet_NaN();

// The references the tables use.
std::shared_ptr<ValueExpression> resolveSample(const std::string& reference)
{
    static const std::map<std::string, std::shared_ptr<ValueExpression>> values{
        {"a", ValueExpression::number(2.0)},
        {"b", ValueExpression::number(3.0)},
        {"t", ValueExpression::text("abc")},
        {"n", ValueExpression::text("5")},
        {"int", ValueExpression::object(std::make_shared<ZemTree::DataObj<int>>(42))},
        {"real", ValueExpression::object(std::make_shared<ZemTree::DataObj<double>>(0.5))},
        {"gadget",
         ValueExpression::object(std::make_shared<ZemTree::DataObj<FormulaTest::Gadget>>(FormulaTest::Gadget{}))},
    };
    const auto found = values.find(reference);
    if (found == values.end())
        return nullptr;
    return found->second;
}

Zem::Out<std::shared_ptr<ValueExpression>> evaluate(const std::string& text)
{
    const auto parsed = FormulaParser::separate(text);
    return FormulaEvaluator::calculate(parsed.get(), &resolveSample);
}

struct NumberRow {
    std::string text;
    double expected;
};

TEST(FormulaEvaluatorTest, NumbersFollowPrecedenceAndFunctions)
{
    const double pi = std::acos(-1.0);
    const std::vector<NumberRow> rows{
        {" 1 +\t2\n", 3.0},
        {"1+2*3", 7.0},
        {"10-4-3", 3.0},
        {"2^3^2", 512.0},
        {"-2^2", -4.0},
        {"2^-1", 0.5},
        {"atan2(1,-1)", 3.0 * pi / 4.0},
        {"min(3,1,2)", 1.0},
        {"max(1, nan)", nan},
        {"round(1.2345,2)", 1.23},
        {"round(1250,-2)", 1300.0},
        {"round(1e300,5)", 1e300},
        {"ROUND(0.5) + Abs(-1)", 2.0},
        {"1/0", inf},
        {"nan", nan},
        {"{n}*2", 10.0},
        {"\"2\"^\"3\"", 8.0},
    };
    for (const NumberRow& row : rows) {
        SCOPED_TRACE(row.text);
        const auto out = evaluate(row.text);
        ASSERT_EQ(out.error, nullptr) << out.error->what();
        ASSERT_NE(out.value, nullptr);
        ASSERT_TRUE(out.value->isNumber());
        const double value = out.value->getNumber();
        if (std::isnan(row.expected))
            EXPECT_TRUE(std::isnan(value)) << value;
        else if (std::isinf(row.expected) || row.expected == 0.0)
            EXPECT_EQ(value, row.expected);
        else
            EXPECT_NEAR(value, row.expected, 1e-12 * std::fabs(row.expected));
    }
}

TEST(FormulaEvaluatorTest, TextsJoinOnlyWithTexts)
{
    const std::vector<std::pair<std::string, std::string>> rows{
        {"\"1\"+\"2\"", "12"}, {"{t}+\"!\"", "abc!"}, {"\"a\\\"b\"", "a\"b"}, {"\"\\\\\"", "\\"}, {"{int}+\"!\"", "42!"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        const auto out = evaluate(row.first);
        ASSERT_EQ(out.error, nullptr) << out.error->what();
        ASSERT_TRUE(out.value->isText());
        EXPECT_EQ(out.value->getText(), row.second);
    }
}

struct ErrorRow {
    std::string text;
    std::string message;
    std::size_t position;
};

TEST(FormulaEvaluatorTest, EvaluationErrorsTravelAsFormulaErrors)
{
    const std::vector<ErrorRow> rows{
        {"{missing}+1", "Unresolved reference '{missing}'", 0},
        {"{}", "Unresolved reference '{}'", 0},
        {"{t}*2", "Operator '*' needs numbers, got the text \"abc\"", 3},
        {"\"a\"+1", "Operator '+' needs numbers, got the text \"a\"", 3},
        {"1 + sqrt({t})", "Function 'sqrt' needs numbers", 4},
        {"{gadget}+1", "Operator '+' cannot use a value of type 'FormulaTest::Gadget'", 8},
        {"\"1 \"+1", "Operator '+' needs numbers", 4},
    };
    for (const ErrorRow& row : rows) {
        SCOPED_TRACE(row.text);
        const auto out = evaluate(row.text);
        EXPECT_EQ(out.value, nullptr);
        ASSERT_NE(out.error, nullptr);
        const auto* error = dynamic_cast<const ZemTree::FormulaError*>(out.error.get());
        ASSERT_NE(error, nullptr);
        EXPECT_NE(error->getMessage().find(row.message), std::string::npos) << error->what();
        EXPECT_EQ(error->getPosition(), row.position) << error->what();
    }
}

TEST(FormulaEvaluatorTest, ParseOnceEvaluateMany)
{
    const auto parsed = FormulaParser::separate("{x}*{y} + {x}");
    ASSERT_TRUE(parsed->isValid());

    std::map<std::string, int> asked;
    double x = 1.0;
    const Formula::Resolver resolver = [&](const std::string& reference) {
        ++asked[reference];
        return ValueExpression::number(reference == "x" ? x : 10.0);
    };
    for (int i = 1; i <= 3; ++i) {
        x = i;
        const auto out = FormulaEvaluator::calculate(parsed.get(), resolver);
        ASSERT_EQ(out.error, nullptr);
        EXPECT_EQ(out.value->getNumber(), x * 10.0 + x);
    }
    // Each distinct reference once per calculation, never more.
    EXPECT_EQ(asked["x"], 3);
    EXPECT_EQ(asked["y"], 3);
}

TEST(FormulaEvaluatorTest, ASingleReferenceGivesTheResolversValueItself)
{
    const auto gadget = resolveSample("gadget");
    for (const std::string text : {"{gadget}", " ( ({gadget}) ) "}) {
        SCOPED_TRACE(text);
        const auto out = evaluate(text);
        ASSERT_EQ(out.error, nullptr);
        EXPECT_EQ(out.value, gadget);
        EXPECT_TRUE(out.value->isObject());
    }
    // Any operation makes a new value, even on a number.
    const auto plus = evaluate("+{a}");
    ASSERT_EQ(plus.error, nullptr);
    EXPECT_NE(plus.value, resolveSample("a"));
    EXPECT_EQ(plus.value->getNumber(), 2.0);
}

TEST(FormulaEvaluatorTest, AResolverThatThrowsGivesTheReasonInTheError)
{
    const auto parsed = FormulaParser::separate("1 + {broken}");
    const auto out =
        FormulaEvaluator::calculate(parsed.get(), [](const std::string&) -> std::shared_ptr<ValueExpression> {
            throw std::runtime_error("the channel is switched off");
        });
    ASSERT_NE(out.error, nullptr);
    const auto* error = dynamic_cast<const ZemTree::FormulaError*>(out.error.get());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getPosition(), 4u);
    EXPECT_NE(error->getMessage().find("the channel is switched off"), std::string::npos);
}

TEST(FormulaEvaluatorTest, NoResolverAndNoParsedFormulaAreErrorsNotCrashes)
{
    const auto parsed = FormulaParser::separate("{a}");
    const auto unresolved = FormulaEvaluator::calculate(parsed.get(), nullptr);
    EXPECT_EQ(unresolved.value, nullptr);
    EXPECT_NE(unresolved.error, nullptr);

    const auto nothing = FormulaEvaluator::calculate(nullptr, &resolveSample);
    EXPECT_EQ(nothing.value, nullptr);
    EXPECT_NE(dynamic_cast<const ZemTree::FormulaError*>(nothing.error.get()), nullptr);
}

} // namespace

#include "FormulaTestNodes.h"
#include "core/common/ConvertionHelper.h"
#include "core/formula/FormulaEvaluator.h"
#include "core/formula/FormulaParser.h"
#include "core/formula/ValueExpression.h"
#include "core/tree/DataObj.h"
#include "core/tree/ValueErrors.h"

#include <cctype>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Formula::FormulaParser;

struct SyntaxErrorRow {
    std::string text;
    std::string message; // a part of the message
    std::size_t position;
};

TEST(FormulaParserTest, SyntaxErrorsNameTheProblemAndWhere)
{
    const std::string deepParentheses = std::string(300, '(') + "1" + std::string(300, ')');
    const std::string deepSigns = std::string(300, '-') + "1";
    std::string deepPowers = "2";
    for (int i = 0; i < 300; ++i)
        deepPowers += "^2";
    std::string deepCalls;
    for (int i = 0; i < 300; ++i)
        deepCalls += "abs(";
    deepCalls += "1" + std::string(300, ')');

    const std::vector<SyntaxErrorRow> rows{
        {"", "Empty formula", 0},
        {"(1+2", "Unbalanced parentheses: '(' is not closed", 0},
        {"1+2)", "Unbalanced parentheses: unexpected ')'", 3},
        {"1+", "Missing value", 2},
        {"1 2", "Unexpected number '2'", 2},
        {"1,2", "Unexpected ','", 1},
        {"foo(1)", "Unknown function 'foo'", 0},
        {"pow(1)", "Function 'pow' takes 2 arguments, 1 given", 0},
        {"min()", "Function 'min' takes at least 1 argument, 0 given", 0},
        {"round(1,2,3)", "Function 'round' takes 1 or 2 arguments, 3 given", 0},
        {"max(1,2", "Unbalanced parentheses: '(' of function 'max' is not closed", 3},
        {"\"abc", "Unterminated text", 0},
        {"\"a\\nb\"", "Unknown escape '\\n'", 2},
        {"{a", "Unterminated reference", 0},
        {"x+1", "Unknown name 'x'", 0},
        {"2 # 3", "Unexpected character '#'", 2},
        {"1\x01", "Unexpected character '\\x01'", 1},
        {"1e", "Malformed number: the exponent has no digits", 0},
        {deepParentheses, "nested too deeply", FormulaParser::MaxDepth},
        {deepSigns, "nested too deeply", FormulaParser::MaxDepth},
        {deepPowers, "nested too deeply", 2 * FormulaParser::MaxDepth},
        {deepCalls, "nested too deeply", 4 * FormulaParser::MaxDepth},
    };
    for (const SyntaxErrorRow& row : rows) {
        SCOPED_TRACE(row.text.substr(0, 40));
        const auto parsed = FormulaParser::separate(row.text);
        ASSERT_NE(parsed, nullptr);
        EXPECT_FALSE(parsed->isValid());
        EXPECT_EQ(parsed->root, nullptr);
        ASSERT_NE(parsed->error, nullptr);
        EXPECT_NE(parsed->error->getMessage().find(row.message), std::string::npos) << parsed->error->what();
        EXPECT_EQ(parsed->error->getPosition(), row.position) << parsed->error->what();
        EXPECT_NE(std::string(parsed->error->what()).find("at position " + std::to_string(row.position)),
                  std::string::npos);

        // The evaluator hands the syntax error on, and no resolver is asked.
        int asked = 0;
        const auto out = Formula::FormulaEvaluator::calculate(parsed.get(), [&asked](const std::string&) {
            ++asked;
            return Formula::ValueExpression::number(1.0);
        });
        EXPECT_EQ(out.value, nullptr);
        EXPECT_EQ(out.error, parsed->error);
        EXPECT_EQ(asked, 0);
    }
}

TEST(FormulaParserTest, NestingJustBelowTheLimitIsAccepted)
{
    const std::size_t depth = FormulaParser::MaxDepth - 1;
    EXPECT_TRUE(FormulaParser::separate(std::string(depth, '(') + "1" + std::string(depth, ')'))->isValid());
}

TEST(FormulaParserTest, LongFlatChainsAreNoNesting)
{
    // A hundred thousand operands make neither a deep tree nor a deep evaluation.
    std::string text = "1";
    for (int i = 0; i < 100000; ++i)
        text += i % 2 == 0 ? "+1" : "*1";
    const auto parsed = FormulaParser::separate(text);
    ASSERT_TRUE(parsed->isValid());
    const auto out = Formula::FormulaEvaluator::calculate(parsed.get(), nullptr);
    ASSERT_EQ(out.error, nullptr);
    // 1 + 1*1 + 1*1 + ...: fifty thousand products of one.
    EXPECT_EQ(out.value->getNumber(), 50001.0);
}

TEST(FormulaParserTest, ReferencesAreListedOnceInOrderOfAppearance)
{
    const auto parsed = FormulaParser::separate("{b}*{a} + {../c/d} - {b} + \"{not a reference}\" + {}");
    ASSERT_TRUE(parsed->isValid());
    EXPECT_EQ(parsed->references, (std::vector<std::string>{"b", "a", "../c/d", ""}));

    // As far as the scan went when the text is broken.
    const auto broken = FormulaParser::separate("{x} + {y} +");
    EXPECT_FALSE(broken->isValid());
    EXPECT_EQ(broken->references, (std::vector<std::string>{"x", "y"}));
}

TEST(FormulaParserTest, ReplaceReferencesLeavesTextsAndTheRestAlone)
{
    const auto upper = [](const std::string& path) {
        std::string out = path;
        for (char& c : out)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        return "<" + out + ">";
    };
    const std::vector<std::pair<std::string, std::string>> rows{
        {" {a} + \"{b}\" + {c/d} ", " {<A>} + \"{b}\" + {<C/D>} "},
        {"\"say \\\"{x}\\\"\" + {y}", "\"say \\\"{x}\\\"\" + {<Y>}"},
        {"1 + {open", "1 + {open"},
        {"\"open {a}", "\"open {a}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        EXPECT_EQ(FormulaParser::replaceReferences(row.first, upper), row.second);
    }
}

TEST(FormulaParserTest, RandomTextNeverThrowsAndGivesValueOrError)
{
    // Seeded, so that a failure repeats; the alphabet is that of formulas, so that many texts get far.
    std::mt19937 random(20240611);
    const std::string alphabet = "0123456789.eE+-*/^(),{}\"\\ abcdefghilmnoprqstuwx_";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(0, 40);
    const Formula::Resolver resolver = [](const std::string& reference) -> std::shared_ptr<Formula::ValueExpression> {
        if (reference.empty())
            return nullptr;
        if (reference.size() % 2 == 0)
            return Formula::ValueExpression::text(reference);
        return Formula::ValueExpression::number(static_cast<double>(reference.size()));
    };
    int valid = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        const int size = length(random);
        for (int k = 0; k < size; ++k)
            text += alphabet[pick(random)];
        SCOPED_TRACE(text);
        std::shared_ptr<Formula::FormulaParserResult> parsed;
        ASSERT_NO_THROW(parsed = FormulaParser::separate(text));
        ASSERT_NE(parsed, nullptr);
        ASSERT_NE(parsed->isValid(), parsed->error != nullptr);
        Zem::Out<std::shared_ptr<Formula::ValueExpression>> out;
        ASSERT_NO_THROW(out = Formula::FormulaEvaluator::calculate(parsed.get(), resolver));
        ASSERT_NE(out.value == nullptr, out.error == nullptr);
        if (out.error != nullptr) {
            const auto* error = dynamic_cast<const ZemTree::FormulaError*>(out.error.get());
            ASSERT_NE(error, nullptr);
            EXPECT_LE(error->getPosition(), text.size());
        }
        valid += parsed->isValid() ? 1 : 0;
    }
    // The alphabet does make formulas, so the evaluator was exercised too.
    EXPECT_GT(valid, 100);
}

using Formula::FormulaEvaluator;
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
        {"\"1\"+\"2\"", "12"}, {"{t}+\"!\"", "abc!"},  {"\"a\\\"b\"", "a\"b"},
        {"\"\\\\\"", "\\"},    {"{int}+\"!\"", "42!"},
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

TEST(ValueExpressionTest, NumberTextReadsBackExactly)
{
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

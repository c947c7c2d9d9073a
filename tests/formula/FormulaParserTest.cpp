#include "core/formula/FormulaParser.h"

#include "core/formula/FormulaEvaluator.h"
#include "core/tree/ValueErrors.h"

#include <cctype>
#include <gtest/gtest.h>
#include <random>
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

} // namespace

#include "results/ResultStateFold.h"

#include "ResultXmlTestHelper.h"
#include "results/NumericFixedAssessment.h"
#include "results/ResultNumeric.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::ResultNumeric;
using ZemTree::ResultState;
using ZemTree::ResultStateFold;

// An item in the state given by its letter: o(k), n(ot ok), e(rror, described by the text), E(mpty).
ResultNumeric item(const std::string& code)
{
    switch (code[0]) {
    case 'o':
        return ResultNumeric({"1"}, nullptr);
    case 'n':
        return ResultNumeric({"1"}, std::make_shared<ZemTree::NumericFixedAssessment>(false));
    case 'e':
        return ResultNumeric({code}, nullptr);
    default:
        return ResultNumeric();
    }
}

TEST(ResultStateFoldTest, FoldTable)
{
    const ZemTreeTest::LanguageGuard english(0);
    const struct {
        std::vector<std::string> items;
        ResultState state;
        std::string message;
    } rows[] = {
        {{}, ResultState::Error, ""},
        {{"o"}, ResultState::Ok, ""},
        {{"n"}, ResultState::NotOk, "?not ok"},
        {{"o", "n", "o", "n"}, ResultState::NotOk, "?not ok"},
        {{"n", "e1"}, ResultState::Error, "e1"},
        {{"e1", "E"}, ResultState::Error, "e1"},
        {{"o", "E", "e1"}, ResultState::Error, ""},
        {{"n", "E", "e1"}, ResultState::Error, "?not ok"},
        {{"E"}, ResultState::Error, ""},
        {{"o", "e1", "n"}, ResultState::Error, "e1"},
    };
    for (const auto& row : rows) {
        std::string trace;
        for (const std::string& code : row.items)
            trace += code + " ";
        SCOPED_TRACE(trace);
        ResultStateFold fold;
        for (const std::string& code : row.items)
            fold.add(item(code));
        EXPECT_EQ(row.state, fold.getState());
        EXPECT_EQ(row.message, fold.getMessage());
    }
}

TEST(ResultStateFoldTest, StopsAtTheFirstErrorAndFoldsMapsInKeyOrder)
{
    ResultStateFold fold;
    EXPECT_TRUE(fold.add(item("o")));
    EXPECT_TRUE(fold.add(item("n")));
    EXPECT_FALSE(fold.add(item("e1")));
    EXPECT_FALSE(fold.add(item("e2")));
    EXPECT_EQ("e1", fold.getMessage());

    const std::map<std::string, ResultNumeric> items{{"b", item("eb")}, {"a", item("ea")}};
    EXPECT_EQ("ea", ResultStateFold::fold(items).getMessage());
}

} // namespace

#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class TreeLocalizationTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

TEST_F(TreeLocalizationTest, EveryKeyTheLibraryAsksForHasTwoDistinctLanguages)
{
    const char* keys[] = {"error.ReadOnly",      "Units.zemolIn",        "Units.zemolOut",     "Units.zemolOutCollection",
                          "Units.analogOutputRedirect", "Properties.Measure", "normalOpenShort", "normalClosedShort",
                          "InContactMode.Off",   "InContactMode.NoLoad", "InContactMode.SC",   "InContactMode.Pause",
                          "InContactMode.RPO",   "InContactMode.RPV"};
    for (const char* key : keys) {
        SCOPED_TRACE(key);
        lng::language = 0;
        const std::string english = lng::Tree::get(key);
        lng::language = 1;
        const std::string russian = lng::Tree::get(key);
        EXPECT_NE(english, key) << "missing from the table";
        EXPECT_FALSE(english.empty());
        EXPECT_NE(english, russian);
    }
}

TEST_F(TreeLocalizationTest, UnknownKeyComesBackUnchanged)
{
    const std::string key = "error.readonly";
    EXPECT_EQ(std::string(lng::Tree::get(key)), key);
    EXPECT_EQ(std::string(lng::Tree::get("")), "");
}

} // namespace

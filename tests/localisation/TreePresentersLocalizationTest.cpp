#include "localisation/TreePresentersLocalization.h"

#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using ZemTree::TreePresentersLocalization;

class TreePresentersLocalizationTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = _savedLanguage; }

private:
    const int _savedLanguage = lng::language;
};

TEST_F(TreePresentersLocalizationTest, EveryNameHasItsTextInBothLanguages)
{
    struct Row {
        const char* name;
        const char* const* texts;
        std::string english;
        std::string russian;
    };
    const std::vector<Row> rows = {
        {"ContactCollectionEditor_title", TreePresentersLocalization::ContactCollectionEditor_title,
         "Collection editor", "Редактор коллекции"},
        {"resetValue", TreePresentersLocalization::resetValue, "Default value", "Значение по-умолчанию"},
        // A Latin T followed by Cyrillic letters, spelt out as bytes so that a look-alike letter cannot slip in.
        {"inContact_Start", TreePresentersLocalization::inContact_Start, "Ton", "T\xD0\xB2\xD0\xBA\xD0\xBB"},
        {"inContact_Duration", TreePresentersLocalization::inContact_Duration, "Toff",
         "T\xD0\xBE\xD1\x82\xD0\xBA\xD0\xBB"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        lng::language = 0;
        EXPECT_EQ(std::string(row.texts[lng::language]), row.english);
        lng::language = 1;
        EXPECT_EQ(std::string(row.texts[lng::language]), row.russian);
    }
}

} // namespace

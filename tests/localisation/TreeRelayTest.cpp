#include "localisation/TreeRelay.h"

#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Every test leaves lng::language as it found it.
class TreeRelayTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = _savedLanguage; }

private:
    const int _savedLanguage = lng::language;
};

TEST_F(TreeRelayTest, EveryKeyHasItsTextInBothLanguages)
{
    struct Row {
        std::string key, english, russian;
    };
    const std::vector<Row> rows = {
        {"result_ok", "ok", "норма"},
        {"result_notOk", "?not ok", "?не в норме"},
        {"Properties.channelType", "Channel type", "Тип канал"},
        {"ResultGraph.showHideAll", "[+Ctrl] - apply for ALL results", "[+Ctrl] - применить для всех результатов"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        lng::language = 0;
        EXPECT_EQ(std::string(lng::TreeRelay::get(row.key)), row.english);
        lng::language = 1;
        EXPECT_EQ(std::string(lng::TreeRelay::get(row.key)), row.russian);
    }
}

TEST_F(TreeRelayTest, UnknownKeysComeBackAsTheKeyItself)
{
    const std::vector<std::string> keys = {
        "",
        "Result_ok",  // Keys are case-sensitive.
        "result_ok ", // No trimming either.
    };
    for (int language : {0, 1}) {
        lng::language = language;
        for (const std::string& key : keys) {
            SCOPED_TRACE("\"" + key + "\" in language " + std::to_string(language));
            const char* const text = lng::TreeRelay::get(key);
            EXPECT_EQ(text, key.c_str());
            EXPECT_EQ(std::string(text), key);
        }
    }
}

} // namespace

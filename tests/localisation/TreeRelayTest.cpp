#include "localisation/TreeRelay.h"

#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Every test leaves lng::language as it found it.
class TreeRelayTest : public ::testing::Test {
protected:
    void SetUp() override { _savedLanguage = lng::language; }
    void TearDown() override { lng::language = _savedLanguage; }

private:
    int _savedLanguage = 0;
};

struct Row {
    std::string key;
    std::string english;
    std::string russian;
};

const std::vector<Row>& allRows()
{
    static const std::vector<Row> rows = {
        {"result_ok", "ok", "норма"},
        {"result_notOk", "?not ok", "?не в норме"},
        {"result_empty", "not tested", "не проводилась"},
        {"result_error", "?error", "?ошибка"},
        {"testQueue_testRunning", "test running", "проверка запущена"},
        {"testQueue_finished", "Tests finished", "Проверки завершены"},
        {"object", "Object", "Объект"},
        {"elements", "Elements", "Элементы"},
        {"table", "Table", "Таблица"},
        {"Properties.channelType", "Channel type", "Тип канал"},
        {"Properties.enableState", "Enable state", "Разрешение состояния"},
        {"Properties.count", "Count", "Количество"},
        {"Actions.before", "Action (begin)", "Действие (нач)"},
        {"Actions.start", "Action (start)", "Действие (пуск)"},
        {"Actions.after", "Action (end)", "Действие (кон)"},
        {"Group.actions", "Actions", "Действия"},
        {"ResultGraph.showHideTable", "Hide/show results table", "Скрыть/отобразить таблицу результатов"},
        {"ResultGraph.showHideGraph", "Hide/show results graph", "Скрыть/отобразить график результатов"},
        {"ResultGraph.showHideAll", "[+Ctrl] - apply for ALL results", "[+Ctrl] - применить для всех результатов"},
    };
    return rows;
}

TEST_F(TreeRelayTest, EveryKeyHasItsTextInBothLanguages)
{
    ASSERT_EQ(allRows().size(), 19u);
    for (const Row& row : allRows()) {
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
        "Actions.Before",
        "no.such.key",
        "норма",
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

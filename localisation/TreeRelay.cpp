#include "localisation/TreeRelay.h"

#include "core/tree/TreeLocalization.h"

namespace lng {

namespace {

struct Row {
    const char* key;
    const char* text[2];
};

// Some texts are shown exactly as stored: the leading "?" marks a failed verdict, and "Тип канал" is the
// wording the users already know.
const Row rows[] = {
    {"result_ok", {"ok", "норма"}},
    {"result_notOk", {"?not ok", "?не в норме"}},
    {"result_empty", {"not tested", "не проводилась"}},
    {"result_error", {"?error", "?ошибка"}},
    {"testQueue_testRunning", {"test running", "проверка запущена"}},
    {"testQueue_finished", {"Tests finished", "Проверки завершены"}},
    {"object", {"Object", "Объект"}},
    {"elements", {"Elements", "Элементы"}},
    {"table", {"Table", "Таблица"}},
    {"Properties.channelType", {"Channel type", "Тип канал"}},
    {"Properties.enableState", {"Enable state", "Разрешение состояния"}},
    {"Properties.count", {"Count", "Количество"}},
    {"Actions.before", {"Action (begin)", "Действие (нач)"}},
    {"Actions.start", {"Action (start)", "Действие (пуск)"}},
    {"Actions.after", {"Action (end)", "Действие (кон)"}},
    {"Group.actions", {"Actions", "Действия"}},
    {"ResultGraph.showHideTable", {"Hide/show results table", "Скрыть/отобразить таблицу результатов"}},
    {"ResultGraph.showHideGraph", {"Hide/show results graph", "Скрыть/отобразить график результатов"}},
    {"ResultGraph.showHideAll", {"[+Ctrl] - apply for ALL results", "[+Ctrl] - применить для всех результатов"}},
};

} // namespace

const char* TreeRelay::get(const std::string& key)
{
    for (const Row& row : rows) {
        if (key == row.key)
            return row.text[language];
    }
    return key.c_str();
}

} // namespace lng

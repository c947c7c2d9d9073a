#include "core/tree/TreeLocalization.h"

#include "collections/CollectionTexts.h"

#include <cstring>

namespace lng {

int language = 0;

namespace {

struct Row {
    const char* key;
    const char* text[2];
};

const Row rows[] = {
    {"error.ReadOnly", {"The collection is read-only", "Коллекция доступна только для чтения"}},
    {"Units.zemolIn", {"Binary input", "Дискретный вход"}},
    {"Units.zemolOut", {"Binary output", "Дискретный выход"}},
    {"Units.zemolOutCollection", {"Binary outputs", "Дискретные выходы"}},
    {"Units.analogOutputRedirect", {"Analog outputs", "Аналоговые выходы"}},
    {"Properties.Measure", {"Measure", "Единица измерения"}},
    {"normalOpenShort", {"NO", "НР"}},
    {"normalClosedShort", {"NC", "НЗ"}},
    {"InContactMode.Off", {"Off", "Откл"}},
    {"InContactMode.NoLoad", {"No load", "Без нагрузки"}},
    {"InContactMode.SC", {"Short circuit", "КЗ"}},
    {"InContactMode.Pause", {"Pause", "Пауза"}},
    {"InContactMode.RPO", {"RPO", "РПО"}},
    {"InContactMode.RPV", {"RPV", "РПВ"}},
    {"Hardware.binaryInputs", {"Binary inputs", "Дискретные входы"}},
    {"Hardware.binaryOutputs", {"Binary outputs", "Дискретные выходы"}},
    {"Hardware.analogOutputs", {"Analog outputs", "Аналоговые выходы"}},
    {"Hardware.group", {"Group", "Группа"}},
    {"Hardware.input", {"Input", "Вход"}},
    {"Hardware.output", {"Output", "Выход"}},
    {"Flag.yes", {"Yes", "Да"}},
    {"Flag.no", {"No", "Нет"}},
    {"Graph.upperToleranceLimit", {"Upper tolerance limit", "Верхняя граница допуска"}},
    {"Graph.lowerToleranceLimit", {"Lower tolerance limit", "Нижняя граница допуска"}},
    {"Graph.outerZoneBound", {"Outer bound of the zone", "Внешняя граница зоны"}},
    {"Graph.innerZoneBound", {"Inner bound of the zone", "Внутренняя граница зоны"}},
    {"NumericEntry.empty", {"Enter a number", "Введите число"}},
    {"NumericEntry.notNumber", {"This is not a number", "Это не число"}},
    {"NumericEntry.notInteger", {"A whole number is expected", "Ожидается целое число"}},
    {"NumericEntry.belowMinimum", {"The least allowed value is", "Наименьшее допустимое значение"}},
    {"NumericEntry.aboveMaximum", {"The greatest allowed value is", "Наибольшее допустимое значение"}},
    {"Window.ok", {"OK", "ОК"}},
    {"Window.cancel", {"Cancel", "Отмена"}},
    {"Enum.missing", {"This value is not in the list", "Этого значения нет в списке"}},
};

} // namespace

// The collections below the tree speak through this table too.
[[maybe_unused]] const bool collectionTextsInstalled =
    (Zem::CollectionTexts::setReadOnlyTextSource([] { return Tree::get("error.ReadOnly"); }), true);

const char* Tree::get(const std::string& key)
{
    for (const Row& row : rows) {
        if (key == row.key)
            return row.text[language];
    }
    return key.c_str();
}

} // namespace lng

#include "localisation/TreePresentersLocalization.h"

namespace ZemTree {

const char* const TreePresentersLocalization::ContactCollectionEditor_title[2] = {"Collection editor",
                                                                                  "Редактор коллекции"};
const char* const TreePresentersLocalization::formulaEditorWindowTitle[2] = {"Formula editor", "Редактор формулы"};
const char* const TreePresentersLocalization::formulaSource[2] = {"Formula", "Формула"};
const char* const TreePresentersLocalization::resetValue[2] = {"Default value", "Значение по-умолчанию"};
const char* const TreePresentersLocalization::add[2] = {"Add", "Добавить"};
const char* const TreePresentersLocalization::edit[2] = {"Edit", "Редактировать"};
const char* const TreePresentersLocalization::inContact_Number[2] = {"N", "N"};
const char* const TreePresentersLocalization::inContact_Mode[2] = {"Mode", "Режим"};
// The time columns begin with a Latin T, as the users know them from the test set; the rest is Cyrillic.
const char* const TreePresentersLocalization::inContact_Start[2] = {"Ton", "T\u0432\u043a\u043b"};
const char* const TreePresentersLocalization::inContact_Duration[2] = {"Toff", "T\u043e\u0442\u043a\u043b"};

} // namespace ZemTree

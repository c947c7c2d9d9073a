#pragma once

#include "core/tree/TreeLocalization.h"

namespace ZemTreeDemo {

// The demo's own two-language texts, read as text[lng::language].
struct DemoText {
    const char* text[2];
    const char* get() const { return text[lng::language == 1 ? 1 : 0]; }
};

namespace DemoTexts {

constexpr DemoText action{{"action", "действие"}};
constexpr DemoText of{{"of", "—"}};
constexpr DemoText outcome{{"outcome", "итог"}};
constexpr DemoText passed{{"passed", "пройдена"}};
constexpr DemoText failed{{"failed", "не пройдена"}};
constexpr DemoText stopped{{"stopped", "остановлена"}};
constexpr DemoText notRun{{"not run", "не запускалась"}};
constexpr DemoText settingOutput{{"setting the output to", "установка выхода"}};
constexpr DemoText waitingForRelay{{"waiting for the relay to operate", "ожидание срабатывания реле"}};
constexpr DemoText measured{{"measured", "измерено"}};
constexpr DemoText expected{{"expected", "ожидалось"}};
constexpr DemoText forcedStop{{"forced to stop", "принудительная остановка"}};
constexpr DemoText runStarted{{"run started", "запуск проверок"}};
constexpr DemoText stopAsked{{"stop asked, tests finished so far", "запрошена остановка, завершено проверок"}};
constexpr DemoText testsRun{{"tests run", "проведено проверок"}};
constexpr DemoText totalPassed{{"passed", "пройдено"}};
constexpr DemoText totalFailed{{"failed", "не пройдено"}};
constexpr DemoText totalStopped{{"stopped", "остановлено"}};
constexpr DemoText runWasStopped{{"the run was stopped", "проверки остановлены"}};
constexpr DemoText runCompleted{{"the run completed", "проверки выполнены полностью"}};
constexpr DemoText projectSaved{{"project saved", "проект сохранён"}};
constexpr DemoText reportWritten{{"report written", "отчёт записан"}};

} // namespace DemoTexts

} // namespace ZemTreeDemo

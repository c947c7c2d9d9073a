#include "relay/ContactCheckTest.h"

#include "containers/ResultCollectionContainer.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/tree/Measures.h"
#include "relay/DemoRelay.h"
#include "relay/DemoRelayCommon.h"
#include "relay/RelayLogic.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringUnit.h"
#include "results/StringSettingAssessment.h"
#include "values/NumericUnit.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

namespace ZemDemo {

const char* const ContactCheckTest::Follows = "follows";
const char* const ContactCheckTest::DoesNotFollow = "does not follow";

ContactCheckTest::ContactCheckTest() : RelayTestBase("ContactCheckTest") {}

ContactCheckTest::ContactCheckTest(const std::string& id, const ZemTree::LocalString& description)
    : RelayTestBase(id, description)
{
}

ContactCheckTest::~ContactCheckTest()
{
    _stopAndJoin();
}

void ContactCheckTest::_fillTemplate()
{
    RelayTestBase::_fillTemplate();
    _output = _addOutputContact("Output", ZemTree::LocalString::create("Driven output", "Управляемый выход"),
                                RelayLogic::ContactOutputPath);
    _input = _addInputContact("Input", ZemTree::LocalString::create("Following input", "Повторяющий вход"),
                              RelayLogic::ContactInputPath);
    _repetitions = _addSetting("Repetitions", ZemTree::LocalString::create("Repetitions", "Повторы"), 3.0,
                               ZemTree::Measures::None());
    _timeout = _addSetting("Timeout", ZemTree::LocalString::create("Time-out", "Время ожидания"), 0.2,
                           ZemTree::Measures::Second());
    _contactResult = getResults()->add(std::make_unique<ZemTree::ResultMultiStringUnit>(
        "Contact", ZemTree::LocalString::create("Follower contact", "Повторитель"), ZemTree::LocalString::Empty(),
        nullptr));
}

void ContactCheckTest::_prepare()
{
    _runOutputPath = _wiredPath(_output);
    _runInputPath = _wiredPath(_input);
    _runRepetitions = static_cast<int>(_getPlannedPoints() / 2);
    _runTimeout = std::isfinite(_settingValue(_timeout)) ? std::clamp(_settingValue(_timeout), 0.001, MaxTimeout) : 0.2;
    _contactResult->clearResult();
}

void ContactCheckTest::_checkOwnSettings(const RelaySettings&, std::vector<std::string>& problems) const
{
    const double repetitions = _settingValue(_repetitions);
    const double timeout = _settingValue(_timeout);
    if (!(repetitions >= 1.0 && repetitions <= MaxRepetitions))
        problems.push_back(localText("Setting Repetitions is ", "Уставка Repetitions равна ") + shortNumber(repetitions)
                           + localText("; the limits are 1 to ", "; допустимо от 1 до ") + shortNumber(MaxRepetitions));
    if (!(timeout >= 0.001 && timeout <= MaxTimeout))
        problems.push_back(localText("Setting Timeout is ", "Уставка Timeout равна ") + shortNumber(timeout)
                           + localText(" s; the limits are 0.001 to ", " с; допустимо от 0.001 до ")
                           + shortNumber(MaxTimeout) + localText(" s", " с"));
}

unsigned ContactCheckTest::_getPlannedPoints() const
{
    const double repetitions = _settingValue(_repetitions);
    if (!std::isfinite(repetitions))
        return 2;
    return 2u * static_cast<unsigned>(std::lround(std::clamp(repetitions, 1.0, MaxRepetitions)));
}

void ContactCheckTest::_execute(SimulatedRelayUnderTest& relay)
{
    ZemDevice::IVirtualBinaryOutputChannel* const output = findOutput(relay, _runOutputPath);
    ZemDevice::IVirtualBinaryInputChannel* const input = findInput(relay, _runInputPath);
    const auto timeout = std::chrono::milliseconds(std::llround(_runTimeout * 1000.0));

    std::map<std::string, std::vector<std::string>> checks;
    // What was measured is kept and the outputs are switched off however the measuring ends, also when the
    // relay stops answering halfway.
    FinishGuard finish([&] {
        output->setState(false);
        std::size_t measured = 0;
        for (const auto& entry : checks)
            measured += entry.second.size();
        _setMeasuredPoints(measured);
        if (checks.empty())
            return;
        _contactResult->setData(std::make_shared<ZemTree::ResultMultiString>(
            checks, std::make_shared<ZemTree::StringSettingAssessment>(localText(Follows, "повторяет"))));
    });
    for (int repetition = 1; repetition <= _runRepetitions && !_isStopRequested(); ++repetition) {
        for (const bool state : {true, false}) {
            output->setState(state);
            const bool isFollowed = _waitForInput(input, state, timeout).has_value();
            if (_isStopRequested())
                break;
            // Keys and verdicts are written in the user's language, as the report shows them.
            const std::string key = state ? localText("Close", "Замыкание") : localText("Open", "Размыкание");
            checks[key].push_back(isFollowed ? localText(Follows, "повторяет")
                                             : localText(DoesNotFollow, "не повторяет"));
            _report(key + " " + std::to_string(repetition) + localText(": the contact ", ": контакт ")
                    + (isFollowed ? localText(Follows, "повторяет") : localText(DoesNotFollow, "не повторяет")));
            _onPointMeasured();
        }
    }
    finish.now();
}

} // namespace ZemDemo

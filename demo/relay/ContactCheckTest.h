#pragma once

#include "relay/RelayTestBase.h"

#include <string>

namespace ZemTree {
class ResultMultiStringUnit;
}

namespace ZemTree {
class AnalogOutputRedirectCollectionUnit;
class ContactUnit;
} // namespace ZemTree

namespace ZemDemo {

// Checks a contact of the relay that follows a binary output of the test set: the output closes and opens a
// few times, and each time the input it drives must follow within the time-out.
class ContactCheckTest : public RelayTestBase {
public:
    static constexpr double MaxRepetitions = 100.0;
    // The longest wait for the contact, in seconds.
    static constexpr double MaxTimeout = 10.0;

    // What a check records for each switching.
    static const char* const Follows;
    static const char* const DoesNotFollow;

    ContactCheckTest();
    ContactCheckTest(const std::string& id, const ZemTree::LocalString& description);
    ~ContactCheckTest() override;

    ZemTree::ResultMultiStringUnit* getContactResult() const { return _contactResult; }

protected:
    void _fillTemplate() override;
    void _prepare() override;
    void _execute(SimulatedRelayUnderTest& relay) override;
    void _checkOwnSettings(const RelaySettings& relay, std::vector<std::string>& problems) const override;
    // A close and an open per repetition.
    unsigned _getPlannedPoints() const override;

private:
    ZemTree::NumericUnit* _repetitions = nullptr;
    ZemTree::NumericUnit* _timeout = nullptr;
    ZemTree::ResultMultiStringUnit* _contactResult = nullptr;

    // Copied when a run starts; read by the test's thread only.
    int _runRepetitions = 0;
    double _runTimeout = 0.0;
    ZemTree::ContactUnit* _output = nullptr;
    ZemTree::ContactUnit* _input = nullptr;
    std::string _runOutputPath;
    std::string _runInputPath;
};

} // namespace ZemDemo

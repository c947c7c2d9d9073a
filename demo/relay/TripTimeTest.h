#pragma once

#include "relay/RelayTestBase.h"

#include <string>
#include <vector>

namespace ZemTree {
class ResultMultiGraphUnit;
}

namespace ZemTree {
class AnalogOutputRedirectCollectionUnit;
class ContactUnit;
} // namespace ZemTree

namespace ZemDemo {

// Times the overcurrent stage at several multiples of its pickup: the three phase currents jump from zero to the
// multiple, and the operate time the relay reports for the closing of its trip contact is judged against the
// relay's inverse-time curve.
class TripTimeTest : public RelayTestBase {
public:
    // The longest trip time, in the relay's own seconds, that a multiple may expect: a longer one is a wait
    // nobody means.
    static constexpr double MaxExpectedTime = 600.0;

    TripTimeTest();
    TripTimeTest(const std::string& id, const ZemTree::LocalString& description);
    ~TripTimeTest() override;

    ZemTree::ResultMultiGraphUnit* getTripTimeResult() const { return _tripTimeResult; }
    // The multiples of the pickup to test, in order; each above 1. Only while the test is idle.
    const std::vector<double>& getMultiples() const { return _multiples; }
    // Throws std::logic_error, changing nothing, for an empty list or a multiple not above 1.
    void setMultiples(const std::vector<double>& multiples);

    // "2;3;5;10" and back; parsing throws std::runtime_error for a malformed text.
    static std::string multiplesToText(const std::vector<double>& multiples);
    static std::vector<double> multiplesFromText(const std::string& text);

protected:
    void _fillTemplate() override;
    void _prepare() override;
    void _execute(SimulatedRelayUnderTest& relay) override;
    void _checkOwnSettings(const RelaySettings& relay, std::vector<std::string>& problems) const override;
    unsigned _getPlannedPoints() const override { return static_cast<unsigned>(_multiples.size()); }

    // The multiples are the attribute `Multiples`; a malformed one is reported and the list stays as it was.
    void _setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const override;

private:
    std::vector<double> _multiples{2.0, 3.0, 5.0, 10.0};
    ZemTree::NumericUnit* _tolerance = nullptr;
    ZemTree::NumericUnit* _absoluteTolerance = nullptr;
    ZemTree::NumericUnit* _pickup = nullptr;
    ZemTree::NumericUnit* _timeMultiplier = nullptr;
    ZemTree::ResultMultiGraphUnit* _tripTimeResult = nullptr;

    // Copied when a run starts; read by the test's thread only.
    std::vector<double> _runMultiples;
    double _runTolerance = 0.0;
    double _runAbsoluteTolerance = 0.0;
    double _runPickup = 0.0;
    double _runTimeMultiplier = 0.0;
    std::string _runCurve;
    ZemTree::ContactUnit* _trip = nullptr;
    ZemTree::AnalogOutputRedirectCollectionUnit* _outputs = nullptr;
    std::string _runTripPath;
    std::string _runCurrentsPath;
};

} // namespace ZemDemo

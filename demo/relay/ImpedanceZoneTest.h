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

// Finds the reach of the distance zone along rays of the R-X plane: shots at impedances inside the zone must
// trip and shots outside must not, and a search between them narrows down the boundary. Each boundary point is
// judged against the zone polygon widened and narrowed by the tolerance.
class ImpedanceZoneTest : public RelayTestBase {
public:
    // The search steps along one ray: at least one, or the reach found would be the setting itself.
    static constexpr double MinSteps = 1.0;
    static constexpr double MaxSteps = 20.0;

    ImpedanceZoneTest();
    ImpedanceZoneTest(const std::string& id, const ZemTree::LocalString& description);
    ~ImpedanceZoneTest() override;

    ZemTree::ResultMultiGraphUnit* getReachResult() const { return _reachResult; }

    // The directions of the rays in degrees, saved as the attribute `Angles` ("0;45;75").
    const std::vector<double>& getAngles() const { return _angles; }

protected:
    void _fillTemplate() override;
    void _prepare() override;
    void _execute(SimulatedRelayUnderTest& relay) override;
    void _checkOwnSettings(const RelaySettings& relay, std::vector<std::string>& problems) const override;
    unsigned _getPlannedPoints() const override { return static_cast<unsigned>(_angles.size()); }

    void _setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const override;

private:
    std::vector<double> _angles{0.0, 45.0, 75.0, 105.0, 180.0, 270.0};
    ZemTree::NumericUnit* _tolerance = nullptr;
    ZemTree::NumericUnit* _steps = nullptr;
    ZemTree::NumericUnit* _reachR = nullptr;
    ZemTree::NumericUnit* _reachX = nullptr;
    ZemTree::NumericUnit* _lineAngle = nullptr;
    ZemTree::ResultMultiGraphUnit* _reachResult = nullptr;

    // Copied when a run starts; read by the test's thread only.
    std::vector<double> _runAngles;
    double _runTolerance = 0.0;
    int _runSteps = 0;
    double _runReachR = 0.0;
    double _runReachX = 0.0;
    double _runLineAngle = 0.0;
    ZemTree::ContactUnit* _start = nullptr;
    ZemTree::ContactUnit* _trip = nullptr;
    ZemTree::AnalogOutputRedirectCollectionUnit* _outputs = nullptr;
    std::string _runStartPath;
    std::string _runTripPath;
    std::string _runCurrentsPath;
    std::string _runVoltagesPath;
};

} // namespace ZemDemo

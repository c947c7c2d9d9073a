#pragma once

#include "core/common/Point.h"
#include "core/common/ScopedConnection.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ZemDevice {
class HardwareManager;
class IVirtualAnalogOutputGroup;
class IVirtualBinaryInputChannel;
class IVirtualBinaryOutputChannel;
} // namespace ZemDevice

namespace ZemDemo {

struct RelaySettings;

// The protection logic of the simulated relay: an inverse-time overcurrent stage and a quadrilateral distance
// zone, each with a start contact that follows at once and a trip contact that closes after the operate time,
// and a contact that follows a binary output of the test set.
//
// Wiring, as paths below the test set's virtual channels: currents of phases A, B, C on "AnalogOutputs/Group 1",
// voltages on "AnalogOutputs/Group 2"; overcurrent trip and start on "BinaryInputs/Group 1/Input 1" and "Input 2",
// distance trip and start on "Input 3" and "Input 4"; "BinaryOutputs/Group 1/Output 1" is followed on
// "BinaryInputs/Group 2/Input 1".
//
// The relay runs `timeScale` times as long as its settings say. What it records about an operation (its
// reported operate time, the pickup and reach it really has) carries a measurement noise drawn from the seed
// and the operating point alone, so that the same seed gives the same records whatever the threads do.
//
// The follower closes and opens its input its delay after the output changed, never sooner; an output that
// returns before that cancels the pending change.
//
// Threads: the slots on the test set's outputs run on the thread that changes them and only note the change; every
// contact is driven on the relay's one thread, named "ZemDemo_Relay". The hardware manager outlives the logic, and
// the logic is made and destroyed while no other thread changes the test set; a change still pending then is
// dropped.
class RelayLogic {
public:
    using Clock = std::chrono::steady_clock;

    static const char* const CurrentGroupPath;
    static const char* const VoltageGroupPath;
    static const char* const TripInputPath;
    static const char* const StartInputPath;
    static const char* const ZoneTripInputPath;
    static const char* const ZoneStartInputPath;
    static const char* const ContactOutputPath;
    static const char* const ContactInputPath;

    // The smallest phase A current at which the distance zone measures, in amperes.
    static constexpr double ZoneMinimumCurrent = 0.1;
    // The zone's own operate time in seconds.
    static constexpr double ZoneOperateTime = 0.02;

    // Throws std::logic_error for an unknown curve or settings out of range.
    RelayLogic(ZemDevice::HardwareManager& hardware, const RelaySettings& settings);
    ~RelayLogic();
    RelayLogic(const RelayLogic&) = delete;
    RelayLogic& operator=(const RelayLogic&) = delete;

    // The operate time of an IEC inverse curve ("standard", "very", "extremely") in seconds at `multiple` times
    // the pickup; infinity at or below the pickup. Throws std::logic_error for an unknown curve.
    static double curveTime(const std::string& curve, double multiple, double timeMultiplier);
    // The same curve as a formula of the time graphs, with "{T}", "{I}" and "{x}".
    static std::string curveFormula(const std::string& curve);
    // The zone's quadrilateral in the R-X plane, counter-clockwise, reaching `zoneR` and `zoneX`, its resistive
    // edge leaning with the line angle in degrees.
    static std::vector<Zem::Point> zonePolygon(double zoneR, double zoneX, double lineAngle);
    // How far the ray from the origin at `angleDegrees` runs inside `polygon`; the origin lies inside.
    static double rayReach(const std::vector<Zem::Point>& polygon, double angleDegrees);

    // Waits until the relay has looked at every change of the analog outputs made before the call, so that its
    // start contacts show its decision; false when that took longer than `timeout`. Runs on the caller's thread.
    bool waitSettled(std::chrono::milliseconds timeout);

    // A relay that stops answering (a hung processor, a lost supply) looks at no change of its inputs until it
    // answers again, so waitSettled times out meanwhile. It answers from the start.
    void setAnswering(bool isAnswering);

    // What the relay reports about its last overcurrent trip: the operate time in seconds of its own scale,
    // with the measurement noise.
    std::optional<double> getLastReportedTripTime() const;

private:
    struct Pending {
        Clock::time_point due;
        double reportedTime = 0.0;
    };

    // Run on the thread that changed an output.
    void _onAnalogChanged();
    void _onFollowedChanged(Clock::time_point changed);
    // The relay's thread.
    void _run();
    // Runs on the relay's thread with the lock released.
    void _evaluate(Clock::time_point changed);
    // A normal deviate with the standard deviation `noise`, the same for the same seed and key.
    double _deviation(std::uint64_t key) const;
    bool _isInsideZone(double r, double x) const;

    // What an element last looked at, so that it times again only when its own inputs change.
    struct Phasors {
        std::vector<double> amplitudes;
        std::vector<double> angles;
        bool operator==(const Phasors& other) const { return amplitudes == other.amplitudes && angles == other.angles; }
    };

    std::string _curve;
    double _pickup;
    double _timeMultiplier;
    double _zoneR;
    double _zoneX;
    double _lineAngle;
    unsigned _seed;
    double _noise;
    double _timeScale;
    Clock::duration _followerDelay;

    ZemDevice::IVirtualAnalogOutputGroup* _currents = nullptr;
    ZemDevice::IVirtualAnalogOutputGroup* _voltages = nullptr;
    ZemDevice::IVirtualBinaryInputChannel* _trip = nullptr;
    ZemDevice::IVirtualBinaryInputChannel* _start = nullptr;
    ZemDevice::IVirtualBinaryInputChannel* _zoneTrip = nullptr;
    ZemDevice::IVirtualBinaryInputChannel* _zoneStart = nullptr;
    ZemDevice::IVirtualBinaryOutputChannel* _followed = nullptr;
    ZemDevice::IVirtualBinaryInputChannel* _follower = nullptr;
    Zem::ScopedConnection _currentsConnection;
    Zem::ScopedConnection _voltagesConnection;
    Zem::ScopedConnection _followedConnection;

    // Guards everything below.
    mutable std::mutex _mutex;
    std::condition_variable _condition;
    std::condition_variable _settledCondition;
    bool _isStopping = false;
    bool _isAnswering = true;
    std::uint64_t _changeRevision = 0;
    std::uint64_t _evaluatedRevision = 0;
    Clock::time_point _lastChange;
    std::optional<Pending> _tripPending;
    std::optional<Clock::time_point> _zoneTripDue;
    std::optional<double> _lastReportedTripTime;
    // The follower's state as last driven, and a change of it still to come.
    bool _followerState = false;
    std::optional<std::pair<Clock::time_point, bool>> _followerPending;
    // Only the relay's thread touches these.
    Phasors _lastCurrents;
    Phasors _lastZoneInputs;
    bool _isTripClosed = false;
    bool _isZoneTripClosed = false;

    std::thread _worker;
};

} // namespace ZemDemo

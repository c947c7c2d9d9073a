#include "relay/RelayLogic.h"

#include "core/common/ThreadHelper.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "relay/DemoRelay.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <stdexcept>

namespace ZemDemo {

const char* const RelayLogic::CurrentGroupPath = "AnalogOutputs/Group 1";
const char* const RelayLogic::VoltageGroupPath = "AnalogOutputs/Group 2";
const char* const RelayLogic::TripInputPath = "BinaryInputs/Group 1/Input 1";
const char* const RelayLogic::StartInputPath = "BinaryInputs/Group 1/Input 2";
const char* const RelayLogic::ZoneTripInputPath = "BinaryInputs/Group 1/Input 3";
const char* const RelayLogic::ZoneStartInputPath = "BinaryInputs/Group 1/Input 4";
const char* const RelayLogic::ContactOutputPath = "BinaryOutputs/Group 1/Output 1";
const char* const RelayLogic::ContactInputPath = "BinaryInputs/Group 2/Input 1";

namespace {

constexpr double Pi = 3.14159265358979323846;

// The constants k and a of t = TMS * k / ((I/Ip)^a - 1).
struct CurveConstants {
    const char* name;
    double k;
    double a;
};

constexpr CurveConstants curves[] = {{"standard", 0.14, 0.02}, {"very", 13.5, 1.0}, {"extremely", 80.0, 2.0}};

const CurveConstants& findCurve(const std::string& curve)
{
    for (const CurveConstants& constants : curves) {
        if (curve == constants.name)
            return constants;
    }
    throw std::logic_error("Unknown relay curve \"" + curve + "\": use standard, very or extremely");
}

// Keys of the noise draws: the kind of record in the high bits, the operating point in the low ones.
constexpr std::uint64_t PickupKey = 1ull << 40;
constexpr std::uint64_t TripKey = 2ull << 40;
constexpr std::uint64_t ZoneKey = 3ull << 40;

template <class T> T* findChannel(ZemDevice::HardwareManager& hardware, const char* path)
{
    T* const channel = hardware.getVirtualChannels()->find<T>(path);
    if (channel == nullptr)
        throw std::logic_error(std::string("The test set has no ") + path);
    return channel;
}

} // namespace

RelayLogic::RelayLogic(ZemDevice::HardwareManager& hardware, const RelaySettings& settings)
    : _curve(settings.curve), _pickup(settings.pickup), _timeMultiplier(settings.timeMultiplier),
      _zoneR(settings.zoneR), _zoneX(settings.zoneX), _lineAngle(settings.lineAngle), _seed(settings.seed),
      _noise(settings.noise), _timeScale(settings.timeScale)
{
    findCurve(_curve);
    const auto isPositive = [](double value) { return std::isfinite(value) && value > 0.0; };
    if (!isPositive(_pickup) || !isPositive(_timeMultiplier) || !isPositive(_zoneR) || !isPositive(_zoneX)
        || !isPositive(_timeScale) || !(_noise >= 0.0 && _noise < 1.0) || !(_lineAngle >= 1.0 && _lineAngle <= 90.0)
        || !(settings.followerDelay >= 0.0 && settings.followerDelay <= 3600.0))
        throw std::logic_error("Relay settings out of range: pickup, time multiplier, zone reach and time scale must "
                               "be positive, the line angle in [1;90] degrees, the noise in [0;1), the follower's "
                               "delay in [0;3600] s");
    _followerDelay =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(settings.followerDelay * _timeScale));

    _currents = findChannel<ZemDevice::IVirtualAnalogOutputGroup>(hardware, CurrentGroupPath);
    _voltages = findChannel<ZemDevice::IVirtualAnalogOutputGroup>(hardware, VoltageGroupPath);
    _trip = findChannel<ZemDevice::IVirtualBinaryInputChannel>(hardware, TripInputPath);
    _start = findChannel<ZemDevice::IVirtualBinaryInputChannel>(hardware, StartInputPath);
    _zoneTrip = findChannel<ZemDevice::IVirtualBinaryInputChannel>(hardware, ZoneTripInputPath);
    _zoneStart = findChannel<ZemDevice::IVirtualBinaryInputChannel>(hardware, ZoneStartInputPath);
    if (_currents->getPhasors().size() < 3 || _voltages->getPhasors().size() < 1)
        throw std::logic_error("The test set's analog groups are too small for the relay");

    _followed = findChannel<ZemDevice::IVirtualBinaryOutputChannel>(hardware, ContactOutputPath);
    _follower = findChannel<ZemDevice::IVirtualBinaryInputChannel>(hardware, ContactInputPath);
    _followerState = _follower->getState();

    _currentsConnection = _currents->getSignalChanged().connect([this](Clock::time_point) { _onAnalogChanged(); });
    _voltagesConnection = _voltages->getSignalChanged().connect([this](Clock::time_point) { _onAnalogChanged(); });
    _followedConnection = _followed->getSignalStateChanged().connect(
        [this](bool, Clock::time_point changed) { _onFollowedChanged(changed); });
    // An output already closed counts from now.
    _onFollowedChanged(Clock::now());
    _worker = std::thread([this] {
        Zem::ThreadHelper::setCurrentThreadName("ZemDemo_Relay");
        _run();
    });
}

RelayLogic::~RelayLogic()
{
    // No slot may note a change once the worker is gone.
    _currentsConnection.disconnect();
    _voltagesConnection.disconnect();
    _followedConnection.disconnect();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopping = true;
    }
    _condition.notify_all();
    _settledCondition.notify_all();
    if (_worker.joinable())
        _worker.join();
}

double RelayLogic::curveTime(const std::string& curve, double multiple, double timeMultiplier)
{
    const CurveConstants& constants = findCurve(curve);
    if (!(multiple > 1.0))
        return std::numeric_limits<double>::infinity();
    return timeMultiplier * constants.k / (std::pow(multiple, constants.a) - 1.0);
}

std::string RelayLogic::curveFormula(const std::string& curve)
{
    const CurveConstants& constants = findCurve(curve);
    char text[96];
    std::snprintf(text, sizeof text, "{T}*%g/(({x}/{I})^%g-1)", constants.k, constants.a);
    return text;
}

std::vector<Zem::Point> RelayLogic::zonePolygon(double zoneR, double zoneX, double lineAngle)
{
    // A quadrilateral leaning with the line angle: a little reach behind the relay, the resistive reach
    // growing towards the reactive one.
    const double lean = std::cos(lineAngle * Pi / 180.0) / std::sin(lineAngle * Pi / 180.0);
    return {{-zoneR / 4.0, -zoneX / 4.0}, {zoneR, -zoneX / 4.0}, {zoneR + lean * zoneX, zoneX}, {-zoneR / 4.0, zoneX}};
}

double RelayLogic::rayReach(const std::vector<Zem::Point>& polygon, double angleDegrees)
{
    const double dx = std::cos(angleDegrees * Pi / 180.0);
    const double dy = std::sin(angleDegrees * Pi / 180.0);
    double reach = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Zem::Point& p = polygon[i];
        const Zem::Point& q = polygon[(i + 1) % polygon.size()];
        const double ex = q.x - p.x;
        const double ey = q.y - p.y;
        const double denominator = dx * ey - dy * ex;
        if (std::fabs(denominator) < 1e-12)
            continue;
        const double t = (p.x * ey - p.y * ex) / denominator;
        const double u = (p.x * dy - p.y * dx) / denominator;
        if (t > 0.0 && u >= -1e-12 && u <= 1.0 + 1e-12)
            reach = std::min(reach, t);
    }
    return reach;
}

bool RelayLogic::waitSettled(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(_mutex);
    const std::uint64_t target = _changeRevision;
    return _settledCondition.wait_for(lock, timeout,
                                      [this, target] { return _isStopping || _evaluatedRevision >= target; });
}

void RelayLogic::setAnswering(bool isAnswering)
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isAnswering = isAnswering;
    }
    _condition.notify_all();
}

std::optional<double> RelayLogic::getLastReportedTripTime() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lastReportedTripTime;
}

void RelayLogic::_onAnalogChanged()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        ++_changeRevision;
        _lastChange = Clock::now();
    }
    _condition.notify_all();
}

void RelayLogic::_onFollowedChanged(Clock::time_point changed)
{
    // Read before taking our lock: the output has a lock of its own.
    const bool state = _followed->getState();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (_followerPending ? _followerPending->second == state : _followerState == state)
            return;
        if (_followerState == state)
            _followerPending.reset();
        else
            _followerPending = std::make_pair(changed + _followerDelay, state);
    }
    _condition.notify_all();
}

void RelayLogic::_run()
{
    std::unique_lock<std::mutex> lock(_mutex);
    while (!_isStopping) {
        if (_isAnswering && _changeRevision != _evaluatedRevision) {
            const std::uint64_t revision = _changeRevision;
            const Clock::time_point changed = _lastChange;
            lock.unlock();
            _evaluate(changed);
            lock.lock();
            _evaluatedRevision = revision;
            _settledCondition.notify_all();
            continue;
        }
        const Clock::time_point now = Clock::now();
        if (_tripPending && _tripPending->due <= now) {
            _lastReportedTripTime = _tripPending->reportedTime;
            _tripPending.reset();
            _isTripClosed = true;
            lock.unlock();
            _trip->drive(true);
            lock.lock();
            continue;
        }
        if (_zoneTripDue && *_zoneTripDue <= now) {
            _zoneTripDue.reset();
            _isZoneTripClosed = true;
            lock.unlock();
            _zoneTrip->drive(true);
            lock.lock();
            continue;
        }
        if (_followerPending && _followerPending->first <= now) {
            const bool state = _followerPending->second;
            _followerPending.reset();
            _followerState = state;
            lock.unlock();
            _follower->drive(state);
            lock.lock();
            continue;
        }
        std::optional<Clock::time_point> due;
        if (_tripPending)
            due = _tripPending->due;
        if (_zoneTripDue && (!due || *_zoneTripDue < *due))
            due = _zoneTripDue;
        if (_followerPending && (!due || _followerPending->first < *due))
            due = _followerPending->first;
        if (due)
            _condition.wait_until(lock, *due);
        else
            _condition.wait(lock);
    }
}

void RelayLogic::_evaluate(Clock::time_point changed)
{
    const auto read = [](const std::vector<ZemDevice::AnalogPhasor>& phasors, std::size_t count) {
        Phasors values;
        for (std::size_t i = 0; i < count; ++i) {
            values.amplitudes.push_back(phasors[i].amplitude);
            values.angles.push_back(phasors[i].angle);
        }
        return values;
    };
    const Phasors currents = read(_currents->getPhasors(), 3);
    const Phasors voltages = read(_voltages->getPhasors(), 1);

    // The overcurrent stage: it starts on the phase that passes its own pickup and times on the highest current.
    if (!(currents == _lastCurrents)) {
        _lastCurrents = currents;
        bool isStarted = false;
        double highest = 0.0;
        for (std::size_t phase = 0; phase < 3; ++phase) {
            const double amplitude = currents.amplitudes[phase];
            highest = std::max(highest, amplitude);
            isStarted = isStarted || amplitude >= _pickup * (1.0 + _deviation(PickupKey + phase));
        }
        const double multiple = highest / _pickup;
        const double operateTime = curveTime(_curve, multiple, _timeMultiplier);
        std::optional<Pending> pending;
        if (isStarted && std::isfinite(operateTime)) {
            const auto key = static_cast<std::uint64_t>(std::llround(multiple * 1000.0));
            pending = Pending{changed
                                  + std::chrono::duration_cast<Clock::duration>(
                                      std::chrono::duration<double>(operateTime * _timeScale)),
                              operateTime * (1.0 + _deviation(TripKey + key))};
        }
        _start->drive(isStarted);
        if (!isStarted && _isTripClosed) {
            _isTripClosed = false;
            _trip->drive(false);
        }
        const std::lock_guard<std::mutex> lock(_mutex);
        if (!_isTripClosed)
            _tripPending = pending;
    }

    // The distance zone measures on phase A once there is current enough to measure with.
    Phasors zoneInputs = voltages;
    zoneInputs.amplitudes.push_back(currents.amplitudes[0]);
    zoneInputs.angles.push_back(currents.angles[0]);
    if (!(zoneInputs == _lastZoneInputs)) {
        _lastZoneInputs = zoneInputs;
        bool isInside = false;
        if (currents.amplitudes[0] >= ZoneMinimumCurrent) {
            const double magnitude = voltages.amplitudes[0] / currents.amplitudes[0];
            const double angle = (voltages.angles[0] - currents.angles[0]) * Pi / 180.0;
            isInside = _isInsideZone(magnitude * std::cos(angle), magnitude * std::sin(angle));
        }
        _zoneStart->drive(isInside);
        if (!isInside && _isZoneTripClosed) {
            _isZoneTripClosed = false;
            _zoneTrip->drive(false);
        }
        const std::lock_guard<std::mutex> lock(_mutex);
        if (!isInside)
            _zoneTripDue.reset();
        else if (!_isZoneTripClosed)
            _zoneTripDue = changed
                           + std::chrono::duration_cast<Clock::duration>(
                               std::chrono::duration<double>(ZoneOperateTime * _timeScale));
    }
}

double RelayLogic::_deviation(std::uint64_t key) const
{
    if (_noise <= 0.0)
        return 0.0;
    std::seed_seq sequence{static_cast<std::uint32_t>(_seed), static_cast<std::uint32_t>(key & 0xffffffffu),
                           static_cast<std::uint32_t>(key >> 32)};
    std::mt19937 generator(sequence);
    std::normal_distribution<double> distribution(0.0, _noise);
    return std::clamp(distribution(generator), -3.0 * _noise, 3.0 * _noise);
}

bool RelayLogic::_isInsideZone(double r, double x) const
{
    // The reach scatters by direction: each tenth of a degree has its own draw.
    double angle = std::atan2(x, r) * 180.0 / Pi;
    if (angle < 0.0)
        angle += 360.0;
    const auto key = static_cast<std::uint64_t>(std::llround(angle * 10.0)) % 3600u;
    const double scale = 1.0 + _deviation(ZoneKey + key);
    const std::vector<Zem::Point> polygon = zonePolygon(_zoneR * scale, _zoneX * scale, _lineAngle);
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Zem::Point& p = polygon[i];
        const Zem::Point& q = polygon[(i + 1) % polygon.size()];
        const double cross = (q.x - p.x) * (x - p.y) - (q.y - p.y) * (r - p.x);
        if (cross < 0.0)
            return false;
    }
    return true;
}

} // namespace ZemDemo

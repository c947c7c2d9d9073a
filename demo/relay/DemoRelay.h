#pragma once

#include "core/device/HardwareManager.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ZemTree {
class ITestContainer;
class Node;
} // namespace ZemTree

namespace ZemDemo {

class RelayLogic;

// Makes every node class of the example tests known to the node factory, so that saved projects and templates
// load. Safe to call more than once; the classes also register themselves when the library is linked in.
void registerDemoTypes();

// The settings of the simulated relay under test. Times are those of the relay's own scale; the relay runs
// `timeScale` times as long (0.1 runs ten times faster) and reports unscaled times.
struct RelaySettings {
    // "standard", "very" or "extremely" inverse.
    std::string curve = "standard";
    double pickup = 1.0;
    double timeMultiplier = 0.1;
    // The reach of the distance zone in ohms, resistive and reactive.
    double zoneR = 10, zoneX = 10;
    // The angle of the protected line in degrees: the resistive edge of the zone leans with it.
    double lineAngle = 75;
    // The delay of the contact that follows a binary output, both ways, in seconds.
    double followerDelay = 0.05;
    unsigned seed = 1;
    // The relative standard deviation of what the relay records about its operations.
    double noise = 0.02;
    double timeScale = 0.1;
};

// A simulated test set with a relay wired to it: an inverse-time overcurrent stage with a start and a trip
// contact, a distance zone, and a contact that follows a binary output. The relay runs on threads of its own;
// it is destroyed only after every run that drives it has ended.
class SimulatedRelayUnderTest {
public:
    // Throws std::logic_error for settings the relay cannot run with.
    explicit SimulatedRelayUnderTest(const RelaySettings& settings = {});
    ~SimulatedRelayUnderTest();
    SimulatedRelayUnderTest(const SimulatedRelayUnderTest&) = delete;
    SimulatedRelayUnderTest& operator=(const SimulatedRelayUnderTest&) = delete;

    ZemDevice::HardwareManager& getHardware();
    const RelaySettings& getSettings() const;

    // The relay's own logic: what the tests read back from it besides its contacts.
    RelayLogic& getLogic();

private:
    RelaySettings _settings;
    std::unique_ptr<ZemDevice::HardwareManager> _hardware;
    std::unique_ptr<RelayLogic> _logic;
};

// The sample project: a "Substation" with the protections "Overcurrent", "Distance" and "Contacts" and the four
// example tests below them, every test chosen.
std::unique_ptr<ZemTree::Node> buildSampleProject();

// Reads the relay's settings from the first protection of each kind below `root` (the test object) over
// `settings`; a setting whose value is in error keeps what `settings` held.
void readRelaySettings(ZemTree::Node* root, RelaySettings& settings);

// Sets one setting of the relay by its name, "<protection>.<setting>" as the sample names them, any case:
// overcurrent.pickup, overcurrent.curve, overcurrent.timeMultiplier, distance.reachR, distance.reachX,
// distance.lineAngle, contacts.delay. Returns why it was refused, or nothing.
std::string overrideRelaySetting(RelaySettings& settings, const std::string& name, const std::string& value);

// Hands the relay (and its test set) to every example test below `root`.
void attachRelay(ZemTree::Node* root, SimulatedRelayUnderTest& relay);

// The chosen tests below `root` in tree order; with filters, only those at or below one of the paths, matched
// by whole segments ("A/Tests/Pick" does not select "A/Tests/Pickup"; a trailing "/" is ignored). The filters
// that select no chosen test go to `unmatched` when it is given.
std::vector<ZemTree::ITestContainer*> collectChosenTests(ZemTree::Node* root,
                                                         const std::vector<std::string>& pathFilters = {},
                                                         std::vector<std::string>* unmatched = nullptr);

// Gives the settings named by `name` the data `value`, with the data as their source: `name` is a setting's id, for
// every test among `tests` that has such a setting, or a unit's path from the root (its hierarchical id). Returns
// how many settings took the value.
std::size_t overrideSetting(const std::vector<ZemTree::ITestContainer*>& tests, const std::string& name, double value);

// Every unit below `root` whose value out carries an error: "<path of the unit>: <error text>", in tree order.
std::vector<std::string> findValueErrors(ZemTree::Node* root);

// What keeps each example test among `tests` from running with the relay `relay`: "<path of the test>: <problem>",
// one line per fault. Without `withValueErrors` the settings in error are left to findValueErrors.
std::vector<std::string> findSettingProblems(const std::vector<ZemTree::ITestContainer*>& tests,
                                             const RelaySettings& relay, bool withValueErrors = true);
// The same over every example test below `root`, chosen or not.
std::vector<std::string> findSettingProblems(ZemTree::Node* root, const RelaySettings& relay,
                                             bool withValueErrors = true);

// Writes "sample-project.xml" and a template "<Class>.xml" per example test class into `folder`.
// Throws std::runtime_error when a file cannot be written.
void writeSampleFiles(const std::string& folder);

} // namespace ZemDemo

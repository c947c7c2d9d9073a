#include "relay/DemoRelay.h"

#include "containers/HierarchicalCollectionContainer.h"
#include "containers/HierarchicalContainer.h"
#include "containers/ProjectFile.h"
#include "containers/SettingsContainer.h"
#include "containers/TestCollectionContainer.h"
#include "core/common/ConvertionHelper.h"
#include "core/tree/IValueOut.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTreeTraversal.h"
#include "evaluation/ITestContainer.h"
#include "relay/ContactCheckTest.h"
#include "relay/ContactsProtection.h"
#include "relay/CurveUnit.h"
#include "relay/DistanceProtection.h"
#include "relay/ImpedanceZoneTest.h"
#include "relay/OvercurrentProtection.h"
#include "relay/PickupTest.h"
#include "relay/ProtectionContainer.h"
#include "relay/RelayLogic.h"
#include "relay/TripTimeTest.h"
#include "values/NumericUnit.h"
#include "values/Unit.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <stdexcept>

namespace ZemDemo {

namespace {

// Saved projects name the example classes; a program that links the library in finds them registered.
[[maybe_unused]] const bool registeredAtStart = (registerDemoTypes(), true);

// Whether `path` is `filter` or lies below it, by whole segments.
bool isPathAtOrBelow(const std::string& path, std::string filter)
{
    while (filter.size() > 1 && filter.back() == '/')
        filter.pop_back();
    if (path.compare(0, filter.size(), filter) != 0)
        return false;
    return path.size() == filter.size() || path[filter.size()] == '/';
}

template <class T> T* addFilled(ZemTree::Node* parent, std::unique_ptr<T> node)
{
    T* const added = parent->add(std::move(node));
    added->initContainer();
    return added;
}

} // namespace

void registerDemoTypes()
{
    ZemTree::NodeFactory::registerType<ZemTree::HierarchicalContainer>();
    ZemTree::NodeFactory::registerType<ProtectionContainer>();
    ZemTree::NodeFactory::registerType<OvercurrentProtection>();
    ZemTree::NodeFactory::registerType<DistanceProtection>();
    ZemTree::NodeFactory::registerType<ContactsProtection>();
    ZemTree::NodeFactory::registerType<PickupTest>();
    ZemTree::NodeFactory::registerType<TripTimeTest>();
    ZemTree::NodeFactory::registerType<ImpedanceZoneTest>();
    ZemTree::NodeFactory::registerType<ContactCheckTest>();
}

SimulatedRelayUnderTest::SimulatedRelayUnderTest(const RelaySettings& settings)
    : _settings(settings), _hardware(std::make_unique<ZemDevice::HardwareManager>()),
      _logic(std::make_unique<RelayLogic>(*_hardware, settings))
{
}

SimulatedRelayUnderTest::~SimulatedRelayUnderTest() = default;

ZemDevice::HardwareManager& SimulatedRelayUnderTest::getHardware()
{
    return *_hardware;
}

const RelaySettings& SimulatedRelayUnderTest::getSettings() const
{
    return _settings;
}

RelayLogic& SimulatedRelayUnderTest::getLogic()
{
    return *_logic;
}

std::unique_ptr<ZemTree::Node> buildSampleProject()
{
    registerDemoTypes();
    using ZemTree::LocalString;
    auto root = std::make_unique<ZemTree::HierarchicalContainer>(
        "Substation", LocalString::create("Substation", "Подстанция"), LocalString::Empty());
    root->initContainer();
    ProtectionContainer* const overcurrent = addFilled(
        root->getContainers(),
        std::make_unique<OvercurrentProtection>("Overcurrent", LocalString::create("Overcurrent protection", "МТЗ")));
    addFilled(overcurrent->getTests(),
              std::make_unique<PickupTest>("Pickup", LocalString::create("Pickup current", "Ток срабатывания")));
    addFilled(overcurrent->getTests(),
              std::make_unique<TripTimeTest>("TripTime", LocalString::create("Trip time", "Время срабатывания")));
    ProtectionContainer* const distance = addFilled(
        root->getContainers(), std::make_unique<DistanceProtection>(
                                   "Distance", LocalString::create("Distance protection", "Дистанционная защита")));
    addFilled(distance->getTests(),
              std::make_unique<ImpedanceZoneTest>("Zone1", LocalString::create("Zone 1 reach", "Граница зоны 1")));
    ProtectionContainer* const contacts =
        addFilled(root->getContainers(),
                  std::make_unique<ContactsProtection>("Contacts", LocalString::create("Contacts", "Контакты")));
    addFilled(contacts->getTests(),
              std::make_unique<ContactCheckTest>("Follower", LocalString::create("Follower contact", "Повторитель")));
    root->setIsEvaluated(true);
    return root;
}

namespace {

// The value of `unit` when it has one free of errors.
void readSetting(const ZemTree::NumericUnit* unit, double& target)
{
    if (unit != nullptr && !unit->getError())
        target = unit->getValueOut().value;
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

} // namespace

void readRelaySettings(ZemTree::Node* root, RelaySettings& settings)
{
    if (root == nullptr)
        return;
    bool hasOvercurrent = false, hasDistance = false, hasContacts = false;
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root)) {
        if (auto* overcurrent = dynamic_cast<OvercurrentProtection*>(node); overcurrent != nullptr && !hasOvercurrent) {
            hasOvercurrent = true;
            readSetting(overcurrent->getPickup(), settings.pickup);
            readSetting(overcurrent->getTimeMultiplier(), settings.timeMultiplier);
            if (const CurveUnit* curve = overcurrent->getCurve(); curve != nullptr && !curve->getError())
                settings.curve = curve->getValueOut().value;
        }
        else if (auto* distance = dynamic_cast<DistanceProtection*>(node); distance != nullptr && !hasDistance) {
            hasDistance = true;
            readSetting(distance->getReachR(), settings.zoneR);
            readSetting(distance->getReachX(), settings.zoneX);
            readSetting(distance->getLineAngle(), settings.lineAngle);
        }
        else if (auto* contacts = dynamic_cast<ContactsProtection*>(node); contacts != nullptr && !hasContacts) {
            hasContacts = true;
            readSetting(contacts->getDelay(), settings.followerDelay);
        }
    }
}

std::string overrideRelaySetting(RelaySettings& settings, const std::string& name, const std::string& value)
{
    const std::string key = lowerCase(name);
    if (key == "overcurrent.curve") {
        if (value != "standard" && value != "very" && value != "extremely")
            return "overcurrent.curve wants standard, very or extremely, not '" + value + "'";
        settings.curve = value;
        return {};
    }
    const std::pair<const char*, double*> numbers[] = {
        {"overcurrent.pickup", &settings.pickup},    {"overcurrent.timemultiplier", &settings.timeMultiplier},
        {"distance.reachr", &settings.zoneR},        {"distance.reachx", &settings.zoneX},
        {"distance.lineangle", &settings.lineAngle}, {"contacts.delay", &settings.followerDelay}};
    for (const auto& [known, target] : numbers) {
        if (key != known)
            continue;
        double number = 0.0;
        if (!Zem::fromText(value, number) || !std::isfinite(number))
            return name + " wants a finite number, not '" + value + "'";
        *target = number;
        return {};
    }
    return "the relay has no setting '" + name
           + "': use overcurrent.pickup, overcurrent.curve, overcurrent.timeMultiplier, distance.reachR, "
             "distance.reachX, distance.lineAngle or contacts.delay";
}

void attachRelay(ZemTree::Node* root, SimulatedRelayUnderTest& relay)
{
    if (root == nullptr)
        return;
    if (auto* container = dynamic_cast<ZemTree::UnitableStructureContainer*>(root))
        container->setHardware(&relay.getHardware());
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root)) {
        if (auto* test = dynamic_cast<RelayTestBase*>(node))
            test->setRelay(&relay);
    }
}

std::vector<ZemTree::ITestContainer*> collectChosenTests(ZemTree::Node* root,
                                                         const std::vector<std::string>& pathFilters,
                                                         std::vector<std::string>* unmatched)
{
    std::vector<ZemTree::ITestContainer*> tests;
    std::vector<bool> isUsed(pathFilters.size(), false);
    if (root != nullptr) {
        for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root)) {
            auto* test = dynamic_cast<ZemTree::ITestContainer*>(node);
            if (test == nullptr)
                continue;
            const Zem::Nullable<bool> isEvaluated = test->getIsEvaluated();
            if (!isEvaluated.hasValue() || !isEvaluated.getValue())
                continue;
            bool isMatching = pathFilters.empty();
            const std::string path = node->getHierarchicalId();
            for (std::size_t i = 0; i < pathFilters.size(); ++i) {
                if (isPathAtOrBelow(path, pathFilters[i])) {
                    isMatching = true;
                    isUsed[i] = true;
                }
            }
            if (isMatching)
                tests.push_back(test);
        }
    }
    if (unmatched != nullptr) {
        for (std::size_t i = 0; i < pathFilters.size(); ++i)
            if (!isUsed[i])
                unmatched->push_back(pathFilters[i]);
    }
    return tests;
}

std::size_t overrideSetting(const std::vector<ZemTree::ITestContainer*>& tests, const std::string& name, double value)
{
    std::size_t count = 0;
    for (ZemTree::ITestContainer* test : tests) {
        const auto* example = dynamic_cast<const RelayTestBase*>(test);
        if (example == nullptr || example->getSettings() == nullptr)
            continue;
        for (ZemTree::Node* child : *example->getSettings()) {
            auto* setting = dynamic_cast<ZemTree::Unit<double>*>(child);
            if (setting == nullptr || (child->getId() != name && child->getHierarchicalId() != name))
                continue;
            setting->setIsFormulaSource(false);
            setting->setData(value);
            ++count;
        }
    }
    return count;
}

std::vector<std::string> findValueErrors(ZemTree::Node* root)
{
    std::vector<std::string> lines;
    if (root == nullptr)
        return lines;
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root)) {
        const auto* value = dynamic_cast<const ZemTree::IValueOut*>(node);
        if (value == nullptr)
            continue;
        if (const Zem::ErrorPointer& error = value->getError())
            lines.push_back(node->getHierarchicalId() + ": " + error->what());
    }
    return lines;
}

std::vector<std::string> findSettingProblems(const std::vector<ZemTree::ITestContainer*>& tests,
                                             const RelaySettings& relay, bool withValueErrors)
{
    std::vector<std::string> lines;
    for (ZemTree::ITestContainer* test : tests) {
        const auto* example = dynamic_cast<const RelayTestBase*>(test);
        if (example == nullptr)
            continue;
        for (const std::string& problem : example->checkSettings(relay, withValueErrors))
            lines.push_back(example->getHierarchicalId() + ": " + problem);
    }
    return lines;
}

std::vector<std::string> findSettingProblems(ZemTree::Node* root, const RelaySettings& relay, bool withValueErrors)
{
    std::vector<ZemTree::ITestContainer*> tests;
    if (root != nullptr) {
        for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root))
            if (auto* test = dynamic_cast<ZemTree::ITestContainer*>(node))
                tests.push_back(test);
    }
    return findSettingProblems(tests, relay, withValueErrors);
}

void writeSampleFiles(const std::string& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw std::runtime_error("Cannot create " + folder + ": " + error.message());
    const std::filesystem::path base(folder);
    ZemTree::ProjectFile files;
    const std::unique_ptr<ZemTree::Node> project = buildSampleProject();
    files.save(*project, (base / "sample-project.xml").string());

    const auto saveTemplate = [&files, &base](std::unique_ptr<ZemTree::Node> node, const std::string& name) {
        if (auto* container = dynamic_cast<ZemTree::UnitableStructureContainer*>(node.get()))
            container->initContainer();
        files.saveTemplate(*node, (base / (name + ".xml")).string());
    };
    saveTemplate(std::make_unique<PickupTest>(), "PickupTest");
    saveTemplate(std::make_unique<TripTimeTest>(), "TripTimeTest");
    saveTemplate(std::make_unique<ImpedanceZoneTest>(), "ImpedanceZoneTest");
    saveTemplate(std::make_unique<ContactCheckTest>(), "ContactCheckTest");
}

} // namespace ZemDemo

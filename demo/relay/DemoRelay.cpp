#include "relay/DemoRelay.h"

#include "containers/HierarchicalCollectionContainer.h"
#include "containers/HierarchicalContainer.h"
#include "containers/ProjectFile.h"
#include "containers/TestCollectionContainer.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTreeTraversal.h"
#include "evaluation/ITestContainer.h"
#include "relay/ContactCheckTest.h"
#include "relay/ImpedanceZoneTest.h"
#include "relay/PickupTest.h"
#include "relay/ProtectionContainer.h"
#include "relay/RelayLogic.h"
#include "relay/TripTimeTest.h"

#include <filesystem>
#include <stdexcept>

namespace ZemDemo {

namespace {

// Saved projects name the example classes; a program that links the library in finds them registered.
[[maybe_unused]] const bool registeredAtStart = (registerDemoTypes(), true);

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
    const auto addProtection = [&root](const std::string& id, const LocalString& description) {
        return addFilled(root->getContainers(), std::make_unique<ProtectionContainer>(id, description));
    };

    ProtectionContainer* const overcurrent =
        addProtection("Overcurrent", LocalString::create("Overcurrent protection", "МТЗ"));
    addFilled(overcurrent->getTests(),
              std::make_unique<PickupTest>("Pickup", LocalString::create("Pickup current", "Ток срабатывания")));
    addFilled(overcurrent->getTests(),
              std::make_unique<TripTimeTest>("TripTime", LocalString::create("Trip time", "Время срабатывания")));
    ProtectionContainer* const distance =
        addProtection("Distance", LocalString::create("Distance protection", "Дистанционная защита"));
    addFilled(distance->getTests(),
              std::make_unique<ImpedanceZoneTest>("Zone1", LocalString::create("Zone 1 reach", "Граница зоны 1")));
    ProtectionContainer* const contacts = addProtection("Contacts", LocalString::create("Contacts", "Контакты"));
    addFilled(contacts->getTests(),
              std::make_unique<ContactCheckTest>("Follower", LocalString::create("Follower contact", "Повторитель")));
    root->setIsEvaluated(true);
    return root;
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
                                                         const std::vector<std::string>& pathFilters)
{
    std::vector<ZemTree::ITestContainer*> tests;
    if (root == nullptr)
        return tests;
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(root)) {
        auto* test = dynamic_cast<ZemTree::ITestContainer*>(node);
        if (test == nullptr)
            continue;
        const Zem::Nullable<bool> isEvaluated = test->getIsEvaluated();
        if (!isEvaluated.hasValue() || !isEvaluated.getValue())
            continue;
        bool isMatching = pathFilters.empty();
        const std::string path = node->getHierarchicalId();
        for (const std::string& filter : pathFilters)
            isMatching = isMatching || path.compare(0, filter.size(), filter) == 0;
        if (isMatching)
            tests.push_back(test);
    }
    return tests;
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

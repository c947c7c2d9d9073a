// The classes a file can name are known before the first file is read. This file is also built into a program
// linked against the static archive, so it names those classes only as text: naming one in code would make the
// linker keep its object and hide a missing registration.
#include "containers/ProjectFile.h"
#include "containers/ZemTreeRelayTreeResources.h"
#include "core/common/TypeHelper.h"
#include "core/tree/Node.h"
#include "core/tree/NodeFactory.h"
#include "results/graph/GraphManagerFactory.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

using ZemTree::NodeFactory;

const char* const relayNodeTypes[] = {
    "ZemTree::UniversalGeneralContainer",
    "ZemTree::HierarchicalContainer",
    "ZemTree::ContactUnit",
    "ZemTree::HardwareInContactUnit",
    "ZemTree::HardwareOutContactCollectionUnit",
    "ZemTree::HardwareOutContactUnit",
    "ZemTree::ResultMultiGraphUnit",
    "ZemTree::ResultMultiNumericUnit",
    "ZemTree::ResultMultiStringUnit",
};

const char* const coreNodeTypes[] = {"ZemTree::ActionUnit", "ZemTree::StringUnit", "ZemTree::EnumLimiter"};

TEST(LibraryStartup, EveryFileNameableClassIsRegisteredBeforeAnyFileIsRead)
{
    // No ProjectFile exists yet: what is there now came from the loader.
    for (const char* name : relayNodeTypes) {
        SCOPED_TRACE(name);
        std::unique_ptr<ZemTree::Node> node = NodeFactory::create(name);
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(Zem::TypeHelper::getTypeName(typeid(*node)), name);
    }
    for (const char* name : coreNodeTypes) {
        SCOPED_TRACE(name);
        EXPECT_NE(NodeFactory::create(name), nullptr);
    }
    for (const char* name : {"ZemTree::GraphTimeManager", "ZemTree::GraphZPhiManager"}) {
        SCOPED_TRACE(name);
        EXPECT_NE(ZemTree::GraphManagerFactory::getInstance().create(name), nullptr);
    }
}

TEST(LibraryStartup, ProjectNamingALibraryClassLoads)
{
    char folder[] = "/tmp/ztr-startup-XXXXXX";
    ASSERT_NE(::mkdtemp(folder), nullptr);
    const std::string path = std::string(folder) + "/project.xml";
    std::ofstream(path) << "<Project><Node Id='Station' Class='ZemTree::HierarchicalContainer'/></Project>";

    ZemTree::ProjectFile file;
    std::unique_ptr<ZemTree::Node> root = file.load(path);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(Zem::TypeHelper::getTypeName(typeid(*root)), "ZemTree::HierarchicalContainer");
    EXPECT_EQ(root->getId(), "Station");
    std::remove(path.c_str());
    ::rmdir(folder);
}

struct LateRegistered : ZemTree::Node {};

TEST(LibraryStartup, RepeatedRegistrationKeepsTheFirstMaker)
{
    NodeFactory::NodeMap& map = NodeFactory::_getNodeMap();
    const std::string key = Zem::TypeHelper::getTypeName(typeid(LateRegistered));
    map[key] = [] { return std::make_unique<ZemTree::Node>("first"); };
    const std::size_t size = map.size();

    EXPECT_TRUE(NodeFactory::registerType<LateRegistered>());
    EXPECT_EQ(NodeFactory::create(key)->getId(), "first");

    ZemTreeRelayTreeResources::registerTypes();
    ZemTreeRelayTreeResources::registerTypes();
    EXPECT_EQ(map.size(), size);
    map.erase(key);
}

} // namespace

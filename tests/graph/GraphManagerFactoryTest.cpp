#include "results/graph/GraphManagerFactory.h"

#include "core/common/TypeHelper.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::GraphManagerFactory;
using ZemTree::GraphTimeManager;
using ZemTree::GraphZPhiManager;

TEST(GraphManagerFactoryTest, ManagersOfTheLibraryAreRegisteredAtLoad)
{
    auto& factory = GraphManagerFactory::getInstance();
    EXPECT_EQ(&factory, &GraphManagerFactory::getInstance());

    const auto time = factory.create(Zem::TypeHelper::getTypeName(typeid(GraphTimeManager)));
    const auto* made = dynamic_cast<GraphTimeManager*>(time.get());
    ASSERT_NE(made, nullptr);
    // The factory's manager is the one of GraphTimeManager("", nullptr, nullptr).
    EXPECT_EQ(made->getDescription(), "");
    EXPECT_EQ(made->getMeasure(), nullptr);
    EXPECT_EQ(made->getTolerance(), nullptr);
    EXPECT_EQ(made->getFormula(), "{T}");
    EXPECT_EQ(made->getIOperate(), 1.0);
    EXPECT_EQ(made->getTOperate(), 1.0);

    const auto zPhi = factory.create(Zem::TypeHelper::getTypeName(typeid(GraphZPhiManager)));
    EXPECT_NE(dynamic_cast<GraphZPhiManager*>(zPhi.get()), nullptr);
}

TEST(GraphManagerFactoryTest, SecondRegistrationChangesNothing)
{
    auto& factory = GraphManagerFactory::getInstance();
    const std::size_t count = factory.getTypeNames().size();
    EXPECT_TRUE(factory.registerType<GraphTimeManager>());
    EXPECT_TRUE(factory.registerType<GraphTimeManager>());
    EXPECT_EQ(factory.getTypeNames().size(), count);
}

} // namespace

#include "results/graph/GraphManagerFactory.h"

#include "core/common/TypeHelper.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"

#include <gtest/gtest.h>

namespace {

using ZemTree::GraphManagerFactory;
using ZemTree::GraphTimeManager;
using ZemTree::GraphZPhiManager;

TEST(GraphManagerFactoryTest, ManagersOfTheLibraryAreRegisteredOnce)
{
    auto& factory = GraphManagerFactory::getInstance();
    const auto time = factory.create(Zem::TypeHelper::getTypeName(typeid(GraphTimeManager)));
    const auto* made = dynamic_cast<GraphTimeManager*>(time.get());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getFormula(), "{T}");
    const auto zPhi = factory.create(Zem::TypeHelper::getTypeName(typeid(GraphZPhiManager)));
    EXPECT_NE(dynamic_cast<GraphZPhiManager*>(zPhi.get()), nullptr);

    const std::size_t count = factory.getTypeNames().size();
    EXPECT_TRUE(factory.registerType<GraphTimeManager>());
    EXPECT_EQ(factory.getTypeNames().size(), count);
}

} // namespace

#include "containers/ZemTreeRelayTreeResources.h"

#include "contacts/ContactUnit.h"
#include "contacts/HardwareInContactUnit.h"
#include "contacts/HardwareOutContactCollectionUnit.h"
#include "contacts/HardwareOutContactUnit.h"
#include "containers/HierarchicalContainer.h"
#include "containers/UniversalGeneralContainer.h"
#include "core/tree/NodeFactory.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/graph/GraphManagerFactory.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"
#include "values/BooleanUnit.h"
#include "values/NumericUnit.h"

namespace ZemTreeRelayTreeResources {

namespace {

bool registerOnce()
{
    using ZemTree::NodeFactory;
    NodeFactory::registerType<ZemTree::UniversalGeneralContainer>();
    NodeFactory::registerType<ZemTree::HierarchicalContainer>();
    ZemTree::GraphManagerFactory::getInstance().registerType<ZemTree::GraphTimeManager>();
    ZemTree::GraphManagerFactory::getInstance().registerType<ZemTree::GraphZPhiManager>();
    NodeFactory::registerType<ZemTree::ContactUnit>();
    NodeFactory::registerType<ZemTree::HardwareInContactUnit>();
    NodeFactory::registerType<ZemTree::HardwareOutContactCollectionUnit>();
    NodeFactory::registerType<ZemTree::HardwareOutContactUnit>();
    NodeFactory::registerType<ZemTree::ResultMultiGraphUnit>();
    NodeFactory::registerType<ZemTree::ResultMultiNumericUnit>();
    NodeFactory::registerType<ZemTree::ResultMultiStringUnit>();
    NodeFactory::registerType<ZemTree::NumericUnit>();
    NodeFactory::registerType<ZemTree::BooleanUnit>();
    return true;
}

[[maybe_unused]] const bool registeredAtLoad = (registerTypes(), true);

} // namespace

void registerTypes()
{
    // A function-local static makes later calls, and calls racing with the loader's, cheap and safe.
    static const bool registered = registerOnce();
    (void)registered;
}

} // namespace ZemTreeRelayTreeResources

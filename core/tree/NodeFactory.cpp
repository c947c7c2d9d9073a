#include "core/tree/NodeFactory.h"

#include "core/tree/ActionUnit.h"
#include "core/tree/BooleanProperty.h"
#include "core/tree/EnumItem.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/Node.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/SeparateUnit.h"
#include "core/tree/StringProperty.h"
#include "core/tree/StringUnit.h"

namespace ZemTree {

namespace {

template <class T> void addMaker(NodeFactory::NodeMap& map)
{
    map.emplace(Zem::TypeHelper::getTypeName(typeid(T)), [] { return std::unique_ptr<Node>(new T()); });
}

// The core's own nodes that files name. They are put in with the map itself rather than from static
// initialisers of their translation units, so that a statically linked program that never names these classes
// in code still reads them from a file.
NodeFactory::NodeMap makeCoreMap()
{
    NodeFactory::NodeMap map;
    addMaker<ActionUnit>(map);
    addMaker<BooleanProperty>(map);
    addMaker<EnumItem>(map);
    addMaker<EnumLimiter>(map);
    addMaker<MeasureProperty>(map);
    addMaker<NumericProperty>(map);
    addMaker<SeparateUnit>(map);
    addMaker<StringProperty>(map);
    addMaker<StringUnit>(map);
    return map;
}

} // namespace

NodeFactory::NodeMap& NodeFactory::_getNodeMap()
{
    static NodeMap map = makeCoreMap();
    return map;
}

std::unique_ptr<Node> NodeFactory::create(const std::string& typeName)
{
    const NodeMap& map = _getNodeMap();
    const auto found = map.find(typeName);
    if (found == map.end() || !found->second)
        return nullptr;
    return found->second();
}

bool NodeFactory::isRegistered(const std::string& typeName)
{
    return _getNodeMap().count(typeName) != 0;
}

} // namespace ZemTree

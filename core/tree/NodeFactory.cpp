#include "core/tree/NodeFactory.h"

#include "core/tree/Node.h"

namespace ZemTree {

NodeFactory::NodeMap& NodeFactory::_getNodeMap()
{
    static NodeMap map;
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

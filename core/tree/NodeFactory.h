#pragma once

#include "core/common/TypeHelper.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <typeinfo>

namespace ZemTree {

class Node;

// Makes nodes by their type name, so that a reader can rebuild a node from the `Class` of its element.
// Libraries register their node types from static initialisers, before any file is read.
class NodeFactory {
public:
    using Maker = std::function<std::unique_ptr<Node>()>;
    using NodeMap = std::map<std::string, Maker>;

    NodeFactory() = delete;

    // Registers T, default-constructible, under Zem::TypeHelper::getTypeName(typeid(T)). The first registration
    // of a name wins; later ones leave it as it stands. Returns true in both cases, so that the result can
    // initialise a static flag.
    template <class T> static bool registerType()
    {
        NodeMap& map = _getNodeMap();
        const std::string key = Zem::TypeHelper::getTypeName(typeid(T));
        if (map.find(key) == map.end())
            map.emplace(key, [] { return std::unique_ptr<Node>(new T()); });
        return true;
    }

    // A new node of that type, or null when the name is not registered.
    static std::unique_ptr<Node> create(const std::string& typeName);
    static bool isRegistered(const std::string& typeName);

    // The registered makers. Function-local, so it exists before the first static registration reaches it.
    static NodeMap& _getNodeMap();
};

} // namespace ZemTree

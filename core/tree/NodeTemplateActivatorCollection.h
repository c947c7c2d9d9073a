#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace ZemTree {

class Node;
class NodeTemplateActivator;

// The templates a program knows, by name. It owns its activators; containers built from a template keep a
// plain pointer to one, so an activator lives as long as the collection and is never replaced.
//
// Lookup rule: a name matches the activator of that exact name; failing that, the name with any folder and
// extension dropped ("dir/Distance.xml" finds "Distance"). System and User loads share the same templates.
// When both the node and the template's root carry a class name, they must be the same type.
class NodeTemplateActivatorCollection {
public:
    NodeTemplateActivatorCollection();
    ~NodeTemplateActivatorCollection();
    NodeTemplateActivatorCollection(const NodeTemplateActivatorCollection&) = delete;
    NodeTemplateActivatorCollection& operator=(const NodeTemplateActivatorCollection&) = delete;

    // The program's own collection, the one containers look their templates up in. It lives until the program
    // ends, so the activators that containers point to never go away before them.
    static NodeTemplateActivatorCollection& instance();

    // Adds every regular "*.xml" file directly in `folder`, named after the file without extension. Names the
    // collection already has are skipped. Returns how many were added; a missing folder adds none.
    std::size_t loadFolder(const std::string& folder);
    // Adds a template. Throws std::logic_error when the name is empty or already taken.
    NodeTemplateActivator* add(const std::string& name, const std::string& path);

    // The activator named `name` (see the lookup rule), or null.
    NodeTemplateActivator* find(const std::string& name) const;
    NodeTemplateActivator* getAssociatedSystemActivator(Node* node, const std::string& name) const;
    NodeTemplateActivator* getAssociatedUserActivator(Node* node, const std::string& name) const;

    std::size_t size() const { return _activators.size(); }

private:
    NodeTemplateActivator* _findFor(const Node* node, const std::string& name) const;

    std::map<std::string, std::unique_ptr<NodeTemplateActivator>> _activators;
};

} // namespace ZemTree

#pragma once

#include <ctime>
#include <memory>
#include <string>

namespace xmlpp {
class DomParser;
class Element;
} // namespace xmlpp

namespace ZemTree {

class Node;
class NodeTemplateActivatorCollection;
struct SerializationMode;

// One template file: the saved structure a container is built from.
//
// File form: a document whose root element is `Template` holding one child, the node's element as
// Node::getXml writes it with kind System. A document whose root is itself a node element is read too.
class NodeTemplateActivator {
public:
    // The root element of a template file.
    static const char* const TemplateElementName;

    // `owner` may be null: a placeholder only remembers a path that no template was found for.
    NodeTemplateActivator(NodeTemplateActivatorCollection* owner, const std::string& name, const std::string& path);
    NodeTemplateActivator(const NodeTemplateActivator&) = delete;
    NodeTemplateActivator& operator=(const NodeTemplateActivator&) = delete;

    NodeTemplateActivatorCollection* getOwner() const { return _owner; }
    const std::string& getName() const { return _name; }
    const std::string& getPath() const { return _path; }

    // Reads the template file and lets `node` read its structure from it with `mode`. The file is parsed without
    // DTD, entity substitution or network access. The parsed file is kept for the next fill while the file's
    // size and modification time stay the same, so that a project of many alike tests reads it once. Like all
    // reading of trees, filling belongs to one thread at a time. A null node, a missing, unreadable or malformed file,
    // or a document that is no template is added to `mode.problems` and gives false with the node untouched; what the
    // node itself meets while reading goes to the same list, and an exception it throws ends the reading with
    // false. True when the node has read the template.
    bool fill(Node* node, const SerializationMode& mode) const;

    // The type name in the template's `Class`, or "" when the file cannot be read or its node names no class.
    // Read once and kept.
    const std::string& getRootClassName() const;

    // Saves `node` and its subtree with kind System as a template file at `path`. Throws std::logic_error for a
    // null node and std::runtime_error when the file cannot be written.
    static void saveTemplate(const Node* node, const std::string& path);

    ~NodeTemplateActivator();

private:
    // The parsed template, from the cache when the file has not changed, and its node element in `element`;
    // null with `error` set when it cannot be read. The caller holds the document while it reads the element,
    // so that a nested fill of the same template cannot drop it.
    std::shared_ptr<xmlpp::DomParser> _parsed(xmlpp::Element*& element, std::string& error) const;

    NodeTemplateActivatorCollection* _owner;
    std::string _name;
    std::string _path;
    mutable bool _isRootClassNameRead = false;
    mutable std::string _rootClassName;
    mutable std::shared_ptr<xmlpp::DomParser> _parser;
    mutable xmlpp::Element* _parsedElement = nullptr;
    mutable std::time_t _parsedTime = 0;
    mutable long _parsedTimeNanoseconds = 0;
    mutable long long _parsedSize = -1;
};

} // namespace ZemTree

#include "core/tree/NodeTemplateActivator.h"

#include "core/common/XmlFile.h"
#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"

#include <stdexcept>
#include <sys/stat.h>

namespace ZemTree {

const char* const NodeTemplateActivator::TemplateElementName = "Template";

namespace {

void report(const SerializationMode& mode, const std::string& message)
{
    if (mode.problems != nullptr)
        mode.problems->push_back(message);
}

// Parses the template at `path` into `parser` and returns the node element, or null with `error` set.
xmlpp::Element* parseTemplate(const std::string& path, xmlpp::DomParser& parser, std::string& error)
{
    try {
        Zem::XmlFile::parse(path, parser, "template file");
    }
    catch (const std::runtime_error& exception) {
        error = exception.what();
        return nullptr;
    }

    xmlpp::Document* const document = parser ? parser.get_document() : nullptr;
    xmlpp::Element* const root = document != nullptr ? document->get_root_node() : nullptr;
    if (root != nullptr && root->get_name() == Node::XmlElementName)
        return root;
    if (root != nullptr && root->get_name() == NodeTemplateActivator::TemplateElementName) {
        for (xmlpp::Node* child : root->get_children(Node::XmlElementName)) {
            if (auto* element = dynamic_cast<xmlpp::Element*>(child))
                return element;
        }
    }
    error = "The file '" + path + "' holds no template";
    return nullptr;
}

} // namespace

NodeTemplateActivator::NodeTemplateActivator(NodeTemplateActivatorCollection* owner, const std::string& name,
                                             const std::string& path)
    : _owner(owner), _name(name), _path(path)
{
}

NodeTemplateActivator::~NodeTemplateActivator() = default;

std::shared_ptr<xmlpp::DomParser> NodeTemplateActivator::_parsed(xmlpp::Element*& element, std::string& error) const
{
    struct stat status {};
    const bool exists = ::stat(_path.c_str(), &status) == 0;
    if (exists && _parser && status.st_size == _parsedSize && status.st_mtim.tv_sec == _parsedTime
        && status.st_mtim.tv_nsec == _parsedTimeNanoseconds) {
        element = _parsedElement;
        return _parser;
    }
    auto parser = std::make_shared<xmlpp::DomParser>();
    element = parseTemplate(_path, *parser, error);
    if (element == nullptr) {
        _parser.reset();
        return nullptr;
    }
    _parser = parser;
    _parsedElement = element;
    // A file that vanished after it was read is read again next time.
    _parsedSize = exists ? static_cast<long long>(status.st_size) : -1;
    _parsedTime = status.st_mtim.tv_sec;
    _parsedTimeNanoseconds = status.st_mtim.tv_nsec;
    return parser;
}

bool NodeTemplateActivator::fill(Node* node, const SerializationMode& mode) const
{
    if (node == nullptr) {
        report(mode, "No node to fill from the template '" + _path + "'");
        return false;
    }
    std::string error;
    xmlpp::Element* element = nullptr;
    const std::shared_ptr<xmlpp::DomParser> parser = _parsed(element, error);
    if (parser == nullptr) {
        report(mode, error);
        return false;
    }
    try {
        node->setXml(element, mode);
    }
    catch (const std::exception& exception) {
        report(mode, "The template '" + _path + "' cannot be applied: " + exception.what());
        return false;
    }
    return true;
}

const std::string& NodeTemplateActivator::getRootClassName() const
{
    if (!_isRootClassNameRead) {
        _isRootClassNameRead = true;
        xmlpp::DomParser parser;
        std::string error;
        if (const xmlpp::Element* element = parseTemplate(_path, parser, error)) {
            if (const xmlpp::Attribute* className = element->get_attribute("Class"))
                _rootClassName = className->get_value();
        }
    }
    return _rootClassName;
}

void NodeTemplateActivator::saveTemplate(const Node* node, const std::string& path)
{
    if (node == nullptr)
        throw std::logic_error("No node to save as a template");
    xmlpp::Document document;
    xmlpp::Element* const root = document.create_root_node(TemplateElementName);
    SerializationMode mode;
    mode.kind = SerializationMode::System;
    node->getXml(root, mode);
    // Written without added blanks, as projects are: a unit's data is the first child node of its `Value`.
    Zem::XmlFile::writeAtomically(path, Zem::XmlFile::toText(document, false), "template");
}

} // namespace ZemTree

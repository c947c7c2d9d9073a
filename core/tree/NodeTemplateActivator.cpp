#include "core/tree/NodeTemplateActivator.h"

#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"

#include <libxml/globals.h>
#include <libxml/xmlerror.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace ZemTree {

const char* const NodeTemplateActivator::TemplateElementName = "Template";

namespace {

// Templates are small; anything larger is no template and is not read into memory.
const std::streamoff maxTemplateSize = 64 * 1024 * 1024;

void ignoreXmlMessage(void*, const char*, ...) {}

// libxml2 prints parse and write errors on stderr besides handing them to libxml++, which puts them into its
// exception. The library keeps no log, so the printing is off while one template is parsed or written. The
// handler is per thread in libxml2, so other threads keep theirs.
class QuietXmlErrors {
public:
    QuietXmlErrors() : _handler(xmlGenericError), _context(xmlGenericErrorContext)
    {
        xmlSetGenericErrorFunc(nullptr, ignoreXmlMessage);
    }
    ~QuietXmlErrors() { xmlSetGenericErrorFunc(_context, _handler); }
    QuietXmlErrors(const QuietXmlErrors&) = delete;
    QuietXmlErrors& operator=(const QuietXmlErrors&) = delete;

private:
    xmlGenericErrorFunc _handler;
    void* _context;
};

void report(const SerializationMode& mode, const std::string& message)
{
    if (mode.problems != nullptr)
        mode.problems->push_back(message);
}

// Parses the template at `path` into `parser` and returns the node element, or null with `error` set.
xmlpp::Element* parseTemplate(const std::string& path, xmlpp::DomParser& parser, std::string& error)
{
    // Only a regular file is opened: a pipe or a device could block the reader or never end.
    std::error_code fileError;
    if (!std::filesystem::is_regular_file(path, fileError)) {
        error = "The template file '" + path + "' cannot be opened";
        return nullptr;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "The template file '" + path + "' cannot be opened";
        return nullptr;
    }
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size < 0 || size > maxTemplateSize) {
        error = "The template file '" + path + "' cannot be read";
        return nullptr;
    }
    file.seekg(0, std::ios::beg);
    const std::string contents((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (contents.empty()) {
        error = "The template file '" + path + "' is empty";
        return nullptr;
    }

    // A template is data from disk. The parser keeps libxml++'s defaults: no DTD is loaded or validated and no
    // entity is substituted, so nothing outside the file is fetched. Parsing from memory leaves libxml2 no file
    // name to resolve against.
    try {
        const QuietXmlErrors quiet;
        parser.parse_memory_raw(reinterpret_cast<const unsigned char*>(contents.data()), contents.size());
    }
    catch (const std::exception& exception) {
        error = "The template file '" + path + "' is not well-formed XML: " + exception.what();
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

bool NodeTemplateActivator::fill(Node* node, const SerializationMode& mode) const
{
    if (node == nullptr) {
        report(mode, "No node to fill from the template '" + _path + "'");
        return false;
    }
    xmlpp::DomParser parser;
    std::string error;
    xmlpp::Element* const element = parseTemplate(_path, parser, error);
    if (element == nullptr) {
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
    try {
        const QuietXmlErrors quiet;
        document.write_to_file_formatted(path, "UTF-8");
    }
    catch (const std::exception& exception) {
        throw std::runtime_error("The template '" + path + "' cannot be written: " + exception.what());
    }
}

} // namespace ZemTree

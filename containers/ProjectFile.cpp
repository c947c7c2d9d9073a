#include "containers/ProjectFile.h"

#include "containers/TestableContainer.h"
#include "containers/ZemTreeRelayTreeResources.h"
#include "core/common/TypeHelper.h"
#include "core/common/XmlFile.h"
#include "core/common/XmlInclude.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/ITemplateActivatorContainer.h"
#include "core/tree/Node.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodePathHelper.h"
#include "core/tree/NodeTemplateActivator.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/NodeTreeTraversal.h"
#include "core/tree/SerializationMode.h"

// dict.h needs the types of tree.h first.
// clang-format off
#include <libxml/tree.h>
#include <libxml/dict.h>
// clang-format on

#include <cstdint>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <typeinfo>

namespace ZemTree {

namespace fs = std::filesystem;

const char* const ProjectFile::ProjectElementName = "Project";
const char* const ProjectFile::ReportElementName = "Report";

namespace {

const char* const templateElementName = "Template";

// Parses the file at `path` into `parser` and returns the node element it holds. Throws std::runtime_error.
xmlpp::Element* parseProject(const std::string& path, xmlpp::DomParser& parser)
{
    Zem::XmlFile::parse(path, parser, "project");

    xmlpp::Document* const document = parser ? parser.get_document() : nullptr;
    xmlpp::Element* const root = document != nullptr ? document->get_root_node() : nullptr;
    if (root != nullptr && root->get_name() == Node::XmlElementName)
        return root;
    if (root != nullptr
        && (root->get_name() == ProjectFile::ProjectElementName || root->get_name() == templateElementName)) {
        for (xmlpp::Node* child : root->get_children(Node::XmlElementName)) {
            if (auto* element = dynamic_cast<xmlpp::Element*>(child))
                return element;
        }
    }
    throw std::runtime_error("The file '" + path + "' holds no project");
}

std::string className(const xmlpp::Element* element)
{
    const xmlpp::Attribute* const attribute = element->get_attribute("Class");
    return attribute != nullptr ? std::string(attribute->get_value()) : std::string();
}

void writeTree(const Node& root, const std::string& path, const char* rootElement, std::uint8_t kind, const char* what)
{
    xmlpp::Document document;
    // Element and attribute names are few and repeat on every node: a dictionary keeps one copy of each instead
    // of a block per use, which makes building and freeing a large document much cheaper.
    document.cobj()->dict = xmlDictCreate();
    xmlpp::Element* const element = document.create_root_node(rootElement);
    SerializationMode mode;
    mode.kind = kind;
    root.getXml(element, mode);
    Zem::XmlFile::writeAtomically(path, Zem::XmlFile::toText(document, false), what);
}

// The pictures a report names in its `Graph` attributes. Only bare names of PNG files count, so that a report
// from elsewhere can never point the clean-up below outside the picture folder.
std::set<std::string> picturesNamedBy(xmlpp::Element* root)
{
    std::set<std::string> names;
    if (root == nullptr)
        return names;
    for (xmlpp::Node* node : root->find("//@Graph")) {
        const auto* attribute = dynamic_cast<const xmlpp::Attribute*>(node);
        const std::string name = attribute != nullptr ? std::string(attribute->get_value()) : std::string();
        if (name.size() > 4 && name.compare(name.size() - 4, 4, ".png") == 0 && fs::path(name).filename() == name)
            names.insert(name);
    }
    return names;
}

std::set<std::string> picturesOfReportFile(const std::string& path)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return {};
    try {
        xmlpp::DomParser parser;
        Zem::XmlFile::parse(path, parser, "report");
        return picturesNamedBy(parser.get_document()->get_root_node());
    }
    catch (const std::exception&) {
        // A report that cannot be read names nothing to clean up; it is replaced all the same.
        return {};
    }
}

} // namespace

ProjectFile::ProjectFile(const std::string& templateFolder) : _templateFolder(templateFolder)
{
    ZemTreeRelayTreeResources::registerTypes();
}

std::unique_ptr<Node> ProjectFile::load(const std::string& path)
{
    xmlpp::DomParser parser;
    xmlpp::Element* const element = parseProject(path, parser);
    const std::string rootClass = className(element);
    if (rootClass.empty())
        throw std::runtime_error("The project '" + path + "' names no class for its root");
    std::unique_ptr<Node> root;
    try {
        root = NodeFactory::create(rootClass);
    }
    catch (const std::exception& exception) {
        throw std::runtime_error("The project '" + path + "' cannot make its root of the class '" + rootClass
                                 + "': " + exception.what());
    }
    if (!root)
        throw std::runtime_error("The project '" + path + "' has a root of the unknown class '" + rootClass + "'");

    _loadTemplates();
    SerializationMode mode;
    mode.kind = SerializationMode::User;
    mode.problems = &_problems;
    try {
        const TestableContainer::StateUpdateBatch batch(root.get());
        root->setXml(element, mode);
    }
    catch (const std::exception& exception) {
        throw std::runtime_error("The project '" + path + "' cannot be read: " + exception.what());
    }
    _noteMissingTemplates(*root);
    return root;
}

void ProjectFile::read(Node& root, const std::string& path)
{
    xmlpp::DomParser parser;
    xmlpp::Element* const element = parseProject(path, parser);
    const std::string rootClass = className(element);
    const std::string ownClass = Zem::TypeHelper::getTypeName(typeid(root));
    if (!rootClass.empty() && rootClass != ownClass)
        throw std::runtime_error("The project '" + path + "' holds a root of the class '" + rootClass + "', not '"
                                 + ownClass + "'");

    _loadTemplates();
    SerializationMode mode;
    mode.kind = SerializationMode::User;
    mode.problems = &_problems;
    try {
        const TestableContainer::StateUpdateBatch batch(&root);
        root.setXml(element, mode);
    }
    catch (const std::exception& exception) {
        throw std::runtime_error("The project '" + path + "' cannot be read: " + exception.what());
    }
    _noteMissingTemplates(root);
}

// A container whose template was not found holds a placeholder that only keeps the name for the next save.
// The tree is usable, but its structure came from the project alone, which the user should hear of.
void ProjectFile::_noteMissingTemplates(Node& root)
{
    for (Node* node : NodeTreeTraversal(&root)) {
        auto* container = dynamic_cast<ITemplateActivatorContainer*>(node);
        const NodeTemplateActivator* activator = container ? container->getTemplateActivator() : nullptr;
        if (activator == nullptr || activator->getOwner() != nullptr || !activator->getName().empty())
            continue;
        const std::string where =
            node == &root ? std::string("the root") : "'" + NodePathHelper::getPath(&root, node) + "'";
        _problems.push_back("The template '" + activator->getPath() + "' of " + where
                            + " is not in the template folder; its saved values are read and the name is kept");
    }
}

void ProjectFile::save(const Node& root, const std::string& path) const
{
    writeTree(root, path, ProjectElementName, SerializationMode::User, "project");
}

void ProjectFile::saveTemplate(const Node& root, const std::string& path) const
{
    writeTree(root, path, templateElementName, SerializationMode::System, "template");
}

std::string ProjectFile::writeReport(const Node& root, const std::string& folder, const std::string& fileName) const
{
    const std::string path = (fs::path(folder) / fileName).string();
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw std::runtime_error("The report '" + path + "' cannot be written: " + error.message());

    const std::set<std::string> oldPictures = picturesOfReportFile(path);
    xmlpp::Document document;
    xmlpp::Element* const element = document.create_root_node(ReportElementName);
    DisplayXmlParameters parameters(folder);
    root.getDisplayXml(parameters, element);
    Zem::XmlFile::writeAtomically(path, Zem::XmlFile::toText(document, true), "report");

    // New pictures never take an existing file's name, so the report that was replaced leaves its own behind.
    // They go only now that the new report is whole: a failed write keeps the old report with its pictures.
    const std::set<std::string> newPictures = picturesNamedBy(element);
    for (const std::string& name : oldPictures)
        if (newPictures.count(name) == 0)
            fs::remove(fs::path(parameters.getImageFolder()) / name, error);
    return path;
}

void ProjectFile::_loadTemplates() const
{
    if (!_templateFolder.empty())
        NodeTemplateActivatorCollection::instance().loadFolder(_templateFolder);
}

} // namespace ZemTree

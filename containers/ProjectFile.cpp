#include "containers/ProjectFile.h"

#include "containers/TestableContainer.h"
#include "containers/ZemTreeRelayTreeResources.h"
#include "core/common/PathHelper.h"
#include "core/common/StringHelper.h"
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

#include <libxml/tree.h>

#include <cstdint>
#include <filesystem>
#include <map>
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

// Parses the file at `path` into `parser` and returns the node element it holds; `others` receives the node
// elements after it, which a project never has but a damaged or hand-made one may. Throws std::runtime_error.
xmlpp::Element* parseProject(const std::string& path, xmlpp::DomParser& parser, std::vector<xmlpp::Element*>& others)
{
    Zem::XmlFile::parse(path, parser, "project");

    xmlpp::Document* const document = parser ? parser.get_document() : nullptr;
    xmlpp::Element* const root = document != nullptr ? document->get_root_node() : nullptr;
    if (root != nullptr && root->get_name() == Node::XmlElementName)
        return root;
    xmlpp::Element* first = nullptr;
    if (root != nullptr
        && (root->get_name() == ProjectFile::ProjectElementName || root->get_name() == templateElementName)) {
        for (xmlpp::Node* child : root->get_children(Node::XmlElementName)) {
            auto* element = dynamic_cast<xmlpp::Element*>(child);
            if (element == nullptr)
                continue;
            if (first == nullptr)
                first = element;
            else
                others.push_back(element);
        }
    }
    if (first == nullptr)
        throw std::runtime_error("The file '" + path + "' holds no project");
    return first;
}

std::string className(const xmlpp::Element* element)
{
    const xmlpp::Attribute* const attribute = element->get_attribute("Class");
    return attribute != nullptr ? std::string(attribute->get_value()) : std::string();
}

void writeTree(const Node& root, const std::string& path, const char* rootElement, std::uint8_t kind, const char* what,
               const std::vector<std::shared_ptr<xmlNode>>& keptAfterRoot = {})
{
    xmlpp::Document document;
    Zem::XmlFile::useNameDictionary(document);
    xmlpp::Element* const element = document.create_root_node(rootElement);
    SerializationMode mode;
    mode.kind = kind;
    root.getXml(element, mode);
    for (const std::shared_ptr<xmlNode>& kept : keptAfterRoot)
        xmlAddChild(element->cobj(), xmlDocCopyNode(kept.get(), document.cobj(), 1));
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

// The PNG files in `folder` now.
std::set<std::string> picturesIn(const std::string& folder)
{
    std::set<std::string> names;
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        if (entries->path().extension() == ".png")
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

// A problem on one line, even when a key from the file holds a line break.
std::string oneLine(const std::string& text)
{
    if (text.find_first_of("\r\n") == std::string::npos)
        return text;
    return Zem::StringHelper::replaceAll(Zem::StringHelper::replaceAll(text, "\r", "\\r"), "\n", "\\n");
}

// Children of `element` that are elements named `name` (any name when empty).
std::vector<xmlpp::Element*> childElements(xmlpp::Element* element, const std::string& name)
{
    std::vector<xmlpp::Element*> elements;
    for (xmlpp::Node* child : element->get_children()) {
        auto* childElement = dynamic_cast<xmlpp::Element*>(child);
        if (childElement != nullptr && (name.empty() || childElement->get_name() == name))
            elements.push_back(childElement);
    }
    return elements;
}

std::string idOf(const xmlpp::Element* element)
{
    const xmlpp::Attribute* const id = element->get_attribute("Id");
    return id != nullptr ? std::string(id->get_value()) : std::string();
}

// Walks a node element of a file beside the element a save wrote for it; node children pair up by key, the
// n-th of a key with the n-th.
void compareNodeElements(xmlpp::Element* read, xmlpp::Element* saved, const std::string& path,
                         std::vector<std::string>& problems)
{
    for (const xmlpp::Attribute* attribute : read->get_attributes()) {
        if (saved->get_attribute(attribute->get_name()) == nullptr)
            problems.push_back(oneLine(path + ": the attribute " + std::string(attribute->get_name())
                                       + " is unknown here; a save drops it"));
    }
    std::map<std::string, int> savedNames;
    for (xmlpp::Element* element : childElements(saved, ""))
        ++savedNames[element->get_name()];
    std::map<std::string, int> readNames;
    for (xmlpp::Element* element : childElements(read, "")) {
        const std::string name = element->get_name();
        if (name != Node::XmlElementName && ++readNames[name] == savedNames[name] + 1)
            problems.push_back(oneLine(path + ": the element " + name + " is unknown here; a save drops it"));
    }

    std::map<std::string, std::vector<xmlpp::Element*>> savedChildren;
    for (xmlpp::Element* element : childElements(saved, Node::XmlElementName))
        savedChildren[idOf(element)].push_back(element);
    std::map<std::string, std::size_t> seen;
    for (xmlpp::Element* element : childElements(read, Node::XmlElementName)) {
        const std::string id = idOf(element);
        const std::size_t index = seen[id]++;
        const auto found = savedChildren.find(id);
        if (id.empty() || found == savedChildren.end() || index >= found->second.size())
            continue;
        compareNodeElements(element, found->second[index], path + "/" + id, problems);
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
    std::vector<xmlpp::Element*> others;
    xmlpp::Element* const element = parseProject(path, parser, others);
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

    _readInto(*root, element, others, path);
    return root;
}

void ProjectFile::read(Node& root, const std::string& path)
{
    xmlpp::DomParser parser;
    std::vector<xmlpp::Element*> others;
    xmlpp::Element* const element = parseProject(path, parser, others);
    const std::string rootClass = className(element);
    const std::string ownClass = Zem::TypeHelper::getTypeName(typeid(root));
    if (!rootClass.empty() && rootClass != ownClass)
        throw std::runtime_error("The project '" + path + "' holds a root of the class '" + rootClass + "', not '"
                                 + ownClass + "'");

    _readInto(root, element, others, path);
}

void ProjectFile::_readInto(Node& root, xmlpp::Element* element, const std::vector<xmlpp::Element*>& others,
                            const std::string& path)
{
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
    _keepOtherRoots(root, others);
}

void ProjectFile::_keepOtherRoots(const Node& root, const std::vector<xmlpp::Element*>& others)
{
    _keptRoot = &root;
    _keptAfterRoot.clear();
    for (xmlpp::Element* element : others) {
        const xmlpp::Attribute* const id = element->get_attribute("Id");
        const std::string name = id != nullptr ? std::string(id->get_value()) : std::string("?");
        xmlNode* const copy = xmlDocCopyNode(element->cobj(), nullptr, 1);
        if (copy == nullptr)
            throw std::runtime_error("Out of memory while keeping the root node '" + name + "'");
        _keptAfterRoot.emplace_back(copy, xmlFreeNode);
        _problems.push_back(
            oneLine(name + ": a second root node; it is kept unread and saved as it was after '" + root.getId() + "'"));
    }
}

void ProjectFile::noteUnkeptContent(const Node& root, const std::string& path)
{
    xmlpp::DomParser parser;
    std::vector<xmlpp::Element*> others;
    xmlpp::Element* const read = parseProject(path, parser, others);

    xmlpp::Document document;
    xmlpp::Element* const holder = document.create_root_node(ProjectElementName);
    SerializationMode mode;
    mode.kind = SerializationMode::User;
    xmlpp::Element* const saved = root.getXml(holder, mode);
    if (saved != nullptr)
        compareNodeElements(read, saved, root.getHierarchicalId(), _problems);
}

void ProjectFile::save(const Node& root, const std::string& path) const
{
    // Root nodes beyond the first belong to the tree they were read with.
    writeTree(root, path, ProjectElementName, SerializationMode::User, "project",
              &root == _keptRoot ? _keptAfterRoot : std::vector<std::shared_ptr<xmlNode>>());
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
    const std::set<std::string> picturesBefore = picturesIn(parameters.getImageFolder());
    try {
        root.getDisplayXml(parameters, element);
        Zem::XmlFile::writeAtomically(path, Zem::XmlFile::toText(document, true), "report");
    }
    catch (...) {
        // A report cut short leaves no pictures that no report names.
        for (const std::string& name : picturesIn(parameters.getImageFolder()))
            if (picturesBefore.count(name) == 0)
                fs::remove(fs::path(parameters.getImageFolder()) / name, error);
        throw;
    }

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

#pragma once

#include <memory>
#include <string>
#include <vector>

struct _xmlNode;

namespace xmlpp {
class Element;
}

namespace ZemTree {

class Node;

// Whole-tree persistence: reads and writes a project or a template file and writes a report with its pictures.
//
// A project file is a document whose root element `Project` holds the root node's element as Node::getXml writes
// it with kind User; a template file has the root `Template` and kind System. Reading takes a bare node element
// as the document root too.
//
// Every file is written whole to a temporary file beside the target, flushed to disk and then renamed over the
// target, so a crash or a full disk never leaves a half-written file: the old one stays until the new one is
// complete. Reading parses the whole file before it touches a tree, without DTD, entity substitution or network
// access. Problems that the tree meets while reading (unknown classes, bad values, a template that is not in the
// template folder) do not stop the reading; they are collected in getProblems().
//
// Elements that cannot be read are kept as they were and written back in their place (see Node); so are root
// nodes after the first, which a save of the same tree through the same ProjectFile writes after it.
//
// Containers find their templates by `TemplateXml` in NodeTemplateActivatorCollection::instance(); the template
// folder given here is added to it before each load.
class ProjectFile {
public:
    // The root element of a project file and of a report file.
    static const char* const ProjectElementName;
    static const char* const ReportElementName;

    explicit ProjectFile(const std::string& templateFolder = "");
    ProjectFile(const ProjectFile&) = delete;
    ProjectFile& operator=(const ProjectFile&) = delete;

    const std::string& getTemplateFolder() const { return _templateFolder; }

    // Builds a new tree from the project at `path`: its root is made by NodeFactory from the root element's
    // `Class`. Throws std::runtime_error, naming the path and the reason, when the file cannot be read, is not
    // well-formed XML (with the line), holds no node, names no registered class, or the tree refuses it.
    std::unique_ptr<Node> load(const std::string& path);
    // Reads the project at `path` into an existing root. The file is checked whole first: a file that cannot be
    // read, is not well-formed or holds a root of another class throws std::runtime_error and leaves `root` as
    // it was. An exception of the tree itself while reading is passed on as std::runtime_error.
    void read(Node& root, const std::string& path);

    // Writes `root` as a project (kind User). Throws std::runtime_error with the path and the reason; the old
    // file is then left as it was.
    void save(const Node& root, const std::string& path) const;
    // Writes `root` as a template (kind System), with the same guarantees.
    void saveTemplate(const Node& root, const std::string& path) const;
    // Writes the report of `root` to `<folder>/<fileName>`, creating the folder; pictures go to the image folder
    // of the report's DisplayXmlParameters. Returns the report's path. Throws std::runtime_error as save does.
    std::string writeReport(const Node& root, const std::string& folder,
                            const std::string& fileName = "report.xml") const;

    // Compares the project file at `path` with what a save of `root`, read from it, would write, and adds a
    // problem for each attribute, element and piece of text of a node that the save would not keep: names
    // this version does not know, and values it does not read. Throws std::runtime_error when the file cannot
    // be read. For checking a file; a load does not do it, as it costs a second parse and a save.
    void noteUnkeptContent(const Node& root, const std::string& path);

    // What the loads since the last clearProblems() met without stopping.
    const std::vector<std::string>& getProblems() const { return _problems; }
    void clearProblems() { _problems.clear(); }

private:
    void _loadTemplates() const;
    // The one reading of a parsed project into a root, for load and read alike.
    void _readInto(Node& root, xmlpp::Element* element, const std::vector<xmlpp::Element*>& others,
                   const std::string& path);
    void _keepOtherRoots(const Node& root, const std::vector<xmlpp::Element*>& others);

    std::string _templateFolder;
    std::vector<std::string> _problems;
    // Node elements after the first root of the last file read, copied out, and the tree they came with.
    const Node* _keptRoot = nullptr;
    std::vector<std::shared_ptr<_xmlNode>> _keptAfterRoot;
};

} // namespace ZemTree

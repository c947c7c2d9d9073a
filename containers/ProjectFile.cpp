#include "containers/ProjectFile.h"

#include "containers/ZemTreeRelayTreeResources.h"
#include "core/common/TypeHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/Node.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/SerializationMode.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <typeinfo>
#include <unistd.h>
#include <utility>

namespace ZemTree {

namespace fs = std::filesystem;

const char* const ProjectFile::ProjectElementName = "Project";
const char* const ProjectFile::ReportElementName = "Report";

namespace {

const char* const templateElementName = "Template";

// A project holds results and graphs; anything larger than this is no project and is not read into memory.
const std::uintmax_t maxProjectSize = 512ull * 1024 * 1024;

void ignoreXmlMessage(void*, const char*, ...) {}

// libxml2 prints parse and write errors on stderr besides handing them to libxml++. The library keeps no log,
// so the printing is off meanwhile. The handler is per thread in libxml2, so other threads keep theirs.
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

std::string errnoText(int error)
{
    return std::generic_category().message(error);
}

std::string trimmed(std::string text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

std::string readWholeFile(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error)
        throw std::runtime_error("The project '" + path + "' cannot be read: " + error.message());
    // Only a regular file: a pipe or a device could block the reader or never end.
    if (!fs::is_regular_file(status))
        throw std::runtime_error("The project '" + path + "' cannot be read: it is not a regular file");
    const std::uintmax_t size = fs::file_size(path, error);
    if (error)
        throw std::runtime_error("The project '" + path + "' cannot be read: " + error.message());
    if (size > maxProjectSize)
        throw std::runtime_error("The project '" + path + "' cannot be read: it is too large");

    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        throw std::runtime_error("The project '" + path + "' cannot be read: " + errnoText(errno));
    std::string contents;
    contents.reserve(static_cast<std::size_t>(size));
    char buffer[65536];
    for (;;) {
        const ssize_t count = ::read(file, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            const int readError = errno;
            ::close(file);
            throw std::runtime_error("The project '" + path + "' cannot be read: " + errnoText(readError));
        }
        if (count == 0)
            break;
        contents.append(buffer, static_cast<std::size_t>(count));
        if (contents.size() > maxProjectSize) {
            ::close(file);
            throw std::runtime_error("The project '" + path + "' cannot be read: it is too large");
        }
    }
    ::close(file);
    return contents;
}

// Parses the file at `path` into `parser` and returns the node element it holds. Throws std::runtime_error.
xmlpp::Element* parseProject(const std::string& path, xmlpp::DomParser& parser)
{
    const std::string contents = readWholeFile(path);
    if (contents.empty())
        throw std::runtime_error("The project '" + path + "' is not well-formed XML: the file is empty");

    // The file is data from disk: no DTD is loaded or validated, no entity is substituted, nothing is fetched
    // from the network, and libxml2's limits for huge documents stay on.
    parser.set_parser_options(XML_PARSE_NONET, XML_PARSE_NOENT | XML_PARSE_DTDLOAD | XML_PARSE_DTDVALID
                                                   | XML_PARSE_DTDATTR | XML_PARSE_XINCLUDE | XML_PARSE_HUGE);
    try {
        const QuietXmlErrors quiet;
        xmlResetLastError();
        parser.parse_memory_raw(reinterpret_cast<const unsigned char*>(contents.data()), contents.size());
    }
    catch (const std::exception& exception) {
        const xmlError* const last = xmlGetLastError();
        std::string reason;
        if (last != nullptr && last->message != nullptr && last->line > 0)
            reason = "line " + std::to_string(last->line) + ": " + trimmed(last->message);
        else if (last != nullptr && last->message != nullptr)
            reason = trimmed(last->message);
        else
            reason = trimmed(exception.what());
        throw std::runtime_error("The project '" + path + "' is not well-formed XML: " + reason);
    }

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

// Closes a file descriptor and removes a temporary file unless told that it has become the target.
class TemporaryFile {
public:
    TemporaryFile(int descriptor, std::string path) : _descriptor(descriptor), _path(std::move(path)) {}
    ~TemporaryFile()
    {
        if (_descriptor >= 0)
            ::close(_descriptor);
        if (!_isKept)
            ::unlink(_path.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int descriptor() const { return _descriptor; }
    const std::string& path() const { return _path; }
    // Closes the descriptor; false with errno set when the close failed.
    bool close()
    {
        const int descriptor = _descriptor;
        _descriptor = -1;
        return ::close(descriptor) == 0;
    }
    void keep() { _isKept = true; }

private:
    int _descriptor;
    std::string _path;
    bool _isKept = false;
};

// Writes `contents` to `path` through a temporary file in the same folder: written, flushed to disk, renamed
// over the target, and the folder flushed, so the target is always either the old file or the new one whole.
void writeAtomically(const std::string& path, const std::string& contents, const char* what)
{
    const auto fail = [&](const std::string& reason) {
        throw std::runtime_error(std::string("The ") + what + " '" + path + "' cannot be written: " + reason);
    };
    const fs::path target(path);
    if (target.filename().empty())
        fail("the path names no file");
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");

    // The new file keeps the permissions of the old one; a new one gets the usual ones under the umask.
    struct stat oldStatus {};
    const bool hasOld = ::stat(path.c_str(), &oldStatus) == 0;

    std::random_device seedSource;
    std::mt19937_64 random(seedSource());
    int descriptor = -1;
    std::string temporaryPath;
    for (int attempt = 0; attempt < 100 && descriptor < 0; ++attempt) {
        char suffix[32];
        std::snprintf(suffix, sizeof suffix, ".%016llx.tmp", static_cast<unsigned long long>(random()));
        temporaryPath = (folder / ("." + target.filename().string() + suffix)).string();
        descriptor = ::open(temporaryPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST)
            fail(errnoText(errno));
    }
    if (descriptor < 0)
        fail("no temporary file can be made beside it");
    TemporaryFile temporary(descriptor, temporaryPath);

    if (hasOld && ::fchmod(temporary.descriptor(), oldStatus.st_mode & 07777) != 0)
        fail(errnoText(errno));
    std::size_t written = 0;
    while (written < contents.size()) {
        const ssize_t count = ::write(temporary.descriptor(), contents.data() + written, contents.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail(errnoText(errno));
        written += static_cast<std::size_t>(count);
    }
    if (::fsync(temporary.descriptor()) != 0)
        fail(errnoText(errno));
    if (!temporary.close())
        fail(errnoText(errno));
    if (::rename(temporary.path().c_str(), path.c_str()) != 0)
        fail(errnoText(errno));
    temporary.keep();

    // The rename itself reaches the disk with the folder. A folder that cannot be flushed leaves the new file in
    // place all the same, so this is not reported.
    const int folderDescriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderDescriptor >= 0) {
        ::fsync(folderDescriptor);
        ::close(folderDescriptor);
    }
}

// Projects and templates are written without added blanks: a unit's data is the first child node of its `Value`
// element, and an indenting blank before it would read back as no data. Reports are for people and are indented.
std::string documentText(xmlpp::Document& document, bool indented)
{
    const QuietXmlErrors quiet;
    return indented ? document.write_to_string_formatted("UTF-8").raw() : document.write_to_string("UTF-8").raw();
}

void writeTree(const Node& root, const std::string& path, const char* rootElement, std::uint8_t kind, const char* what)
{
    xmlpp::Document document;
    xmlpp::Element* const element = document.create_root_node(rootElement);
    SerializationMode mode;
    mode.kind = kind;
    root.getXml(element, mode);
    writeAtomically(path, documentText(document, false), what);
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
        root->setXml(element, mode);
    }
    catch (const std::exception& exception) {
        throw std::runtime_error("The project '" + path + "' cannot be read: " + exception.what());
    }
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
        root.setXml(element, mode);
    }
    catch (const std::exception& exception) {
        throw std::runtime_error("The project '" + path + "' cannot be read: " + exception.what());
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

    xmlpp::Document document;
    xmlpp::Element* const element = document.create_root_node(ReportElementName);
    DisplayXmlParameters parameters(folder);
    root.getDisplayXml(parameters, element);
    writeAtomically(path, documentText(document, true), "report");
    return path;
}

void ProjectFile::_loadTemplates() const
{
    if (!_templateFolder.empty())
        NodeTemplateActivatorCollection::instance().loadFolder(_templateFolder);
}

} // namespace ZemTree

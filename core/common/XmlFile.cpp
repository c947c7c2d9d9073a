#include "core/common/XmlFile.h"

#include "core/common/XmlInclude.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>
// dict.h needs the types of tree.h first.
// clang-format off
#include <libxml/tree.h>
#include <libxml/dict.h>
// clang-format on

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Zem {

namespace fs = std::filesystem;

const std::uintmax_t XmlFile::MaxFileSize = 128ull * 1024 * 1024;
const unsigned XmlFile::MaxDepth = 256;

namespace {

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

// Keeps the first error the parser meets. libxml2 remembers only the last, which after a fault early in a file
// is often a follow-on such as "Extra content at the end of the document". Installed for one parse on this
// thread; while it is, libxml2 hands errors only to it.
class FirstXmlError {
public:
    FirstXmlError() : _handler(xmlStructuredError), _context(xmlStructuredErrorContext)
    {
        xmlSetStructuredErrorFunc(this, &FirstXmlError::onError);
    }
    ~FirstXmlError() { xmlSetStructuredErrorFunc(_context, _handler); }
    FirstXmlError(const FirstXmlError&) = delete;
    FirstXmlError& operator=(const FirstXmlError&) = delete;

    bool hasError() const { return _hasError; }
    const std::string& message() const { return _message; }
    int line() const { return _line; }
    int column() const { return _column; }

private:
    static void onError(void* context, xmlErrorPtr error)
    {
        auto* const self = static_cast<FirstXmlError*>(context);
        if (self->_hasError || error == nullptr || error->level < XML_ERR_ERROR)
            return;
        self->_hasError = true;
        self->_message = error->message != nullptr ? error->message : "unknown error";
        self->_line = error->line;
        self->_column = error->int2;
    }

    xmlStructuredErrorFunc _handler;
    void* _context;
    bool _hasError = false;
    std::string _message;
    int _line = 0;
    int _column = 0;
};

std::string errnoText(int error)
{
    return std::generic_category().message(error);
}

// A message on one line: libxml2 breaks some of its own (an encoding error adds its bytes on a line of their own).
std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t\r\n");
    std::string line = text.substr(first, last - first + 1);
    for (std::size_t i = line.find_first_of("\r\n"); i != std::string::npos; i = line.find_first_of("\r\n", i)) {
        const std::size_t end = line.find_first_not_of(" \t\r\n", i);
        line.replace(i, end - i, "; ");
        i += 2;
    }
    return line;
}

std::string readWholeFile(const std::string& path, const std::string& what, std::uintmax_t maxSize)
{
    const auto fail = [&](const std::string& reason) {
        throw std::runtime_error("The " + what + " '" + path + "' cannot be read: " + reason);
    };
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error)
        fail(error.message());
    // Only a regular file: a pipe or a device could block the reader or never end.
    if (!fs::is_regular_file(status))
        fail("it is not a regular file");
    const std::uintmax_t size = fs::file_size(path, error);
    if (error)
        fail(error.message());
    if (size > maxSize)
        fail("it is larger than " + std::to_string(maxSize / (1024 * 1024)) + " MiB");

    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        fail(errnoText(errno));
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
            fail(errnoText(readError));
        }
        if (count == 0)
            break;
        contents.append(buffer, static_cast<std::size_t>(count));
        // The file may grow while it is read.
        if (contents.size() > maxSize) {
            ::close(file);
            fail("it is larger than " + std::to_string(maxSize / (1024 * 1024)) + " MiB");
        }
    }
    ::close(file);
    return contents;
}

bool startsWith(const std::string& text, std::size_t position, const char* prefix)
{
    return text.compare(position, std::strlen(prefix), prefix) == 0;
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

} // namespace

bool XmlFile::hasDocumentTypeDefinition(const std::string& contents)
{
    std::size_t position = 0;
    if (startsWith(contents, 0, "\xEF\xBB\xBF"))
        position = 3;
    for (;;) {
        position = contents.find_first_not_of(" \t\r\n", position);
        if (position == std::string::npos)
            return false;
        if (startsWith(contents, position, "<?")) {
            position = contents.find("?>", position + 2);
            if (position == std::string::npos)
                return false;
            position += 2;
        }
        else if (startsWith(contents, position, "<!--")) {
            position = contents.find("-->", position + 4);
            if (position == std::string::npos)
                return false;
            position += 3;
        }
        else if (startsWith(contents, position, "<!DOCTYPE")) {
            // Up to the closing '>' outside quotes; an internal subset or an external identifier is what counts.
            char quote = 0;
            for (std::size_t i = position + 9; i < contents.size(); ++i) {
                const char c = contents[i];
                if (quote != 0) {
                    if (c == quote)
                        quote = 0;
                }
                else if (c == '"' || c == '\'') {
                    quote = c;
                }
                else if (c == '[') {
                    return true;
                }
                else if (c == '>') {
                    const std::string declaration = contents.substr(position, i - position);
                    return declaration.find("SYSTEM") != std::string::npos
                           || declaration.find("PUBLIC") != std::string::npos;
                }
            }
            // An unterminated declaration is broken XML anyway; it is refused all the same.
            return true;
        }
        else {
            return false;
        }
    }
}

void XmlFile::parse(const std::string& path, xmlpp::DomParser& parser, const std::string& what, std::uintmax_t maxSize)
{
    const std::string contents = readWholeFile(path, what, maxSize);
    const std::string name = "The " + what + " '" + path + "'";
    if (contents.empty())
        throw std::runtime_error(name + " is not well-formed XML: the file is empty");
    if (hasDocumentTypeDefinition(contents))
        throw std::runtime_error(name + " is refused: it carries a document type declaration (DTD), which a " + what
                                 + " never has");

    parser.set_parser_options(XML_PARSE_NONET, XML_PARSE_NOENT | XML_PARSE_DTDLOAD | XML_PARSE_DTDVALID
                                                   | XML_PARSE_DTDATTR | XML_PARSE_XINCLUDE | XML_PARSE_HUGE);
    std::string message;
    int line = 0;
    int column = 0;
    bool isBroken = false;
    {
        const QuietXmlErrors quiet;
        const FirstXmlError first;
        xmlResetLastError();
        try {
            parser.parse_memory_raw(reinterpret_cast<const unsigned char*>(contents.data()), contents.size());
        }
        catch (const std::exception& exception) {
            isBroken = true;
            message = trimmed(exception.what());
        }
        // An error the parser recovered from (an undeclared namespace prefix) still makes the file broken.
        if (first.hasError()) {
            isBroken = true;
            message = trimmed(first.message());
            line = first.line();
            column = first.column();
        }
    }
    if (!isBroken)
        return;
    if (message.find("Excessive depth") != std::string::npos)
        throw std::runtime_error(name + " is refused: its elements nest deeper than " + std::to_string(MaxDepth)
                                 + " levels");
    std::string where;
    if (line > 0) {
        where = "line " + std::to_string(line);
        if (column > 0)
            where += ", column " + std::to_string(column);
        where += ": ";
    }
    throw std::runtime_error(name + " is not well-formed XML: " + where + message);
}

void XmlFile::useNameDictionary(xmlpp::Document& document)
{
    xmlDoc* const raw = document.cobj();
    if (raw->dict == nullptr)
        raw->dict = xmlDictCreate();
}

std::string XmlFile::toText(xmlpp::Document& document, bool indented)
{
    const QuietXmlErrors quiet;
    return indented ? document.write_to_string_formatted("UTF-8").raw() : document.write_to_string("UTF-8").raw();
}

XmlFile::Target XmlFile::resolveTarget(const std::string& path, const std::string& what)
{
    const auto fail = [&](const std::string& reason) {
        throw std::runtime_error("The " + what + " '" + path + "' cannot be written: " + reason);
    };
    if (fs::path(path).filename().empty())
        fail("the path names no file");

    // A symbolic link stays a link: the file it leads to is what gets replaced.
    fs::path resolved(path);
    int links = 0;
    struct stat status {};
    for (;;) {
        if (::lstat(resolved.c_str(), &status) != 0) {
            if (errno != ENOENT)
                fail(errnoText(errno));
            Target target;
            target.path = resolved.string();
            return target;
        }
        if (!S_ISLNK(status.st_mode))
            break;
        if (++links > 40)
            fail(errnoText(ELOOP));
        std::error_code error;
        const fs::path next = fs::read_symlink(resolved, error);
        if (error)
            fail(error.message());
        resolved = next.is_absolute() ? next : resolved.parent_path() / next;
    }
    // Renaming over a device, a pipe or a folder would put a plain file in its place.
    if (!S_ISREG(status.st_mode))
        fail("it is not a regular file");
    // The owner took away the right to write; being root does not give it back.
    if ((status.st_mode & S_IWUSR) == 0)
        fail("the file is read-only");
    Target target;
    target.path = resolved.string();
    target.exists = true;
    target.mode = status.st_mode & 07777;
    target.owner = status.st_uid;
    target.group = status.st_gid;
    return target;
}

bool XmlFile::isTemporaryName(const std::string& name, const std::string& targetName)
{
    // "." + target + "." + 16 hex digits + ".tmp"
    const std::size_t prefixSize = targetName.size() + 2;
    if (name.size() != prefixSize + 16 + 4 || name.compare(0, 1, ".") != 0
        || name.compare(1, targetName.size(), targetName) != 0 || name[prefixSize - 1] != '.'
        || name.compare(name.size() - 4, 4, ".tmp") != 0)
        return false;
    for (std::size_t i = prefixSize; i < prefixSize + 16; ++i) {
        const auto c = static_cast<unsigned char>(name[i]);
        if (std::isxdigit(c) == 0 || std::isupper(c) != 0)
            return false;
    }
    return true;
}

void XmlFile::removeStaleTemporaries(const std::string& path)
{
    const fs::path target(path);
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const std::string targetName = target.filename().string();
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    if (error)
        return;
    for (; entries != fs::directory_iterator(); entries.increment(error)) {
        if (error)
            return;
        const std::string name = entries->path().filename().string();
        std::error_code typeError;
        // Only our own leftovers, and never through a link.
        if (isTemporaryName(name, targetName) && entries->is_regular_file(typeError) && !entries->is_symlink(typeError))
            fs::remove(entries->path(), typeError);
    }
}

void XmlFile::writeAtomically(const std::string& path, const std::string& contents, const std::string& what)
{
    const auto fail = [&](const std::string& reason) {
        throw std::runtime_error("The " + what + " '" + path + "' cannot be written: " + reason);
    };
    const Target target = resolveTarget(path, what);
    const fs::path targetPath(target.path);
    const fs::path folder = targetPath.has_parent_path() ? targetPath.parent_path() : fs::path(".");
    removeStaleTemporaries(target.path);

    std::random_device seedSource;
    std::mt19937_64 random(seedSource());
    int descriptor = -1;
    std::string temporaryPath;
    for (int attempt = 0; attempt < 100 && descriptor < 0; ++attempt) {
        char suffix[32];
        std::snprintf(suffix, sizeof suffix, ".%016llx.tmp", static_cast<unsigned long long>(random()));
        temporaryPath = (folder / ("." + targetPath.filename().string() + suffix)).string();
        descriptor = ::open(temporaryPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST)
            fail(errnoText(errno));
    }
    if (descriptor < 0)
        fail("no temporary file can be made beside it");
    TemporaryFile temporary(descriptor, temporaryPath);

    // The new file keeps the owner and the permissions of the old one; a new one gets the usual ones.
    if (target.exists) {
        struct stat own {};
        if (::fstat(temporary.descriptor(), &own) != 0)
            fail(errnoText(errno));
        if ((own.st_uid != target.owner || own.st_gid != target.group)
            && ::fchown(temporary.descriptor(), target.owner, target.group) != 0)
            fail("its owner cannot be kept: " + errnoText(errno));
        if (::fchmod(temporary.descriptor(), target.mode) != 0)
            fail(errnoText(errno));
    }
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
    if (::rename(temporary.path().c_str(), target.path.c_str()) != 0)
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

} // namespace Zem

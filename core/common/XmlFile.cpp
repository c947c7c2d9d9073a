#include "core/common/XmlFile.h"

#include "core/common/XmlInclude.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

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

std::string errnoText(int error)
{
    return std::generic_category().message(error);
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
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

void XmlFile::parse(const std::string& path, xmlpp::DomParser& parser, const std::string& what,
                    std::uintmax_t maxSize)
{
    const std::string contents = readWholeFile(path, what, maxSize);
    const std::string name = "The " + what + " '" + path + "'";
    if (contents.empty())
        throw std::runtime_error(name + " is not well-formed XML: the file is empty");
    if (hasDocumentTypeDefinition(contents))
        throw std::runtime_error(name + " is refused: it carries a document type declaration (DTD), which a "
                                 + what + " never has");

    parser.set_parser_options(XML_PARSE_NONET, XML_PARSE_NOENT | XML_PARSE_DTDLOAD | XML_PARSE_DTDVALID
                                                   | XML_PARSE_DTDATTR | XML_PARSE_XINCLUDE | XML_PARSE_HUGE);
    try {
        const QuietXmlErrors quiet;
        xmlResetLastError();
        parser.parse_memory_raw(reinterpret_cast<const unsigned char*>(contents.data()), contents.size());
    }
    catch (const std::exception& exception) {
        const xmlError* const last = xmlGetLastError();
        const std::string message = last != nullptr && last->message != nullptr ? trimmed(last->message)
                                                                                : trimmed(exception.what());
        if (message.find("Excessive depth") != std::string::npos)
            throw std::runtime_error(name + " is refused: its elements nest deeper than "
                                     + std::to_string(MaxDepth) + " levels");
        std::string where;
        if (last != nullptr && last->line > 0) {
            where = "line " + std::to_string(last->line);
            if (last->int2 > 0)
                where += ", column " + std::to_string(last->int2);
            where += ": ";
        }
        throw std::runtime_error(name + " is not well-formed XML: " + where + message);
    }
}

std::string XmlFile::toText(xmlpp::Document& document, bool indented)
{
    const QuietXmlErrors quiet;
    return indented ? document.write_to_string_formatted("UTF-8").raw() : document.write_to_string("UTF-8").raw();
}

void XmlFile::writeAtomically(const std::string& path, const std::string& contents, const std::string& what)
{
    const auto fail = [&](const std::string& reason) {
        throw std::runtime_error("The " + what + " '" + path + "' cannot be written: " + reason);
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

} // namespace Zem

#pragma once

#include <cstdint>
#include <string>

namespace xmlpp {
class Document;
class DomParser;
} // namespace xmlpp

namespace Zem {

// Reading and writing whole XML files, for files that may come from anywhere.
//
// Reading takes only a regular file no larger than a limit, refuses a document type declaration (a project or a
// template has no use for one: refusing it keeps external entities, network access and entity expansion out
// altogether), loads no DTD, substitutes no entity, fetches nothing, and keeps libxml2's limits for huge
// documents, among them the nesting depth. Errors name the file, what went wrong and, for broken XML, the line
// and column where the parser stopped.
//
// Writing goes through a temporary file beside the target, flushed to disk and renamed over it, so a crash, a
// full disk or a refused write never leaves a half-written file: the old one stays until the new one is whole.
// Only a regular file or a new name is ever replaced; a symbolic link is followed and stays a link. The new file
// keeps the old one's owner and permissions, and a file whose owner may not write it is refused.
class XmlFile {
public:
    XmlFile() = delete;

    // Larger files are refused before a byte is read, so that reading needs memory in proportion to what is
    // accepted. A project with thousands of tests and all their results stays far below.
    static const std::uintmax_t MaxFileSize;
    // libxml2's own limit of element nesting; deeper documents are refused.
    static const unsigned MaxDepth;

    // Parses the file at `path` into `parser`. `what` names the kind of file in messages ("project",
    // "template file"). Throws std::runtime_error "The <what> '<path>' ..." when the file cannot be read, is
    // larger than `maxSize`, carries a document type declaration, nests too deep or is not well-formed.
    static void parse(const std::string& path, xmlpp::DomParser& parser, const std::string& what,
                      std::uintmax_t maxSize = MaxFileSize);

    // Gives a document that is about to be built a dictionary of names: element and attribute names are few and
    // repeat on every node, so one copy of each replaces a block per use, which makes building and freeing a
    // large document much cheaper.
    static void useNameDictionary(xmlpp::Document& document);
    // The text of a document; blanks are added only when `indented`.
    static std::string toText(xmlpp::Document& document, bool indented);

    // Replaces the file at `path` with `contents` as told above. Temporary files that an earlier save to the same
    // file left behind (a crash, a kill) are removed first. Throws std::runtime_error "The <what> '<path>' cannot
    // be written: <reason>"; the old file is then as it was.
    static void writeAtomically(const std::string& path, const std::string& contents, const std::string& what);

    // The file a save to `path` replaces: the end of its chain of symbolic links, and what the new file keeps of
    // it. Throws std::runtime_error as writeAtomically does for a target that is no regular file or is read-only.
    struct Target {
        std::string path;
        bool exists = false;
        unsigned mode = 0;
        unsigned owner = 0;
        unsigned group = 0;
    };
    static Target resolveTarget(const std::string& path, const std::string& what);

    // Whether `name` is one of the temporary files that a save to a file named `targetName` makes:
    // ".<targetName>.<16 hexadecimal digits>.tmp".
    static bool isTemporaryName(const std::string& name, const std::string& targetName);
    // Removes the temporary files that saves to `path` left in its folder.
    static void removeStaleTemporaries(const std::string& path);

    // Whether `contents` begins, after its XML declaration, comments and processing instructions, with a
    // document type declaration that carries anything: an internal subset or an external identifier.
    static bool hasDocumentTypeDefinition(const std::string& contents);
};

} // namespace Zem

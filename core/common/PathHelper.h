#pragma once

#include <string>

namespace Zem {

// The file name part of a path, after the last "/": "a/b/c.xml" gives "c.xml", "c.xml" stays,
// and a path ending in "/" gives "".
std::string getPathFileName(const std::string& path);

// The file name without its last extension: "a/b/c.tar.xml" gives "c.tar". A name whose only dot leads it
// (".hidden") has no extension and stays whole, as do "." and ".."; dots in folder names do not count.
std::string getPathFileNameWithoutExtension(const std::string& path);

} // namespace Zem

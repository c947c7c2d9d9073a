#pragma once

#include <string>

namespace ZemDemo {

// Turns a report XML into HTML with the stylesheet report.xsl, by running the program xsltproc.
class HtmlReport {
public:
    // What became of a rendering.
    enum class Outcome { Written, NoXsltproc, Failed };

    // The stylesheet to use: `explicitPath` when given (empty when it does not exist), else the one in the
    // source tree this program was built from, else `<prefix>/share/zemtree/report.xsl` beside the installed
    // program. Empty when none exists.
    static std::string findStylesheet(const std::string& explicitPath);

    // Runs `xsltproc --stringparam lang <language> -o htmlPath stylesheet reportPath` and waits for it; the
    // language ("en" or "ru") is that of the page's own headings. On Failed `error` tells why.
    static Outcome render(const std::string& stylesheet, const std::string& reportPath, const std::string& htmlPath,
                          const std::string& language, std::string& error);
};

} // namespace ZemDemo

// Feeds arbitrary texts to the reader of the setting lines of graph managers, directly and as the text of the
// element that FillsettingsVector reads. Whatever is read must write a line that reads back to the same number of
// points with the same values, within the digits that the written form keeps. A broken promise stops the run with
// a trap.

#include "core/common/XmlInclude.h"
#include "results/graph/GraphManagerHelper.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

// The written form keeps 15 significant digits of a positive number, 6 of a negative one, and writes numbers
// below 1e-13 as zero; a float read back from it is its nearest float.
bool closeEnough(float written, float read)
{
    if (std::isnan(written) || std::isnan(read))
        return std::isnan(written) && std::isnan(read);
    if (std::isinf(written) || std::isinf(read))
        return written == read;
    const double a = written;
    const double b = read;
    return std::fabs(a - b) <= 1e-13 + std::fabs(a) * 1e-5;
}

bool sameLine(const std::vector<Zem::PointF>& a, const std::vector<Zem::PointF>& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool sameX = (std::isnan(a[i].x) && std::isnan(b[i].x)) || a[i].x == b[i].x;
        const bool sameY = (std::isnan(a[i].y) && std::isnan(b[i].y)) || a[i].y == b[i].y;
        if (!sameX || !sameY)
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<Zem::PointF> line = ZemTree::GraphManagerHelper::settingsLineFromText(text);
    // Every point takes two parts, and the parts are separated by ";".
    std::size_t separators = 0;
    for (const char c : text)
        separators += c == ';' ? 1 : 0;
    check(line.size() * 2 <= separators + 1);

    const std::string written = ZemTree::GraphManagerHelper::settingsLineToText(line);
    const std::vector<Zem::PointF> back = ZemTree::GraphManagerHelper::settingsLineFromText(written);
    check(back.size() == line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        check(closeEnough(line[i].x, back[i].x));
        check(closeEnough(line[i].y, back[i].y));
    }
    // Once written, a line keeps its form.
    check(ZemTree::GraphManagerHelper::settingsLineToText(back) == written);

    // The same text inside an element, where the managers read it.
    xmlpp::Document document;
    xmlpp::Element* root = document.create_root_node("Manager");
    try {
        root->add_child("ZsettingsFiguresUp")->add_child_text(text);
    }
    catch (const std::exception&) {
        return 0;
    }
    const xmlpp::Element* element = root;
    const auto* child = dynamic_cast<const xmlpp::Element*>(element->get_first_child("ZsettingsFiguresUp"));
    const xmlpp::TextNode* content = child == nullptr ? nullptr : child->get_child_text();
    std::vector<Zem::PointF> fromElement{{1.0f, 1.0f}};
    ZemTree::GraphTimeManager::FillsettingsVector(element, "ZsettingsFiguresUp", fromElement);
    // A text with a NUL byte is cut there in the element; raw() compares bytes, not by collation.
    if (content != nullptr && content->get_content().raw() == text)
        check(sameLine(fromElement, line));
    std::vector<Zem::PointF> fromZPhi{{1.0f, 1.0f}};
    ZemTree::GraphZPhiManager::FillsettingsVector(element, "ZsettingsFiguresUp", fromZPhi);
    check(sameLine(fromZPhi, fromElement));
    std::vector<Zem::PointF> missing{{1.0f, 1.0f}};
    ZemTree::GraphTimeManager::FillsettingsVector(element, "ZsettingsFiguresDown", missing);
    check(missing.empty());
    return 0;
}

#pragma once

#include "core/common/Color.h"
#include "core/common/Figure.h"
#include "core/common/Point.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace xmlpp {
class Element;
}

namespace ZemTree {

// What the graph managers share: the text of a setting line in their XML and the figures of measured curves and
// setting lines.
class GraphManagerHelper {
public:
    GraphManagerHelper() = delete;

    // The key of the figure of the first setting line ("ZsettingsFiguresUp"), the same in every language.
    static const char* const FigureKeyUp;
    // The key of the figure of the second setting line ("ZsettingsFiguresDown").
    static const char* const FigureKeyDown;

    // A double rounded to the nearest float; beyond the floats' range it becomes an infinity of its sign.
    static float toFloat(double value);
    static Zem::PointF toPointF(const Zem::Point& point) { return Zem::PointF(toFloat(point.x), toFloat(point.y)); }

    // Per point x, ";", y, ";": "1;0.5;2;0.25;". Numbers are the floats widened to double, as
    // Zem::convertToString<double, true>(value, 2) writes them; no points give the empty text.
    static std::string settingsLineToText(const std::vector<Zem::PointF>& line);
    // The parts between ";" taken two by two from the first; a pair whose parts are not both whole numbers
    // ("nan" and "inf" included) is skipped, as is a last part without a partner. Never throws.
    static std::vector<Zem::PointF> settingsLineFromText(const std::string& text);

    // Adds a child `name` holding the line's text.
    static void writeSettingsLine(xmlpp::Element* element, const std::string& name,
                                  const std::vector<Zem::PointF>& line);
    // Clears `target`, then reads the text of the first child `name`; a missing child, one that is no element or
    // one without text leaves `target` empty.
    static void readSettingsLine(const xmlpp::Element* element, const std::string& name,
                                 std::vector<Zem::PointF>& target);

    // A figure per measured curve, in key order: blue markers at the points, no lines. A key that is already in
    // `figures` keeps its old figure.
    static void addCurveFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                                std::map<std::string, std::unique_ptr<Zem::Figure>>& figures);
    // A figure of a setting line under `key`, unless the key is taken; always drawn with lines, and closed into a
    // polygon when `isClosed`.
    static void addSettingFigure(std::map<std::string, std::unique_ptr<Zem::Figure>>& figures, const std::string& key,
                                 const std::vector<Zem::PointF>& line, Zem::Color color, bool isMarkersVisible,
                                 bool isClosed = false);
};

} // namespace ZemTree

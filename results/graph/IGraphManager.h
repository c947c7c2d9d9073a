#pragma once

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

class GraphDataHeader;
class GraphDataTable;

// The strategy behind a graph result: it holds the setting of a curve, judges measured points against it, gives
// the figures to draw and keeps its own settings in the result's XML. One manager is shared by all the curves of
// a result; it is set up first and only read afterwards, so it must not change once results were built with it.
class IGraphManager {
public:
    IGraphManager() = default;
    IGraphManager(const IGraphManager&) = delete;
    IGraphManager& operator=(const IGraphManager&) = delete;
    virtual ~IGraphManager() = default;

    // Adds a figure per curve of `points` (by its key; a key already in `figures` keeps its old figure) and the
    // figures of the setting, and replaces `header` with the header of the plane they are drawn in.
    virtual void getFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                            std::map<std::string, std::unique_ptr<Zem::Figure>>& figures,
                            std::shared_ptr<GraphDataHeader>& header) = 0;
    // What the legend shows for the figures whose keys are fixed names (the setting lines), by key, in the
    // current language. Figures not named here show their keys.
    virtual std::map<std::string, std::string> getFigureLabels() const { return {}; }
    // The judged tables of one curve; the first one decides the state of the curve.
    virtual std::vector<std::shared_ptr<GraphDataTable>> getDataTables(const std::vector<Zem::Point>& points) = 0;
    // Writes the manager's settings as attributes and children of its "Manager" element.
    virtual void getXmlData(xmlpp::Element* element) = 0;
    // Reads them back; what is missing or bad keeps its present value. Never throws on bad data.
    virtual void setXmlData(const xmlpp::Element* element) = 0;
};

} // namespace ZemTree

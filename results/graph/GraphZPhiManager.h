#pragma once

#include "core/common/Color.h"
#include "core/common/Point.h"
#include "results/graph/IGraphManager.h"

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

// The manager of impedance characteristics: a measured point is an impedance R + jX in ohms, and it is acceptable
// when it lies inside the first polygon of the R-X plane and outside the second. The verdict is reached here,
// point by point, and handed to the records as a fixed assessment; the points are given twice, in polar and in
// rectangular form.
class GraphZPhiManager : public IGraphManager {
public:
    // Two empty polygons: no point is acceptable until setSettingsFigures or setXmlData.
    GraphZPhiManager();

    // Replaces both polygons and their colours.
    void setSettingsFigures(std::vector<Zem::PointF>& up, Zem::Color upColor, std::vector<Zem::PointF>& down,
                            Zem::Color downColor);

    const std::vector<Zem::PointF>& getSettingsFiguresUp() const { return _zsettingsFiguresUp; }
    Zem::Color getSettingsFiguresUpColor() const { return _zsettingsFiguresUpColor; }
    const std::vector<Zem::PointF>& getSettingsFiguresDown() const { return _zsettingsFiguresDown; }
    Zem::Color getSettingsFiguresDownColor() const { return _zsettingsFiguresDownColor; }

    // Whether the point, rounded to floats, lies in the first polygon and not in the second.
    bool isPointValid(const Zem::Point& point) const;

    // The measured curves (blue markers) and both polygons (markers and lines) under the keys of
    // GraphManagerHelper; the header is that of the R-X plane.
    // The first setting line is labelled as the outer bound of the zone, the second as the inner one.
    std::map<std::string, std::string> getFigureLabels() const override;
    void getFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                    std::map<std::string, std::unique_ptr<Zem::Figure>>& figures,
                    std::shared_ptr<GraphDataHeader>& header) override;
    // Two tables with the same verdicts: first magnitude and angle in degrees (-180 to 180), then R and X, all
    // rounded to 0.0001. The first decides the state of the curve.
    std::vector<std::shared_ptr<GraphDataTable>> getDataTables(const std::vector<Zem::Point>& points) override;
    // Only the children ZsettingsFiguresUp and ZsettingsFiguresDown; no attribute.
    void getXmlData(xmlpp::Element* element) override;
    // Reads both polygons; a missing child gives an empty polygon.
    void setXmlData(const xmlpp::Element* element) override;

    // Reads the polygon of the first child `name` into `target` (cleared first); see GraphManagerHelper.
    static void FillsettingsVector(const xmlpp::Element* element, const std::string& name,
                                   std::vector<Zem::PointF>& target);

protected:
    // "Z=f(φ) (complex)": Z in ohms against φ in degrees.
    std::shared_ptr<GraphDataHeader> _createHeaderMA() const;
    // The same title: R against X, both in ohms.
    std::shared_ptr<GraphDataHeader> _createHeaderRX() const;

private:
    std::vector<Zem::PointF> _zsettingsFiguresUp;
    // A manager read from a file has no colours saved; these stand in until setSettingsFigures.
    Zem::Color _zsettingsFiguresUpColor = Zem::Color::Red();
    std::vector<Zem::PointF> _zsettingsFiguresDown;
    Zem::Color _zsettingsFiguresDownColor = Zem::Color::Orange();
};

} // namespace ZemTree

#include "results/graph/GraphZPhiManager.h"

#include "core/calculate/Complex.h"
#include "core/calculate/PolygonHelper.h"
#include "core/common/NumericHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/LocalString.h"
#include "core/tree/Measures.h"
#include "core/tree/TreeLocalization.h"
#include "results/NumericFixedAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphManagerHelper.h"

#include <cmath>
#include <utility>

namespace ZemTree {

namespace {

constexpr double DegreesPerRadian = 57.29577951308232;
constexpr double TableStep = 0.0001;

double roundForTable(double value)
{
    return Zem::NumericHelper::stepRounding(value, TableStep, 0.0);
}

std::string headerName()
{
    return LocalString::create("Z=f(φ) (complex)", "Z=f(φ) (компл)").getValue("");
}

std::string headerText(const std::string& text)
{
    return LocalString::create(text, "").getValue("");
}

} // namespace

GraphZPhiManager::GraphZPhiManager() = default;

void GraphZPhiManager::setSettingsFigures(std::vector<Zem::PointF>& up, Zem::Color upColor,
                                          std::vector<Zem::PointF>& down, Zem::Color downColor)
{
    _zsettingsFiguresUp = up;
    _zsettingsFiguresUpColor = upColor;
    _zsettingsFiguresDown = down;
    _zsettingsFiguresDownColor = downColor;
}

bool GraphZPhiManager::isPointValid(const Zem::Point& point) const
{
    const Zem::PointF pointF = GraphManagerHelper::toPointF(point);
    const bool isInside = ZemCalculate::isPointInPoligon(_zsettingsFiguresUp, pointF);
    const bool isExcluded = ZemCalculate::isPointInPoligon(_zsettingsFiguresDown, pointF);
    return isInside && !isExcluded;
}

std::map<std::string, std::string> GraphZPhiManager::getFigureLabels() const
{
    return {{GraphManagerHelper::FigureKeyUp, lng::Tree::get("Graph.outerZoneBound")},
            {GraphManagerHelper::FigureKeyDown, lng::Tree::get("Graph.innerZoneBound")}};
}

void GraphZPhiManager::getFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                                  std::map<std::string, std::unique_ptr<Zem::Figure>>& figures,
                                  std::shared_ptr<GraphDataHeader>& header)
{
    header = _createHeaderRX();
    GraphManagerHelper::addCurveFigures(points, figures);
    // The zones are judged as closed polygons, so they are drawn closed.
    GraphManagerHelper::addSettingFigure(figures, GraphManagerHelper::FigureKeyUp, _zsettingsFiguresUp,
                                         _zsettingsFiguresUpColor, true, true);
    GraphManagerHelper::addSettingFigure(figures, GraphManagerHelper::FigureKeyDown, _zsettingsFiguresDown,
                                         _zsettingsFiguresDownColor, true, true);
}

std::vector<std::shared_ptr<GraphDataTable>> GraphZPhiManager::getDataTables(const std::vector<Zem::Point>& points)
{
    auto polar = std::make_shared<GraphDataTable>(_createHeaderMA());
    auto rectangular = std::make_shared<GraphDataTable>(_createHeaderRX());
    polar->_records.reserve(points.size());
    rectangular->_records.reserve(points.size());
    for (const Zem::Point& point : points) {
        // The verdict rests on the measured point itself, not on the rounded numbers of the tables.
        const bool isValid = isPointValid(point);
        const ZemCalculate::Complex impedance(point.x, point.y);
        const double magnitude = roundForTable(ZemCalculate::Complex::abs(impedance));
        const double angle =
            roundForTable(std::atan2(impedance.getImaginary(), impedance.getReal()) * DegreesPerRadian);
        polar->_records.push_back(
            std::make_shared<GraphDataRecord>(magnitude, angle, std::make_shared<NumericFixedAssessment>(isValid)));
        rectangular->_records.push_back(std::make_shared<GraphDataRecord>(
            roundForTable(impedance.getReal()), roundForTable(impedance.getImaginary()),
            std::make_shared<NumericFixedAssessment>(isValid)));
    }
    return {polar, rectangular};
}

void GraphZPhiManager::getXmlData(xmlpp::Element* element)
{
    GraphManagerHelper::writeSettingsLine(element, "ZsettingsFiguresUp", _zsettingsFiguresUp);
    GraphManagerHelper::writeSettingsLine(element, "ZsettingsFiguresDown", _zsettingsFiguresDown);
}

void GraphZPhiManager::setXmlData(const xmlpp::Element* element)
{
    FillsettingsVector(element, "ZsettingsFiguresUp", _zsettingsFiguresUp);
    FillsettingsVector(element, "ZsettingsFiguresDown", _zsettingsFiguresDown);
}

void GraphZPhiManager::FillsettingsVector(const xmlpp::Element* element, const std::string& name,
                                          std::vector<Zem::PointF>& target)
{
    GraphManagerHelper::readSettingsLine(element, name, target);
}

std::shared_ptr<GraphDataHeader> GraphZPhiManager::_createHeaderMA() const
{
    return std::make_shared<GraphDataHeader>(headerName(), headerText("Z"), Measures::Ohm(), headerText("φ"),
                                             Measures::Gradus());
}

std::shared_ptr<GraphDataHeader> GraphZPhiManager::_createHeaderRX() const
{
    return std::make_shared<GraphDataHeader>(headerName(), headerText("R"), Measures::Ohm(), headerText("X"),
                                             Measures::Ohm());
}

} // namespace ZemTree

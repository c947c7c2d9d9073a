#include "results/graph/GraphTimeManager.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/StringHelper.h"
#include "core/common/XmlInclude.h"
#include "core/formula/FormulaEvaluator.h"
#include "core/formula/FormulaParser.h"
#include "core/tree/MeasureTypeConverter.h"
#include "core/tree/Measures.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceHelper.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/TreeLocalization.h"
#include "localisation/TreeRelay.h"
#include "results/NumericSettingAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphManagerHelper.h"

#include <limits>
#include <sstream>
#include <unordered_map>
#include <utility>

namespace ZemTree {

namespace {

std::string numberText(double value)
{
    return Zem::convertToString<double, true>(value, 2);
}

// The text of an attribute that is present; false when it is absent.
bool tryGetAttribute(const xmlpp::Element* element, const char* name, std::string& text)
{
    const xmlpp::Attribute* attribute = element->get_attribute(name);
    if (attribute == nullptr)
        return false;
    text = attribute->get_value();
    return true;
}

} // namespace

GraphTimeManager::GraphTimeManager() : GraphTimeManager("", nullptr, nullptr) {}

GraphTimeManager::GraphTimeManager(const std::string& description, Measure* measure,
                                   std::shared_ptr<Tolerance> tolerance)
    : _description(description), _measure(measure), _tolerance(std::move(tolerance))
{
}

void GraphTimeManager::setSettingsFigures(std::vector<Zem::PointF>& up, Zem::Color upColor,
                                          std::vector<Zem::PointF>& down, Zem::Color downColor)
{
    _zsettingsFiguresUp = up;
    _zsettingsFiguresUpColor = upColor;
    _zsettingsFiguresDown = down;
    _zsettingsFiguresDownColor = downColor;
}

std::map<std::string, std::string> GraphTimeManager::getFigureLabels() const
{
    return {{GraphManagerHelper::FigureKeyUp, lng::Tree::get("Graph.upperToleranceLimit")},
            {GraphManagerHelper::FigureKeyDown, lng::Tree::get("Graph.lowerToleranceLimit")}};
}

void GraphTimeManager::getFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                                  std::map<std::string, std::unique_ptr<Zem::Figure>>& figures,
                                  std::shared_ptr<GraphDataHeader>& header)
{
    header = _createHeader();
    GraphManagerHelper::addCurveFigures(points, figures);
    GraphManagerHelper::addSettingFigure(figures, GraphManagerHelper::FigureKeyUp, _zsettingsFiguresUp,
                                         _zsettingsFiguresUpColor, false);
    GraphManagerHelper::addSettingFigure(figures, GraphManagerHelper::FigureKeyDown, _zsettingsFiguresDown,
                                         _zsettingsFiguresDownColor, false);
}

std::vector<std::shared_ptr<GraphDataTable>> GraphTimeManager::getDataTables(const std::vector<Zem::Point>& points)
{
    auto table = std::make_shared<GraphDataTable>(_createHeader());
    table->_records.reserve(points.size());
    for (const Zem::Point& point : points) {
        // The tolerance may depend on the argument, so it is reduced at the point's x, not at the expected time.
        std::shared_ptr<ToleranceReduced> tolerance;
        if (_tolerance)
            tolerance = ToleranceHelper::reduce(_tolerance.get(), point.x);
        const double expected = CalculateTime(_formula, _iOperate, _tOperate, point.x);
        auto assessment = std::make_shared<NumericSettingAssessment>(expected, std::move(tolerance));
        table->_records.push_back(std::make_shared<GraphDataRecord>(point.x, point.y, std::move(assessment)));
    }
    return {table};
}

void GraphTimeManager::getXmlData(xmlpp::Element* element)
{
    element->set_attribute("Description", _description);
    element->set_attribute("Measure", MeasureTypeConverter::toStringData(_measure));
    element->set_attribute("Formula", _formula);
    element->set_attribute("Ioperate", numberText(_iOperate));
    element->set_attribute("Toperate", numberText(_tOperate));
    // Without a tolerance the attribute is left out, so that reading keeps "no tolerance" as well.
    if (_tolerance)
        element->set_attribute("Tolerance", Zem::convertToString<std::shared_ptr<Tolerance>, true, true>(_tolerance));
    GraphManagerHelper::writeSettingsLine(element, "ZsettingsFiguresUp", _zsettingsFiguresUp);
    GraphManagerHelper::writeSettingsLine(element, "ZsettingsFiguresDown", _zsettingsFiguresDown);
}

void GraphTimeManager::setXmlData(const xmlpp::Element* element)
{
    if (element == nullptr)
        return;
    std::string text;
    if (tryGetAttribute(element, "Description", text))
        _description = text;
    if (tryGetAttribute(element, "Measure", text)) {
        // The empty text is "no measure"; an unknown key keeps the measure.
        Measure* measure = MeasureTypeConverter::fromStringData(text);
        if (measure != nullptr || text.empty())
            _measure = measure;
    }
    if (tryGetAttribute(element, "Formula", text))
        _formula = text;
    if (tryGetAttribute(element, "Ioperate", text))
        Zem::tryConvert<double, true>(text, _iOperate);
    if (tryGetAttribute(element, "Toperate", text))
        Zem::tryConvert<double, true>(text, _tOperate);
    if (tryGetAttribute(element, "Tolerance", text))
        Zem::tryConvert<std::shared_ptr<Tolerance>, true, true>(text, _tolerance);
    FillsettingsVector(element, "ZsettingsFiguresUp", _zsettingsFiguresUp);
    FillsettingsVector(element, "ZsettingsFiguresDown", _zsettingsFiguresDown);
}

double GraphTimeManager::CalculateTime(const std::string& formula, double iOperate, double tOperate, double x)
{
    // The formula is made concrete as plain text, so that it holds no references when it is evaluated.
    std::string concrete = Zem::StringHelper::replaceAll(formula, "{T}", numberText(tOperate));
    concrete = Zem::StringHelper::replaceAll(concrete, "{I}", numberText(iOperate));
    concrete = Zem::StringHelper::replaceAll(concrete, "{x}", numberText(x));
    // The concrete text holds no references, so its value never changes: a project of alike tests asks for the
    // same few texts again and again. The memo is per thread and forgets everything when it is full.
    thread_local std::unordered_map<std::string, double> memo;
    const auto known = memo.find(concrete);
    if (known != memo.end())
        return known->second;

    const std::shared_ptr<Formula::FormulaParserResult> parsed = Formula::FormulaParser::separate(concrete);
    const Zem::Out<std::shared_ptr<Formula::ValueExpression>> out =
        Formula::FormulaEvaluator::calculate(parsed.get(), Formula::Resolver());
    double time = 0.0;
    std::string timeText;
    if (!(out.value && !out.error && out.value->tryConvertToString(timeText)
          && Zem::tryConvert<double, true>(timeText, time)))
        time = std::numeric_limits<double>::quiet_NaN();
    if (memo.size() >= 4096)
        memo.clear();
    memo.emplace(std::move(concrete), time);
    return time;
}

void GraphTimeManager::FillsettingsVector(const xmlpp::Element* element, const std::string& name,
                                          std::vector<Zem::PointF>& target)
{
    GraphManagerHelper::readSettingsLine(element, name, target);
}

std::shared_ptr<GraphDataHeader> GraphTimeManager::_createHeader() const
{
    return std::make_shared<GraphDataHeader>(lng::TreeRelay::get("table"), _description, _measure, "T",
                                             Measures::Second());
}

} // namespace ZemTree

#pragma once

#include "core/common/Color.h"
#include "core/common/Point.h"
#include "results/graph/IGraphManager.h"

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class Measure;
class Tolerance;

// The manager of operating-time characteristics: for every measured point (x, y) the expected time is the value
// of a formula at x, and y is judged against it with the tolerance in force at x. The formula names the relay's
// operating quantity "{I}", its operating time "{T}" and the argument "{x}", e.g. the standard inverse
// characteristic "{T}*0.14/(({x}/{I})^0.02-1)". Two setting lines (the edges of the band that the relay is meant
// to hit) are drawn with the measured curves.
class GraphTimeManager : public IGraphManager {
public:
    // What the factory makes; setXmlData fills it.
    GraphTimeManager();
    // Formula "{T}", operating quantity and time 1.0, no setting lines. The measure is not owned and may be null;
    // a null tolerance judges by the zero tolerance (only the expected time itself passes).
    GraphTimeManager(const std::string& description, Measure* measure, std::shared_ptr<Tolerance> tolerance);

    // Replaces the two setting lines and their colours.
    void setSettingsFigures(std::vector<Zem::PointF>& up, Zem::Color upColor, std::vector<Zem::PointF>& down,
                            Zem::Color downColor);
    void setFormula(const std::string& formula) { _formula = formula; }
    void setIOperate(double iOperate) { _iOperate = iOperate; }
    void setTOperate(double tOperate) { _tOperate = tOperate; }

    const std::string& getDescription() const { return _description; }
    Measure* getMeasure() const { return _measure; }
    const std::shared_ptr<Tolerance>& getTolerance() const { return _tolerance; }
    const std::string& getFormula() const { return _formula; }
    double getIOperate() const { return _iOperate; }
    double getTOperate() const { return _tOperate; }
    const std::vector<Zem::PointF>& getSettingsFiguresUp() const { return _zsettingsFiguresUp; }
    Zem::Color getSettingsFiguresUpColor() const { return _zsettingsFiguresUpColor; }
    const std::vector<Zem::PointF>& getSettingsFiguresDown() const { return _zsettingsFiguresDown; }
    Zem::Color getSettingsFiguresDownColor() const { return _zsettingsFiguresDownColor; }

    // The measured curves (blue markers) and the two setting lines (lines without markers) under the keys of
    // GraphManagerHelper; the header is that of the table.
    // The first setting line is labelled as the upper tolerance limit, the second as the lower one.
    std::map<std::string, std::string> getFigureLabels() const override;
    void getFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                    std::map<std::string, std::unique_ptr<Zem::Figure>>& figures,
                    std::shared_ptr<GraphDataHeader>& header) override;
    // One table: per point a record of y judged against the expected time at x, with the tolerance reduced at x.
    // A formula that does not evaluate gives a NaN setting, so the record is NotOk.
    std::vector<std::shared_ptr<GraphDataTable>> getDataTables(const std::vector<Zem::Point>& points) override;
    // Attributes Description, Measure, Formula, Ioperate, Toperate and Tolerance (left out when there is no
    // tolerance), then the children ZsettingsFiguresUp and ZsettingsFiguresDown. The colours are not saved.
    void getXmlData(xmlpp::Element* element) override;
    // Each attribute is optional; an absent one, or a bad number, measure or tolerance text, keeps the field.
    // The setting lines are read by FillsettingsVector.
    void setXmlData(const xmlpp::Element* element) override;

    // The formula with "{T}", then "{I}", then "{x}" replaced by the numbers' texts
    // (Zem::convertToString<double, true>(value, 2)), parsed and evaluated; NaN when it fails to parse, to
    // evaluate or to give a number. Never throws.
    static double CalculateTime(const std::string& formula, double iOperate, double tOperate, double x);
    // Reads the setting line of the first child `name` into `target` (cleared first); see GraphManagerHelper.
    static void FillsettingsVector(const xmlpp::Element* element, const std::string& name,
                                   std::vector<Zem::PointF>& target);

protected:
    // Title "table", argument column the description and measure, value column "T" in seconds.
    std::shared_ptr<GraphDataHeader> _createHeader() const;

private:
    std::string _description;
    Measure* _measure;
    std::shared_ptr<Tolerance> _tolerance;
    std::string _formula = "{T}";
    double _iOperate = 1.0;
    double _tOperate = 1.0;
    std::vector<Zem::PointF> _zsettingsFiguresUp;
    // A manager read from a file has no colours saved; these stand in until setSettingsFigures.
    Zem::Color _zsettingsFiguresUpColor = Zem::Color::Red();
    std::vector<Zem::PointF> _zsettingsFiguresDown;
    Zem::Color _zsettingsFiguresDownColor = Zem::Color::Orange();
};

} // namespace ZemTree

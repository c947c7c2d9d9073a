#pragma once

#include <sigc++/signal.h>

#include <string>

namespace xmlpp {
class Element;
}

namespace ZemTree {

// Which of the two representations of a graph result are shown: the diagram, the table, or both. Kept with a
// project, not with a template; a report shows both whatever is chosen here.
class ResultMultiGraphUnitVisual {
public:
    ResultMultiGraphUnitVisual() = default;
    ResultMultiGraphUnitVisual(const ResultMultiGraphUnitVisual&) = delete;
    ResultMultiGraphUnitVisual& operator=(const ResultMultiGraphUnitVisual&) = delete;

    // Compares first; on a change stores and emits signalIsGraphVisibleChanged.
    void setIsGraphVisible(bool isGraphVisible);
    bool getIsGraphVisible() const { return _isGraphVisible; }
    // Compares first; on a change stores and emits signalIsTableVisibleChanged.
    void setIsTableVisible(bool isTableVisible);
    bool getIsTableVisible() const { return _isTableVisible; }

    // Adds a child `name` under `parent`; each flag is written only when it is off, as IsGraphVisible="false" and
    // IsTableVisible="false", so the default state is a bare element.
    void toXml(xmlpp::Element* parent, const std::string& name) const;
    // Null reads nothing. Otherwise each flag is off for "false", "0" or "False" and on for any other text or none.
    // The fields are set directly: no signal fires.
    void fromXml(const xmlpp::Element* element);

    sigc::signal<void> signalIsGraphVisibleChanged;
    sigc::signal<void> signalIsTableVisibleChanged;

private:
    bool _isGraphVisible = true;
    bool _isTableVisible = true;
};

} // namespace ZemTree

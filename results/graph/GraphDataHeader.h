#pragma once

#include <string>

namespace ZemTree {

class Measure;

// The columns of a table of a graph result: its title, and the heading and unit of the argument and of the value.
// Immutable; shared by the tables and figures that show it.
class GraphDataHeader {
public:
    // The measures are not owned and may be null; they are shared instances that outlive every header.
    GraphDataHeader(const std::string& name, const std::string& descriptionX, Measure* measureX,
                    const std::string& descriptionY, Measure* measureY);

    const std::string& getName() const { return _name; }
    const std::string& getDescriptionX() const { return _descriptionX; }
    Measure* getMeasureX() const { return _measureX; }
    const std::string& getDescriptionY() const { return _descriptionY; }
    Measure* getMeasureY() const { return _measureY; }

private:
    std::string _name;
    std::string _descriptionX;
    Measure* _measureX;
    std::string _descriptionY;
    Measure* _measureY;
};

} // namespace ZemTree

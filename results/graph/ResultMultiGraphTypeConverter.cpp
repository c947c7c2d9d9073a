#include "results/graph/ResultMultiGraphTypeConverter.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/StringHelper.h"
#include "core/common/TypeHelper.h"
#include "core/common/XmlInclude.h"
#include "results/graph/GraphManagerFactory.h"
#include "results/graph/IGraphManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <map>
#include <typeinfo>
#include <utility>

namespace ZemTree {

namespace {

bool hasChildElement(const xmlpp::Element* element)
{
    for (const xmlpp::Node* child : element->get_children())
        if (dynamic_cast<const xmlpp::Element*>(child) != nullptr)
            return true;
    return false;
}

const xmlpp::Element* firstChildElement(const xmlpp::Element* element, const std::string& name)
{
    return dynamic_cast<const xmlpp::Element*>(element->get_first_child(name));
}

// Reads the manager of a "Manager" element; false when Type is missing. An unknown type gives null.
bool readManager(const xmlpp::Element* managerElement, std::shared_ptr<IGraphManager>& manager)
{
    const xmlpp::Attribute* type = managerElement->get_attribute("Type");
    if (type == nullptr)
        return false;
    std::unique_ptr<IGraphManager> made = GraphManagerFactory::getInstance().create(type->get_value());
    if (!made)
        return true;
    made->setXmlData(managerElement);
    manager = std::move(made);
    return true;
}

} // namespace

void ResultMultiGraphTypeConverter::toXmlData(const ResultMultiGraph& result, xmlpp::Element* parent)
{
    xmlpp::Element* element = parent->add_child("ResultMultiGraph");
    if (result.isEmpty())
        return;
    if (IGraphManager* manager = result.getManager()) {
        xmlpp::Element* managerElement = element->add_child("Manager");
        // The same name is the manager's key in the factory, so that reading makes the same type again.
        managerElement->set_attribute("Type", Zem::TypeHelper::getTypeName(typeid(*manager)));
        manager->getXmlData(managerElement);
    }
    xmlpp::Element* items = element->add_child("Items");
    for (const auto& entry : result._items) {
        xmlpp::Element* item = items->add_child("Item");
        item->set_attribute("Name", entry.first);
        xmlpp::Element* value = item->add_child("Value");
        const std::string text = pointsToText(entry.second.getPointCollection());
        if (!text.empty())
            value->add_child_text(text);
    }
}

bool ResultMultiGraphTypeConverter::fromXmlData(const xmlpp::Element* element,
                                                std::shared_ptr<ResultMultiGraph>& result)
{
    if (element == nullptr || element->get_name() != "ResultMultiGraph")
        return false;
    if (!hasChildElement(element)) {
        result = std::make_shared<ResultMultiGraph>();
        return true;
    }
    std::shared_ptr<IGraphManager> manager;
    if (const xmlpp::Element* managerElement = firstChildElement(element, "Manager"))
        if (!readManager(managerElement, manager))
            return false;
    std::map<std::string, std::vector<Zem::Point>> points;
    if (const xmlpp::Element* items = firstChildElement(element, "Items")) {
        for (const xmlpp::Node* node : items->get_children()) {
            const auto* item = dynamic_cast<const xmlpp::Element*>(node);
            if (item == nullptr)
                continue;
            const xmlpp::Attribute* name = item->get_attribute("Name");
            if (name == nullptr)
                continue;
            std::vector<Zem::Point> curve;
            if (const xmlpp::Element* value = firstChildElement(item, "Value"))
                if (const xmlpp::TextNode* text = value->get_child_text())
                    curve = pointsFromText(text->get_content());
            points.emplace(name->get_value(), std::move(curve));
        }
    }
    result = std::make_shared<ResultMultiGraph>(points, std::move(manager));
    return true;
}

std::string ResultMultiGraphTypeConverter::pointsToText(const std::vector<Zem::Point>& points)
{
    std::string text;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i != 0)
            text += '|';
        text += Zem::convertToString<double, true>(points[i].x, 2);
        text += ';';
        text += Zem::convertToString<double, true>(points[i].y, 2);
    }
    return text;
}

std::vector<Zem::Point> ResultMultiGraphTypeConverter::pointsFromText(const std::string& text)
{
    std::vector<Zem::Point> points;
    for (const std::string& piece : Zem::StringHelper::split(text, '|')) {
        const std::vector<std::string> parts = Zem::StringHelper::split(piece, ';');
        if (parts.size() != 2)
            continue;
        double x = 0.0;
        double y = 0.0;
        if (Zem::tryConvert<double, true>(parts[0], x) && Zem::tryConvert<double, true>(parts[1], y))
            points.emplace_back(x, y);
    }
    return points;
}

} // namespace ZemTree

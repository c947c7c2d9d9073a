#include "presentation/views/ResultMultiGraphUnitControlView.h"

#include "localisation/TreeRelay.h"
#include "presentation/widgets/MakeManaged.h"

#include <gtk/gtk.h>

#include <string>

namespace ZemTree {

ResultMultiGraphUnitControlView::ResultMultiGraphUnitControlView()
    : _box(Gtk::ORIENTATION_HORIZONTAL), _graphContent(Gtk::ORIENTATION_HORIZONTAL),
      _tableContent(Gtk::ORIENTATION_HORIZONTAL), _graph{&_graphButton, &_graphContent, {}}, _table{&_tableButton,
                                                                                                    &_tableContent,
                                                                                                    {}}
{
    for (const char* name : {"ResultMultiGraphUnitControlView", "DefaultControlBorder", "rightMarginM1"})
        get_style_context()->add_class(name);
    set_shadow_type(Gtk::SHADOW_NONE);
    _buildButton(_graphButton, _graphContent, "GraphImage", "ResultGraph.showHideGraph");
    _buildButton(_tableButton, _tableContent, "TableImage", "ResultGraph.showHideTable");
    _box.pack_start(_graphButton, Gtk::PACK_SHRINK);
    _box.pack_start(_tableButton, Gtk::PACK_SHRINK);
    add(_box);
    _graphButton.signal_toggled().connect([this] { _onToggled(_graph, signalIsGraphVisibleChanged); });
    _tableButton.signal_toggled().connect([this] { _onToggled(_table, signalIsTableVisibleChanged); });
    // The eyes are right from the first display; nothing is connected yet.
    _onToggled(_graph, signalIsGraphVisibleChanged);
    _onToggled(_table, signalIsTableVisibleChanged);
    show_all();
}

void ResultMultiGraphUnitControlView::setIsControlVisible(bool isVisible)
{
    // Stays hidden through a parent's show_all.
    set_no_show_all(!isVisible);
    set_visible(isVisible);
}

void ResultMultiGraphUnitControlView::setIsGraphVisible(bool isVisible)
{
    _setActive(_graphButton, isVisible);
}

bool ResultMultiGraphUnitControlView::getIsGraphVisible() const
{
    return _graphButton.get_active();
}

void ResultMultiGraphUnitControlView::setIsTableVisible(bool isVisible)
{
    _setActive(_tableButton, isVisible);
}

bool ResultMultiGraphUnitControlView::getIsTableVisible() const
{
    return _tableButton.get_active();
}

void ResultMultiGraphUnitControlView::_buildButton(Gtk::ToggleButton& button, Gtk::Box& content, const char* imageClass,
                                                   const char* tooltipKey)
{
    for (const char* name : {"editable", "ZemTreeControlNone", "DefaultControlBorder", "innerContentSmallMargin"})
        button.get_style_context()->add_class(name);
    auto* const image = Zem::make_managed<Gtk::Image>();
    image->get_style_context()->add_class(imageClass);
    content.pack_start(*image, Gtk::PACK_SHRINK);
    button.add(content);
    button.set_tooltip_text(std::string(lng::TreeRelay::get(tooltipKey)) + "\n"
                            + lng::TreeRelay::get("ResultGraph.showHideAll"));
}

void ResultMultiGraphUnitControlView::_onToggled(Switch& part, sigc::signal<void, bool>& signal)
{
    // A new image each time: the eye's picture comes from the theme by class.
    part.eye = std::make_unique<Gtk::Image>();
    part.eye->get_style_context()->add_class(part.button->get_active() ? "EyeImage" : "EyeDisabledImage");
    part.content->pack_start(*part.eye, Gtk::PACK_SHRINK);
    part.eye->show();
    if (_isSettingFromModel)
        return;
    GdkModifierType state = static_cast<GdkModifierType>(0);
    gtk_get_current_event_state(&state);
    signal.emit((state & GDK_CONTROL_MASK) != 0);
}

void ResultMultiGraphUnitControlView::_setActive(Gtk::ToggleButton& button, bool isActive)
{
    if (button.get_active() == isActive)
        return;
    _isSettingFromModel = true;
    button.set_active(isActive);
    _isSettingFromModel = false;
}

} // namespace ZemTree

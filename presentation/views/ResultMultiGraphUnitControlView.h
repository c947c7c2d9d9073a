#pragma once

#include "presentation/views/IResultMultiGraphUnitControlView.h"

#include <gtkmm/box.h>
#include <gtkmm/frame.h>
#include <gtkmm/image.h>
#include <gtkmm/togglebutton.h>

#include <memory>

namespace ZemTree {

// Two toggle buttons, diagram then table, each with its picture and an eye that is open while the part is shown.
// Ctrl with a click asks to apply the change to every graph unit.
class ResultMultiGraphUnitControlView : public Gtk::Frame, public IResultMultiGraphUnitControlView {
public:
    ResultMultiGraphUnitControlView();
    ResultMultiGraphUnitControlView(const ResultMultiGraphUnitControlView&) = delete;
    ResultMultiGraphUnitControlView& operator=(const ResultMultiGraphUnitControlView&) = delete;

    void setIsControlVisible(bool isVisible) override;
    void setIsGraphVisible(bool isVisible) override;
    bool getIsGraphVisible() const override;
    void setIsTableVisible(bool isVisible) override;
    bool getIsTableVisible() const override;

    Gtk::ToggleButton& getGraphButton() { return _graphButton; }
    Gtk::ToggleButton& getTableButton() { return _tableButton; }

private:
    // One switch: its button, the box inside it and the eye image that is replaced on every toggle.
    struct Switch {
        Gtk::ToggleButton* button;
        Gtk::Box* content;
        std::unique_ptr<Gtk::Image> eye;
    };

    void _buildButton(Gtk::ToggleButton& button, Gtk::Box& content, const char* imageClass, const char* tooltipKey);
    void _onToggled(Switch& part, sigc::signal<void, bool>& signal);
    void _setActive(Gtk::ToggleButton& button, bool isActive);

    Gtk::Box _box;
    Gtk::ToggleButton _graphButton;
    Gtk::ToggleButton _tableButton;
    Gtk::Box _graphContent;
    Gtk::Box _tableContent;
    Switch _graph;
    Switch _table;
    // Set while the model moves a button, so that the toggle is not taken as the user's request.
    bool _isSettingFromModel = false;
};

} // namespace ZemTree

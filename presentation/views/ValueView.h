#pragma once

#include "presentation/views/IValueView.h"
#include "presentation/views/MenuView.h"

#include <gtkmm/button.h>
#include <gtkmm/checkmenuitem.h>
#include <gtkmm/eventbox.h>
#include <gtkmm/frame.h>
#include <gtkmm/grid.h>
#include <gtkmm/overlay.h>
#include <gtkmm/separatormenuitem.h>
#include <sigc++/connection.h>

#include <memory>
#include <string>

namespace ZemTree {

// The frame of a value: an event box around an overlay whose main child is the data's view ("ValueViewData"),
// a pass-through grid over it that draws the frame's state by CSS ("ValueStateOverlay"), and a button that stands
// over the data while a formula is the source ("ValueFormulaOverlay"). The frame carries "formulaSource" while a
// formula is the source, and the state flag INCONSISTENT (":indeterminate" in CSS) while it shows an error.
//
// Edit mode is entered when a child of the frame takes the focus and no formula is the source, and left when the
// focus leaves the frame. Both are deferred to the main loop, so that the focus moving between two children of the
// frame does not flicker through the modes.
class ValueView : public Gtk::Frame, public virtual IValueView {
public:
    ValueView();
    ~ValueView() override;
    ValueView(const ValueView&) = delete;
    ValueView& operator=(const ValueView&) = delete;

    void setDataView(Zem::IView* view) override;
    Zem::IView* getContextMenuView() override;
    void setIsFormulaSource(bool isFormulaSource) override;
    void setTooltip(const std::string& text) override;
    void setError(const std::string& text) override;
    bool isEditMode() const override { return _isEditMode; }

    Gtk::Button& getFormulaOverlay() { return _formulaOverlay; }
    // The text that setTooltip and setError gave the frame.
    std::string getComposedTooltip() const;

protected:
    // Fills the context menu when it is first made.
    virtual void _initMenu(MenuView& menu);
    virtual void _onIsEditModeChanged() {}

    void on_unrealize() override;

private:
    void _onSignalSetFocusChild(Gtk::Widget* child);
    bool _onGetFocus();
    bool _onLostFocus();
    bool _onEventBoxButtonPress(GdkEventButton* event);
    void _onIsFormulaSourceMenuItemToggled();
    void _updateTooltip();

    Gtk::EventBox _eventBox;
    Gtk::Overlay _overlay;
    Gtk::Grid _stateOverlay;
    Gtk::Button _formulaOverlay;
    Gtk::Widget* _dataWidget = nullptr;
    std::unique_ptr<MenuView> _contextMenu;
    std::unique_ptr<Gtk::CheckMenuItem> _formulaSourceMenuItem;
    bool _isProcessingFocus = false;
    bool _isFormulaSource = false;
    std::string _error;
    std::string _tooltip;
    bool _isEditMode = false;
    sigc::connection _getFocusConnection;
    sigc::connection _lostFocusConnection;
};

// The frame of a unit: its menu adds "Default value" after a separator.
class UnitView : public ValueView, public IUnitView {
public:
    UnitView() = default;

protected:
    void _initMenu(MenuView& menu) override;

private:
    std::unique_ptr<Gtk::SeparatorMenuItem> _separator;
    std::unique_ptr<Gtk::MenuItem> _resetItem;
};

} // namespace ZemTree

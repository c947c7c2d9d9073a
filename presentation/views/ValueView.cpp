#include "presentation/views/ValueView.h"

#include "core/tree/TreeLocalization.h"
#include "localisation/TreePresentersLocalization.h"

#include <glibmm/main.h>
#include <gtkmm/menuitem.h>

namespace ZemTree {

namespace {

// Later than redrawing and resizing, so that a focus move inside the frame has settled when the mode is judged.
constexpr int focusPriority = 200;

} // namespace

ValueView::ValueView()
{
    set_border_width(0);
    get_style_context()->add_class("ValueView");
    get_style_context()->add_class("ValueControl");
    add(_eventBox);
    _eventBox.add(_overlay);

    _stateOverlay.get_style_context()->add_class("ValueStateOverlay");
    _stateOverlay.get_style_context()->add_class("ValueControl");
    _overlay.add_overlay(_stateOverlay);
    gtk_overlay_set_overlay_pass_through(_overlay.gobj(), GTK_WIDGET(_stateOverlay.gobj()), TRUE);

    _formulaOverlay.get_style_context()->add_class("ValueFormulaOverlay");
    _formulaOverlay.set_relief(Gtk::RELIEF_NONE);
    _formulaOverlay.set_no_show_all(true);
    _overlay.add_overlay(_formulaOverlay);

    signal_set_focus_child().connect([this](Gtk::Widget* child) { _onSignalSetFocusChild(child); });
    _formulaOverlay.signal_button_press_event().connect(
        [this](GdkEventButton* event) { return Gtk::Frame::on_button_press_event(event); });
    _formulaOverlay.signal_key_press_event().connect([](GdkEventKey*) { return false; });
    _eventBox.signal_button_press_event().connect(
        [this](GdkEventButton* event) { return _onEventBoxButtonPress(event); });
    show_all();
    _formulaOverlay.hide();
}

ValueView::~ValueView()
{
    _getFocusConnection.disconnect();
    _lostFocusConnection.disconnect();
}

void ValueView::setDataView(Zem::IView* view)
{
    auto* const widget = dynamic_cast<Gtk::Widget*>(view);
    if (widget == nullptr)
        return;
    if (_dataWidget != nullptr)
        _overlay.remove();
    _dataWidget = widget;
    _overlay.add(*widget);
    widget->get_style_context()->add_class("ValueViewData");
    widget->set_can_focus(!_isFormulaSource);
    widget->show();
}

Zem::IView* ValueView::getContextMenuView()
{
    if (!_contextMenu) {
        _contextMenu = std::make_unique<MenuView>();
        _initMenu(*_contextMenu);
        _contextMenu->attach_to_widget(*this);
        _contextMenu->show_all();
    }
    return _contextMenu.get();
}

void ValueView::setIsFormulaSource(bool isFormulaSource)
{
    if (isFormulaSource == _isFormulaSource)
        return;
    _isFormulaSource = isFormulaSource;
    if (isFormulaSource)
        get_style_context()->add_class("formulaSource");
    else
        get_style_context()->remove_class("formulaSource");
    if (_dataWidget != nullptr)
        _dataWidget->set_can_focus(!isFormulaSource);
    _formulaOverlay.set_visible(isFormulaSource);
}

void ValueView::setTooltip(const std::string& text)
{
    if (text == _tooltip)
        return;
    _tooltip = text;
    _updateTooltip();
}

void ValueView::setError(const std::string& text)
{
    if (text == _error)
        return;
    _error = text;
    set_state_flags(_error.empty() ? Gtk::StateFlags(0) : Gtk::STATE_FLAG_INCONSISTENT, true);
    _updateTooltip();
}

// The tooltip, then the two characters "/n" and the error; an empty tooltip leaves the error alone.
std::string ValueView::getComposedTooltip() const
{
    if (_tooltip.empty())
        return _error;
    return _error.empty() ? _tooltip : _tooltip + "/n" + _error;
}

void ValueView::_initMenu(MenuView& menu)
{
    _formulaSourceMenuItem =
        std::make_unique<Gtk::CheckMenuItem>(TreePresentersLocalization::formulaSource[lng::language == 1 ? 1 : 0]);
    _formulaSourceMenuItem->set_active(_isFormulaSource);
    _formulaSourceMenuItem->signal_toggled().connect([this] { _onIsFormulaSourceMenuItemToggled(); });
    menu.append(*_formulaSourceMenuItem);
}

void ValueView::on_unrealize()
{
    _getFocusConnection.disconnect();
    _lostFocusConnection.disconnect();
    Gtk::Frame::on_unrealize();
}

void ValueView::_onSignalSetFocusChild(Gtk::Widget* child)
{
    if (child != nullptr) {
        if (_isEditMode || _isFormulaSource)
            return;
        _getFocusConnection.disconnect();
        _getFocusConnection = Glib::signal_idle().connect([this] { return _onGetFocus(); }, focusPriority);
        return;
    }
    if (_isProcessingFocus)
        return;
    _lostFocusConnection.disconnect();
    _lostFocusConnection = Glib::signal_idle().connect([this] { return _onLostFocus(); }, focusPriority);
}

bool ValueView::_onGetFocus()
{
    _isProcessingFocus = true;
    if (!_isEditMode) {
        _isEditMode = true;
        _onIsEditModeChanged();
        signalIsEditModeChanged.emit();
    }
    signalGetFocus.emit();
    _isProcessingFocus = false;
    return false;
}

bool ValueView::_onLostFocus()
{
    // The focus came back into the frame before this ran: the frame is still being edited.
    if (get_focus_child() != nullptr)
        return false;
    if (_isEditMode) {
        _isEditMode = false;
        _onIsEditModeChanged();
        signalIsEditModeChanged.emit();
    }
    signalLostFocus.emit();
    return false;
}

bool ValueView::_onEventBoxButtonPress(GdkEventButton* event)
{
    if (event->button == 1) {
        if (!_formulaOverlay.has_focus())
            return false;
        signalFormulaChangeRequired.emit();
        return true;
    }
    if (event->button == 3) {
        getContextMenuView();
        _contextMenu->popup(3, event->time);
        return true;
    }
    return false;
}

void ValueView::_onIsFormulaSourceMenuItemToggled()
{
    signalIsFormulaSourceChanged.emit(_formulaSourceMenuItem->get_active());
    if (_isFormulaSource)
        _formulaOverlay.grab_focus();
}

void ValueView::_updateTooltip()
{
    set_tooltip_text(getComposedTooltip());
}

void UnitView::_initMenu(MenuView& menu)
{
    ValueView::_initMenu(menu);
    _separator = std::make_unique<Gtk::SeparatorMenuItem>();
    menu.append(*_separator);
    _resetItem = std::make_unique<Gtk::MenuItem>(TreePresentersLocalization::resetValue[lng::language == 1 ? 1 : 0]);
    _resetItem->signal_activate().connect([this] { signalResetValue.emit(); });
    menu.append(*_resetItem);
}

} // namespace ZemTree

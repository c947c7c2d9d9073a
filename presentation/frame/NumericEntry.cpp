#include "presentation/frame/NumericEntry.h"

#include "core/common/ConvertionHelper.h"
#include "core/tree/TreeLocalization.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/menu.h>

#include <algorithm>
#include <cmath>

namespace Zem {

namespace {

const char* const refusedClass = "NumericEntryRefused";
// Whole numbers beyond this lose units in a double; the integer mode refuses them.
const double largestWhole = 9007199254740992.0;

std::string trim(const std::string& text)
{
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isSpace).base();
    return first < last ? std::string(first, last) : std::string();
}

std::string boundText(const char* key, double bound, NumericEntry::Mode mode)
{
    const std::string number = mode == NumericEntry::Mode::Integer
                                   ? convertToString<long long, true>(std::llround(bound))
                                   : convertToString<double, true>(bound);
    return std::string(lng::Tree::get(key)) + " " + number;
}

} // namespace

NumericEntry::NumericEntry(Mode mode) : _mode(mode)
{
    get_style_context()->add_class("NumericEntry");
    set_width_chars(4);
    _showValue();
    show();
}

void NumericEntry::setValue(double value)
{
    _value = _mode == Mode::Integer && std::isfinite(value) ? std::round(value) : value;
    _showValue();
}

void NumericEntry::setBounds(const Nullable<double>& minimum, const Nullable<double>& maximum)
{
    _minimum = minimum;
    _maximum = maximum;
}

void NumericEntry::setCustomMenu(IView* menu)
{
    _customMenu = menu;
}

NumericEntry::Parsed NumericEntry::parse(const std::string& text, Mode mode, const Nullable<double>& minimum,
                                         const Nullable<double>& maximum)
{
    Parsed parsed;
    std::string normalized = trim(text);
    std::replace(normalized.begin(), normalized.end(), ',', '.');
    if (normalized.empty()) {
        parsed.refusal = lng::Tree::get("NumericEntry.empty");
        return parsed;
    }
    double value = 0.0;
    long long whole = 0;
    if (mode == Mode::Integer && tryConvert<long long, true>(normalized, whole)) {
        value = static_cast<double>(whole);
    }
    else if (!tryConvert<double, true>(normalized, value) || !std::isfinite(value)) {
        parsed.refusal = lng::Tree::get("NumericEntry.notNumber");
        return parsed;
    }
    else if (mode == Mode::Integer && (value != std::round(value) || std::fabs(value) > largestWhole)) {
        parsed.refusal = lng::Tree::get("NumericEntry.notInteger");
        return parsed;
    }
    if (minimum && value < minimum.getValue()) {
        parsed.refusal = boundText("NumericEntry.belowMinimum", minimum.getValue(), mode);
        return parsed;
    }
    if (maximum && value > maximum.getValue()) {
        parsed.refusal = boundText("NumericEntry.aboveMaximum", maximum.getValue(), mode);
        return parsed;
    }
    parsed.isAccepted = true;
    parsed.value = value;
    return parsed;
}

// An untouched text stands for the value as it is, which its rounded text need not give back exactly.
void NumericEntry::commit()
{
    if (!isRefused() && get_text() == _formatValue())
        return;
    const Parsed parsed = parse(get_text(), _mode, _minimum, _maximum);
    if (!parsed.isAccepted) {
        _setRefusal(parsed.refusal);
        return;
    }
    const bool isChanged = parsed.value != _value;
    _value = parsed.value;
    _showValue();
    if (isChanged)
        signalValueChanged.emit();
}

void NumericEntry::on_activate()
{
    commit();
    Gtk::Entry::on_activate();
}

bool NumericEntry::on_focus_out_event(GdkEventFocus* event)
{
    commit();
    return Gtk::Entry::on_focus_out_event(event);
}

// Escape undoes typing only when there is something to undo; otherwise it goes on to a dialog that cancels.
bool NumericEntry::on_key_press_event(GdkEventKey* event)
{
    if (event->keyval == GDK_KEY_Escape && (isRefused() || get_text() != _formatValue())) {
        _showValue();
        return true;
    }
    return Gtk::Entry::on_key_press_event(event);
}

bool NumericEntry::on_button_press_event(GdkEventButton* event)
{
    if (event->type == GDK_BUTTON_PRESS && event->button == 3) {
        if (auto* menu = dynamic_cast<Gtk::Menu*>(_customMenu)) {
            menu->popup_at_pointer(reinterpret_cast<GdkEvent*>(event));
            return true;
        }
    }
    return Gtk::Entry::on_button_press_event(event);
}

bool NumericEntry::on_scroll_event(GdkEventScroll* /*event*/)
{
    return false;
}

std::string NumericEntry::_formatValue() const
{
    if (_mode == Mode::Integer && std::isfinite(_value))
        return convertToString<long long, true>(std::llround(_value));
    return convertToString<double, true>(_value);
}

void NumericEntry::_showValue()
{
    set_text(_formatValue());
    _setRefusal("");
}

void NumericEntry::_setRefusal(const std::string& refusal)
{
    _refusal = refusal;
    if (_refusal.empty()) {
        get_style_context()->remove_class(refusedClass);
        set_tooltip_text("");
        return;
    }
    get_style_context()->add_class(refusedClass);
    set_tooltip_text(_refusal);
}

} // namespace Zem

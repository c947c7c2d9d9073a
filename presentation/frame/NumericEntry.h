#pragma once

#include "core/common/Nullable.h"
#include "presentation/frame/IView.h"

#include <gtkmm/entry.h>
#include <sigc++/signal.h>

#include <string>

namespace Zem {

// A text field for one number, whole or real, with optional bounds. The value changes only when the user
// commits (Enter or leaving the field), never per keystroke. Text that does not give an allowed number is refused:
// it stays as typed, marked with the style class "NumericEntryRefused" and a tooltip that says why, while the value
// keeps its last good number and no signal fires; Escape brings the value's text back. A typed decimal comma
// counts as a point. The scroll wheel is passed on to the parent and changes nothing.
class NumericEntry : public Gtk::Entry, public IView {
public:
    enum class Mode { Integer, Real };

    // What the text of a commit gives: the number, or the text of the refusal in the current language.
    struct Parsed {
        bool isAccepted = false;
        double value = 0.0;
        std::string refusal;
    };

    explicit NumericEntry(Mode mode = Mode::Real);
    NumericEntry(const NumericEntry&) = delete;
    NumericEntry& operator=(const NumericEntry&) = delete;

    // Raised after a commit that changed the value; not by setValue.
    sigc::signal<void> signalValueChanged;

    double getValue() const { return _value; }
    // Shows `value` (rounded in the integer mode) and drops a refusal; raises nothing.
    void setValue(double value);

    // Bounds are inclusive; an empty one does not limit. The value in place is kept even when outside.
    void setBounds(const Nullable<double>& minimum, const Nullable<double>& maximum);
    Mode getMode() const { return _mode; }

    // The menu of a right click instead of the entry's own; a view that is no Gtk::Menu, or null, brings the
    // entry's own menu back. Not owned.
    void setCustomMenu(IView* menu);

    // True while a refused text stands in the field.
    bool isRefused() const { return !_refusal.empty(); }
    const std::string& getRefusal() const { return _refusal; }

    // Reads `text` as a commit of an entry with this mode and these bounds would.
    static Parsed parse(const std::string& text, Mode mode, const Nullable<double>& minimum,
                        const Nullable<double>& maximum);

    // Takes the text in the field as the user's input; what Enter and focus-out do.
    void commit();

protected:
    void on_activate() override;
    bool on_focus_out_event(GdkEventFocus* event) override;
    bool on_key_press_event(GdkEventKey* event) override;
    bool on_button_press_event(GdkEventButton* event) override;
    bool on_scroll_event(GdkEventScroll* event) override;

private:
    std::string _formatValue() const;
    void _showValue();
    void _setRefusal(const std::string& refusal);

    Mode _mode;
    double _value = 0.0;
    Nullable<double> _minimum;
    Nullable<double> _maximum;
    std::string _refusal;
    IView* _customMenu = nullptr;
};

} // namespace Zem

#pragma once

#include "presentation/views/ITextView.h"

#include <gtkmm/label.h>

namespace ZemTree {

// A label; a wrapped one breaks long text into lines at word ends, an unwrapped one keeps a single line and
// ends in an ellipsis when it gets too little room.
class TextView : public Gtk::Label, public ITextView {
public:
    explicit TextView(bool isWrapped);
    TextView(const TextView&) = delete;
    TextView& operator=(const TextView&) = delete;

    void setText(const std::string& text) override;
};

} // namespace ZemTree

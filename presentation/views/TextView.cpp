#include "presentation/views/TextView.h"

namespace ZemTree {

TextView::TextView(bool isWrapped)
{
    get_style_context()->add_class("TextView");
    set_xalign(0.0f);
    if (isWrapped) {
        set_line_wrap(true);
        set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    }
    else {
        set_ellipsize(Pango::ELLIPSIZE_END);
    }
    show();
}

void TextView::setText(const std::string& text)
{
    if (get_text() == text)
        return;
    set_text(text);
    set_tooltip_text(get_ellipsize() == Pango::ELLIPSIZE_END ? text : std::string());
}

} // namespace ZemTree

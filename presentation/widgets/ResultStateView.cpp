#include "presentation/widgets/ResultStateView.h"

namespace Zem {

ResultStateView::ResultStateView()
{
    get_style_context()->add_class("ResultStateView");
    set_xalign(0.0f);
    set_ellipsize(Pango::ELLIPSIZE_END);
    setState(Nullable<bool>());
    show();
}

void ResultStateView::setText(const std::string& text)
{
    set_text(text);
}

void ResultStateView::setTooltip(const std::string& tooltip)
{
    set_tooltip_text(tooltip);
}

void ResultStateView::setState(const Nullable<bool>& state)
{
    const char* const wanted = !state.hasValue() ? notTestedClass : (state.getValue() ? okClass : notOkClass);
    auto context = get_style_context();
    for (const char* name : {okClass, notOkClass, notTestedClass}) {
        if (name != wanted)
            context->remove_class(name);
    }
    context->add_class(wanted);
}

} // namespace Zem

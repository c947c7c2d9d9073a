#include "presentation/presenters/ResultStatePresenter.h"

#include "localisation/TreeRelay.h"
#include "presentation/widgets/ResultStateView.h"
#include "results/ResultBase.h"

namespace ZemTree {

ResultStatePresenter::ResultStatePresenter(const ResultBase* result)
{
    getView();
    Zem::IResultStateView* const view = _getTypedView();
    if (!result) {
        view->setText(lng::TreeRelay::get("result_empty"));
        view->setState(Zem::Nullable<bool>());
        return;
    }
    std::string text;
    std::string tooltip;
    splitDescription(result->getStateDescription(), text, tooltip);
    if (!tooltip.empty())
        view->setTooltip(tooltip);
    view->setText(text);
    const ResultState state = result->getState();
    if (state == ResultState::Ok)
        view->setState(Zem::Nullable<bool>(true));
    else if (state == ResultState::Empty)
        view->setState(Zem::Nullable<bool>());
    else
        view->setState(Zem::Nullable<bool>(false));
}

void ResultStatePresenter::splitDescription(const std::string& description, std::string& text, std::string& tooltip)
{
    const std::size_t lineFeed = description.find('\n');
    if (lineFeed == std::string::npos || lineFeed + 1 == description.size()) {
        text = description;
        tooltip.clear();
        return;
    }
    text = description.substr(0, lineFeed);
    tooltip = description;
}

std::unique_ptr<Zem::IResultStateView> ResultStatePresenter::_createDefaultView()
{
    return std::make_unique<Zem::ResultStateView>();
}

} // namespace ZemTree

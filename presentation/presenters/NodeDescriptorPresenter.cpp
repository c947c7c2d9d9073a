#include "presentation/presenters/NodeDescriptorPresenter.h"

#include "core/tree/Node.h"
#include "presentation/views/TextView.h"

namespace ZemTree {

NodeDescriptorPresenter::NodeDescriptorPresenter(Node* node) : _node(node) {}

NodeDescriptorPresenter::~NodeDescriptorPresenter()
{
    _descriptionConnection.disconnect();
}

std::unique_ptr<ITextView> NodeDescriptorPresenter::_createDefaultView()
{
    auto view = std::make_unique<TextView>(false);
    view->get_style_context()->add_class("NodeDescriptorView");
    return view;
}

void NodeDescriptorPresenter::_onViewInited()
{
    if (_node == nullptr)
        return;
    _view->setText(_node->getDescription());
    _descriptionConnection =
        _node->getSignalDescriptionChanged().connect([this](Node*) { _modelDescriptionChanged(); });
}

// Descriptions change on the GUI thread only (editing, loading).
void NodeDescriptorPresenter::_modelDescriptionChanged()
{
    _view->setText(_node->getDescription());
}

} // namespace ZemTree

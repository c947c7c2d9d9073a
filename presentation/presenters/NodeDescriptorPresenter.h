#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/views/ITextView.h"

#include <sigc++/connection.h>

namespace ZemTree {

class Node;

// The description of a node in the current language; follows a change of the description.
class NodeDescriptorPresenter : public Zem::PresenterBase<ITextView> {
public:
    // `node` is not owned and outlives the presenter; null shows nothing.
    explicit NodeDescriptorPresenter(Node* node);
    ~NodeDescriptorPresenter() override;

    Node* getNode() const { return _node; }

protected:
    std::unique_ptr<ITextView> _createDefaultView() override;
    void _onViewInited() override;

private:
    void _modelDescriptionChanged();

    Node* _node;
    sigc::connection _descriptionConnection;
};

} // namespace ZemTree

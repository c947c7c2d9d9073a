#pragma once

#include "presentation/frame/CollectionOrientation.h"
#include "presentation/frame/IEditableCollectionView.h"

#include <gtkmm/box.h>

#include <vector>

namespace Zem {

// The default collection view: a box with one child widget per shown view. A view that is no widget (an empty
// place) keeps its index here and adds nothing to the box.
class CollectionBoxView : public Gtk::Box, public IEditableCollectionView {
public:
    explicit CollectionBoxView(CollectionOrientation orientation = CollectionOrientation::Vertical);
    CollectionBoxView(const CollectionBoxView&) = delete;
    CollectionBoxView& operator=(const CollectionBoxView&) = delete;
    ~CollectionBoxView() override;

    void clear() override;
    void add(IView* view) override;
    // An index past the end appends.
    void insert(std::size_t index, IView* view) override;
    // A view that is not shown here is ignored.
    void remove(IView* view) override;
    // A view that is not shown here is ignored; an index past the end moves it last.
    void move(std::size_t index, IView* view) override;

    std::size_t getViewCount() const { return _views.size(); }

private:
    // A shown view and its widget, found once while the view is sure to be alive; null for a view that is no
    // widget.
    struct Entry {
        IView* view;
        GtkWidget* widget;
    };

    // The box position of the widget that stands at `index` of `_views`: widgets before it are counted.
    int _getBoxPosition(std::size_t index) const;
    std::vector<Entry>::iterator _find(IView* view);
    // A child widget left the box by other means (its presenter deleted it): its entry goes too.
    static void _onWidgetRemoved(GtkContainer* box, GtkWidget* widget, gpointer self);

    std::vector<Entry> _views;
    gulong _removedHandler = 0;
};

} // namespace Zem

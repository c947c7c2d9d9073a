#pragma once

#include "presentation/frame/IPresenter.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZemTree {

// The item presenters of a multi result, one per row in the result's order. A null result or one without items
// still gets one row, keyed "-" with a default result, so that an untested unit keeps its place in the columns.
template <class Result, class Item, class ItemPresenter> class ResultItemRows {
public:
    void update(const Result* result)
    {
        _items.clear();
        if (result == nullptr || result->_items.empty()) {
            _items.push_back(std::make_unique<ItemPresenter>(std::make_pair(std::string("-"), Item())));
            return;
        }
        for (const auto& item : result->_items)
            _items.push_back(std::make_unique<ItemPresenter>(item));
    }

    std::vector<Zem::IPresenter*> get() const
    {
        std::vector<Zem::IPresenter*> raw;
        raw.reserve(_items.size());
        for (const auto& item : _items)
            raw.push_back(item.get());
        return raw;
    }

private:
    std::vector<std::unique_ptr<ItemPresenter>> _items;
};

} // namespace ZemTree

#pragma once

#include "core/common/Nullable.h"
#include "presentation/frame/PresenterBase.h"
#include "presentation/views/IEnumStorageView.h"

#include <sigc++/signal.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

// One list of allowed values with the texts a user reads, shared by many selectors (EnumPresenter): the channels
// of a test set, say, for every contact of a test. The list lives here, so it can be filled before any widget
// exists; its view, an EnumStorageView, is the store that the selectors' combo boxes show.
class ExternalEnumLimiterPresenter : public Zem::PresenterBase<IEnumStorageView> {
public:
    struct Item {
        std::string value;
        std::string description;
        std::string icon;
    };

    ExternalEnumLimiterPresenter() = default;

    // Inserts a value at `position` (0 first; at or past the end, such as -1, last; else after the item before
    // it). `icon` names an icon of the theme shown before the text; empty or no value shows none. A value that is
    // there already keeps its place and takes the new text and icon.
    void addLimiterValue(const std::string& value, const std::string& description, std::size_t position,
                         const Zem::Nullable<std::string>& icon = Zem::Nullable<std::string>());
    void removeLimiterValue(const std::string& value);
    void clearLimiterValues();

    const std::vector<Item>& getItems() const { return _items; }
    bool hasValue(const std::string& value) const;
    // The text of `value`, empty when the list has no such value.
    std::string getDescription(const std::string& value) const;

    // Fires after every change of the list.
    sigc::signal<void>& getSignalChanged() { return _signalChanged; }

protected:
    std::unique_ptr<IEnumStorageView> _createDefaultView() override;
    void _onViewInited() override;

private:
    std::vector<Item>::const_iterator _find(const std::string& value) const;

    std::vector<Item> _items;
    sigc::signal<void> _signalChanged;
};

} // namespace ZemTree

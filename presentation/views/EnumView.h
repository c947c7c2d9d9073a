#pragma once

#include "presentation/views/IEnumView.h"

#include <gtkmm/box.h>
#include <gtkmm/cellrendererpixbuf.h>
#include <gtkmm/cellrenderertext.h>
#include <gtkmm/combobox.h>
#include <gtkmm/label.h>

namespace ZemTree {

// A combo box over a shared EnumStorageView, and beside it a label that shows a value the list lacks as it is,
// marked missing ("EnumValueMissing"). The combo ignores the scroll wheel, so scrolling a pane never changes a
// choice by accident.
class EnumView : public Gtk::Box, public IEnumView {
public:
    EnumView();
    EnumView(const EnumView&) = delete;
    EnumView& operator=(const EnumView&) = delete;

    void setStorage(IEnumStorageView* storage) override;
    void showValue(const std::string& value, bool isMissing) override;

    Gtk::ComboBox& getCombo() { return _combo; }
    Gtk::Label& getMissingLabel() { return _missing; }

private:
    void _onComboChanged();

    Gtk::ComboBox _combo;
    Gtk::CellRendererPixbuf _iconRenderer;
    Gtk::CellRendererText _textRenderer;
    Gtk::Label _missing;
    bool _isUpdating = false;
};

} // namespace ZemTree

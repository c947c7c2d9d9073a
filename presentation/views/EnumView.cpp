#include "presentation/views/EnumView.h"

#include "core/tree/TreeLocalization.h"
#include "presentation/views/EnumColumns.h"
#include "presentation/views/EnumStorageView.h"

namespace ZemTree {

namespace {

// Sets a flag for the life of the guard, so that changes made here are not taken for the user's.
struct UpdatingGuard {
    explicit UpdatingGuard(bool& flag) : _flag(flag), _before(flag) { _flag = true; }
    ~UpdatingGuard() { _flag = _before; }
    UpdatingGuard(const UpdatingGuard&) = delete;
    UpdatingGuard& operator=(const UpdatingGuard&) = delete;

private:
    bool& _flag;
    bool _before;
};

} // namespace

EnumView::EnumView() : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL, 4)
{
    get_style_context()->add_class("EnumView");
    const EnumColumns& columns = EnumColumns::instance();
    _combo.pack_start(_iconRenderer, false);
    _combo.add_attribute(_iconRenderer.property_icon_name(), columns.icon);
    _combo.pack_start(_textRenderer, true);
    _combo.add_attribute(_textRenderer.property_text(), columns.text);
    _combo.set_hexpand(true);
    _combo.signal_changed().connect([this] { _onComboChanged(); });
    _combo.signal_scroll_event().connect([](GdkEventScroll*) { return true; }, false);
    pack_start(_combo, Gtk::PACK_EXPAND_WIDGET);

    _missing.get_style_context()->add_class("EnumValueMissing");
    _missing.set_no_show_all(true);
    _missing.set_ellipsize(Pango::ELLIPSIZE_MIDDLE);
    pack_start(_missing, Gtk::PACK_SHRINK);
    _combo.show();
    show();
}

void EnumView::setStorage(IEnumStorageView* storage)
{
    const UpdatingGuard guard(_isUpdating);
    if (auto* const enumStorage = dynamic_cast<EnumStorageView*>(storage))
        _combo.set_model(enumStorage->getStore());
    else
        _combo.unset_model();
}

void EnumView::showValue(const std::string& value, bool isMissing)
{
    const UpdatingGuard guard(_isUpdating);
    bool isFound = false;
    if (const Glib::RefPtr<Gtk::TreeModel> model = _combo.get_model()) {
        const EnumColumns& columns = EnumColumns::instance();
        for (const Gtk::TreeRow& row : model->children()) {
            if (Glib::ustring(row[columns.value]) == value) {
                _combo.set_active(row);
                isFound = true;
                break;
            }
        }
    }
    if (!isFound)
        _combo.set_active(-1);
    const bool showsLabel = !isFound && !value.empty();
    _missing.set_text(showsLabel ? value : std::string());
    _missing.set_tooltip_text(isMissing ? std::string(lng::Tree::get("Enum.missing")) : std::string());
    _missing.set_visible(showsLabel);
    if (isMissing)
        get_style_context()->add_class("missing");
    else
        get_style_context()->remove_class("missing");
}

void EnumView::_onComboChanged()
{
    if (_isUpdating)
        return;
    const Gtk::TreeModel::iterator active = _combo.get_active();
    if (!active)
        return;
    const Glib::ustring value = (*active)[EnumColumns::instance().value];
    signalValueChosen.emit(value);
}

} // namespace ZemTree

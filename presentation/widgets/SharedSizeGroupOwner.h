#pragma once

#include <gtkmm/bin.h>

#include <string>

namespace Zem {

class SharedSizeGroup;

// A bin whose width is the widest of all owners made with the same key, anywhere in the program, so that cells of
// separate rows line up as columns. It leaves its group when destroyed.
class SharedSizeGroupOwner : public Gtk::Bin {
public:
    explicit SharedSizeGroupOwner(const std::string& key);
    ~SharedSizeGroupOwner() override;
    SharedSizeGroupOwner(const SharedSizeGroupOwner&) = delete;
    SharedSizeGroupOwner& operator=(const SharedSizeGroupOwner&) = delete;

    const std::string& getKey() const { return _key; }

    // What this owner asked for on its last measure, before the group widened it; -1 before the first.
    int getOwnMinimum() const { return _ownMinimum; }
    int getOwnNatural() const { return _ownNatural; }
    // The group's width handed out on the last measure.
    int getReportedNatural() const { return _reportedNatural; }

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void get_preferred_width_vfunc(int& minimum, int& natural) const override;
    void get_preferred_height_vfunc(int& minimum, int& natural) const override;
    void get_preferred_width_for_height_vfunc(int height, int& minimum, int& natural) const override;
    void get_preferred_height_for_width_vfunc(int width, int& minimum, int& natural) const override;
    void on_size_allocate(Gtk::Allocation& allocation) override;

private:
    friend class SharedSizeGroup;

    std::string _key;
    SharedSizeGroup* _group;
    // Measuring is const to GTK but is where the group learns of a change.
    mutable int _ownMinimum = -1;
    mutable int _ownNatural = -1;
    mutable int _reportedNatural = -1;
};

} // namespace Zem

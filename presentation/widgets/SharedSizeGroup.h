#pragma once

#include <sigc++/connection.h>

#include <string>
#include <vector>

namespace Zem {

class SharedSizeGroupOwner;

// The owners of one key and the widest width any of them asks for. Owners report their own width whenever GTK
// measures them; only a change of the maximum re-queues the other owners, once, from the main loop. A
// Gtk::SizeGroup would instead measure every member on every request, which grows with the square of the rows.
// GUI thread only.
class SharedSizeGroup {
public:
    // The group of `key`, made on first use; groups live as long as the program.
    static SharedSizeGroup& get(const std::string& key);

    SharedSizeGroup(const SharedSizeGroup&) = delete;
    SharedSizeGroup& operator=(const SharedSizeGroup&) = delete;

    void join(SharedSizeGroupOwner* owner);
    void leave(SharedSizeGroupOwner* owner);

    // Takes the owner's own widths and returns the group's.
    void report(SharedSizeGroupOwner* owner, int minimum, int natural, int& groupMinimum, int& groupNatural);

    int getMinimum() const { return _minimum; }
    int getNatural() const { return _natural; }
    std::size_t getSize() const { return _owners.size(); }

private:
    SharedSizeGroup() = default;
    ~SharedSizeGroup();

    void _recompute();
    void _scheduleRequeue();
    bool _requeue();

    std::vector<SharedSizeGroupOwner*> _owners;
    int _minimum = 0;
    int _natural = 0;
    sigc::connection _pendingRequeue;
};

} // namespace Zem

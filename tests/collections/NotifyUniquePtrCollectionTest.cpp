#include "collections/NotifyUniquePtrCollection.h"

#include "collections/NotifyUniquePtrCollectionStructure.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

// Counts its own destruction so that tests see when the owner deletes it.
struct Tracked : ZemTree::IStructureChanged {
    Tracked(std::vector<std::string>& log, std::string itemName) : _log(log), name(std::move(itemName)) {}
    ~Tracked() override { _log.push_back("deleted " + name); }
    std::vector<std::string>& _log;
    std::string name;
};

class OwningCollection : public Zem::NotifyUniquePtrCollection<Tracked> {
public:
    using NotifyUniquePtrCollection::_lockCollection;
};

class StructureCollection : public ZemTree::NotifyUniquePtrCollectionStructure<Tracked> {
public:
    std::size_t connectionEntries() const { return _itemConnections.size(); }
};

TEST(NotifyUniquePtrCollectionTest, ObserversReadTheRemovedItemBeforeItIsDeletedAndDestructorIsSilent)
{
    std::vector<std::string> log;
    int signals = 0;
    {
        OwningCollection collection;
        Tracked* first = collection.add(std::make_unique<Tracked>(log, "first"));
        collection.add(std::make_unique<Tracked>(log, "second"));
        collection.add(std::make_unique<Tracked>(log, "third"));
        collection.getSignalCollectionChanged().connect([&](Zem::NotifyCollectionChangedSignalArgs<Tracked*>& args) {
            ++signals;
            if (args.action == Zem::NotifyCollectionChangedAction::Removed)
                log.push_back("observed " + args.item->name);
        });
        collection.remove(first);
        EXPECT_EQ(collection.size(), 2u);
    }
    // The destructor deletes first to last and signals nothing.
    const std::vector<std::string> expected = {"observed first", "deleted first", "deleted second", "deleted third"};
    EXPECT_EQ(log, expected);
    EXPECT_EQ(signals, 1);
}

TEST(NotifyUniquePtrCollectionTest, RefusedItemIsDestroyedWithItsPointerAndNothingChanges)
{
    std::vector<std::string> log;
    OwningCollection collection;
    collection.add(std::make_unique<Tracked>(log, "kept"));
    collection._lockCollection();
    int signals = 0;
    collection.getSignalCollectionChanged().connect([&signals](auto&) { ++signals; });
    EXPECT_THROW(collection.add(std::make_unique<Tracked>(log, "refused")), std::logic_error);
    EXPECT_EQ(signals, 0);
    EXPECT_EQ(collection.size(), 1u);
    EXPECT_EQ(log, std::vector<std::string>{"deleted refused"});
}

TEST(NotifyUniquePtrCollectionTest, ReleaseHandsTheItemBackWithItsSignal)
{
    std::vector<std::string> log;
    OwningCollection collection;
    Tracked* item = collection.add(std::make_unique<Tracked>(log, "moved"));
    int removedSignals = 0;
    collection.getSignalCollectionChanged().connect([&removedSignals](auto& args) {
        removedSignals += args.action == Zem::NotifyCollectionChangedAction::Removed;
    });
    std::unique_ptr<Tracked> back = collection.release(item);
    EXPECT_EQ(back.get(), item);
    EXPECT_EQ(removedSignals, 1);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(collection.empty());
    EXPECT_EQ(collection.release(item), nullptr);
    // A later removal deletes again: the releasing state does not stick.
    Tracked* again = collection.add(std::move(back));
    collection.remove(again);
    EXPECT_EQ(log, std::vector<std::string>{"deleted moved"});
}

TEST(NotifyUniquePtrCollectionStructureTest, ItemChangesAndMembershipReachObserversOnce)
{
    std::vector<std::string> log;
    StructureCollection collection;
    int wakeUps = 0;
    collection.getSignalStructureChanged().connect([&wakeUps] { ++wakeUps; });

    Tracked* item = collection.add(std::make_unique<Tracked>(log, "item"));
    EXPECT_EQ(wakeUps, 1);
    item->signalStructureChanged.emit();
    EXPECT_EQ(wakeUps, 2);

    std::unique_ptr<Tracked> released = collection.release(item);
    EXPECT_EQ(wakeUps, 3);
    released->signalStructureChanged.emit();
    EXPECT_EQ(wakeUps, 3) << "a removed item still reaches the collection";
    // The entry of a removed item stays in the map and is overwritten when it comes back.
    EXPECT_EQ(collection.connectionEntries(), 1u);

    Tracked* back = collection.add(std::move(released));
    EXPECT_EQ(wakeUps, 4);
    back->signalStructureChanged.emit();
    EXPECT_EQ(wakeUps, 5) << "the item must have exactly one live connection";
    EXPECT_EQ(collection.connectionEntries(), 1u);
}

} // namespace

#include "collections/NotifyCollection.h"

#include "core/tree/TreeLocalization.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using ::testing::StrEq;
using ::testing::ThrowsMessage;

struct Item {
    int value;
};

// Records every hook and signal in one log so that orders can be compared.
class RecordingCollection : public Zem::NotifyCollection<Item*> {
public:
    RecordingCollection()
    {
        getSignalCollectionChanged().connect([this](Args& args) {
            static const char* names[] = {"Added", "Removed", "Moved"};
            log.push_back(std::string("signal ") + names[static_cast<int>(args.action)] + " "
                          + std::to_string(args.item->value) + " " + std::to_string(args.index) + " "
                          + std::to_string(args.oldIndex));
        });
    }
    using Zem::NotifyCollection<Item*>::_lockCollection;
    using Zem::NotifyCollection<Item*>::_unlockCollection;

    std::vector<std::string> log;
    std::string refusal;

protected:
    void _onAdding(Item*& item, std::size_t index) override { _record("adding", item, index); }
    void _onAdded(Item*& item, std::size_t index) override { _record("added", item, index); }
    void _onRemoving(Item*& item, std::size_t index) override { _record("removing", item, index); }
    void _onRemoved(Item*& item, std::size_t index) override { _record("removed", item, index); }
    void _onPostRemoved(Item*& item, std::size_t index) override { _record("postRemoved", item, index); }
    void _onMoved(Item*& item, std::size_t index) override { _record("moved", item, index); }
    void _onReset() override { log.push_back("reset"); }
    void _onPostReset() override { log.push_back("postReset"); }
    std::string _getAddingItemError(Item*& item, std::size_t index) override
    {
        return refusal.empty() ? NotifyCollection::_getAddingItemError(item, index) : refusal;
    }

private:
    void _record(const char* hook, Item* item, std::size_t index)
    {
        log.push_back(std::string(hook) + " " + std::to_string(item->value) + " " + std::to_string(index));
    }
};

class NotifyCollectionTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
    Item a{1}, b{2}, c{3};
    RecordingCollection collection;
};

TEST_F(NotifyCollectionTest, AddAndInsertRunHooksThenSignal)
{
    collection.add(&a);
    collection.insert(0, &b);
    const std::vector<std::string> expected = {"adding 1 0", "added 1 0", "signal Added 1 0 0",
                                               "adding 2 0", "added 2 0", "signal Added 2 0 0"};
    EXPECT_EQ(collection.log, expected);
    ASSERT_EQ(collection.size(), 2u);
    EXPECT_EQ(collection.at(0), &b);
    EXPECT_EQ(collection.at(1), &a);
}

TEST_F(NotifyCollectionTest, RemoveRunsHooksSignalThenPostRemoved)
{
    collection.add(&a);
    collection.add(&b);
    collection.log.clear();
    collection.remove(&a);
    const std::vector<std::string> expected = {"removing 1 0", "removed 1 0", "signal Removed 1 0 0",
                                               "postRemoved 1 0"};
    EXPECT_EQ(collection.log, expected);
    EXPECT_EQ(collection.getIndexOf(&a), -1);
    EXPECT_EQ(collection.getIndexOf(&b), 0);
    collection.log.clear();
    collection.remove(&c);
    EXPECT_TRUE(collection.log.empty()) << "removing an absent item does nothing";
}

TEST_F(NotifyCollectionTest, ResetRemovesFromTheLastBetweenResetHooks)
{
    collection.add(&a);
    collection.add(&b);
    collection.add(&c);
    collection.log.clear();
    collection.reset();
    const std::vector<std::string> expected = {"reset",           "removing 3 2", "removed 3 2", "signal Removed 3 2 0",
                                               "postRemoved 3 2", "removing 2 1", "removed 2 1", "signal Removed 2 1 0",
                                               "postRemoved 2 1", "removing 1 0", "removed 1 0", "signal Removed 1 0 0",
                                               "postRemoved 1 0", "postReset"};
    EXPECT_EQ(collection.log, expected);
    EXPECT_TRUE(collection.empty());
}

TEST_F(NotifyCollectionTest, LockedCollectionRefusesWithReadOnlyTextBeforeAnyHook)
{
    collection.add(&a);
    collection._lockCollection();
    collection.log.clear();
    for (int language : {0, 1}) {
        lng::language = language;
        SCOPED_TRACE(language);
        EXPECT_THAT([&] { collection.add(&b); },
                    ThrowsMessage<std::logic_error>(StrEq(lng::Tree::get("error.ReadOnly"))));
        EXPECT_THROW(collection.remove(&a), std::logic_error);
        EXPECT_THROW(collection.reset(), std::logic_error);
        EXPECT_THROW(collection.move(0, 0), std::logic_error);
    }
    // reset ran its opening hook, then the first removal was refused.
    const std::vector<std::string> expected = {"reset", "reset"};
    EXPECT_EQ(collection.log, expected);
    ASSERT_EQ(collection.size(), 1u);
    EXPECT_EQ(collection.at(0), &a);

    collection._unlockCollection();
    collection.add(&b);
    EXPECT_EQ(collection.size(), 2u);
}

TEST_F(NotifyCollectionTest, RefusalsComeBeforeAnyHook)
{
    EXPECT_THROW(collection.insert(1, &a), std::out_of_range);
    collection.refusal = "no such items here";
    EXPECT_THAT([&] { collection.add(&a); }, ThrowsMessage<std::logic_error>(StrEq("no such items here")));
    EXPECT_TRUE(collection.log.empty());
    EXPECT_TRUE(collection.empty());
}

TEST_F(NotifyCollectionTest, MoveRotatesAndReportsBothIndices)
{
    collection.add(&a);
    collection.add(&b);
    collection.add(&c);
    collection.log.clear();
    collection.move(0, 2);
    EXPECT_EQ(collection.at(0), &b);
    EXPECT_EQ(collection.at(1), &c);
    EXPECT_EQ(collection.at(2), &a);
    collection.move(2, 0);
    EXPECT_EQ(collection.at(0), &a);
    EXPECT_EQ(collection.at(1), &b);
    const std::vector<std::string> expected = {"moved 1 2", "signal Moved 1 2 0", "moved 1 0", "signal Moved 1 0 2"};
    EXPECT_EQ(collection.log, expected);
}

TEST_F(NotifyCollectionTest, BothIteratorFormsWalkTheSameItems)
{
    collection.add(&a);
    collection.add(&b);
    collection.add(&c);
    std::vector<Item*> raw;
    for (Item* item : collection)
        raw.push_back(item);

    std::vector<Item*> viaSource;
    const Zem::ICollection<Item*>& source = collection;
    for (Zem::CollectionIterator<Item*> it(&source, 0), end(&source, Zem::CollectionIterator<Item*>::endIndex);
         it != end; ++it)
        viaSource.push_back(*it);

    const std::vector<Item*> expected = {&a, &b, &c};
    EXPECT_EQ(raw, expected);
    EXPECT_EQ(viaSource, expected);

    RecordingCollection empty;
    EXPECT_EQ(Zem::CollectionIterator<Item*>(&empty, 0).getIndex(), Zem::CollectionIterator<Item*>::endIndex);
}

} // namespace

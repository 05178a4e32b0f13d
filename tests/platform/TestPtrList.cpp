// SPDX-License-Identifier: MIT
#include "platform/toolkit/PtrList.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>
#include <vector>

namespace {

struct Item
{
    explicit Item(int n, int *deleted = nullptr)
        : number(n)
        , counter(deleted)
    { }

    Item(const Item &) = delete;
    Item &operator=(const Item &) = delete;

    ~Item()
    {
        if (counter != nullptr) {
            ++*counter;
        }
    }

    int number;
    int *counter;
};

class ByNumber : public PtrList<Item>
{
protected:
    int compareItems(const Item *one, const Item *other) const override
    {
        return one->number - other->number;
    }
};

/// Looks at its list while it is deleted.
struct Witness
{
    explicit Witness(PtrList<Witness> *inList, std::vector<int> *notes)
        : list(inList)
        , counts(notes)
    { }

    Witness(const Witness &) = delete;
    Witness &operator=(const Witness &) = delete;

    ~Witness()
    {
        counts->push_back(list->count());
        counts->push_back(list->current() == nullptr ? 0 : 1);
    }

    PtrList<Witness> *list;
    std::vector<int> *counts;
};

} // namespace

class TestPtrList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void appendMakesCurrent();
    void insertMakesCurrent();
    void insertRefusesBadPlaces();
    void nullIsNeverTaken();
    void atMovesTheCursor();
    void walksForward();
    void walksBackward();
    void nextOffTheEndStaysNull();
    void prevOffTheStartStaysNull();
    void walksAnEmptyList();
    void removesTheCurrent_data();
    void removesTheCurrent();
    void removesAPlaceAwayFromTheCursor();
    void removesThePointer();
    void failedRemovals();
    void removesTheOnlyOne();
    void removesWhileWalking();
    void takes();
    void findsByPointer();
    void findsByComparison();
    void clears();
    void autoDelete_data();
    void autoDelete();
    void takeNeverDeletes();
    void itemsSeeTheListWithoutThem();
    void rangeForLeavesTheCursor();
    void virtualOperationsThroughTheBase();
    void countingDuringAWalkEndsIt();

private:
    void fill(int count);
    [[nodiscard]] std::vector<int> numbers() const;

    std::vector<std::unique_ptr<Item>> m_items;
    std::unique_ptr<PtrList<Item>> m_list;
};

void TestPtrList::fill(int count)
{
    m_list = std::make_unique<PtrList<Item>>();
    m_items.clear();
    for (int i = 0; i < count; ++i) {
        m_items.push_back(std::make_unique<Item>(i));
        m_list->append(m_items.back().get());
    }
}

std::vector<int> TestPtrList::numbers() const
{
    std::vector<int> all;
    for (const Item *item : *m_list) {
        all.push_back(item->number);
    }
    return all;
}

void TestPtrList::startsEmpty()
{
    fill(0);
    QCOMPARE(m_list->count(), 0);
    QVERIFY(m_list->isEmpty());
    QCOMPARE(m_list->current(), nullptr);
    QCOMPARE(m_list->at(), -1);
    QVERIFY(!m_list->autoDelete());
}

void TestPtrList::appendMakesCurrent()
{
    fill(3);
    QCOMPARE(m_list->count(), 3);
    QVERIFY(!m_list->isEmpty());
    QCOMPARE(m_list->current(), m_items[2].get());
    QCOMPARE(numbers(), (std::vector<int>{0, 1, 2}));
    m_list->first();
    Item more(7);
    m_list->append(&more);
    QCOMPARE(m_list->current(), &more);
    QCOMPARE(m_list->at(), 3);
}

void TestPtrList::insertMakesCurrent()
{
    fill(2);
    Item front(10);
    Item middle(11);
    Item back(12);
    QVERIFY(m_list->insert(0, &front));
    QCOMPARE(m_list->current(), &front);
    QCOMPARE(m_list->at(), 0);
    QVERIFY(m_list->insert(2, &middle));
    QCOMPARE(m_list->current(), &middle);
    QVERIFY(m_list->insert(4, &back));
    QCOMPARE(m_list->current(), &back);
    QCOMPARE(numbers(), (std::vector<int>{10, 0, 11, 1, 12}));
}

void TestPtrList::insertRefusesBadPlaces()
{
    fill(2);
    m_list->first();
    Item item(10);
    QVERIFY(!m_list->insert(-1, &item));
    QVERIFY(!m_list->insert(3, &item));
    QCOMPARE(m_list->count(), 2);
    QCOMPARE(m_list->at(), 0);
}

void TestPtrList::nullIsNeverTaken()
{
    fill(1);
    m_list->append(nullptr);
    QVERIFY(!m_list->insert(0, nullptr));
    QCOMPARE(m_list->count(), 1);
    QCOMPARE(m_list->at(), 0);
}

void TestPtrList::atMovesTheCursor()
{
    fill(4);
    QCOMPARE(m_list->at(1), m_items[1].get());
    QCOMPARE(m_list->current(), m_items[1].get());
    QCOMPARE(m_list->next(), m_items[2].get());
    QCOMPARE(m_list->at(4), nullptr);
    QCOMPARE(m_list->current(), m_items[2].get());
    QCOMPARE(m_list->at(-1), nullptr);
    QCOMPARE(m_list->current(), m_items[2].get());
    QCOMPARE(m_list->at(), 2);
}

void TestPtrList::walksForward()
{
    fill(3);
    std::vector<int> seen;
    for (const Item *item = m_list->first(); item != nullptr; item = m_list->next()) {
        QCOMPARE(m_list->current(), item);
        seen.push_back(item->number);
    }
    QCOMPARE(seen, (std::vector<int>{0, 1, 2}));
    QCOMPARE(m_list->current(), nullptr);
}

void TestPtrList::walksBackward()
{
    fill(3);
    std::vector<int> seen;
    for (const Item *item = m_list->last(); item != nullptr; item = m_list->prev()) {
        seen.push_back(item->number);
    }
    QCOMPARE(seen, (std::vector<int>{2, 1, 0}));
    QCOMPARE(m_list->current(), nullptr);
}

void TestPtrList::nextOffTheEndStaysNull()
{
    fill(2);
    m_list->last();
    QCOMPARE(m_list->next(), nullptr);
    QCOMPARE(m_list->at(), -1);
    QCOMPARE(m_list->next(), nullptr);
    QCOMPARE(m_list->prev(), nullptr);
    QCOMPARE(m_list->current(), nullptr);
    QCOMPARE(m_list->first(), m_items[0].get());
}

void TestPtrList::prevOffTheStartStaysNull()
{
    fill(2);
    m_list->first();
    QCOMPARE(m_list->prev(), nullptr);
    QCOMPARE(m_list->prev(), nullptr);
    QCOMPARE(m_list->next(), nullptr);
    QCOMPARE(m_list->last(), m_items[1].get());
}

void TestPtrList::walksAnEmptyList()
{
    fill(0);
    QCOMPARE(m_list->first(), nullptr);
    QCOMPARE(m_list->last(), nullptr);
    QCOMPARE(m_list->next(), nullptr);
    QCOMPARE(m_list->prev(), nullptr);
    QCOMPARE(m_list->at(0), nullptr);
    QVERIFY(!m_list->remove());
    QCOMPARE(m_list->take(), nullptr);
}

void TestPtrList::removesTheCurrent_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("newCurrent");
    QTest::newRow("the first: its follower is current") << 0 << 1;
    QTest::newRow("one in the middle: its follower is current") << 1 << 2;
    QTest::newRow("the last: the new last one is current") << 2 << 1;
}

void TestPtrList::removesTheCurrent()
{
    QFETCH(int, place);
    QFETCH(int, newCurrent);
    fill(3);
    m_list->at(place);
    QVERIFY(m_list->remove());
    QCOMPARE(m_list->count(), 2);
    QCOMPARE(m_list->current()->number, newCurrent);
    for (const Item *item : *m_list) {
        QVERIFY(item->number != place);
    }
}

void TestPtrList::removesAPlaceAwayFromTheCursor()
{
    fill(5);
    m_list->first();
    QVERIFY(m_list->remove(3));
    QCOMPARE(m_list->current()->number, 4);
    QVERIFY(m_list->remove(3));
    QCOMPARE(m_list->current()->number, 2);
    QVERIFY(m_list->remove(0));
    QCOMPARE(m_list->current()->number, 1);
    QCOMPARE(m_list->at(), 0);
}

void TestPtrList::removesThePointer()
{
    fill(3);
    m_list->last();
    QVERIFY(m_list->remove(m_items[0].get()));
    QCOMPARE(m_list->current(), m_items[1].get());
    QCOMPARE(numbers(), (std::vector<int>{1, 2}));
}

void TestPtrList::failedRemovals()
{
    fill(2);
    m_list->first();
    QVERIFY(!m_list->remove(2));
    QVERIFY(!m_list->remove(-1));
    QCOMPARE(m_list->at(), 0);
    const Item stranger(0);
    QVERIFY(!m_list->remove(&stranger));
    QCOMPARE(m_list->current(), nullptr);
    QVERIFY(!m_list->remove());
    QCOMPARE(m_list->count(), 2);
}

void TestPtrList::removesTheOnlyOne()
{
    fill(1);
    QVERIFY(m_list->remove());
    QCOMPARE(m_list->count(), 0);
    QCOMPARE(m_list->current(), nullptr);
    QCOMPARE(m_list->at(), -1);
    QVERIFY(!m_list->remove());
}

// After a removal the cursor already stands on the follower, so next() passes over it.
void TestPtrList::removesWhileWalking()
{
    fill(5);
    std::vector<int> seen;
    for (const Item *item = m_list->first(); item != nullptr; item = m_list->next()) {
        seen.push_back(item->number);
        if (item->number == 1) {
            QVERIFY(m_list->remove());
        }
    }
    QCOMPARE(seen, (std::vector<int>{0, 1, 3, 4}));
    QCOMPARE(numbers(), (std::vector<int>{0, 2, 3, 4}));
}

void TestPtrList::takes()
{
    fill(3);
    m_list->at(1);
    QCOMPARE(m_list->take(), m_items[1].get());
    QCOMPARE(m_list->current(), m_items[2].get());
    QCOMPARE(m_list->take(), m_items[2].get());
    QCOMPARE(m_list->current(), m_items[0].get());
    QCOMPARE(m_list->take(1), nullptr);
    QCOMPARE(m_list->take(0), m_items[0].get());
    QCOMPARE(m_list->take(), nullptr);
    QVERIFY(m_list->isEmpty());
}

void TestPtrList::findsByPointer()
{
    fill(3);
    Item equal(1);
    QCOMPARE(m_list->findRef(m_items[1].get()), 1);
    QCOMPARE(m_list->current(), m_items[1].get());
    QCOMPARE(m_list->findRef(&equal), -1);
    QCOMPARE(m_list->current(), nullptr);
    QCOMPARE(m_list->find(m_items[2].get()), 2);
    QCOMPARE(m_list->current(), m_items[2].get());
    QCOMPARE(m_list->find(&equal), -1);
    QCOMPARE(m_list->current(), nullptr);
}

void TestPtrList::findsByComparison()
{
    ByNumber list;
    Item one(1);
    Item two(2);
    Item alsoTwo(2);
    list.append(&one);
    list.append(&two);
    list.append(&alsoTwo);
    QCOMPARE(list.find(&alsoTwo), 1);
    QCOMPARE(list.current(), &two);
    QCOMPARE(list.findRef(&alsoTwo), 2);
    QVERIFY(list.remove(&alsoTwo));
    QCOMPARE(list.findRef(&two), -1);
    QCOMPARE(list.findRef(&alsoTwo), 1);
}

void TestPtrList::clears()
{
    fill(3);
    m_list->first();
    m_list->clear();
    QCOMPARE(m_list->count(), 0);
    QCOMPARE(m_list->current(), nullptr);
    QCOMPARE(m_list->next(), nullptr);
    m_list->append(m_items[1].get());
    QCOMPARE(m_list->current(), m_items[1].get());
}

void TestPtrList::autoDelete_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("on: every removal deletes") << true;
    QTest::newRow("off: nothing is deleted") << false;
}

void TestPtrList::autoDelete()
{
    QFETCH(bool, enabled);
    int deleted = 0;
    std::vector<Item *> all;
    {
        PtrList<Item> list;
        list.setAutoDelete(enabled);
        QCOMPARE(list.autoDelete(), enabled);
        for (int i = 0; i < 6; ++i) {
            all.push_back(new Item(i, &deleted));
            list.append(all.back());
        }
        list.first();
        QVERIFY(list.remove());
        QCOMPARE(deleted, enabled ? 1 : 0);
        QVERIFY(list.remove(1));
        QVERIFY(list.remove(all[3]));
        QCOMPARE(deleted, enabled ? 3 : 0);
        QCOMPARE(list.current(), all[4]);
        list.clear();
        QCOMPARE(deleted, enabled ? 6 : 0);
        all.push_back(new Item(6, &deleted));
        list.append(all.back());
    }
    QCOMPARE(deleted, enabled ? 7 : 0);
    if (!enabled) {
        qDeleteAll(all);
    }
}

void TestPtrList::takeNeverDeletes()
{
    int deleted = 0;
    PtrList<Item> list;
    list.setAutoDelete(true);
    list.append(new Item(0, &deleted));
    list.append(new Item(1, &deleted));
    const std::unique_ptr<Item> last(list.take());
    const std::unique_ptr<Item> first(list.take(0));
    QCOMPARE(deleted, 0);
    QCOMPARE(last->number, 1);
    QCOMPARE(first->number, 0);
}

void TestPtrList::itemsSeeTheListWithoutThem()
{
    std::vector<int> counts;
    PtrList<Witness> list;
    list.setAutoDelete(true);
    for (int i = 0; i < 3; ++i) {
        list.append(new Witness(&list, &counts));
    }
    QVERIFY(list.remove(0));
    QCOMPARE(counts, (std::vector<int>{2, 1}));
    counts.clear();
    list.clear();
    QCOMPARE(counts, (std::vector<int>{0, 0, 0, 0}));
}

void TestPtrList::rangeForLeavesTheCursor()
{
    fill(3);
    m_list->at(1);
    QCOMPARE(numbers(), (std::vector<int>{0, 1, 2}));
    QCOMPARE(m_list->at(), 1);
}

void TestPtrList::virtualOperationsThroughTheBase()
{
    class Counted : public PtrList<Item>
    {
    public:
        void clear() override
        {
            ++cleared;
            PtrList::clear();
        }

        int cleared = 0;
    };

    Counted list;
    PtrList<Item> &base = list;
    Item item(1);
    base.append(&item);
    base.clear();
    QCOMPARE(list.cleared, 1);
    QCOMPARE(base.count(), 0);
}

// A walk that counts the whole list by the same cursor in each step visits two items: the
// swap store's trim depends on it.
void TestPtrList::countingDuringAWalkEndsIt()
{
    fill(4);
    const auto count = [this] {
        int n = 0;
        for (const Item *item = m_list->first(); item != nullptr; item = m_list->next()) {
            ++n;
        }
        return n;
    };
    std::vector<int> seen;
    QCOMPARE(count(), 4);
    const Item *current = m_list->first();
    while (current != nullptr) {
        seen.push_back(current->number);
        current = m_list->next();
        QCOMPARE(count(), 4);
        if (current != nullptr) {
            seen.push_back(current->number);
            current = m_list->next();
        }
    }
    QCOMPARE(seen, (std::vector<int>{0, 1}));
}

LUMI_TEST(TestPtrList)
#include "TestPtrList.moc"

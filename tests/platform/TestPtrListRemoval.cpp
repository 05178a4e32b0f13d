// SPDX-License-Identifier: MIT
// Removal: the place of the cursor afterwards, and who deletes the item.
#include "platform/toolkit/PtrList.h"
#include "tests/platform/PtrListTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <memory>
#include <vector>

namespace {

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

class TestPtrListRemoval : public PtrListTest
{
    Q_OBJECT

private Q_SLOTS:
    void removesTheCurrent_data();
    void removesTheCurrent();
    void removesAPlaceAwayFromTheCursor();
    void removesThePointer();
    void failedRemovals();
    void removesTheOnlyOne();
    void removesWhileWalking();
    void takes();
    void clears();
    void autoDelete_data();
    void autoDelete();
    void takeNeverDeletes();
    void itemsSeeTheListWithoutThem();
};

void TestPtrListRemoval::removesTheCurrent_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("the first: its follower is current") << 0 << 1;
    QTest::newRow("one in the middle: its follower is current") << 1 << 2;
    QTest::newRow("the last: the new last one is current") << 2 << 1;
}

void TestPtrListRemoval::removesTheCurrent()
{
    const auto [place, newCurrent] = lumi::test::row<int, int>();
    fill(3);
    m_list->at(place);
    QVERIFY(m_list->remove());
    QCOMPARE(m_list->count(), 2);
    QCOMPARE(m_list->current()->number, newCurrent);
    for (const Item *item : *m_list) {
        QVERIFY(item->number != place);
    }
}

void TestPtrListRemoval::removesAPlaceAwayFromTheCursor()
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

void TestPtrListRemoval::removesThePointer()
{
    fill(3);
    m_list->last();
    QVERIFY(m_list->remove(m_items[0].get()));
    QCOMPARE(m_list->current(), m_items[1].get());
    QCOMPARE(numbers(), (std::vector<int>{1, 2}));
}

void TestPtrListRemoval::failedRemovals()
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

void TestPtrListRemoval::removesTheOnlyOne()
{
    fill(1);
    QVERIFY(m_list->remove());
    QCOMPARE(m_list->count(), 0);
    QCOMPARE(m_list->current(), nullptr);
    QCOMPARE(m_list->at(), -1);
    QVERIFY(!m_list->remove());
}

// After a removal the cursor is already on the follower, so next() skips that item.
void TestPtrListRemoval::removesWhileWalking()
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

void TestPtrListRemoval::takes()
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

void TestPtrListRemoval::clears()
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

void TestPtrListRemoval::autoDelete_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("on: every removal deletes") << true;
    QTest::newRow("off: nothing is deleted") << false;
}

void TestPtrListRemoval::autoDelete()
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

void TestPtrListRemoval::takeNeverDeletes()
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

void TestPtrListRemoval::itemsSeeTheListWithoutThem()
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

LUMI_TEST(TestPtrListRemoval)
#include "TestPtrListRemoval.moc"

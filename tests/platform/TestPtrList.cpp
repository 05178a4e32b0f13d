// SPDX-License-Identifier: MIT
// Insertion, search and walking with the cursor.
#include "platform/toolkit/PtrList.h"
#include "tests/platform/PtrListTest.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <vector>

using lumi::test::Item;

namespace {

class ByNumber : public PtrList<Item>
{
protected:
    int compareItems(const Item *one, const Item *other) const override
    {
        return one->number - other->number;
    }
};

} // namespace

class TestPtrList : public PtrListTest
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
    void findsByPointer();
    void findsByComparison();
    void rangeForLeavesTheCursor();
    void countingDuringAWalkEndsIt();
};

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

void TestPtrList::rangeForLeavesTheCursor()
{
    fill(3);
    m_list->at(1);
    QCOMPARE(numbers(), (std::vector<int>{0, 1, 2}));
    QCOMPARE(m_list->at(), 1);
}

// If each step of a walk counts the whole list by the same cursor, the walk visits two items. The
// swap store depends on this when it trims.
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

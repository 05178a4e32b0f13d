// SPDX-License-Identifier: MIT
#include "exif/tag/ExifTagList.h"
#include "exif/tag/FPVExifTagNumber.h"
#include "tests/support/TestMain.h"

#include <QTest>

namespace {

int living = 0;

class CountedTag : public FPVExifTagNumber
{
public:
    CountedTag(quint16 tag, int value)
        : FPVExifTagNumber(tag, 3, 1, value)
    {
        ++living;
    }

    ~CountedTag() override { --living; }
};

} // namespace

class TestExifTagList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void putAppendsANewNumber();
    void putReplacesAtThePlaceOfTheOld();
    void findNumberGivesTheFirst();
    void tagsGoWithTheList();
};

void TestExifTagList::putAppendsANewNumber()
{
    lumi::ExifTagList list;
    list.put(std::make_unique<CountedTag>(3, 30));
    list.put(std::make_unique<CountedTag>(1, 10));
    QCOMPARE(list.count(), 2);
    QCOMPARE(list.at(0)->intValue(), 30);
    QCOMPARE(list.at(1)->intValue(), 10);
}

void TestExifTagList::putReplacesAtThePlaceOfTheOld()
{
    lumi::ExifTagList list;
    for (const quint16 number : std::initializer_list<quint16>{3, 1, 2}) {
        list.put(std::make_unique<CountedTag>(number, 0));
    }
    const int before = living;
    list.put(std::make_unique<CountedTag>(3, 33));
    list.put(std::make_unique<CountedTag>(2, 22));
    QCOMPARE(living, before);
    QCOMPARE(list.count(), 3);
    QCOMPARE(list.at(0)->intValue(), 33);
    QCOMPARE(list.at(1)->tag(), quint16(1));
    QCOMPARE(list.at(2)->intValue(), 22);
}

void TestExifTagList::findNumberGivesTheFirst()
{
    lumi::ExifTagList list;
    list.append(new CountedTag(1, 10));
    list.append(new CountedTag(2, 20));
    list.append(new CountedTag(2, 21));
    QCOMPARE(list.findNumber(2)->intValue(), 20);
    QVERIFY(!list.findNumber(3));
    QVERIFY(!list.findNumber(0x10002));
    QVERIFY(!list.findNumber(-1));
}

void TestExifTagList::tagsGoWithTheList()
{
    const int before = living;
    {
        lumi::ExifTagList list;
        list.put(std::make_unique<CountedTag>(1, 10));
        list.append(new CountedTag(2, 20));
        QCOMPARE(living, before + 2);
    }
    QCOMPARE(living, before);
}

LUMI_TEST(TestExifTagList)
#include "TestExifTagList.moc"

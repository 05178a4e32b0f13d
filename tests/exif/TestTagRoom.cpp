// SPDX-License-Identifier: MIT
#include "exif/FPVExifTagBytes.h"
#include "exif/exifBlockBytes.h"
#include "exif/tagRoom.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <array>
#include <limits>

using lumi::ExifTagList;
using lumi::fitTags;
using lumi::ifdSize;
using lumi::sizeOfTags;
using lumi::test::numbersOf;

namespace {

constexpr qint64 kAll = std::numeric_limits<qint64>::max();

void put(ExifTagList &list, quint16 number, int size)
{
    list.put(std::make_unique<FPVExifTagBytes>(number, quint16(7), quint32(size),
                                               std::vector<char>(std::size_t(size))));
}

struct TwoLists
{
    TwoLists()
    {
        put(first, 1, 40);
        put(first, 2, 4);
        put(first, 3, 21);
        put(second, 4, 22);
        put(second, 5, 0);
        put(second, 6, 5);
    }

    ExifTagList first;
    ExifTagList second;
    std::array<ExifTagList *, 2> lists = {&first, &second};
};

} // namespace

class TestTagRoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizeIsThatOfTheDirectories();
    void sizeOfTheSmallOnes();
    void whatFitsStays();
    void theLargestGoFirst();
    void ofEqualsTheLastGoFirst();
    void anEmptyDirectoryTakesNothing();
    void nothingFitsNoRoom();
    void pointersGoLast();
    void whatIsTooLargeForAPointerGoesLikeAnyOther();
};

void TestTagRoom::sizeIsThatOfTheDirectories()
{
    TwoLists two;
    QCOMPARE(sizeOfTags(two.lists, kAll), qint64(ifdSize(two.first)) + ifdSize(two.second));
    QCOMPARE(sizeOfTags(two.lists, kAll), 6 + 3 * 12 + 40 + 22 + 6 + 3 * 12 + 22 + 6);
    ExifTagList empty;
    ExifTagList *const lists[] = {&empty};
    QCOMPARE(sizeOfTags(lists, kAll), 0);
}

void TestTagRoom::sizeOfTheSmallOnes()
{
    TwoLists two;
    QCOMPARE(sizeOfTags(two.lists, 11), 0);
    QCOMPARE(sizeOfTags(two.lists, 12), 6 + 12 + 6 + 12);
    QCOMPARE(sizeOfTags(two.lists, 17), 6 + 12 + 6 + 12);
    QCOMPARE(sizeOfTags(two.lists, 18), 6 + 12 + 6 + 12 + 18);
    QCOMPARE(sizeOfTags(two.lists, 51), sizeOfTags(two.lists, kAll) - 52);
}

void TestTagRoom::whatFitsStays()
{
    TwoLists two;
    QCOMPARE(fitTags(two.lists, sizeOfTags(two.lists, kAll)), 0);
    QCOMPARE(numbersOf(two.first), (QList<int>{1, 2, 3}));
    QCOMPARE(numbersOf(two.second), (QList<int>{4, 5, 6}));
}

void TestTagRoom::theLargestGoFirst()
{
    TwoLists two;
    QCOMPARE(fitTags(two.lists, sizeOfTags(two.lists, kAll) - 1), 40);
    QCOMPARE(numbersOf(two.first), (QList<int>{2, 3}));
    QCOMPARE(numbersOf(two.second), (QList<int>{4, 5, 6}));
}

void TestTagRoom::ofEqualsTheLastGoFirst()
{
    // With its zero byte a value of 21 bytes takes no less than one of 22.
    TwoLists two;
    QCOMPARE(fitTags(two.lists, sizeOfTags(two.lists, kAll) - 53), 40 + 22);
    QCOMPARE(numbersOf(two.first), (QList<int>{2, 3}));
    QCOMPARE(numbersOf(two.second), (QList<int>{5, 6}));
    QCOMPARE(fitTags(two.lists, sizeOfTags(two.lists, kAll) - 1), 21);
    QCOMPARE(numbersOf(two.first), QList<int>{2});
    QCOMPARE(fitTags(two.lists, 6 + 12 + 6 + 12), 5);
    QCOMPARE(numbersOf(two.second), QList<int>{5});
    QCOMPARE(fitTags(two.lists, 6 + 12), 0);
    QCOMPARE(numbersOf(two.first), QList<int>{2});
    QVERIFY(two.second.isEmpty());
}

void TestTagRoom::anEmptyDirectoryTakesNothing()
{
    ExifTagList list;
    put(list, 1, 100);
    ExifTagList other;
    put(other, 2, 90);
    ExifTagList *const lists[] = {&list, &other};
    QCOMPARE(fitTags(lists, 6 + 12 + 90), 100);
    QCOMPARE(numbersOf(other), QList<int>{2});
}

void TestTagRoom::nothingFitsNoRoom()
{
    for (const qint64 room : {17, 0, -100}) {
        TwoLists two;
        QCOMPARE(fitTags(two.lists, room), 40 + 4 + 21 + 22 + 0 + 5);
        QVERIFY(two.first.isEmpty());
        QVERIFY(two.second.isEmpty());
    }
}

void TestTagRoom::pointersGoLast()
{
    for (const int pointer : {0x8769, 0x8825, 0xA005, 0x0201, 0x0202}) {
        TwoLists two;
        put(two.second, quint16(pointer), 4);
        QCOMPARE(fitTags(two.lists, 6 + 12), 40 + 4 + 21 + 22 + 0 + 5);
        QVERIFY(two.first.isEmpty());
        QCOMPARE(numbersOf(two.second), QList<int>{pointer});
        QCOMPARE(fitTags(two.lists, 6 + 11), 4);
        QVERIFY(two.second.isEmpty());
    }
    TwoLists two;
    put(two.first, 0x8769, 4);
    put(two.second, 0x0203, 4);
    QCOMPARE(fitTags(two.lists, 6 + 12), 40 + 4 + 21 + 22 + 0 + 5 + 4);
    QCOMPARE(numbersOf(two.first), QList<int>{0x8769});
}

void TestTagRoom::whatIsTooLargeForAPointerGoesLikeAnyOther()
{
    for (const int pointer : {0x8769, 0x8825, 0xA005, 0x0201, 0x0202}) {
        TwoLists two;
        put(two.second, quint16(pointer), 1000);
        QCOMPARE(fitTags(two.lists, sizeOfTags(two.lists, kAll) - 1), 1000);
        QCOMPARE(numbersOf(two.first), (QList<int>{1, 2, 3}));
        QCOMPARE(numbersOf(two.second), (QList<int>{4, 5, 6}));
    }
}

LUMI_TEST(TestTagRoom)
#include "TestTagRoom.moc"

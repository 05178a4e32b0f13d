// SPDX-License-Identifier: MIT
#include "exif/directoryKind.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::directoryKind;
using enum ExifListKind;

class TestDirectoryKind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstEntryTellsTheKind_data();
    void firstEntryTellsTheKind();
    void unknownTypeIsNoEntry_data();
    void unknownTypeIsNoEntry();
};

void TestDirectoryKind::firstEntryTellsTheKind_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("type");
    QTest::addColumn<quint32>("count");
    QTest::addColumn<ExifListKind>("kind");
    QTest::addColumn<char>("second");
    const auto row = [](const char *name, int tag, int type, quint32 count, ExifListKind kind,
                        char second = '9') {
        QTest::newRow(name) << tag << type << count << kind << second;
    };
    row("the version of a position", 0x0000, 1, 4, Gps);
    row("a hemisphere", 0x0001, 2, 2, Gps);
    row("a latitude", 0x0002, 5, 3, Gps);
    row("an altitude", 0x0006, 5, 1, Gps);
    row("the error of a position", 0x001F, 5, 1, Gps);
    row("a hemisphere of as many bytes as a rule", 0x0001, 2, 4, Gps, '\0');
    row("the name of a rule", 0x0001, 2, 4, Interoperability);
    row("the version of a rule", 0x0002, 7, 4, Interoperability);
    row("a longitude of as many bytes", 0x0003, 2, 4, Gps);
    row("behind the last of a position", 0x0020, 4, 1, Ifd1);
    row("a width", 0x0100, 4, 1, Ifd1);
    row("a compression", 0x0103, 3, 1, Ifd1);
    row("a thumbnail", 0x0201, 4, 1, Ifd1);
    row("a copyright", 0x8298, 2, 9, Ifd1);
    row("before the first of an exposure", 0x8299, 3, 1, Ifd1);
    row("an exposure time", 0x829A, 5, 1, Exif);
    row("a date", 0x9003, 2, 20, Exif);
    row("a comment", 0x9286, 7, 4, Exif);
    row("the largest number", 0xFFFF, 3, 1, Exif);
}

void TestDirectoryKind::firstEntryTellsTheKind()
{
    QFETCH(int, tag);
    QFETCH(int, type);
    QFETCH(quint32, count);
    QFETCH(ExifListKind, kind);
    QFETCH(char, second);
    QVERIFY(directoryKind(tag, type, count, second) == kind);
}

void TestDirectoryKind::unknownTypeIsNoEntry_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 6, 8, 11, 12, 13, 129, 65535}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestDirectoryKind::unknownTypeIsNoEntry()
{
    QFETCH(int, type);
    for (const int tag : {0x0000, 0x0001, 0x0103, 0x9003}) {
        QVERIFY(!directoryKind(tag, type, 4, '9'));
    }
}

LUMI_TEST(TestDirectoryKind)
#include "TestDirectoryKind.moc"

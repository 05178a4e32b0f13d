// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifFile.h"
#include "items/exifRecords.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using lumi::test::ExifBuilder;
using enum ExifListKind;

class TestExifRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsFollowTheGroups();
    void aGroupWithoutTagsHasNoRecord();
    void theFirstGroupIsLeftOut();

private:
    [[nodiscard]] QList<lumi::InfoRecord> recordsOf(const ExifBuilder &photo) const;

    QTemporaryDir m_folder;
};

QList<lumi::InfoRecord> TestExifRecords::recordsOf(const ExifBuilder &photo) const
{
    const QString path = m_folder.filePath(QStringLiteral("a.jpg"));
    if (!photo.write(path)) {
        return {};
    }
    FPVExifFile file(path);
    lumi::ExifTagList tags;
    while (FPVExifTag *tag = file.nextTag()) {
        tags.append(tag);
    }
    QList<lumi::InfoRecord> records;
    lumi::appendExifRecords(tags, &records);
    return records;
}

/// A line per tag in the order of the group, whatever their order in the file.
void TestExifRecords::recordsFollowTheGroups()
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x0110, "Model One")
        .ascii(Ifd0, 0x010F, "Maker")
        .shorts(Exif, 0x8822, {2})
        .rationals(Exif, 0x829A, {{1, 60}});
    const QList<lumi::InfoRecord> records = recordsOf(photo);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].title, QStringLiteral("Extention")); // sic
    QCOMPARE(records[1].title, QStringLiteral("Etc..."));
    const QStringList first = records[0].text.split(QLatin1Char('\n'));
    QCOMPARE(first.size(), 3);
    QVERIFY2(first[0].endsWith(QStringLiteral(" : 60/1")), qPrintable(first[0]));
    QVERIFY2(first[1].endsWith(QStringLiteral(" : 2")), qPrintable(first[1]));
    QCOMPARE(first[2], QString());
    const QStringList second = records[1].text.split(QLatin1Char('\n'));
    QCOMPARE(second.size(), 3);
    QVERIFY2(second[0].endsWith(QStringLiteral(" : Maker")), qPrintable(second[0]));
    QVERIFY2(second[1].endsWith(QStringLiteral(" : Model One")), qPrintable(second[1]));
    QVERIFY(!second[0].startsWith(QStringLiteral(" : ")));
}

void TestExifRecords::aGroupWithoutTagsHasNoRecord()
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x0131, "Firmware");
    const QList<lumi::InfoRecord> records = recordsOf(photo);
    QCOMPARE(records.size(), 1);
    QCOMPARE(records[0].title, QStringLiteral("Etc..."));
}

void TestExifRecords::theFirstGroupIsLeftOut()
{
    ExifBuilder photo;
    photo.rationals(Ifd0, 0x011A, {{72, 1}}).ascii(Exif, 0x9003, "2026:01:02 03:04:05");
    QVERIFY(recordsOf(photo).isEmpty());
}

LUMI_TEST(TestExifRecords)
#include "TestExifRecords.moc"

// SPDX-License-Identifier: MIT
#include "app/common/messages.h"
#include "exif/text/FPVExifFields.h"
#include "exif/text/exifInfoGroups.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::ExifBuilder;

class TestFPVExifFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groupsHaveTheirRows();
    void missingRowsAndGroupsAreEmpty_data();
    void missingRowsAndGroupsAreEmpty();
    void rowTypeIsThatOfTheTagFound();
    void rowTypeIsLookedUpInTheListOfTheRow();
    void startsAtTheFirstGroup();
    void infoGroupsHaveTheirTags();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifFields::groupsHaveTheirRows()
{
    FPVExifFields fields((QString()));
    int groups = 0;
    int rows = 0;
    int rowsOfGroup = 0;
    for (const QStringList &line : lumi::test::tableLines(QStringLiteral("fieldGroups.txt"))) {
        const int group = line[1].toInt();
        if (line[0] == QLatin1String("group")) {
            fields.setGroup(group);
            QCOMPARE(fields.groupTitle(), line[2]);
            QCOMPARE(FPVExifFields::groupTitle(group), line[2]);
            QCOMPARE(FPVExifFields::groupTitle(group), msg(144 + group));
            ++groups;
            rowsOfGroup = 0;
            continue;
        }
        const int number = line[2].toInt();
        QCOMPARE(number, rowsOfGroup++);
        QVERIFY(number < fields.rowCount());
        const ExifFieldRow &row = lumi::exifFieldGroups()[std::size_t(group)].rows[number];
        QCOMPARE(fields.rowLabel(number), line[4]);
        QCOMPARE(row.label, line[4]);
        QCOMPARE(row.label, msg(line[3].toInt()));
        QCOMPARE(row.tag, line[5].toInt(nullptr, 16));
        QCOMPARE(int(row.list), line[6].toInt());
        QCOMPARE(fields.rowReadOnly(number), line[7] == QLatin1String("yes"));
        ++rows;
    }
    QCOMPARE(groups, 6);
    QCOMPARE(lumi::exifFieldGroups().size(), std::size_t(6));
    int all = 0;
    for (const ExifFieldGroup &group : lumi::exifFieldGroups()) {
        all += group.rowCount;
    }
    QCOMPARE(all, rows);
    QCOMPARE(rows, 51);
}

void TestFPVExifFields::missingRowsAndGroupsAreEmpty_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("a group below the first") << -1 << 0;
    QTest::newRow("a group behind the last") << 6 << 0;
    QTest::newRow("a row below the first") << 0 << -1;
    QTest::newRow("a row behind the last") << 0 << 10;
    QTest::newRow("a row of a longer group") << 5 << 6;
}

void TestFPVExifFields::missingRowsAndGroupsAreEmpty()
{
    const auto [group, row] = lumi::test::row<int, int>();
    FPVExifFields fields((QString()));
    fields.setGroup(group);
    QVERIFY(fields.rowLabel(row).isNull());
    QVERIFY(fields.rowReadOnly(row));
    QCOMPARE(fields.rowType(row), 0);
    if (group < 0 || group > 5) {
        QVERIFY(fields.groupTitle().isNull());
        QVERIFY(FPVExifFields::groupTitle(group).isNull());
        QCOMPARE(fields.rowCount(), 0);
    }
}

void TestFPVExifFields::rowTypeIsThatOfTheTagFound()
{
    FPVExifFields fields(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Big)));
    QVERIFY(fields.isValid());
    QCOMPARE(fields.rowType(0), 2); // maker
    QCOMPARE(fields.rowType(9), 7); // version
    QCOMPARE(fields.rowType(5), 0); // the photo names no colour space
    fields.setGroup(2);
    QCOMPARE(fields.rowType(0), 5);  // exposure time
    QCOMPARE(fields.rowType(3), 3);  // speed
    QCOMPARE(fields.rowType(7), 10); // exposure bias
    fields.setGroup(5);
    QCOMPARE(fields.rowType(0), 1); // version of the position
}

void TestFPVExifFields::rowTypeIsLookedUpInTheListOfTheRow()
{
    using enum ExifListKind;
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x829A, {1}).shorts(Exif, 0x010F, {1}).shorts(Ifd0, 0x0006, {1});
    FPVExifFields fields(m_folder.put(photo));
    QVERIFY(fields.isValid());
    QCOMPARE(fields.rowType(0), 0);
    fields.setGroup(2);
    QCOMPARE(fields.rowType(0), 0);
    fields.setGroup(5);
    QCOMPARE(fields.rowType(3), 0);
}

void TestFPVExifFields::startsAtTheFirstGroup()
{
    const FPVExifFields fields((QString()));
    QVERIFY(!fields.isValid());
    QCOMPARE(fields.groupTitle(), QStringLiteral("Basic"));
    QCOMPARE(fields.rowCount(), 10);
}

void TestFPVExifFields::infoGroupsHaveTheirTags()
{
    const auto lines = lumi::test::tableLines(QStringLiteral("infoGroups.txt"));
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lumi::kExifInfoGroups.size(), std::size_t(3));
    for (int i = 0; i < 3; ++i) {
        const ExifInfoGroup &group = lumi::kExifInfoGroups[std::size_t(i)];
        QCOMPARE(QString::fromLatin1(group.title), lines[i][1]);
        QCOMPARE(group.count, lines[i][2].toInt());
        QStringList tags;
        for (int j = 0; j < group.count; ++j) {
            tags.append(QStringLiteral("0x%1").arg(group.tags[j], 4, 16, QLatin1Char('0')));
        }
        QCOMPARE(tags.join(QStringLiteral(", ")).toLower(), lines[i][3].toLower());
    }
}

LUMI_TEST(TestFPVExifFields)
#include "TestFPVExifFields.moc"

// SPDX-License-Identifier: MIT
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::ExifBuilder;
using lumi::test::rowText;
using enum ExifListKind;

class TestValueAscii : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dates_data();
    void dates();
    void onlyDatesAreChanged();
    void copyright_data();
    void copyright();
    void plainTexts_data();
    void plainTexts();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestValueAscii::dates_data()
{
    lumi::test::columns<QByteArray, QString>();
    const auto row = [](const char *name, const char *stored, const char *text) {
        QTest::newRow(name) << QByteArray(stored) << QString::fromLatin1(text);
    };
    row("an ordinary date", "2004:05:06 07:08:09", "2004/05/06 07:08:09");
    row("a date alone", "2004:05:06", "2004/05/06");
    row("a time alone loses its separators", "07:08:09", "07/08/09");
    row("one separator", "2004:05", "2004/05");
    row("no separator", "yesterday", "yesterday");
    row("slashes already", "2004/05/06 07:08:09", "2004/05/06 07/08/09");
    row("an unset date", "    :  :     :  :  ", "    /  /     :  :  ");
    row("separators in a row", ":::::", "//:::");
    row("nothing", "", "");
}

void TestValueAscii::dates()
{
    const auto [stored, text] = lumi::test::row<QByteArray, QString>();
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x0132, stored).ascii(Exif, 0x9003, stored).ascii(Exif, 0x9004, stored);
    FPVExifFields fields(m_folder.put(photo));
    QCOMPARE(fields.valueText(2, true), text);
    fields.setGroup(1);
    QCOMPARE(fields.valueText(2, true), text);
    QCOMPARE(fields.valueText(3, false), text);
}

void TestValueAscii::onlyDatesAreChanged()
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x0131, "1:2:3");
    QCOMPARE(rowText(m_folder, photo, 0, 7), QStringLiteral("1:2:3"));
}

void TestValueAscii::copyright_data()
{
    lumi::test::columns<QByteArray, QString, QString>();
    const auto row = [](const char *name, const QByteArray &stored, const char *author,
                        const char *compilation) {
        QTest::newRow(name) << stored << QString::fromUtf8(author)
                            << QString::fromUtf8(compilation);
    };
    row("both", QByteArray("Ann\0Bob\0", 8), "Ann", "Bob");
    row("the author alone", QByteArray("Ann\0", 4), "Ann", "");
    row("a compilation behind a blank", QByteArray(" \0Bob\0", 6), "", "Bob");
    row("an author that begins with a blank", QByteArray(" Ann\0Bob\0", 9), "", "Bob");
    row("an empty author", QByteArray("\0Bob\0", 5), "", "Bob");
    row("no closing NUL", QByteArray("Ann\0Bob", 7), "Ann", "Bob");
    row("no NUL at all", "Ann Bob", "Ann Bob", "");
    row("one NUL more than the author needs", QByteArray("Ann\0\0", 5), "Ann", "");
    row("texts behind the second", QByteArray("Ann\0Bob\0Carl\0", 13), "Ann", "Bob");
    row("a blank alone", " ", "", "");
    row("a NUL alone", QByteArray("\0", 1), "", "");
    row("nothing", "", "", "");
    row("a sign beyond ASCII", QByteArray("\xC2\xA9 Ann\0\xC2\xA9 Bob\0", 14), "\xC2\xA9 Ann",
        "\xC2\xA9 Bob");
}

void TestValueAscii::copyright()
{
    const auto [stored, author, compilation] = lumi::test::row<QByteArray, QString, QString>();
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        photo.value(Ifd0, 0x8298, 2, quint32(stored.size()), stored);
        QCOMPARE(rowText(m_folder, photo, 0, 3), author);
        QCOMPARE(rowText(m_folder, photo, 0, 4), compilation);
    }
}

void TestValueAscii::plainTexts_data()
{
    lumi::test::columns<QByteArray, QString>();
    QTest::newRow("as it is") << QByteArray("Anvil Works\0", 12) << QStringLiteral("Anvil Works");
    QTest::newRow("blanks stay") << QByteArray("  Anvil  \0", 10) << QStringLiteral("  Anvil  ");
    QTest::newRow("up to the first NUL")
        << QByteArray("Anvil\0Works", 11) << QStringLiteral("Anvil");
    QTest::newRow("no closing NUL") << QByteArray("Anvil Works") << QStringLiteral("Anvil Works");
    QTest::newRow("UTF-8") << QByteArray("\xE5\x86\x99\xE7\x9C\x9F") << QStringLiteral("写真");
    QTest::newRow("nothing") << QByteArray() << QString();
}

void TestValueAscii::plainTexts()
{
    const auto [stored, text] = lumi::test::row<QByteArray, QString>();
    ExifBuilder photo;
    const auto count = quint32(stored.size());
    photo.value(Ifd0, 0x010F, 2, count, stored)
        .value(Ifd0, 0x0110, 2, count, stored)
        .value(Exif, 0xA420, 2, count, stored)
        .value(Ifd0, 0x013B, 2, count, stored)
        .value(Exif, 0xA004, 2, count, stored);
    FPVExifFields fields(m_folder.put(photo));
    for (const int row : {0, 1, 8}) {
        QCOMPARE(fields.valueText(row, true), text);
    }
    fields.setGroup(1);
    for (const int row : {0, 4}) {
        QCOMPARE(fields.valueText(row, false), text);
    }
}

LUMI_TEST(TestValueAscii)
#include "TestValueAscii.moc"

// SPDX-License-Identifier: MIT
#include "exif/tag/exifDictionary.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <set>

#include <iconv.h>

namespace {

/// Converts UTF-8 to EUC-JP with iconv. Empty if a character has no such form.
QByteArray toEucJp(QByteArray text)
{
    const iconv_t converter = iconv_open("EUC-JP", "UTF-8");
    QByteArray bytes(text.size() * 4 + 1, '\0');
    char *from = text.data();
    char *to = bytes.data();
    auto left = std::size_t(text.size());
    auto room = std::size_t(bytes.size());
    const bool done = iconv(converter, &from, &left, &to, &room) != std::size_t(-1);
    iconv_close(converter);
    bytes.resize(done ? to - bytes.data() : 0);
    return bytes;
}

} // namespace

class TestExifDictionary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreThoseOfTheTable();
    void noRowHasAFormat();
    void firstRowOfANumberWins();
    void numbersWithoutAName_data();
    void numbersWithoutAName();
    void formatFallsBack();
};

void TestExifDictionary::rowsAreThoseOfTheTable()
{
    const auto lines = lumi::test::tableLines(QStringLiteral("dictionary.txt"));
    const auto rows = lumi::exifTagNames();
    QCOMPARE(lines.size(), 259);
    QCOMPARE(rows.size(), std::size_t(260));
    for (int i = 0; i < 259; ++i) {
        const ExifTagNameRow &row = rows[std::size_t(i)];
        QCOMPARE(int(row.tag), lines[i][1].toInt(nullptr, 16));
        const QByteArray expected = toEucJp(lines[i][2].toUtf8());
        QVERIFY(!expected.isEmpty());
        QCOMPARE(QByteArray(row.name), expected);
    }
    QCOMPARE(rows.back().tag, quint16(0));
    QVERIFY(!rows.back().name);
    QVERIFY(!rows.back().format);
}

void TestExifDictionary::noRowHasAFormat()
{
    for (const ExifTagNameRow &row : lumi::exifTagNames()) {
        QVERIFY(!row.format);
    }
}

void TestExifDictionary::firstRowOfANumberWins()
{
    std::set<quint16> seen;
    for (const ExifTagNameRow &row : lumi::exifTagNames().first(259)) {
        const bool isFirst = seen.insert(row.tag).second;
        if (isFirst) {
            QCOMPARE(tagName(row.tag), QString::fromLatin1(row.name));
        }
    }
    QCOMPARE(seen.size(), std::size_t(172));
}

void TestExifDictionary::numbersWithoutAName_data()
{
    QTest::addColumn<int>("tag");
    QTest::newRow("0 is the end of the search") << 0;
    QTest::newRow("a number of no row") << 0xEEEE;
    QTest::newRow("a negative number") << -1;
    QTest::newRow("more than 16 bits are not cut") << 0x10103;
    QTest::newRow("the tag of a unique id has no row") << 0xA420;
}

void TestExifDictionary::numbersWithoutAName()
{
    QFETCH(int, tag);
    QVERIFY(tagName(tag).isNull());
}

void TestExifDictionary::formatFallsBack()
{
    QCOMPARE(tagFormat(0x829A, QStringLiteral("%d/%d")), QStringLiteral("%d/%d"));
    QCOMPARE(tagFormat(0xEEEE, QStringLiteral("x")), QStringLiteral("x"));
    QVERIFY(tagFormat(0x829A, QString()).isNull());
}

LUMI_TEST(TestExifDictionary)
#include "TestExifDictionary.moc"

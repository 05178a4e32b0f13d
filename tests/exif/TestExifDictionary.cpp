// SPDX-License-Identifier: MIT
#include "exif/tag/exifDictionary.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <algorithm>
#include <set>

#include <iconv.h>

namespace {

/// UTF-8 to EUC-JP by the system's own tables; empty when a character has no such form.
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
    void runsHaveTheirLengths();
    void noRowHasAFormat();
    void firstRowOfANumberWins();
    void reachableRowsOfTheLaterRuns();
    void names_data();
    void names();
    void numbersWithoutAName_data();
    void numbersWithoutAName();
    void titlesAreEucJpBytes();
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

void TestExifDictionary::runsHaveTheirLengths()
{
    const auto rows = lumi::exifTagNames();
    QCOMPARE(rows[0].tag, quint16(0x00FE));
    QCOMPARE(rows[140].tag, quint16(0xA302));
    QVERIFY(std::is_sorted(rows.begin(), rows.begin() + 141, [](const auto &a, const auto &b) {
        return a.tag < b.tag;
    }));
    QCOMPARE(rows[141].tag, quint16(0x0001));
    QCOMPARE(rows[157].tag, quint16(0x0100));
    QCOMPARE(rows[158].tag, quint16(0x0001));
    QCOMPARE(rows[169].tag, quint16(0x0F00));
    QCOMPARE(rows[170].tag, quint16(0x0100));
    const auto last = rows.subspan(170, 89);
    QCOMPARE(last.back().tag, quint16(0xA005));
    QCOMPARE(std::count_if(last.begin(), last.end(),
                           [](const auto &row) {
                               return row.tag == 0xA005;
                           }),
             2);
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

void TestExifDictionary::reachableRowsOfTheLaterRuns()
{
    const auto rows = lumi::exifTagNames();
    std::set<int> seen;
    std::vector<int> reachable[3];
    for (std::size_t i = 0; i < 259; ++i) {
        const std::size_t run = i < 141 ? 0 : i < 158 ? 1 : i < 170 ? 2 : 3;
        if (seen.insert(rows[i].tag).second && run > 0) {
            reachable[run - 1].push_back(rows[i].tag);
        }
    }
    QCOMPARE(reachable[0],
             (std::vector<int>{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x0A, 0x0F, 0x10,
                               0x80, 0x82, 0x85, 0x86, 0x88}));
    QCOMPARE(reachable[1], (std::vector<int>{0x09, 0x0B, 0x0F00}));
    QCOMPARE(reachable[2],
             (std::vector<int>{0xA401, 0xA402, 0xA403, 0xA404, 0xA405, 0xA406, 0xA407, 0xA408,
                               0xA409, 0xA40A, 0xA40B, 0xA40C}));
}

void TestExifDictionary::names_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("the first row") << 0x00FE << QStringLiteral("NewSubfileType");
    QTest::newRow("not the later Japanese row") << 0x0103 << QStringLiteral("Compression");
    QTest::newRow("the old number") << 0x9214 << QStringLiteral("SubjectLocation");
    QTest::newRow("the new number") << 0xA214 << QStringLiteral("SubjectLocation");
    QTest::newRow("one pattern") << 0x828E << QStringLiteral("CFAPattern");
    QTest::newRow("the other pattern") << 0xA302 << QStringLiteral("CFAPattern");
    QTest::newRow("a misspelt name") << 0x0107 << QStringLiteral("Threshholding");
    QTest::newRow("another one") << 0x0117 << QStringLiteral("StripByteConunts");
    QTest::newRow("a name with a slash") << 0x9216 << QStringLiteral("TIFF/EPStandardID");
}

void TestExifDictionary::names()
{
    const auto [tag, name] = lumi::test::row<int, QString>();
    QCOMPARE(tagName(tag), name);
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

void TestExifDictionary::titlesAreEucJpBytes()
{
    QCOMPARE(tagName(0x0001).toLatin1(), QByteArray("\xC9\xD4\xCC\xC0"));
    QCOMPARE(tagName(0xA402).toLatin1(), toEucJp("露光モード"));
    QCOMPARE(tagName(0xA402).size(), 10);
}

void TestExifDictionary::formatFallsBack()
{
    QCOMPARE(tagFormat(0x829A, QStringLiteral("%d/%d")), QStringLiteral("%d/%d"));
    QCOMPARE(tagFormat(0xEEEE, QStringLiteral("x")), QStringLiteral("x"));
    QVERIFY(tagFormat(0x829A, QString()).isNull());
}

LUMI_TEST(TestExifDictionary)
#include "TestExifDictionary.moc"

// SPDX-License-Identifier: MIT
#include "swap/IndexReader.h"
#include "swap/IndexWriter.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QTest>

using namespace lumi::test;

class TestIndexReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextHasItsPaddedField_data();
    void aTextHasItsPaddedField();
    void theKindIsSignExtendedAndCutOnReading();
    void charactersOutsideLatin1AreLost();
    void aTextEndsAtAZeroByte();
    void absurdFieldsEndTheReading_data();
    void absurdFieldsEndTheReading();
};

namespace {

lumi::BlockRecord block(const char *name, const char *swapPath)
{
    lumi::BlockRecord record;
    record.sourceName = QString::fromLatin1(name);
    record.sourceTime = 1700000000;
    record.width = 171;
    record.height = -1;
    record.param = 100;
    record.kind = 's';
    record.swapPath = QString::fromLatin1(swapPath);
    record.swapTime = 1700000001;
    return record;
}

struct Parsed
{
    int controls = 0;
    QList<lumi::BlockRecord> blocks;
    bool whole = false;
};

Parsed parse(const QByteArray &bytes)
{
    Parsed parsed;
    lumi::IndexReader reader(bytes);
    lumi::IndexHeader header;
    lumi::ControlRecord control;
    lumi::BlockRecord record;
    bool more = reader.readHeader(header);
    for (int i = 0; more && i < header.controlCount && reader.readControl(control); ++i) {
        ++parsed.controls;
        for (int k = 0; k < control.blockCount && reader.readBlock(record); ++k) {
            parsed.blocks.append(record);
        }
        more = !reader.failed();
    }
    parsed.whole = !reader.failed();
    return parsed;
}

} // namespace

void TestIndexReader::aTextHasItsPaddedField_data()
{
    lumi::test::columns<QByteArray, QByteArray>();
    QTest::newRow("empty: 4 zero bytes") << QByteArray("")
                                         << QByteArray("00000000"
                                                       "00000000");
    QTest::newRow("1 character: 4") << QByteArray("a")
                                    << QByteArray("01000000"
                                                  "61000000");
    QTest::newRow("3 characters: 4") << QByteArray("abc")
                                     << QByteArray("03000000"
                                                   "61626300");
    QTest::newRow("4 characters: 8") << QByteArray("abcd")
                                     << QByteArray("04000000"
                                                   "6162636400000000");
    QTest::newRow("7 characters: 8") << QByteArray("abcdefg")
                                     << QByteArray("07000000"
                                                   "6162636465666700");
    QTest::newRow("upper Latin-1 as one byte") << QByteArray("\xe9")
                                               << QByteArray("01000000"
                                                             "e9000000");
}

void TestIndexReader::aTextHasItsPaddedField()
{
    const auto [text, field] = lumi::test::row<QByteArray, QByteArray>();
    lumi::IndexWriter writer;
    writer.writeControl({5, 6, QString::fromLatin1(text)});
    QCOMPARE(writer.bytes().toHex(),
             QByteArray("05000000"
                        "06000000"
                        + field));
    lumi::IndexReader reader(writer.bytes());
    lumi::ControlRecord control;
    QVERIFY(reader.readControl(control));
    QCOMPARE(control.id, 5);
    QCOMPARE(control.blockCount, 6);
    QCOMPARE(control.folder, QString::fromLatin1(text));
}

void TestIndexReader::theKindIsSignExtendedAndCutOnReading()
{
    lumi::BlockRecord record = block("a", "b");
    record.kind = -1;
    lumi::IndexWriter writer;
    writer.writeBlock(record);
    // Behind the name (8), its time, both sizes and the param (16).
    QCOMPARE(writer.bytes().mid(24, 4).toHex(), QByteArray("ffffffff"));
    lumi::IndexReader reader(writer.bytes());
    QVERIFY(reader.readBlock(record));
    QCOMPARE(static_cast<int>(record.kind), 0x7f);
}

void TestIndexReader::charactersOutsideLatin1AreLost()
{
    lumi::IndexWriter writer;
    writer.writeControl({0, 0, QString::fromUtf8("/\xe6\x97\xa5\xe6\x9c\xac/\xc3\xa9")});
    lumi::IndexReader reader(writer.bytes());
    lumi::ControlRecord control;
    QVERIFY(reader.readControl(control));
    QCOMPARE(control.folder,
             QString::fromLatin1("/?"
                                 "?/\xe9"));
}

void TestIndexReader::aTextEndsAtAZeroByte()
{
    lumi::IndexReader reader(IndexBytes()
                                 .number(1)
                                 .number(2)
                                 .text(QByteArray("/p\0q", 4))
                                 .number(3)
                                 .number(4)
                                 .text("r")
                                 .bytes);
    lumi::ControlRecord control;
    QVERIFY(reader.readControl(control));
    QCOMPARE(control.folder, QStringLiteral("/p"));
    QVERIFY(reader.readControl(control));
    QCOMPARE(control.folder, QStringLiteral("r"));
}

void TestIndexReader::absurdFieldsEndTheReading_data()
{
    lumi::test::columns<QByteArray, int, int>();
    const auto header = [](std::int32_t count) {
        return IndexBytes().number(1).number(count);
    };
    QTest::newRow("nothing at all") << QByteArray() << 0 << 0;
    QTest::newRow("a negative number of controls")
        << header(-1).number(0).number(0).text("/p").bytes << 0 << 0;
    QTest::newRow("more controls than bytes")
        << header(0x7FFFFFFF).number(0).number(0).text("/p").bytes << 1 << 0;
    QTest::newRow("a negative number of blocks")
        << header(1).number(0).number(-1).text("/p").bytes << 0 << 0;
    QTest::newRow("a text that ends behind the file")
        << header(1).number(0).number(0).number(4).bytes + QByteArray("abcd") << 0 << 0;
    QTest::newRow("a length that would wrap round")
        << header(1).number(0).number(0).number(0x7FFFFFFF).bytes + QByteArray(64, 'a') << 0 << 0;
    QTest::newRow("a negative length")
        << header(1).number(0).number(0).number(-4).bytes + QByteArray(64, 'a') << 0 << 0;
}

void TestIndexReader::absurdFieldsEndTheReading()
{
    const auto [bytes, controls, blocks] = lumi::test::row<QByteArray, int, int>();
    const Parsed parsed = parse(bytes);
    QVERIFY(!parsed.whole);
    QCOMPARE(parsed.controls, controls);
    QCOMPARE(static_cast<int>(parsed.blocks.size()), blocks);
}

LUMI_TEST(TestIndexReader)
#include "TestIndexReader.moc"

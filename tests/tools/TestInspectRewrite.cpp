// SPDX-License-Identifier: MIT
// The command rewrite of lumivault-inspect.
#include "exif/read/FPVExifDocument.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/tagLists.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/tools/inspectRun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using lumi::test::contentOf;
using lumi::test::ExifBuilder;
using lumi::test::inspect;
using lumi::test::numbersOf;
using lumi::test::Run;
using enum ExifListKind;

class TestInspectRewrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void setsAndRemoves();
    void nullDataRemoves();
    void emptyListWritesThePhotoAnew();
    void longerDataAreCut();
    void operationsRunInTheirOrder();
    void badOperationsTouchNothing_data();
    void badOperationsTouchNothing();
    void photoWithoutABlockFails();
    void fullDiskHasItsOwnResult();
    void wrongUsage_data();
    void wrongUsage();

private:
    [[nodiscard]] Run rewrite(const QByteArray &operations);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_photo;
};

void TestInspectRewrite::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_photo = m_folder->filePath(QStringLiteral("photo.jpg"));
    ExifBuilder photo(ExifBuilder::Order::Big);
    photo.ascii(Ifd0, 0x010F, "Anvil")
        .shorts(Ifd0, 0x0112, {6})
        .shorts(Exif, 0x8827, {100})
        .ascii(Gps, 0x0001, "N")
        .ascii(Interoperability, 0x0001, "R98")
        .shorts(Ifd1, 0x0103, {6});
    QVERIFY(photo.write(m_photo));
}

Run TestInspectRewrite::rewrite(const QByteArray &operations)
{
    const QString path = m_folder->filePath(QStringLiteral("ops.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(operations) != operations.size()) {
        return {};
    }
    file.close();
    return inspect({QStringLiteral("rewrite"), m_photo, path});
}

void TestInspectRewrite::setsAndRemoves()
{
    const Run run = rewrite(R"([
        {"op": "set", "tag": 315, "type": 2, "count": 6, "data": "536D69746800", "kind": 0},
        {"op": "set", "tag": 34855, "type": 3, "count": 2, "data": "c8009001", "kind": 1},
        {"op": "remove", "tag": 274, "kind": 0}])");
    QCOMPARE(run.result, 0);
    QCOMPARE(run.out, QByteArray("0\n"));
    QVERIFY(run.err.isEmpty());
    const FPVExifDocument document(m_photo);
    QVERIFY(document.littleEndian());
    QCOMPARE(numbersOf(document.ifd0List()), QList<int>({0x010F, 0x8769, 0x8825, 0x013B}));
    QCOMPARE(document.find(0x013B, Ifd0)->text(), QStringLiteral("Smith"));
    QCOMPARE(document.find(0x8827, Exif)->intValue(), 200 | 400 << 16);
}

void TestInspectRewrite::nullDataRemoves()
{
    QCOMPARE(rewrite(R"([{"op": "set", "tag": 274, "type": 3, "count": 1, "data": null,
                          "kind": 0}])")
                 .result,
             0);
    QVERIFY(!FPVExifDocument(m_photo).find(0x0112, Ifd0));
}

void TestInspectRewrite::emptyListWritesThePhotoAnew()
{
    QCOMPARE(rewrite("[]").out, QByteArray("0\n"));
    QVERIFY(FPVExifDocument(m_photo).littleEndian());
}

void TestInspectRewrite::longerDataAreCut()
{
    QCOMPARE(rewrite(R"([{"op": "set", "tag": 57345, "type": 1, "count": 2, "data": "010203",
                          "kind": 0}])")
                 .result,
             0);
    QCOMPARE(FPVExifDocument(m_photo).find(0xE001, Ifd0)->intValue(), 0x0201);
}

void TestInspectRewrite::operationsRunInTheirOrder()
{
    QCOMPARE(rewrite(R"([
        {"op": "set", "tag": 57345, "type": 1, "count": 1, "data": "01", "kind": 0},
        {"op": "set", "tag": 57345, "type": 1, "count": 1, "data": "02", "kind": 0},
        {"op": "set", "tag": 57346, "type": 1, "count": 1, "data": "03", "kind": 0},
        {"op": "remove", "tag": 57346, "kind": 0}])")
                 .result,
             0);
    const FPVExifDocument document(m_photo);
    QCOMPARE(document.find(0xE001, Ifd0)->intValue(), 2);
    QVERIFY(!document.find(0xE002, Ifd0));
}

void TestInspectRewrite::badOperationsTouchNothing_data()
{
    QTest::addColumn<QByteArray>("operations");
    const auto row = [](const char *name, const char *operations) {
        QTest::newRow(name) << QByteArray(operations);
    };
    row("no JSON", "set the title");
    row("no list", R"({"op": "remove", "tag": 274, "kind": 0})");
    row("an unknown operation", R"([{"op": "rename", "tag": 274, "kind": 0}])");
    row("no tag", R"([{"op": "remove", "kind": 0}])");
    row("a tag that is a text", R"([{"op": "remove", "tag": "274", "kind": 0}])");
    row("a tag above 16 bits", R"([{"op": "remove", "tag": 65536, "kind": 0}])");
    row("a negative tag", R"([{"op": "remove", "tag": -1, "kind": 0}])");
    row("half a tag", R"([{"op": "remove", "tag": 1.5, "kind": 0}])");
    row("no kind", R"([{"op": "remove", "tag": 274}])");
    row("no data", R"([{"op": "set", "tag": 1, "type": 1, "count": 1, "kind": 0}])");
    row("too little data",
        R"([{"op": "set", "tag": 1, "type": 3, "count": 2, "data": "010203", "kind": 0}])");
    row("data that are no bytes",
        R"([{"op": "set", "tag": 1, "type": 1, "count": 1, "data": "01x2", "kind": 0}])");
    row("half a byte",
        R"([{"op": "set", "tag": 1, "type": 1, "count": 1, "data": "012", "kind": 0}])");
    row("data that are a number",
        R"([{"op": "set", "tag": 1, "type": 1, "count": 1, "data": 17, "kind": 0}])");
    row("a bad one behind a good one",
        R"([{"op": "remove", "tag": 274, "kind": 0}, {"op": "remove"}])");
    row("something that is no operation", "[17]");
}

void TestInspectRewrite::badOperationsTouchNothing()
{
    QFETCH(QByteArray, operations);
    const QByteArray before = contentOf(m_photo);
    const Run run = rewrite(operations);
    QCOMPARE(run.result, 1);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.contains("ops.json"));
    QCOMPARE(contentOf(m_photo), before);
}

void TestInspectRewrite::photoWithoutABlockFails()
{
    const QByteArray plain = ExifBuilder::jpeg(16, 16, 0);
    QFile file(m_photo);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(plain) == plain.size());
    file.close();
    const Run run = rewrite("[]");
    QCOMPARE(run.result, 1);
    QCOMPARE(run.out, QByteArray("2\n"));
    QCOMPARE(contentOf(m_photo), plain);
}

void TestInspectRewrite::fullDiskHasItsOwnResult()
{
    // Without the folder Documents there is no free space at home.
    QVERIFY(!QFile::exists(QDir::homePath() + QStringLiteral("/Documents")));
    const QByteArray more(1500, 'm'); // free space is compared in kilobytes
    const QByteArray before = contentOf(m_photo) + more;
    QFile photo(m_photo);
    QVERIFY(photo.open(QIODevice::Append) && photo.write(more) == more.size());
    photo.close();
    const QString operations = m_folder->filePath(QStringLiteral("ops.json"));
    QFile file(operations);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("[]") == 2);
    file.close();
    Run run;
    {
        const lumi::test::FileSizeLimit limit(1000); // inherited by the process
        run = inspect({QStringLiteral("rewrite"), m_photo, operations});
    }
    QCOMPARE(run.result, 1);
    QCOMPARE(run.out, QByteArray("1\n"));
    QCOMPARE(contentOf(m_photo), before);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 2);
}

void TestInspectRewrite::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no photo") << QStringList();
    QTest::newRow("no operations") << QStringList{QStringLiteral("photo.jpg")};
    QTest::newRow("more than one photo")
        << QStringList{QStringLiteral("a.jpg"), QStringLiteral("b.jpg"), QStringLiteral("o.json")};
}

void TestInspectRewrite::wrongUsage()
{
    QFETCH(QStringList, arguments);
    const Run run = inspect(QStringList(QStringLiteral("rewrite")) + arguments);
    QCOMPARE(run.result, 2);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.contains("rewrite FILE OPS.json"));
}

LUMI_TEST(TestInspectRewrite)
#include "TestInspectRewrite.moc"

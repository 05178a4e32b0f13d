// SPDX-License-Identifier: MIT
// Runs lumivault-inspect as a process and checks output and exit code.
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/tools/inspectRun.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using lumi::test::ExifBuilder;
using lumi::test::inspect;
using lumi::test::Run;
using enum ExifListKind;

namespace {

QJsonObject jsonOf(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object();
}

QJsonObject tagOf(int tag, int type, int count, const char *bytes)
{
    return {{QStringLiteral("tag"), tag},
            {QStringLiteral("type"), type},
            {QStringLiteral("count"), count},
            {QStringLiteral("bytes"), QString::fromLatin1(bytes)}};
}

QJsonObject walkedOf(int tag, const char *name, int value, const char *text,
                     const char *description)
{
    return {{QStringLiteral("tag"), tag},
            {QStringLiteral("class"), QString::fromLatin1(name)},
            {QStringLiteral("intValue"), value},
            {QStringLiteral("text"), QString::fromLatin1(text)},
            {QStringLiteral("description"), QString::fromLatin1(description)}};
}

} // namespace

class TestInspect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpIsNoError();
    void wrongUsage_data();
    void wrongUsage();
    void exifShowsTheDocument();
    void exifShowsTheWalk();
    void exifShowsTheTextsOfAllRows();
    void exifOfAPhotoWithoutABlock();
    void exifPrintsALineForEachFile();
    void exifNamesWhatItCannotRead();
    void exifNeedsNoDisplay();
    void failedOutputIsAFailure();
    void swapOfAFolderWithoutAnIndex();
    void swapWithAPipeAsItsIndex();
    void rasterGivesEveryPixel_data();
    void rasterGivesEveryPixel();
    void rasterOfNoPhoto();

private:
    [[nodiscard]] QString put(const ExifBuilder &photo, const QString &name);

    QTemporaryDir m_folder;
};

QString TestInspect::put(const ExifBuilder &photo, const QString &name)
{
    QString path = m_folder.filePath(name);
    if (!photo.write(path)) {
        QTest::qFail("a test file cannot be written", __FILE__, __LINE__);
    }
    return path;
}

void TestInspect::helpIsNoError()
{
    const Run run = inspect({QStringLiteral("--help")});
    QCOMPARE(run.result, 0);
    for (const char *command : {"exif FILE...", "rewrite FILE OPS.json", "swap FOLDER",
                                "raster FILE", "coordinates [TEXT...]", "altitude [TEXT...]"}) {
        QVERIFY(run.out.contains(command));
    }
    QVERIFY(run.err.isEmpty());
}

void TestInspect::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no command") << QStringList();
    QTest::newRow("an unknown command") << QStringList{QStringLiteral("photo")};
    QTest::newRow("exif of nothing") << QStringList{QStringLiteral("exif")};
    QTest::newRow("swap of nothing") << QStringList{QStringLiteral("swap")};
    QTest::newRow("swap of two folders")
        << QStringList{QStringLiteral("swap"), QStringLiteral("a"), QStringLiteral("b")};
    QTest::newRow("raster of nothing") << QStringList{QStringLiteral("raster")};
    QTest::newRow("raster without a depth")
        << QStringList{QStringLiteral("raster"), QStringLiteral("photo.jpg")};
    QTest::newRow("raster with an unknown depth")
        << QStringList{QStringLiteral("raster"), QStringLiteral("photo.jpg"),
                       QStringLiteral("--depth"), QStringLiteral("24")};
}

void TestInspect::wrongUsage()
{
    QFETCH(QStringList, arguments);
    const Run run = inspect(arguments);
    QCOMPARE(run.result, 2);
    QVERIFY(run.out.isEmpty());
    QCOMPARE(run.err.count("usage: lumivault-inspect"), 1);
}

void TestInspect::exifShowsTheDocument()
{
    ExifBuilder photo(ExifBuilder::Order::Big);
    photo.ascii(Ifd0, 0x010F, "Anvil")
        .shorts(Ifd0, 0x0112, {6})
        .rationals(Exif, 0x829A, {{1, 60}})
        .ascii(Interoperability, 0x0001, "R98")
        .ascii(Gps, 0x0001, "N")
        .thumbnail(ExifBuilder::jpeg(40, 30, 0xC08040));
    const QString path = put(photo, QStringLiteral("a photo.jpg"));
    const Run run = inspect({QStringLiteral("exif"), path});
    QCOMPARE(run.result, 0);
    const QJsonObject line = jsonOf(run.out);
    QCOMPARE(
        line.keys(),
        (QStringList{QStringLiteral("document"), QStringLiteral("fields"), QStringLiteral("file"),
                     QStringLiteral("hasThumbnail"), QStringLiteral("walking")}));
    QCOMPARE(line[QStringLiteral("file")].toString(), path);
    QCOMPARE(line[QStringLiteral("hasThumbnail")], QJsonValue(true));
    const QJsonObject document = line[QStringLiteral("document")].toObject();
    QCOMPARE(document[QStringLiteral("valid")], QJsonValue(true));
    QCOMPARE(document[QStringLiteral("littleEndian")], QJsonValue(false));
    QCOMPARE(document[QStringLiteral("tiffBase")].toInt(), 12);
    QCOMPARE(document[QStringLiteral("app1Length")].toInt(), int(photo.block().size()) + 8);
    QCOMPARE(document[QStringLiteral("ifd0Offset")].toInt(), 8);
    QCOMPARE(document[QStringLiteral("ifd1Offset")].toInt(), int(photo.offsetOf(Ifd1)));
    QCOMPARE(document[QStringLiteral("ifd0Span")].toInt(), int(photo.offsetOf(Ifd1)) - 8);
    QCOMPARE(document[QStringLiteral("nextIfdOffset")], QJsonValue(0));
    QCOMPARE(document[QStringLiteral("thumbnailOffset")].toInt(), int(photo.thumbnailOffset()));
    QCOMPARE(document[QStringLiteral("thumbnailLength")].toInt(),
             int(ExifBuilder::jpeg(40, 30, 0xC08040).size()));
    const QJsonArray ifd0 = document[QStringLiteral("ifd0")].toArray();
    QCOMPARE(ifd0.size(), 4);
    QCOMPARE(ifd0[0].toObject(), tagOf(0x010F, 2, 6, "416e76696c00"));
    QCOMPARE(ifd0[1].toObject(), tagOf(0x0112, 3, 1, "0600"));
    QCOMPARE(document[QStringLiteral("exif")].toArray()[0].toObject(),
             tagOf(0x829A, 5, 1, "010000003c000000"));
    QCOMPARE(document[QStringLiteral("interoperability")].toArray(),
             (QJsonArray{tagOf(0x0001, 2, 4, "52393800")}));
    QCOMPARE(document[QStringLiteral("gps")].toArray(), (QJsonArray{tagOf(0x0001, 2, 2, "4e00")}));
    QCOMPARE(document[QStringLiteral("ifd1")].toArray().size(), 2);
}

void TestInspect::exifShowsTheWalk()
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x010F, "Anvil")
        .shorts(Ifd0, 0x0112, {6})
        .rationals(Ifd0, 0x829A, {{1, 60}})
        .undefined(Ifd0, 0x9000, "0220");
    const Run run = inspect({QStringLiteral("exif"), put(photo, QStringLiteral("walk.jpg"))});
    QCOMPARE(run.result, 0);
    const QJsonObject walking = jsonOf(run.out)[QStringLiteral("walking")].toObject();
    QCOMPARE(walking[QStringLiteral("open")], QJsonValue(true));
    const QJsonArray expected = {
        walkedOf(0x010F, "FPVExifTagString", 0, "Anvil", "Anvil"),
        walkedOf(0x0112, "FPVExifTagNumber", 6, "6", "6"),
        walkedOf(0x829A, "FPVExifTagRational", 60, "60", "60/1"),
        walkedOf(0x9000, "FPVExifTagBytes", 0x30323230, "0220", ""),
    };
    QCOMPARE(walking[QStringLiteral("tags")].toArray(), expected);
}

void TestInspect::exifShowsTheTextsOfAllRows()
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x010F, "Anvil")
        .ascii(Exif, 0x9003, "2004:05:06 07:08:09")
        .shorts(Exif, 0x9207, {7})
        .shorts(Exif, 0x9209, {0x19})
        .ascii(Ifd0, 0x0131, "")
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\1'))
        .rationals(Gps, 0x0006, {{1050, 100}});
    const Run run = inspect({QStringLiteral("exif"), put(photo, QStringLiteral("rows.jpg"))});
    QCOMPARE(run.result, 0);
    const QJsonArray groups = jsonOf(run.out)[QStringLiteral("fields")].toArray();
    QCOMPARE(groups.size(), 6);
    const int rows[] = {10, 6, 10, 10, 9, 6};
    for (int group = 0; group < 6; ++group) {
        QCOMPARE(groups[group].toArray().size(), rows[group]);
    }
    const auto row = [&groups](int group, int number) {
        return groups[group].toArray()[number].toObject();
    };
    const auto texts = [](const QJsonValue &withUnit, const QJsonValue &plain) {
        return QJsonObject{{QStringLiteral("withUnit"), withUnit},
                           {QStringLiteral("plain"), plain}};
    };
    QCOMPARE(row(0, 0), texts(QStringLiteral("Anvil"), QStringLiteral("Anvil")));
    QCOMPARE(row(0, 1), texts(QJsonValue::Null, QJsonValue::Null));
    QCOMPARE(row(0, 2)[QStringLiteral("plain")].toString(), QStringLiteral("2004/05/06 07:08:09"));
    QCOMPARE(row(0, 7), texts(QString::fromLatin1(""), QString::fromLatin1("")));
    QCOMPARE(row(3, 0), texts(QJsonValue::Null, QJsonValue::Null));
    QCOMPARE(row(3, 2)[QStringLiteral("withUnit")].toString(), QStringLiteral("Flash\nAuto flash"));
    QCOMPARE(row(5, 3), texts(QStringLiteral("-10.50m"), QStringLiteral("-10.50")));
}

void TestInspect::exifOfAPhotoWithoutABlock()
{
    const QString path = m_folder.filePath(QStringLiteral("plain.jpg"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(ExifBuilder::jpeg(16, 16, 0)) > 0);
    file.close();
    const Run run = inspect({QStringLiteral("exif"), path});
    QCOMPARE(run.result, 0);
    const QJsonObject line = jsonOf(run.out);
    QCOMPARE(line[QStringLiteral("hasThumbnail")], QJsonValue(false));
    const QJsonObject document = line[QStringLiteral("document")].toObject();
    QCOMPARE(document[QStringLiteral("valid")], QJsonValue(false));
    QCOMPARE(document[QStringLiteral("ifd0")].toArray(), QJsonArray());
    const QJsonObject walking = line[QStringLiteral("walking")].toObject();
    QCOMPARE(walking[QStringLiteral("open")], QJsonValue(false));
    QCOMPARE(walking[QStringLiteral("tags")].toArray(), QJsonArray());
    const QJsonArray groups = line[QStringLiteral("fields")].toArray();
    QCOMPARE(groups.size(), 6);
    const QJsonObject none{{QStringLiteral("withUnit"), QJsonValue::Null},
                           {QStringLiteral("plain"), QJsonValue::Null}};
    QCOMPARE(groups[0].toArray().size(), 10);
    QCOMPARE(groups[0].toArray()[0].toObject(), none);
}

void TestInspect::exifPrintsALineForEachFile()
{
    const QString one
        = put(ExifBuilder().shorts(Ifd0, 0x0112, {1}), QString::fromUtf8("\xE5\x86\x99.jpg"));
    const QString two = put(ExifBuilder().shorts(Ifd0, 0x0112, {2}), QStringLiteral("two.jpg"));
    const Run run = inspect({QStringLiteral("exif"), one, two});
    QCOMPARE(run.result, 0);
    const QList<QByteArray> lines = run.out.split('\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(jsonOf(lines[0])[QStringLiteral("file")].toString(), one);
    QCOMPARE(jsonOf(lines[1])[QStringLiteral("file")].toString(), two);
    QVERIFY(lines[2].isEmpty());
}

void TestInspect::exifNamesWhatItCannotRead()
{
    const QString good = put(ExifBuilder().shorts(Ifd0, 0x0112, {1}), QStringLiteral("good.jpg"));
    const QString missing = m_folder.filePath(QStringLiteral("missing.jpg"));
    const Run run = inspect({QStringLiteral("exif"), missing, m_folder.path(), good});
    QCOMPARE(run.result, 1);
    QVERIFY(run.err.contains(missing.toUtf8()));
    QVERIFY(run.err.contains(QByteArray(m_folder.path().toUtf8() + '\n')));
    QCOMPARE(jsonOf(run.out)[QStringLiteral("file")].toString(), good);
}

void TestInspect::exifNeedsNoDisplay()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(LUMI_INSPECT),
                  {QStringLiteral("exif"),
                   put(ExifBuilder().shorts(Ifd0, 0x0112, {1}), QStringLiteral("good.jpg"))});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardError().isEmpty());
}

void TestInspect::failedOutputIsAFailure()
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(LUMI_INSPECT),
                  {QStringLiteral("exif"),
                   put(ExifBuilder().shorts(Ifd0, 0x0112, {1}), QStringLiteral("good.jpg"))});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("could not be written"));
}

void TestInspect::swapOfAFolderWithoutAnIndex()
{
    const Run run = inspect({QStringLiteral("swap"), m_folder.path()});
    QCOMPARE(run.result, 1);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.contains(m_folder.path().toUtf8()));
}

/// Opening a pipe would block until something writes to it.
void TestInspect::swapWithAPipeAsItsIndex()
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral(".SwapMng.bin"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const Run run = inspect({QStringLiteral("swap"), folder.path()});
    QCOMPARE(run.result, 1);
    QVERIFY(run.err.contains(folder.path().toUtf8()));
}

void TestInspect::rasterGivesEveryPixel_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("16 bits a pixel") << 16;
    QTest::newRow("32 bits a pixel") << 32;
}

void TestInspect::rasterGivesEveryPixel()
{
    QFETCH(int, depth);
    ExifBuilder photo;
    const QString path
        = put(photo.photo(ExifBuilder::jpeg(24, 16, 0xFFFFFF)), QStringLiteral("white.jpg"));
    const Run run = inspect(
        {QStringLiteral("raster"), path, QStringLiteral("--depth"), QString::number(depth)});
    QCOMPARE(run.result, 0);
    QCOMPARE(run.err, QByteArray("24x16\n"));
    QCOMPARE(run.out.size(), 24 * 16 * depth / 8);
    QCOMPARE(run.out.left(2), QByteArray("\xFF\xFF"));
}

void TestInspect::rasterOfNoPhoto()
{
    const QString path = m_folder.filePath(QStringLiteral("text.jpg"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("a text") > 0);
    file.close();
    const Run run = inspect(
        {QStringLiteral("raster"), path, QStringLiteral("--depth"), QStringLiteral("16")});
    QCOMPARE(run.result, 1);
    QVERIFY(run.out.isEmpty());
}

LUMI_TEST(TestInspect)
#include "TestInspect.moc"

// SPDX-License-Identifier: MIT
// The command thumbnail of lumivault-inspect.
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/tools/inspectRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using lumi::test::ExifBuilder;
using lumi::test::inspect;
using lumi::test::Run;

class TestInspectThumbnail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPhotoHasAThumbnail_data();
    void aPhotoHasAThumbnail();
    void theEmbeddedThumbnailIsUsed();
    void anUndecodablePhotoIsNoFailure_data();
    void anUndecodablePhotoIsNoFailure();
    void unreadableFiles();
    void wrongUsage_data();
    void wrongUsage();
    void noDisplayIsNeeded();
    void theStoreOfTheUserIsLeftAlone();

private:
    [[nodiscard]] QString put(const QByteArray &bytes,
                              const QString &name = QStringLiteral("a.jpg")) const;
    [[nodiscard]] static QJsonObject thumbnailOf(const QString &path, const QString &box);

    QTemporaryDir m_folder;
};

QString TestInspectThumbnail::put(const QByteArray &bytes, const QString &name) const
{
    QString path = m_folder.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        QTest::qFail("a test file cannot be written", __FILE__, __LINE__);
    }
    return path;
}

/// Empty if the command fails or prints more than one line.
QJsonObject TestInspectThumbnail::thumbnailOf(const QString &path, const QString &box)
{
    const Run run = inspect({QStringLiteral("thumbnail"), path, QStringLiteral("--box"), box});
    const bool isOneLine = run.out.endsWith('\n') && run.out.count('\n') == 1;
    return run.result == 0 && isOneLine ? QJsonDocument::fromJson(run.out).object() : QJsonObject();
}

void TestInspectThumbnail::aPhotoHasAThumbnail_data()
{
    lumi::test::columns<QSize, QString, QString>();
    QTest::newRow("landscape") << QSize(640, 480) << QStringLiteral("174x123")
                               << QStringLiteral("164x123");
    QTest::newRow("portrait") << QSize(480, 640) << QStringLiteral("174x123")
                              << QStringLiteral("92x123");
    QTest::newRow("enlarged") << QSize(8, 6) << QStringLiteral("80x60") << QStringLiteral("80x60");
}

void TestInspectThumbnail::aPhotoHasAThumbnail()
{
    const auto [photo, box, size] = lumi::test::row<QSize, QString, QString>();
    const QString path = put(ExifBuilder::jpeg(photo.width(), photo.height(), 0x336699));
    const QJsonObject expected{{QStringLiteral("file"), path},
                               {QStringLiteral("outcome"), QStringLiteral("thumbnail")},
                               {QStringLiteral("size"), size}};
    QCOMPARE(thumbnailOf(path, box), expected);
}

void TestInspectThumbnail::theEmbeddedThumbnailIsUsed()
{
    ExifBuilder photo;
    photo.ascii(ExifListKind::Ifd0, 0x010F, "Maker").thumbnail(ExifBuilder::jpeg(160, 90, 0));
    const QJsonObject line = thumbnailOf(put(photo.file()), QStringLiteral("80x60"));
    QCOMPARE(line[QStringLiteral("size")].toString(), QStringLiteral("80x45"));
}

void TestInspectThumbnail::anUndecodablePhotoIsNoFailure_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a text") << QByteArray("a text");
    QTest::newRow("a cut header") << ExifBuilder::jpeg(64, 48, 0).first(100);
}

void TestInspectThumbnail::anUndecodablePhotoIsNoFailure()
{
    QFETCH(QByteArray, bytes);
    const QString path = put(bytes);
    const QJsonObject expected{{QStringLiteral("file"), path},
                               {QStringLiteral("outcome"), QStringLiteral("undecodable")},
                               {QStringLiteral("size"), QJsonValue::Null},
                               {QStringLiteral("errorCode"), 3}};
    QCOMPARE(thumbnailOf(path, QStringLiteral("174x123")), expected);
}

void TestInspectThumbnail::unreadableFiles()
{
    const QString missing = m_folder.filePath(QStringLiteral("missing.jpg"));
    for (const QString &path : {missing, m_folder.path()}) {
        const Run run = inspect(
            {QStringLiteral("thumbnail"), path, QStringLiteral("--box"), QStringLiteral("80x60")});
        QCOMPARE(run.result, 1);
        QVERIFY(run.out.isEmpty());
        QVERIFY(run.err.contains(path.toUtf8()));
    }
}

void TestInspectThumbnail::wrongUsage_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *arguments :
         {"thumbnail", "thumbnail a.jpg", "thumbnail --box 80x60", "thumbnail a.jpg --box",
          "thumbnail a.jpg --box 80", "thumbnail a.jpg --box 80x0", "thumbnail a.jpg --box 0x60",
          "thumbnail a.jpg --box -8x60", "thumbnail a.jpg b.jpg --box 80x60",
          "thumbnail a.jpg --box 80x60 80x60", "thumbnail a.jpg 80x60"}) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
    }
}

void TestInspectThumbnail::wrongUsage()
{
    QFETCH(QString, arguments);
    const Run run = inspect(arguments.split(QLatin1Char(' ')));
    QCOMPARE(run.result, 2);
    QVERIFY(run.out.isEmpty());
    QCOMPARE(run.err.count("usage: lumivault-inspect"), 1);
}

void TestInspectThumbnail::noDisplayIsNeeded()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(LUMI_INSPECT),
                  {QStringLiteral("thumbnail"), put(ExifBuilder::jpeg(64, 48, 0)),
                   QStringLiteral("--box"), QStringLiteral("80x60")});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().contains("80x60"));
}

/// Even if the photo is in the folder of the store.
void TestInspectThumbnail::theStoreOfTheUserIsLeftAlone()
{
    const QString home = m_folder.filePath(QStringLiteral("home"));
    const QString photos = home + QStringLiteral("/Documents/Photo_Files");
    QVERIFY(QDir().mkpath(photos + QStringLiteral("/.photo_swp")));
    const QString path
        = put(ExifBuilder::jpeg(640, 480, 0), QStringLiteral("home/Documents/Photo_Files/a.jpg"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(
        QStringLiteral(LUMI_INSPECT),
        {QStringLiteral("thumbnail"), path, QStringLiteral("--box"), QStringLiteral("80x60")});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    constexpr auto kAll = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(photos).entryList(kAll, QDir::Name),
             (QStringList{QStringLiteral(".photo_swp"), QStringLiteral("a.jpg")}));
    QVERIFY(QDir(photos + QStringLiteral("/.photo_swp")).isEmpty(kAll));
}

LUMI_TEST(TestInspectThumbnail)
#include "TestInspectThumbnail.moc"

// SPDX-License-Identifier: MIT
#include "tests/items/JpegMaker.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"
#include "tools/inspect/rasterCommand.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <cstdio>

#include <unistd.h>

using lumi::test::JpegKind;

class TestRasterCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writesTheRaster_data();
    void writesTheRaster();
    void wrongUsage_data();
    void wrongUsage();
    void whatCannotBeDecoded();
    void outputThatCannotBeWritten();

private:
    struct Result
    {
        int code = -1;
        QByteArray out;
        QString err;
    };

    [[nodiscard]] Result run(const QStringList &arguments, const QString &target = QString()) const;

    QTemporaryDir m_folder;
};

void TestRasterCommand::init()
{
    lumi::test::FakeMachine::install();
}

void TestRasterCommand::cleanup()
{
    Machine::install(nullptr);
}

/// Redirects standard output to a file.
TestRasterCommand::Result TestRasterCommand::run(const QStringList &arguments,
                                                 const QString &target) const
{
    const QString path = target.isEmpty() ? m_folder.filePath(QStringLiteral("out")) : target;
    std::fflush(stdout);
    const int kept = ::dup(STDOUT_FILENO);
    FILE *file = std::fopen(QFile::encodeName(path).constData(), "wb");
    if (file == nullptr || ::dup2(::fileno(file), STDOUT_FILENO) < 0) {
        qFatal("standard output cannot be caught");
    }
    std::fclose(file);
    Result result;
    QTextStream err(&result.err);
    result.code = rasterCommand(arguments, err);
    std::fflush(stdout);
    ::dup2(kept, STDOUT_FILENO);
    ::close(kept);
    std::clearerr(stdout);
    if (target.isEmpty()) {
        result.out = lumi::test::readFile(path);
    }
    return result;
}

void TestRasterCommand::writesTheRaster_data()
{
    lumi::test::columns<QStringList, int, int>();
    QTest::newRow("16 bits") << lumi::test::words("--depth 16") << 16 << 1;
    QTest::newRow("32 bits") << lumi::test::words("--depth 32") << 32 << 1;
    QTest::newRow("fitted") << lumi::test::words("--depth 32 --request 40x30") << 32 << 2;
}

void TestRasterCommand::writesTheRaster()
{
    const auto [options, depth, denominator] = lumi::test::row<QStringList, int, int>();
    const JpegKind kind{.size = QSize(83, 61)};
    const QString path = lumi::test::writeJpeg(m_folder.filePath(QStringLiteral("a.jpg")), kind);
    const Result result = run(QStringList{path} + options);
    QCOMPARE(result.code, 0);
    const lumi::test::Decoded decoded
        = lumi::test::referenceDecode(lumi::test::makeJpeg(kind), denominator);
    const int width = decoded.size.width();
    const int height = decoded.size.height();
    QCOMPARE(result.err, QString::asprintf("%dx%d\n", width, height));
    QCOMPARE(result.out.size(), qsizetype(width) * height * depth / 8);
    QCOMPARE(lumi::test::rasterFault(reinterpret_cast<const uchar *>(result.out.constData()),
                                     decoded, depth, height),
             QString());
}

void TestRasterCommand::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << lumi::test::words("");
    QTest::newRow("no depth") << lumi::test::words("a.jpg");
    QTest::newRow("no file") << lumi::test::words("--depth 16");
    QTest::newRow("a depth that does not exist") << lumi::test::words("a.jpg --depth 24");
    QTest::newRow("a depth that is missing") << lumi::test::words("a.jpg --depth");
    QTest::newRow("a request that is no size")
        << lumi::test::words("a.jpg --depth 16 --request 640");
    QTest::newRow("a request that is missing") << lumi::test::words("a.jpg --depth 16 --request");
    QTest::newRow("two files") << lumi::test::words("a.jpg b.jpg --depth 16");
}

void TestRasterCommand::wrongUsage()
{
    QFETCH(QStringList, arguments);
    const Result result = run(arguments);
    QCOMPARE(result.code, 2);
    QVERIFY(result.out.isEmpty());
}

void TestRasterCommand::whatCannotBeDecoded()
{
    const QString path = m_folder.filePath(QStringLiteral("gone.jpg"));
    const lumi::test::MessageLog log;
    const Result result = run(QStringList(path) + lumi::test::words("--depth 16"));
    QCOMPARE(result.code, 1);
    QCOMPARE(result.err, QString(path + QStringLiteral(": cannot be decoded, error code 3\n")));
    QVERIFY(result.out.isEmpty());
}

void TestRasterCommand::outputThatCannotBeWritten()
{
    const QString path = lumi::test::writeJpeg(m_folder.filePath(QStringLiteral("a.jpg")), {});
    const Result result
        = run(QStringList(path) + lumi::test::words("--depth 32"), QStringLiteral("/dev/full"));
    QCOMPARE(result.code, 1);
}

LUMI_TEST(TestRasterCommand)
#include "TestRasterCommand.moc"

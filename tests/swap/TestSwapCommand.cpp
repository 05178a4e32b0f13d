// SPDX-License-Identifier: MIT
#include "swap/swapStore.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"
#include "tools/inspect/swapCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSize>
#include <QTest>
#include <QTextStream>

using namespace lumi::test;

class TestSwapCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void printsTheIndex();
    void changesNothing();
    void printsWhatADamagedIndexStillHolds();
    void refusesWrongUsage();

private:
    /// The command's result; its lines go to m_lines.
    int run(const QStringList &arguments);

    std::unique_ptr<SwapFixture> m_fixture;
    QList<QJsonObject> m_lines;
};

void TestSwapCommand::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    const MessageLog log;
    m_fixture->start();
    QImage image = picture();
    const QSize size(171, 119);
    const QString first = m_fixture->addPhoto(QString::fromUtf8("one/\xc3\xbc.jpg"));
    QVERIFY(SwapAppend(first, &image, 100, 's'));
    QVERIFY(SwapSetSize(first, &size));
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("two/b.jpg")), &image, 300, 'l'));
    m_fixture->stop();
}

void TestSwapCommand::cleanup()
{
    m_fixture.reset();
}

int TestSwapCommand::run(const QStringList &arguments)
{
    QString text;
    QTextStream out(&text);
    const int result = swapCommand(arguments, out);
    out.flush();
    m_lines.clear();
    for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QJsonDocument document = QJsonDocument::fromJson(line.toUtf8());
        m_lines.append(document.object());
    }
    return result;
}

void TestSwapCommand::printsTheIndex()
{
    QCOMPARE(run({m_fixture->swapFolder()}), 0);
    QCOMPARE(m_lines.size(), 3);
    QCOMPARE(m_lines[0].value(QLatin1String("controlCount")).toInt(), 2);
    QCOMPARE(m_lines[0].value(QLatin1String("whole")), QJsonValue(true));
    QCOMPARE(m_lines[0].value(QLatin1String("running")), QJsonValue(false));
    QVERIFY(m_lines[0].value(QLatin1String("writingTime")).toInt() > SwapFixture::kTime);
    QCOMPARE(m_lines[1].value(QLatin1String("folder")).toString(),
             m_fixture->path(QStringLiteral("one")));
    QCOMPARE(m_lines[1].value(QLatin1String("id")), QJsonValue(0));
    QCOMPARE(m_lines[1].value(QLatin1String("blockCount")), QJsonValue(1));
    const QJsonObject block = m_lines[1].value(QLatin1String("blocks")).toArray().at(0).toObject();
    QCOMPARE(block.value(QLatin1String("sourceName")).toString(),
             QString::fromUtf8("\xc3\xbc.jpg"));
    QCOMPARE(block.value(QLatin1String("sourceTime")).toInt(),
             static_cast<int>(SwapFixture::kTime));
    QCOMPARE(block.value(QLatin1String("width")), QJsonValue(171));
    QCOMPARE(block.value(QLatin1String("height")), QJsonValue(119));
    QCOMPARE(block.value(QLatin1String("param")), QJsonValue(100));
    QCOMPARE(block.value(QLatin1String("kind")), QJsonValue(QStringLiteral("s")));
    QCOMPARE(block.value(QLatin1String("swapPath")).toString(),
             m_fixture->swapFile(QString::fromUtf8("0000s_100_\xc3\xbc.jpg.swp")));
    QVERIFY(block.value(QLatin1String("swapTime")).toInt() > SwapFixture::kTime);
    QCOMPARE(block.value(QLatin1String("swapFileExists")), QJsonValue(true));
    QCOMPARE(m_lines[2].value(QLatin1String("id")), QJsonValue(1));
}

void TestSwapCommand::changesNothing()
{
    // The command changes nothing, even if a photo is missing or a marker exists.
    QVERIFY(QFile::remove(m_fixture->path(QStringLiteral("two/b.jpg"))));
    writeFile(m_fixture->markerPath(), "");
    const auto before = snapshot(m_fixture->root.path());
    QCOMPARE(run({m_fixture->swapFolder()}), 0);
    QCOMPARE(m_lines[0].value(QLatin1String("running")), QJsonValue(true));
    QCOMPARE(snapshot(m_fixture->root.path()), before);
}

void TestSwapCommand::printsWhatADamagedIndexStillHolds()
{
    const QByteArray whole = readFile(m_fixture->indexPath());
    writeFile(m_fixture->indexPath(), whole.left(whole.size() - 1));
    QCOMPARE(run({m_fixture->swapFolder()}), 1);
    QCOMPARE(m_lines.size(), 3);
    QCOMPARE(m_lines[0].value(QLatin1String("whole")), QJsonValue(false));
    QCOMPARE(m_lines[1].value(QLatin1String("blocks")).toArray().size(), 1);
    QCOMPARE(m_lines[2].value(QLatin1String("blockCount")), QJsonValue(1));
    QCOMPARE(m_lines[2].value(QLatin1String("blocks")).toArray().size(), 0);
    writeFile(m_fixture->indexPath(), "");
    QCOMPARE(run({m_fixture->swapFolder()}), 1);
    QCOMPARE(m_lines.size(), 1);
}

void TestSwapCommand::refusesWrongUsage()
{
    QCOMPARE(run({}), 2);
    QCOMPARE(run({QStringLiteral("a"), QStringLiteral("b")}), 2);
    QCOMPARE(run({m_fixture->path(QStringLiteral("one"))}), 1);
    QVERIFY(m_lines.isEmpty());
}

LUMI_TEST(TestSwapCommand)
#include "TestSwapCommand.moc"

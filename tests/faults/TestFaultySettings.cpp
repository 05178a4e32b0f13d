// SPDX-License-Identifier: MIT
// The writing of a setting with each call disturbed. The file is the old or the new one, and a
// failure is logged.
#include "platform/Config.h"
#include "platform/Machine.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using lumi::test::Ending;
using lumi::test::Tree;

namespace {

const QString kName = QStringLiteral("lumivault");
constexpr char kOld[] = "; mine\n[Common]\nFontSize=2\n[Slideshow]\nTime=5\n";
constexpr char kNew[] = "; mine\n[Common]\nFontSize=7\n[Slideshow]\nTime=5\n";

QString settingsFile()
{
    return Machine::instance().settingsFile(kName);
}

QString settingsFolder()
{
    return QFileInfo(settingsFile()).path();
}

} // namespace

class TestFaultySettings : public FaultTest
{
    Q_OBJECT

protected:
    void prepare() override;

    QStringList watched() const override { return {settingsFolder()}; }

    int job() override;
    QString judge(const Ending &ending) override;

    bool comparesSizes() const override { return false; }

    bool leavesHiddenFiles() const override { return false; }

    int leastCalls() const override { return 8; }
};

void TestFaultySettings::prepare()
{
    QDir(settingsFolder()).removeRecursively();
    QVERIFY(QDir().mkpath(settingsFolder()));
    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(kOld) > 0);
}

int TestFaultySettings::job()
{
    Config config(kName, Config::User);
    config.setGroup(QStringLiteral("Common"));
    config.writeEntry(QStringLiteral("FontSize"), 7);
    return 0;
}

QString TestFaultySettings::judge(const Ending &ending)
{
    const QByteArray file = newTree(settingsFolder()).value(QFileInfo(settingsFile()).fileName());
    if (file.isEmpty()) {
        return QStringLiteral("the settings are lost");
    }
    const bool isNew = file == QByteArray("file") + kNew;
    if (!isNew && file != QByteArray("file") + kOld) {
        return QStringLiteral("the settings are not whole");
    }
    const bool isTold = ending.isKilled || (!mustSucceed(ending) && ending.warnings > 0);
    return isNew || isTold ? QString() : QStringLiteral("a failure was not logged");
}

LUMI_TEST(TestFaultySettings)
#include "TestFaultySettings.moc"

// SPDX-License-Identifier: MIT
#include "platform/debugLog.h"
#include "tests/support/TestMain.h"

#include <QLoggingCategory>
#include <QTest>

namespace {

QStringList logged;

void keep(QtMsgType, const QMessageLogContext &, const QString &text)
{
    logged.append(text);
}

} // namespace

class TestDebugLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { logged.clear(); }

    void cleanup() { QLoggingCategory::setFilterRules(QString()); }

    void isSilentByItself();
    void speaksWhenSwitchedOn();
};

void TestDebugLog::isSilentByItself()
{
    const QtMessageHandler old = qInstallMessageHandler(keep);
    debugLog("%d", 1);
    qInstallMessageHandler(old);
    QVERIFY(logged.isEmpty());
}

void TestDebugLog::speaksWhenSwitchedOn()
{
    QLoggingCategory::setFilterRules(QStringLiteral("lumivault.trace.debug=true"));
    const QtMessageHandler old = qInstallMessageHandler(keep);
    debugLog("LatLong::%s %d%%", "isFormat", 7);
    qInstallMessageHandler(old);
    QCOMPARE(logged, QStringList(QStringLiteral("LatLong::isFormat 7%")));
}

LUMI_TEST(TestDebugLog)
#include "TestDebugLog.moc"

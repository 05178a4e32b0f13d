// SPDX-License-Identifier: MIT
// The commands coordinates and altitude of lumivault-inspect.
#include "tests/support/TestMain.h"
#include "tests/tools/inspectRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

namespace {

/// The lines that the command prints; none if it fails or prints an error.
QList<QJsonObject> inspect(const QStringList &arguments, const QByteArray &input = {})
{
    const lumi::test::Run run = lumi::test::inspect(arguments, input);
    if (run.result != 0 || !run.err.isEmpty()) {
        return {};
    }
    QList<QJsonObject> lines;
    for (const QByteArray &line : run.out.split('\n')) {
        if (!line.isEmpty()) {
            lines.append(QJsonDocument::fromJson(line).object());
        }
    }
    return lines;
}

QJsonObject objectOf(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

class TestInspectGps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void latitude();
    void longitude();
    void position();
    void altitude();
    void textsComeFromStandardInput();
    void noTextsNoLines();
};

void TestInspectGps::latitude()
{
    const auto lines = inspect({QStringLiteral("coordinates"), QStringLiteral("S35.40.20.005")});
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0], objectOf(R"({"input": "S35.40.20.005",
        "latitude": {"valid": true, "text": "S35.40.20.005", "hemisphere": 3, "degrees": 35,
            "minutes": 40, "seconds": 20, "fraction": 5, "readBack": "S35.40.20.005",
            "rationals": [[35, 1], [40, 1], [205, 10]],
            "bytes": "23000000010000002800000001000000cd0000000a000000"},
        "longitude": {"valid": false}, "position": {"valid": false}})"));
}

void TestInspectGps::longitude()
{
    const auto lines = inspect({QStringLiteral("coordinates"), QStringLiteral("W139.45.30.000")});
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0], objectOf(R"({"input": "W139.45.30.000", "latitude": {"valid": false},
        "longitude": {"valid": true, "text": "W139.45.30.000", "hemisphere": 2, "degrees": 139,
            "minutes": 45, "seconds": 30, "fraction": 0, "readBack": "W139.45.30.000",
            "rationals": [[139, 1], [45, 1], [30, 1]],
            "bytes": "8b000000010000002d000000010000001e00000001000000"},
        "position": {"valid": false}})"));
}

void TestInspectGps::position()
{
    const auto lines = inspect({QStringLiteral("coordinates"), QStringLiteral("N35.40E139")});
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0][QStringLiteral("latitude")].toObject(), objectOf(R"({"valid": false})"));
    QCOMPARE(lines[0][QStringLiteral("longitude")].toObject(), objectOf(R"({"valid": false})"));
    const QJsonObject position = lines[0][QStringLiteral("position")].toObject();
    QCOMPARE(position[QStringLiteral("valid")], QJsonValue(true));
    QCOMPARE(position[QStringLiteral("latitude")][QStringLiteral("text")].toString(),
             QStringLiteral("N35.40.00.000"));
    QCOMPARE(position[QStringLiteral("longitude")][QStringLiteral("text")].toString(),
             QStringLiteral("E139.00.00.000"));
}

void TestInspectGps::altitude()
{
    const auto lines = inspect({QStringLiteral("altitude"), QStringLiteral("-1.05")});
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0], objectOf(R"({"input": "-1.05", "valid": true, "text": "-1.05",
        "aboveSeaLevel": false, "whole": 1, "fraction": 5, "readBack": "-1.5",
        "rationals": [[15, 10]], "bytes": "0f0000000a000000"})"));
}

void TestInspectGps::textsComeFromStandardInput()
{
    const auto lines = inspect({QStringLiteral("altitude")}, "10\n\n\xE5\x86\x99\n-.5");
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0][QStringLiteral("readBack")].toString(), QStringLiteral("10.0"));
    QCOMPARE(lines[1], objectOf(R"({"input": "", "valid": false})"));
    QCOMPARE(lines[2], objectOf("{\"input\": \"\xE5\x86\x99\", \"valid\": false}"));
    QCOMPARE(lines[3][QStringLiteral("aboveSeaLevel")], QJsonValue(false));
    QCOMPARE(inspect({QStringLiteral("coordinates")}, "N00.00.00.000\nx\n").size(), 2);
}

void TestInspectGps::noTextsNoLines()
{
    QProcess process;
    process.start(QStringLiteral(LUMI_INSPECT), {QStringLiteral("coordinates")});
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().isEmpty());
}

LUMI_TEST(TestInspectGps)
#include "TestInspectGps.moc"

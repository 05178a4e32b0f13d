// SPDX-License-Identifier: MIT
#include "tests/app/ProgramTest.h"

#include <QTest>

#include <algorithm>

void ProgramTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    QVERIFY(m_home->isValid());
    m_program = QStringLiteral(LUMI_PROGRAM);
    m_inChild = nullptr;
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(QStringLiteral("HOME"), m_home->path());
    m_environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(LUMI_PLUGINS));
    m_environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("lumidriver"));
}

void ProgramTest::cleanup()
{
    m_home.reset();
}

std::unique_ptr<QProcess> ProgramTest::start(const QString &end, const QStringList &arguments) const
{
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = m_environment;
    environment.insert(QStringLiteral("LUMI_DRIVER_END"), end);
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(m_home->path());
    process->setChildProcessModifier(m_inChild);
    process->start(m_program, arguments);
    return process;
}

ProgramTest::Outcome ProgramTest::outcomeOf(QProcess *process)
{
    Outcome outcome;
    outcome.ended
        = process->state() == QProcess::NotRunning || process->waitForFinished(kTimeLimitMs);
    outcome.how = process->exitStatus();
    outcome.status = process->exitCode();
    outcome.windows = QString::fromUtf8(process->readAllStandardOutput())
                          .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    outcome.warnings = process->readAllStandardError();
    return outcome;
}

ProgramTest::Outcome ProgramTest::run(const QString &end, const QStringList &arguments) const
{
    const std::unique_ptr<QProcess> process = start(end, arguments);
    return outcomeOf(process.get());
}

bool ProgramTest::waitFor(QProcess *process, const QByteArray &line)
{
    constexpr int kMostBytes = 10000;
    return QTest::qWaitFor(
        [process, &line] {
            const QByteArray output = process->peek(kMostBytes);
            return output.startsWith(line) || output.contains(QByteArray('\n' + line));
        },
        kTimeLimitMs);
}

QByteArrayList ProgramTest::ownWarnings(const Outcome &outcome)
{
    QByteArrayList lines = outcome.warnings.split('\n');
    const auto isForeign = [](const QByteArray &line) {
        return line.isEmpty() || line.startsWith("This plugin does not support ");
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isForeign), lines.end());
    return lines;
}

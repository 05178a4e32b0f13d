// SPDX-License-Identifier: MIT
// Runs another test class of this executable in a process of its own, for properties that are fixed
// when the application starts: pixel ratio and screens.
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QString>

namespace lumi::test {

/// Empty if at least this many test functions ran and all passed; otherwise what it printed.
inline QString faultOfOwnProcess(const QString &className, const QProcessEnvironment &environment,
                                 int atLeast)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {className});
    if (!process.waitForFinished(60000)) {
        return QStringLiteral("no end of the process");
    }
    const QString output = QString::fromUtf8(process.readAll());
    const QRegularExpression summary(
        QStringLiteral("Totals: ([0-9]+) passed, 0 failed, 0 skipped"));
    const bool passed = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
        && summary.match(output).captured(1).toInt() >= atLeast;
    return passed ? QString() : QStringLiteral("exit code %1\n").arg(process.exitCode()) + output;
}

} // namespace lumi::test

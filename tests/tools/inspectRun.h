// SPDX-License-Identifier: MIT
// Runs lumivault-inspect as a process.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace lumi::test {

struct Run
{
    int result = -1; ///< -1 if it crashed or was killed
    QByteArray out;
    QByteArray err;
};

[[nodiscard]] inline Run inspect(const QStringList &arguments, const QByteArray &input = {})
{
    constexpr int kLongest = 60000; // milliseconds
    QProcess process;
    process.start(QStringLiteral(LUMI_INSPECT), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(kLongest) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace lumi::test

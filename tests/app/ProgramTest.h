// SPDX-License-Identifier: MIT
// The base of tests that run the program as a separate process, in a private home. A plugin acts as
// the user; see driver/DriverPlugin.cpp.
#pragma once

#include <QByteArrayList>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class ProgramTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int kTimeLimitMs = 20000;

    struct Outcome
    {
        bool ended = false;
        QProcess::ExitStatus how = QProcess::CrashExit;
        int status = -1;
        QStringList windows; ///< the lines of the driver
        QByteArray warnings;
    };

    [[nodiscard]] QString at(const QString &path) const { return m_home->filePath(path); }

    [[nodiscard]] QString inSwapFolder(const QString &name) const
    {
        return at(QStringLiteral("Documents/Photo_Files/.photo_swp/") + name);
    }

    /// @param end what the driver does
    [[nodiscard]] std::unique_ptr<QProcess> start(const QString &end,
                                                  const QStringList &arguments = {}) const;
    /// Waits for the end of the program.
    [[nodiscard]] static Outcome outcomeOf(QProcess *process);
    [[nodiscard]] Outcome run(const QString &end, const QStringList &arguments = {}) const;
    /// Waits until the driver has written a line that begins like this. False if it does not.
    [[nodiscard]] static bool waitFor(QProcess *process, const QByteArray &line);
    /// The warnings of the program, without those of the offscreen platform.
    [[nodiscard]] static QByteArrayList ownWarnings(const Outcome &outcome);

    std::unique_ptr<QTemporaryDir> m_home;
    QProcessEnvironment m_environment;
    QString m_program;
    std::function<void()> m_inChild; ///< called in the new process before the program starts

private Q_SLOTS:
    void init();
    void cleanup();
};

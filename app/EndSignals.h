// SPDX-License-Identifier: MIT
// The signals by which a system asks a program to go: at its shutdown, at a logout, with
// Ctrl+C. Left to themselves they stop it in the middle of whatever it writes, and half a
// photo would lie there under its whole name. Here each becomes an event that the program gets
// when it is ready for one.
// Owns: what the process does on these signals while it lives, and a pair of sockets. One at a
// time.
#pragma once

#include <QObject>

#include <array>
#include <csignal>

namespace lumi {

class EndSignals : public QObject
{
    Q_OBJECT

public:
    EndSignals();
    /// The signals do again what they did before.
    ~EndSignals() override;

Q_SIGNALS:
    void came();

private:
    void take();

    std::array<int, 2> m_sockets{-1, -1};
    std::array<struct sigaction, 3> m_before{};
};

} // namespace lumi

// SPDX-License-Identifier: MIT
#include "tests/support/PeakMemory.h"

#include "tests/support/processFigures.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>

#include <limits>

namespace {

constexpr long kUnknown = -1;

/// A figure of this process's memory, in KB.
long statusKB(const char *name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return kUnknown;
    }
    const QByteArrayList lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name)) {
            return line.mid(qsizetype(qstrlen(name))).chopped(3).trimmed().toLong();
        }
    }
    return kUnknown;
}

/// The peak counts from now on.
bool forgetPeak()
{
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    return refs.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && refs.write("5") == 1;
}

} // namespace

lumi::test::PeakMemory::PeakMemory()
    : m_beforeKB(forgetPeak() ? statusKB("VmRSS:") : kUnknown)
{ }

long lumi::test::PeakMemory::growthKB() const
{
    const long peakKB = statusKB("VmHWM:");
    if (m_beforeKB == kUnknown || peakKB == kUnknown) {
        return std::numeric_limits<long>::max();
    }
    return countsMemory() ? peakKB - m_beforeKB : 0;
}

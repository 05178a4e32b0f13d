// SPDX-License-Identifier: MIT
#include "tests/support/FakeMachine.h"

#include <QDir>
#include <QFile>

namespace {

constexpr qint64 kPlentyKB = qint64(4) * 1024 * 1024;

QString marker(const QString &mountPoint)
{
    return mountPoint + QStringLiteral("/NotAvailable");
}

} // namespace

lumi::test::FakeMachine::FakeMachine()
    : cf(folder.filePath(QStringLiteral("cf")))
    , sd(folder.filePath(QStringLiteral("card")))
    , resources(folder.filePath(QStringLiteral("share")))
{
    QDir().mkpath(resources + QStringLiteral("/pixmaps"));
    removeCard(Slot::CF);
    removeCard(Slot::SD);
    setMemoryKB(kPlentyKB);
    setFreeDiskKB(kPlentyKB);
}

lumi::test::FakeMachine::~FakeMachine() = default;

lumi::test::FakeMachine *lumi::test::FakeMachine::install()
{
    auto *machine = new FakeMachine;
    Machine::install(machine);
    return machine;
}

void lumi::test::FakeMachine::insertCard(Slot slot)
{
    const QString slotFolder = FakeMachine::mountPoint(slot);
    QDir().mkpath(slotFolder);
    QFile::remove(marker(slotFolder));
}

void lumi::test::FakeMachine::removeCard(Slot slot)
{
    const QString slotFolder = FakeMachine::mountPoint(slot);
    QDir().mkpath(slotFolder);
    QFile file(marker(slotFolder));
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("the marker can't be made");
    }
}

void lumi::test::FakeMachine::setMemoryKB(qint64 kb)
{
    memory = "        total:    used:    free:  shared: buffers:  cached:\nMem:  "
        + QByteArray::number(kb * 1024) + " 0 " + QByteArray::number(kb * 1024) + " 0 0 0\n";
}

void lumi::test::FakeMachine::setFreeDiskKB(qint64 kb)
{
    diskAt = [kb](const QByteArray &) {
        return DiskFigures{1024, kb, kb, true};
    };
}

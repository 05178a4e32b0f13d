// SPDX-License-Identifier: MIT
// A machine whose answers a test can set. At first it is a handheld without faults: two empty card
// slots in a private folder, much free space, external power, hinge closed.
#pragma once

#include "platform/Machine.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <functional>

namespace lumi::test {

class FakeMachine : public Machine
{
public:
    FakeMachine();
    ~FakeMachine() override;

    /// Makes a machine, installs it and lends it. Machine::install(nullptr) ends it.
    static FakeMachine *install();

    /// Takes the marker away, so that the slot counts as filled; the folder is kept.
    void insertCard(Slot slot);
    /// Puts the marker back.
    void removeCard(Slot slot);

    QString mountPoint(Slot slot) const override { return slot == Slot::CF ? cf : sd; }

    QString mountTable() const override { return table; }

    QByteArray memInfo() const override { return memory; }

    DiskFigures disk(const QByteArray &path) const override { return diskAt(path); }

    PowerStatus power() const override { return powerStatus; }

    int hinge() const override
    {
        ++hingeCalls;
        return hingeResult;
    }

    int keyDevice() const override { return keyboard; }

    int panelDepth() const override { return depth; }

    bool showsUpright() const override { return upright; }

    QString resourceDir() const override { return resources; }

    /// Sets the memory figures so that free + cached + 2 x buffers is this many KB.
    void setMemoryKB(qint64 kb);
    /// Answers every disk question with blocks of 1024 bytes.
    void setFreeDiskKB(qint64 kb);

    QTemporaryDir folder;
    QString cf;
    QString sd;
    QString table; ///< no mount table, unless set
    QByteArray memory;
    std::function<DiskFigures(const QByteArray &)> diskAt;
    PowerStatus powerStatus;
    int hingeResult = 0;
    mutable int hingeCalls = 0;
    int keyboard = 0;
    int depth = 32;
    bool upright = true;
    QString resources; ///< at first with an empty folder of pictures
};

} // namespace lumi::test

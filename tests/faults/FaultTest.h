// SPDX-License-Identifier: MIT
// The base of a test of one writer. Its job is run in a child again and again, each time with
// another call disturbed, until it ran undisturbed: with every kind of trouble, and on file
// systems that can do more or less. After each run the subclass looks at what lies on the disk.
#pragma once

#include "tests/faults/DisturbedChild.h"
#include "tests/import/cardTree.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class FaultTest : public QObject
{
    Q_OBJECT

public:
    /// What goes wrong.
    struct Trouble
    {
        const char *name;
        unsigned calls; ///< those that it meets
        lumi::faults::Act act;
        int error;
        bool isHarmless; ///< the job must succeed all the same
    };

    /// What the file system can do.
    enum class Disk { Whole, WithoutUnnamedFiles, Fat };

protected:
    /// Makes the files as they are before the job.
    virtual void prepare() = 0;
    /// At most two: whose calls are watched, with all below them.
    [[nodiscard]] virtual QStringList watched() const = 0;
    /// Runs in the child. The result is 0 for a success.
    [[nodiscard]] virtual int job() = 0;
    /// What is wrong on the disk, null if nothing is.
    [[nodiscard]] virtual QString judge(const lumi::test::Ending &ending) = 0;
    /// Whether the job copies a file and finds out when it could not read all of it.
    [[nodiscard]] virtual bool comparesSizes() const = 0;

    /// Whether a kill leaves files under a hidden name where files always have one.
    [[nodiscard]] virtual bool leavesHiddenFiles() const { return true; }

    /// As many calls as an undisturbed job makes at the least.
    [[nodiscard]] virtual int leastCalls() const = 0;

    /// What the folder holds. New files that never got their name are taken out of it and
    /// noted; hidden names in known are none of them.
    [[nodiscard]] lumi::test::Tree newTree(const QString &folder, const QStringList &known = {});

    [[nodiscard]] bool mustSucceed(const lumi::test::Ending &ending) const;

    [[nodiscard]] const Trouble &trouble() const { return *m_trouble; }

    /// A folder of the test's own.
    [[nodiscard]] QString path(const QString &name = {}) const;
    QString make(const QString &name, const QByteArray &content) const;

private Q_SLOTS:
    void initTestCase();
    void everyCall_data();
    void everyCall();
    void cleanupTestCase();

private:
    [[nodiscard]] lumi::faults::Plan planFor(int nth) const;
    [[nodiscard]] QString complaint(const lumi::test::Ending &ending);
    [[nodiscard]] QString complaintOfLeftovers(const lumi::test::Ending &ending);
    [[nodiscard]] QString sweep(const QString &leftover);

    std::unique_ptr<QTemporaryDir> m_place;
    bool m_placeHasUnnamedFiles = false;
    const Trouble *m_trouble = nullptr;
    Disk m_disk = Disk::Whole;
    QStringList m_leftovers; ///< of this run
    int m_sweeps = 0;        ///< of this row
    int m_points = 0;
};

Q_DECLARE_METATYPE(FaultTest::Disk)
Q_DECLARE_METATYPE(const FaultTest::Trouble *)

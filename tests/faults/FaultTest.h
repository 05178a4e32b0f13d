// SPDX-License-Identifier: MIT
// The base of a test of one writer. Its job is run in a child again and again, each time with
// another call disturbed, until no call is left to disturb. This is repeated for each kind of
// trouble and each kind of file system. After each run the subclass checks the files on the disk.
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
    /// A kind of failure.
    struct Trouble
    {
        const char *name;
        unsigned calls; ///< the calls that it disturbs
        lumi::faults::Act act;
        int error;
        bool isHarmless; ///< the job must succeed nevertheless
    };

    /// The abilities of the file system.
    enum class Disk { Whole, WithoutUnnamedFiles, Fat };

protected:
    /// Makes the files that exist before the job.
    virtual void prepare() = 0;
    /// The folders whose calls are watched, with all below them. At most two.
    [[nodiscard]] virtual QStringList watched() const = 0;
    /// Runs in the child. The result is 0 for a success.
    [[nodiscard]] virtual int job() = 0;
    /// What is wrong on the disk; null if nothing is wrong.
    [[nodiscard]] virtual QString judge(const lumi::test::Ending &ending) = 0;
    /// Whether the job copies a file and notices if it could not read all of it.
    [[nodiscard]] virtual bool comparesSizes() const = 0;

    /// Whether a kill can leave a hidden file on a file system that has no files without a name.
    [[nodiscard]] virtual bool leavesHiddenFiles() const { return true; }

    /// The least number of calls that an undisturbed job makes.
    [[nodiscard]] virtual int leastCalls() const = 0;

    /// The contents of the folder. New files that never got their name are left out and noted.
    /// Hidden names in known are not among them.
    [[nodiscard]] lumi::test::Tree newTree(const QString &folder, const QStringList &known = {});

    [[nodiscard]] bool mustSucceed(const lumi::test::Ending &ending) const;

    [[nodiscard]] const Trouble &trouble() const { return *m_trouble; }

    /// A path in the private folder of the test.
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

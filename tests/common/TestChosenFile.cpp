// SPDX-License-Identifier: MIT
#include "app/common/ChosenFile.h"
#include "platform/cards/CardSlots.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/fileAge.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using lumi::ChosenFile;
using lumi::test::FakeMachine;
using lumi::test::setChangedAt;

namespace {

/// An even number of seconds, as cards store them.
constexpr std::time_t kThen = 1'000'000'000;

/// Counts the questions for a card's folder.
class AskedMachine : public FakeMachine
{
public:
    QString mountPoint(Slot slot) const override
    {
        ++timesAsked;
        return FakeMachine::mountPoint(slot);
    }

    mutable int timesAsked = 0;
};

/// Makes a file of that size that was last changed then.
void makeFile(const QString &path, int size)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(QByteArray(size, 'x')), size);
    file.close();
    setChangedAt(path, kThen);
}

} // namespace

class TestChosenFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { Machine::install(nullptr); }

    void mayChangeWhileItsCardStaysIn();
    void aFileMustBeUnchangedAfterACardChange_data();
    void aFileMustBeUnchangedAfterACardChange();
    void aFolderMustBeUnchangedAfterACardChange();
    void aMissingFileIsNotLookedFor();
    void oneForEachPath();
    void eachHasTheMediumOfItsFolder();
    void manyOfOneFolderNeedLittleMemory();

private:
    /// Takes the card out and inserts a card, with a notification for each.
    void missTheCard();

    AskedMachine *m_machine = nullptr;
    QString m_path;
};

void TestChosenFile::init()
{
    m_machine = new AskedMachine;
    Machine::install(m_machine);
    m_machine->insertCard(Slot::SD);
    m_path = m_machine->sd + QStringLiteral("/dcim/a.jpg");
    makeFile(m_path, 10);
}

void TestChosenFile::missTheCard()
{
    m_machine->removeCard(Slot::SD);
    lumi::CardSlots::look();
    m_machine->insertCard(Slot::SD);
    lumi::CardSlots::look();
}

void TestChosenFile::mayChangeWhileItsCardStaysIn()
{
    const ChosenFile file(m_path);
    QCOMPARE(file.path(), m_path);
    QVERIFY(file.isStillIt());
    makeFile(m_path, 11);
    setChangedAt(m_path, kThen + 60);
    QVERIFY(file.isStillIt());
    // The class doesn't notice a missing file on a card that stayed in.
    QVERIFY(QFile::remove(m_path));
    QVERIFY(file.isStillIt());
}

void TestChosenFile::aFileMustBeUnchangedAfterACardChange_data()
{
    lumi::test::columns<int, int, int, bool>();
    QTest::newRow("the same card is in again") << 10 << 0 << 0 << true;
    QTest::newRow("cards keep times in steps") << 10 << 1 << 999'999'999 << true;
    QTest::newRow("a larger photo") << 11 << 0 << 0 << false;
    QTest::newRow("a smaller photo") << 9 << 0 << 0 << false;
    QTest::newRow("a later photo") << 10 << 2 << 0 << false;
    QTest::newRow("an earlier photo") << 10 << -1 << 0 << false;
    QTest::newRow("no photo") << -1 << 0 << 0 << false;
}

void TestChosenFile::aFileMustBeUnchangedAfterACardChange()
{
    const auto [size, seconds, nanoseconds, isStillIt] = lumi::test::row<int, int, int, bool>();
    const ChosenFile file(m_path);
    QVERIFY(QFile::remove(m_path));
    missTheCard();
    if (size >= 0) {
        makeFile(m_path, size);
        setChangedAt(m_path, kThen + seconds, nanoseconds);
    }
    QCOMPARE(file.isStillIt(), isStillIt);
}

void TestChosenFile::aFolderMustBeUnchangedAfterACardChange()
{
    const QString folder = QFileInfo(m_path).path();
    setChangedAt(folder, kThen);
    const ChosenFile file(folder);
    missTheCard();
    QVERIFY(file.isStillIt());
    setChangedAt(folder, kThen + 2);
    QVERIFY(!file.isStillIt());
    // The first card again.
    setChangedAt(folder, kThen);
    QVERIFY(file.isStillIt());
}

void TestChosenFile::aMissingFileIsNotLookedFor()
{
    QVERIFY(QFile::remove(m_path));
    const ChosenFile file(m_path);
    QVERIFY(file.isStillIt());
    missTheCard();
    QVERIFY(!file.isStillIt());
    makeFile(m_path, 10);
    QVERIFY(!file.isStillIt());
}

void TestChosenFile::oneForEachPath()
{
    QVERIFY(ChosenFile::all({}).isEmpty());
    const QStringList paths{m_path, QStringLiteral("/no/such/b.jpg"), m_path};
    const QList<ChosenFile> files = ChosenFile::all(paths);
    QCOMPARE(files.size(), paths.size());
    for (qsizetype i = 0; i < files.size(); ++i) {
        QCOMPARE(files.at(i).path(), paths.at(i));
    }
}

void TestChosenFile::eachHasTheMediumOfItsFolder()
{
    m_machine->insertCard(Slot::CF);
    const QString other = m_machine->cf + QStringLiteral("/dcim/a.jpg");
    makeFile(other, 10);
    const QList<ChosenFile> files = ChosenFile::all({m_path, other, m_path});
    missTheCard();
    makeFile(m_path, 11);
    makeFile(other, 11);
    QVERIFY(!files.at(0).isStillIt());
    QVERIFY(files.at(1).isStillIt());
    QVERIFY(!files.at(2).isStillIt());
}

void TestChosenFile::manyOfOneFolderNeedLittleMemory()
{
    constexpr int kMany = 1000;
    constexpr std::size_t kCheap = 200; // bytes
    QVERIFY(sizeof(ChosenFile) <= kCheap);
    m_machine->timesAsked = 0;
    const ChosenFile one(m_path);
    const int forOne = m_machine->timesAsked;
    QVERIFY(forOne > 0);
    QStringList paths;
    for (int i = 0; i < kMany; ++i) {
        paths.append(m_path + QString::number(i));
    }
    m_machine->timesAsked = 0;
    QCOMPARE(ChosenFile::all(paths).size(), kMany);
    // They share the medium.
    QCOMPARE(m_machine->timesAsked, forOne);
}

LUMI_TEST(TestChosenFile)
#include "TestChosenFile.moc"

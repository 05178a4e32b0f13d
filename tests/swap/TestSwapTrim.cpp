// SPDX-License-Identifier: MIT
// The store when a kind of thumbnail exceeds its limit.
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QRegularExpression>
#include <QTest>

using namespace lumi::test;

class TestSwapTrim : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theLimitOfAKind_data();
    void theLimitOfAKind();
    void threeControlsAtTheLimit();
    void afterATrimTheWorkingDirectoryTakesTheBlock();
    void eachLaterAppendTrimsAgain();
    void aRestartBringsTheCountDown();
    void aSingleControlIsTrimmedToo();
    void invalidBlocksCount();

private:
    /// Stores count pictures of a kind for photos of a folder, "<kind><number>.jpg".
    void fill(const char *folder, char kind, int count);
    /// 401 small thumbnails in three folders, with large and detail ones among them.
    void fillThreeFolders();
    [[nodiscard]] QString photo(const char *relative) const;
    [[nodiscard]] int files(const char *start) const;
    [[nodiscard]] int validBlocks(const char *folder, char kind) const;

    std::unique_ptr<SwapFixture> m_fixture;
    QImage m_image = picture(8, 8);
};

void TestSwapTrim::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    const MessageLog log;
    m_fixture->start();
}

void TestSwapTrim::cleanup()
{
    m_fixture.reset();
}

QString TestSwapTrim::photo(const char *relative) const
{
    return m_fixture->path(QString::fromLatin1(relative));
}

void TestSwapTrim::fill(const char *folder, char kind, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString name = QString::asprintf("%s/%c%d.jpg", folder, kind, i);
        QVERIFY(SwapAppend(m_fixture->addPhoto(name), &m_image, 10, kind));
    }
}

void TestSwapTrim::fillThreeFolders()
{
    fill("one", 'l', 2);
    fill("one", 's', 150);
    fill("two", 's', 150);
    fill("two", 'd', 3);
    fill("three", 's', 101);
    fill("three", 'l', 1);
}

int TestSwapTrim::files(const char *start) const
{
    return static_cast<int>(m_fixture->swapFiles()
                                .filter(QRegularExpression(QLatin1Char('^') + QLatin1String(start)))
                                .size());
}

int TestSwapTrim::validBlocks(const char *folder, char kind) const
{
    const SwapControl *control = controlOf(*m_fixture->store, photo(folder));
    return static_cast<int>(
        std::count_if(control->begin(), control->end(), [kind](const SwapBlock *block) {
            return block->isValid() && block->kind() == static_cast<signed char>(kind);
        }));
}

void TestSwapTrim::theLimitOfAKind_data()
{
    lumi::test::columns<char, int>();
    QTest::newRow("large") << 'l' << 200;
    QTest::newRow("small") << 's' << 400;
    QTest::newRow("detail") << 'd' << 400;
    QTest::newRow("another") << 'x' << 0;
}

void TestSwapTrim::theLimitOfAKind()
{
    const auto [kind, limit] = lumi::test::row<char, int>();
    fill("one", kind, limit);
    // With exactly the limit there is no trim.
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("one/last.jpg")), &m_image, 10, kind));
    QCOMPARE(m_fixture->swapFiles().size(), limit + 1);
    QCOMPARE(m_fixture->store->controls().count(), 1);
    QVERIFY(SwapLoad(photo("one/last.jpg"), &m_image, 10, kind));
    // With one more there is.
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("one/more.jpg")), &m_image, 10, kind));
    QCOMPARE(m_fixture->swapFiles().size(), 1);
    QVERIFY(!SwapLoad(photo("one/last.jpg"), &m_image, 10, kind));
    QCOMPARE(controlOf(*m_fixture->store, photo("one"))->count(), limit + 1);
}

void TestSwapTrim::threeControlsAtTheLimit()
{
    fillThreeFolders();
    QCOMPARE(files("000[012]s_"), 401);
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("three/new.jpg")), &m_image, 10, 's'));
    // Only the small ones of the first two folders are removed.
    QCOMPARE(files("0000s_"), 0);
    QCOMPARE(files("0001s_"), 0);
    QCOMPARE(files("0002s_"), 101);
    QCOMPARE(files("0000l_"), 2);
    QCOMPARE(files("0001d_"), 3);
    QCOMPARE(files("0002l_"), 1);
    // All blocks of those two are invalid, and all are still in their lists.
    for (const char kind : {'l', 's', 'd'}) {
        QCOMPARE(validBlocks("one", kind), 0);
        QCOMPARE(validBlocks("two", kind), 0);
    }
    QCOMPARE(validBlocks("three", 's'), 101);
    QCOMPARE(validBlocks("three", 'l'), 1);
    QCOMPARE(controlOf(*m_fixture->store, photo("one"))->count(), 152);
    QCOMPARE(controlOf(*m_fixture->store, photo("two"))->count(), 153);
    QVERIFY(!SwapLoad(photo("one/l0.jpg"), &m_image, 10, 'l'));
    QVERIFY(SwapLoad(photo("three/s7.jpg"), &m_image, 10, 's'));
}

void TestSwapTrim::afterATrimTheWorkingDirectoryTakesTheBlock()
{
    fillThreeFolders();
    const QString file = m_fixture->addPhoto(QStringLiteral("three/new.jpg"));
    QVERIFY(SwapAppend(file, &m_image, 10, 's'));
    const SwapSystem &store = *m_fixture->store;
    QCOMPARE(store.controls().count(), 4);
    QCOMPARE(store.current()->folder(), m_fixture->swapFolder());
    QCOMPARE(store.current()->count(), 1);
    const SwapBlock *block = *store.current()->begin();
    QCOMPARE(block->sourceName(), QStringLiteral("new.jpg"));
    QCOMPARE(block->swapPath(), m_fixture->swapFile(QStringLiteral("0003s_10_new.jpg.swp")));
    QVERIFY(block->isValid());
    QCOMPARE(block->record().sourceTime, 0);
    QVERIFY(QFile::exists(block->swapPath()));
    // It is not found under its own folder.
    QVERIFY(!SwapLoad(file, &m_image, 10, 's'));
    QCOMPARE(controlOf(store, photo("three"))->count(), 102);
}

void TestSwapTrim::eachLaterAppendTrimsAgain()
{
    fillThreeFolders();
    // An append of another kind trims nothing and makes no block valid.
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("one/new1.jpg")), &m_image, 10, 's'));
    QVERIFY(SwapAppend(photo("one/new1.jpg"), &m_image, 10, 'd'));
    QCOMPARE(validBlocks("one", 'd'), 1);
    QCOMPARE(files("0000d_"), 1);
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("two/new2.jpg")), &m_image, 10, 's'));
    // The detail block of the first folder becomes invalid, too; its file stays.
    QCOMPARE(validBlocks("one", 'd'), 0);
    QCOMPARE(files("0000d_"), 1);
    QCOMPARE(files("0002s_"), 101);
    QCOMPARE(files("0003s_"), 2);
    QCOMPARE(m_fixture->store->controls().count(), 4);
    QCOMPARE(m_fixture->store->current()->count(), 2);
}

void TestSwapTrim::aRestartBringsTheCountDown()
{
    fillThreeFolders();
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("three/new.jpg")), &m_image, 10, 's'));
    const SwapSystem &store = m_fixture->restart();
    // The blocks of the other kinds are valid again. The block in the wrong control is removed with
    // its file.
    QCOMPARE(store.controls().count(), 3);
    QCOMPARE(controlOf(store, photo("one"))->count(), 2);
    QCOMPARE(controlOf(store, photo("two"))->count(), 3);
    QCOMPARE(controlOf(store, photo("three"))->count(), 102);
    QVERIFY(SwapLoad(photo("one/l0.jpg"), &m_image, 10, 'l'));
    QVERIFY(SwapLoad(photo("two/d2.jpg"), &m_image, 10, 'd'));
    QCOMPARE(files("0003s_"), 0);
    QVERIFY(SwapAppend(photo("three/new.jpg"), &m_image, 10, 's'));
    QVERIFY(SwapLoad(photo("three/new.jpg"), &m_image, 10, 's'));
}

void TestSwapTrim::aSingleControlIsTrimmedToo()
{
    // The working directory's own control is the only one here.
    m_fixture->store->SetCurrent(m_fixture->swapFolder(), -1);
    QVERIFY(m_fixture->store->bAppend(QStringLiteral("a"), &m_image, 1, 'x'));
    QVERIFY(m_fixture->store->bAppend(QStringLiteral("b"), &m_image, 1, 'x'));
    QCOMPARE(m_fixture->swapFiles(), QStringList(QStringLiteral("0000x_1_b.swp")));
    QCOMPARE(m_fixture->store->controls().count(), 1);
    QCOMPARE(blockCount(*m_fixture->store), 2);
}

void TestSwapTrim::invalidBlocksCount()
{
    fill("zero", 'l', 1);
    {
        const MessageLog log;
        m_fixture->setFreeKB(0);
        for (int i = 0; i < 200; ++i) {
            QVERIFY(!SwapAppend(photo("one/a.jpg"), &m_image, 10, 'l'));
        }
        m_fixture->setFreeKB(1000000);
    }
    QCOMPARE(files("0000l_"), 1);
    QVERIFY(SwapAppend(photo("one/a.jpg"), &m_image, 10, 'l'));
    QCOMPARE(files("0000l_"), 0);
}

LUMI_TEST(TestSwapTrim)
#include "TestSwapTrim.moc"

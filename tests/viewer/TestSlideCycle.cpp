// SPDX-License-Identifier: MIT
// Order, rounds and steps of a slideshow, as a show without waiting goes through them.
#include "items/FPVItemFolder.h"
#include "items/FPVItemImage.h"
#include "tests/support/TestMain.h"
#include "viewer/SlideCycle.h"
#include "viewer/slideWait.h"

#include <QTest>

#include <algorithm>
#include <climits>
#include <cstdlib>

using lumi::SlideCycle;
using lumi::slideWait;

namespace {

constexpr int kManyRounds = 50;

QString nameOf(const FPVItemImage *picture)
{
    return picture != nullptr ? picture->fileName() : QString();
}

/// A folder of pictures "a", "b" and so on and, where kinds has an "f", of a folder.
class Items : public FPVItemList
{
public:
    explicit Items(const char *kinds)
    {
        char name = 'a';
        for (const char *kind = kinds; *kind != 0; ++kind, ++name) {
            const QString path = QLatin1Char('/') + QString(QLatin1Char(name));
            if (*kind == 'f') {
                append(new FPVItemFolder(path, QString(), false));
            } else {
                append(new FPVItemImage(path, QString(), false));
            }
        }
    }
};

/// A show in which each picture is decoded at once.
class Show
{
public:
    explicit Show(const char *kinds, int loopCount = 0, int start = 0,
                  const SlideCycle::Dice &dice = {})
        : m_items(kinds)
        , cycle(m_items, start, loopCount, dice)
    { }

    /// Shows the present picture and goes to the next one. False if the rounds are over.
    bool play()
    {
        cycle.setShown(cycle.present());
        if (cycle.roundsAreOver()) {
            return false;
        }
        seen += nameOf(cycle.present());
        cycle.goOn();
        return true;
    }

    /// The names of the pictures shown, in their order.
    QString play(int count)
    {
        seen.clear();
        while (seen.size() < count && play()) { }
        return seen;
    }

    QString playToItsEnd() { return play(INT_MAX); }

    /// Present picture after steps to the right (+) and to the left (-).
    QString step(const char *directions)
    {
        for (const char *direction = directions; *direction != 0; ++direction) {
            cycle.step(*direction == '+' ? 1 : -1);
        }
        return nameOf(cycle.present());
    }

    [[nodiscard]] FPVItemImage *picture(char name) const
    {
        for (FPVItemObject *item : m_items) {
            if (item->fileName() == QLatin1Char(name)) {
                return qobject_cast<FPVItemImage *>(item);
            }
        }
        return nullptr;
    }

private:
    Items m_items;

public:
    SlideCycle cycle;
    QString seen;
};

struct OrderRow
{
    const char *kinds;
    int start;
    const char *order;
};

constexpr OrderRow kOrders[] = {
    {"ppp", 0, "abc"},     {"ppp", 1, "bca"},       {"ppp", 2, "cab"},
    {"ppp", -1, "abc"},    {"ffpfp", 3, "ec"},      {"ppp", 4, "bca"},
    {"pp", INT_MAX, "ba"}, {"pffp", INT_MIN, "ad"}, {"fp", 0, "b"},
};

struct StepRow
{
    const char *steps;
    const char *present;
    const char *then; ///< played until the end of the second round
};

/// From "a", the first of three pictures.
constexpr StepRow kSteps[] = {
    {"+", "b", "bcabc"},     {"++", "c", "cabc"},   {"+++", "a", "abc"},   {"++++", "b", "bc"},
    {"-", "c", "cabc"},      {"-+", "a", "abcabc"}, {"+-", "a", "abcabc"}, {"--", "b", "bcabc"},
    {"++-+-", "b", "bcabc"}, {"++++++", "a", ""},
};

struct WaitRow
{
    int delay;
    qint64 elapsed;
    int wait;
};

constexpr WaitRow kWaits[] = {
    {3000, 0, 3000},   {3000, 2999, 3000},  {3000, 6000, 3000},    {3000, 6001, 0},
    {3000, 100000, 0}, {2000, 86400000, 0}, {INT_MAX, 0, INT_MAX},
};

} // namespace

class TestSlideCycle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtTheCursorAndWraps();
    void hasNoPresentPictureWithoutPictures();
    void diceDecideTheOrder();
    void diceAreThrownAgainForTakenPicturesAndFolders();
    void diceGiveEachPictureOnce();
    void endsAfterTheRounds();
    void playsOnePictureOncePerRound();
    void neverEndsWithoutALoopCount();
    void backFromTheFirstIsTheLast();
    void stepsCountFromTheShownPicture();
    void stepsAreNoLongerPendingWhenAPictureIsShown();
    void aStepToThePictureAheadCountsItsRoundOnce();
    void aStepBackOverTheStartGainsNoRound();
    void aStepBackOverTheEndPlaysTheRoundAgain();
    void aPictureShownAgainKeepsItsRoundBack();
    void aRemovedPictureIsReplacedByItsFollower();
    void removingTheLastOfARoundBeginsANewRound();
    void removingAnotherPictureKeepsThePictureAhead();
    void stepsCountFromTheFollowerOfARemovedPicture();
    void aRoundBegunByARemovalCountsWhenStepsFollow();
    void theFollowerOfADeletedPictureIsAwaited();
    void aRoundBegunBeforeADeletionIsCountedOnce();
    void theWaitHidesTheDecode();
};

void TestSlideCycle::startsAtTheCursorAndWraps()
{
    for (const OrderRow &row : kOrders) {
        const auto count = int(qstrlen(row.order));
        QCOMPARE(Show(row.kinds, 0, row.start).play(2 * count),
                 QString(QLatin1String(row.order)).repeated(2));
    }
}

void TestSlideCycle::hasNoPresentPictureWithoutPictures()
{
    for (const char *kinds : {"", "fff"}) {
        const Show show(kinds, 0, 1);
        QVERIFY(show.cycle.isEmpty());
        QVERIFY(show.cycle.present() == nullptr);
    }
}

void TestSlideCycle::diceDecideTheOrder()
{
    for (const int start : {0, 3}) {
        QList<int> falls{7, 0, 13, 2};
        const auto dice = [&falls] {
            return falls.takeFirst();
        };
        QCOMPARE(Show("pppp", 0, start, dice).play(4), QStringLiteral("dabc"));
    }
}

void TestSlideCycle::diceAreThrownAgainForTakenPicturesAndFolders()
{
    QList<int> falls{2, 2, 1, 5, 0, 1};
    const auto dice = [&falls] {
        return falls.takeFirst();
    };
    QCOMPARE(Show("pfp", 0, 0, dice).play(2), QStringLiteral("ca"));
    QCOMPARE(falls, QList<int>{1});
}

void TestSlideCycle::diceGiveEachPictureOnce()
{
    Show show("pppppppppppppppppppp", 1, 0, std::rand);
    const QString seen = show.playToItsEnd();
    QString sorted = seen;
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(sorted, QStringLiteral("abcdefghijklmnopqrst"));
    QVERIFY(seen != sorted);
}

void TestSlideCycle::endsAfterTheRounds()
{
    QCOMPARE(Show("ppp", 1).playToItsEnd(), QStringLiteral("abc"));
    QCOMPARE(Show("ppp", 2, 1).playToItsEnd(), QStringLiteral("bcabca"));
}

void TestSlideCycle::playsOnePictureOncePerRound()
{
    for (int loops = 1; loops <= 3; ++loops) {
        QCOMPARE(Show("p", loops).playToItsEnd(), QString(loops, QLatin1Char('a')));
    }
}

void TestSlideCycle::neverEndsWithoutALoopCount()
{
    QCOMPARE(Show("pp").play(2 * kManyRounds), QStringLiteral("ab").repeated(kManyRounds));
}

void TestSlideCycle::backFromTheFirstIsTheLast()
{
    Show show("ppp");
    QString seen;
    for (int i = 0; i < 4; ++i) {
        show.cycle.goBack();
        seen += nameOf(show.cycle.present());
    }
    QCOMPARE(seen, QStringLiteral("cbac"));
}

void TestSlideCycle::stepsCountFromTheShownPicture()
{
    for (const StepRow &row : kSteps) {
        Show show("ppp", 2);
        QCOMPARE(show.play(1), QStringLiteral("a"));
        QCOMPARE(show.step(row.steps), QString(QLatin1String(row.present)));
        QVERIFY(show.cycle.isStepPending());
        QCOMPARE(show.playToItsEnd(), QString(QLatin1String(row.then)));
    }
}

void TestSlideCycle::stepsAreNoLongerPendingWhenAPictureIsShown()
{
    Show show("ppppp");
    show.play(1);
    QCOMPARE(show.step("++"), QStringLiteral("c"));
    show.cycle.setShown(show.picture('c'));
    QVERIFY(!show.cycle.isStepPending());
    QCOMPARE(show.step("+"), QStringLiteral("d"));
    show.cycle.setShownAgain(show.picture('c'));
    QVERIFY(!show.cycle.isStepPending());
    QCOMPARE(show.step("-"), QStringLiteral("b"));
}

void TestSlideCycle::aStepToThePictureAheadCountsItsRoundOnce()
{
    Show show("pp", 2);
    QCOMPARE(show.play(2), QStringLiteral("ab"));
    QCOMPARE(show.step("+"), QStringLiteral("a"));
    QCOMPARE(show.playToItsEnd(), QStringLiteral("ab"));
}

void TestSlideCycle::aStepBackOverTheStartGainsNoRound()
{
    Show show("ppp", 1);
    show.play(1);
    show.step("-");
    QCOMPARE(show.playToItsEnd(), QStringLiteral("c"));
}

void TestSlideCycle::aStepBackOverTheEndPlaysTheRoundAgain()
{
    Show show("ppp", 2);
    QCOMPARE(show.play(4), QStringLiteral("abca"));
    QCOMPARE(show.step("-"), QStringLiteral("c"));
    QCOMPARE(show.playToItsEnd(), QStringLiteral("cabc"));
}

void TestSlideCycle::aPictureShownAgainKeepsItsRoundBack()
{
    Show show("ppp", 1);
    show.play(1);
    QCOMPARE(show.step("-"), QStringLiteral("c"));
    show.cycle.setShownAgain(show.picture('c'));
    show.cycle.goOn();
    QCOMPARE(show.playToItsEnd(), QStringLiteral("abc"));
}

void TestSlideCycle::aRemovedPictureIsReplacedByItsFollower()
{
    Show show("pppppp", 2);
    QCOMPARE(show.play(2), QStringLiteral("ab"));
    show.cycle.remove(show.picture('c'), nullptr);
    show.cycle.remove(show.picture('d'), nullptr);
    QCOMPARE(show.playToItsEnd(), QStringLiteral("efabef"));
}

void TestSlideCycle::removingTheLastOfARoundBeginsANewRound()
{
    Show show("ppp", 2);
    QCOMPARE(show.play(2), QStringLiteral("ab"));
    show.cycle.remove(show.picture('c'), nullptr);
    QCOMPARE(show.playToItsEnd(), QStringLiteral("ab"));
    show.cycle.remove(show.picture('a'), nullptr);
    show.cycle.remove(show.picture('b'), nullptr);
    QVERIFY(show.cycle.isEmpty());
}

void TestSlideCycle::removingAnotherPictureKeepsThePictureAhead()
{
    Show show("ppp", 2);
    QCOMPARE(show.play(3), QStringLiteral("abc"));
    QCOMPARE(nameOf(show.cycle.present()), QStringLiteral("a"));
    show.cycle.remove(show.picture('c'), show.picture('a'));
    QCOMPARE(show.playToItsEnd(), QStringLiteral("ab"));
}

void TestSlideCycle::stepsCountFromTheFollowerOfARemovedPicture()
{
    Show show("ppppp");
    QCOMPARE(show.play(3), QStringLiteral("abc"));
    QCOMPARE(show.step("-"), QStringLiteral("b"));
    show.cycle.remove(show.picture('b'), nullptr);
    show.cycle.repairSteps();
    QCOMPARE(show.step("-"), QStringLiteral("a"));

    Show other("ppppp");
    other.play(1);
    QCOMPARE(other.step("-"), QStringLiteral("e"));
    other.cycle.remove(other.picture('e'), nullptr);
    other.cycle.repairSteps();
    QCOMPARE(other.step("-"), QStringLiteral("d"));
}

void TestSlideCycle::aRoundBegunByARemovalCountsWhenStepsFollow()
{
    Show show("ppppp", 2);
    QCOMPARE(show.play(3), QStringLiteral("abc"));
    QCOMPARE(show.step("++"), QStringLiteral("e"));
    show.cycle.remove(show.picture('e'), nullptr);
    show.cycle.repairSteps();
    QCOMPARE(show.step("+"), QStringLiteral("b"));
    QCOMPARE(show.playToItsEnd(), QStringLiteral("bcd"));
}

void TestSlideCycle::theFollowerOfADeletedPictureIsAwaited()
{
    Show show("pppp");
    QCOMPARE(show.play(2), QStringLiteral("ab"));
    show.cycle.remove(show.picture('b'), show.picture('c'));
    show.cycle.awaitPresent();
    QVERIFY(show.cycle.isStepPending());
    QCOMPARE(show.step("+"), QStringLiteral("d"));
}

void TestSlideCycle::aRoundBegunBeforeADeletionIsCountedOnce()
{
    Show show("pppp", 2);
    QCOMPARE(show.play(4), QStringLiteral("abcd"));
    show.cycle.remove(show.picture('d'), show.picture('a'));
    show.cycle.awaitPresent();
    QCOMPARE(show.step("+"), QStringLiteral("b"));
    QCOMPARE(show.playToItsEnd(), QStringLiteral("bc"));
}

void TestSlideCycle::theWaitHidesTheDecode()
{
    for (const WaitRow &row : kWaits) {
        QCOMPARE(slideWait(row.delay, row.elapsed), row.wait);
    }
}

LUMI_TEST(TestSlideCycle)
#include "TestSlideCycle.moc"

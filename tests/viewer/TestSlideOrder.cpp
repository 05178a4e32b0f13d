// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "viewer/slideOrder.h"

#include <QList>
#include <QTest>

#include <climits>
#include <limits>

using lumi::slideOrder;
using lumi::SlideStep;
using lumi::slideStep;
using lumi::slideWait;

namespace {

/// "p" is a picture, "f" a folder.
std::vector<bool> kinds(const QString &text)
{
    std::vector<bool> result;
    for (const QChar c : text) {
        result.push_back(c == QLatin1Char('p'));
    }
    return result;
}

QList<int> asList(const std::vector<int> &order)
{
    return {order.begin(), order.end()};
}

/// Dice that fall as they are told, and count.
struct LoadedDice
{
    QList<int> falls;
    int thrown = 0;

    int operator()() { return falls.at(thrown++); }
};

} // namespace

class TestSlideOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesRoundFromTheStart_data();
    void goesRoundFromTheStart();
    void diceDecide_data();
    void diceDecide();
    void whatWasTakenOrIsNoPictureIsThrownAgain();
    void everyPictureComesOnce();
    void steps_data();
    void steps();
    void waits_data();
    void waits();
};

void TestSlideOrder::goesRoundFromTheStart_data()
{
    lumi::test::columns<QString, int, QList<int>>();
    QTest::newRow("from the first") << "ppp" << 0 << QList<int>{0, 1, 2};
    QTest::newRow("from the middle, wrapping round") << "ppp" << 1 << QList<int>{1, 2, 0};
    QTest::newRow("from the last") << "ppp" << 2 << QList<int>{2, 0, 1};
    QTest::newRow("no cursor: from the first") << "ppp" << -1 << QList<int>{0, 1, 2};
    QTest::newRow("folders are passed over") << "ffpfp" << 3 << QList<int>{4, 2};
    QTest::newRow("a cursor behind the end wraps") << "ppp" << 4 << QList<int>{1, 2, 0};
    QTest::newRow("the farthest cursor") << "pp" << INT_MAX << QList<int>{1, 0};
    QTest::newRow("folders only") << "fff" << 1 << QList<int>{};
    QTest::newRow("nothing") << "" << 0 << QList<int>{};
    QTest::newRow("one picture") << "fp" << 0 << QList<int>{1};
}

void TestSlideOrder::goesRoundFromTheStart()
{
    const auto [items, start, order] = lumi::test::row<QString, int, QList<int>>();
    QCOMPARE(asList(slideOrder(kinds(items), start)), order);
}

void TestSlideOrder::diceDecide_data()
{
    QTest::addColumn<int>("start");
    QTest::newRow("from the first") << 0;
    QTest::newRow("the start counts for nothing") << 3;
}

void TestSlideOrder::diceDecide()
{
    QFETCH(int, start);
    LoadedDice dice{{7, 0, 13, 2}};
    QCOMPARE(asList(slideOrder(kinds(QStringLiteral("pppp")), start, std::ref(dice))),
             (QList<int>{3, 0, 1, 2}));
}

void TestSlideOrder::whatWasTakenOrIsNoPictureIsThrownAgain()
{
    LoadedDice dice{{2, 2, 1, 5, 0}};
    QCOMPARE(asList(slideOrder(kinds(QStringLiteral("pfp")), 0, std::ref(dice))),
             (QList<int>{2, 0}));
    QCOMPARE(dice.thrown, 5);
}

void TestSlideOrder::everyPictureComesOnce()
{
    constexpr int kCount = 2000;
    std::vector<int> order = slideOrder(std::vector<bool>(kCount, true), 0, std::rand);
    QVERIFY(!std::is_sorted(order.begin(), order.end()));
    std::sort(order.begin(), order.end());
    for (int i = 0; i < kCount; ++i) {
        QCOMPARE(order.at(std::size_t(i)), i);
    }
}

void TestSlideOrder::steps_data()
{
    lumi::test::columns<int, int, int, int, int>();
    QTest::newRow("one on") << 0 << 1 << 3 << 1 << 0;
    QTest::newRow("over the end") << 2 << 1 << 3 << 0 << 1;
    QTest::newRow("over the end and on") << 2 << 3 << 3 << 2 << 1;
    QTest::newRow("two rounds") << 1 << 6 << 3 << 1 << 2;
    QTest::newRow("one back") << 2 << -1 << 3 << 1 << 0;
    QTest::newRow("back over the start") << 0 << -1 << 3 << 2 << -1;
    QTest::newRow("back to the start, not over it") << 2 << -2 << 3 << 0 << 0;
    QTest::newRow("two rounds back") << 0 << -6 << 3 << 0 << -2;
    QTest::newRow("the only one, on") << 0 << 1 << 1 << 0 << 1;
    QTest::newRow("the only one, back") << 0 << -1 << 1 << 0 << -1;
}

void TestSlideOrder::steps()
{
    const auto [from, steps, count, index, rounds] = lumi::test::row<int, int, int, int, int>();
    QCOMPARE(slideStep(from, steps, count).index, index);
    QCOMPARE(slideStep(from, steps, count).rounds, rounds);
}

void TestSlideOrder::waits_data()
{
    lumi::test::columns<int, qint64, int>();
    QTest::newRow("no decode time") << 3000 << qint64(0) << 3000;
    QTest::newRow("a fast decode is hidden") << 3000 << qint64(2999) << 3000;
    QTest::newRow("exactly twice the delay") << 3000 << qint64(6000) << 3000;
    QTest::newRow("a little more: at once") << 3000 << qint64(6001) << 0;
    QTest::newRow("much more: at once") << 3000 << qint64(100000) << 0;
    QTest::newRow("a day") << 2000 << qint64(86400000) << 0;
    QTest::newRow("the longest delay") << INT_MAX << qint64(0) << INT_MAX;
}

void TestSlideOrder::waits()
{
    const auto [delay, elapsed, wait] = lumi::test::row<int, qint64, int>();
    QCOMPARE(slideWait(delay, elapsed), wait);
}

LUMI_TEST(TestSlideOrder)
#include "TestSlideOrder.moc"

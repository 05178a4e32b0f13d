// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "views/pageArithmetic.h"

#include <QTest>

namespace {

constexpr lumi::PageGrid kLarge{3, 2, false};
constexpr lumi::PageGrid kSmall{7, 5, false};
constexpr lumi::PageGrid kInfo{7, 1, true};
/// More rows than columns: only there the test of topOnePageBack() differs from an ordinary one.
constexpr lumi::PageGrid kTall{2, 5, false};

} // namespace

Q_DECLARE_METATYPE(lumi::PageGrid)
Q_DECLARE_METATYPE(lumi::ViewAction)
Q_DECLARE_METATYPE(lumi::CursorMove::Kind)

class TestPageArithmetic : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellSizes_data();
    void cellSizes();
    void noCellsWithoutColumnsOrRows();
    void pageTop_data();
    void pageTop();
    void barRange_data();
    void barRange();
    void topForBar();
    void lines_data();
    void lines();
    void pages_data();
    void pages();
    void keys_data();
    void keys();
    void cursorMoves_data();
    void cursorMoves();
};

void TestPageArithmetic::cellSizes_data()
{
    lumi::test::columns<int, int, bool, QSize, QSize, QSize>();
    QTest::newRow("large with a bar of 14")
        << 3 << 2 << true << QSize(14, 0) << QSize(171, 119) << QSize(175, 157);
    QTest::newRow("large without a bar")
        << 3 << 2 << true << QSize(0, 0) << QSize(176, 119) << QSize(180, 157);
    QTest::newRow("small with a bar of 14")
        << 7 << 5 << false << QSize(14, 0) << QSize(71, 58) << QSize(75, 62);
    QTest::newRow("one row with a bar of 14")
        << 7 << 1 << false << QSize(0, 14) << QSize(73, 91) << QSize(77, 95);
    QTest::newRow("one row with names")
        << 7 << 1 << true << QSize(0, 0) << QSize(73, 71) << QSize(77, 109);
}

void TestPageArithmetic::cellSizes()
{
    const auto [columns, rows, showName, bars, image, pitch]
        = lumi::test::row<int, int, bool, QSize, QSize, QSize>();
    const auto sizes = lumi::cellSizes(columns, rows, showName, bars);
    QVERIFY(sizes);
    QCOMPARE(sizes->image, image);
    QCOMPARE(sizes->pitch, pitch);
}

void TestPageArithmetic::noCellsWithoutColumnsOrRows()
{
    QVERIFY(!lumi::cellSizes(0, 2, true, QSize(14, 0)));
    QVERIFY(!lumi::cellSizes(3, 0, true, QSize(14, 0)));
    QVERIFY(!lumi::cellSizes(-3, 2, true, QSize(14, 0)));
    QVERIFY(lumi::cellSizes(1, 1, true, QSize(14, 0)));
}

void TestPageArithmetic::pageTop_data()
{
    lumi::test::columns<lumi::PageGrid, int, int, int, int, int>();
    QTest::newRow("the page of an index") << kLarge << 100 << 0 << -1 << 13 << 12;
    QTest::newRow("the first page of an index") << kLarge << 100 << 30 << -1 << 5 << 0;
    QTest::newRow("no top and no index keep the page") << kLarge << 100 << 30 << -1 << -1 << 30;
    QTest::newRow("a kept page need not begin a row") << kLarge << 100 << 7 << -1 << -1 << 7;
    QTest::newRow("a top goes down to its row") << kLarge << 100 << 0 << 8 << -1 << 6;
    QTest::newRow("a top wins over an index") << kLarge << 100 << 0 << 9 << 50 << 9;
    QTest::newRow("20 items end on the last row") << kLarge << 20 << 0 << 18 << -1 << 15;
    QTest::newRow("20 items, top 15 is kept") << kLarge << 20 << 0 << 15 << -1 << 15;
    QTest::newRow("20 items, top 12 is kept") << kLarge << 20 << 0 << 12 << -1 << 12;
    QTest::newRow("a shrunk list pulls the page up") << kLarge << 8 << 30 << -1 << -1 << 3;
    QTest::newRow("exactly one page") << kLarge << 6 << 3 << -1 << -1 << 0;
    QTest::newRow("less than a page never begins below zero") << kLarge << 2 << 0 << 0 << 0 << 0;
    QTest::newRow("a negative top is the first") << kLarge << 20 << 9 << -5 << -1 << 0;
    QTest::newRow("sideways the last page may be short") << kInfo << 10 << 0 << 7 << -1 << 7;
    QTest::newRow("sideways a kept page reaches past the end") << kInfo << 9 << 3 << -1 << -1 << 3;
    QTest::newRow("sideways the whole list fits") << kInfo << 7 << 3 << -1 << -1 << 0;
    QTest::newRow("sideways by index") << kInfo << 10 << 0 << -1 << 9 << 7;
    QTest::newRow("sideways behind the end is the last row") << kInfo << 10 << 21 << -1 << -1 << 7;
    QTest::newRow("sideways far behind the end") << kInfo << 7 << 0 << 700 << -1 << 0;
}

void TestPageArithmetic::pageTop()
{
    const auto [grid, count, present, top, index, expected]
        = lumi::test::row<lumi::PageGrid, int, int, int, int, int>();
    QCOMPARE(lumi::pageTop(grid, count, present, top, index), expected);
}

void TestPageArithmetic::barRange_data()
{
    QTest::addColumn<lumi::PageGrid>("grid");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("top");
    QTest::addColumn<QList<int>>("expected"); // minimum, maximum, page step, value
    QTest::newRow("20 items in 3 x 2") << kLarge << 20 << 15 << QList<int>{1, 6, 2, 6};
    QTest::newRow("20 items, first page") << kLarge << 20 << 0 << QList<int>{1, 6, 2, 1};
    QTest::newRow("one more than a page") << kLarge << 7 << 0 << QList<int>{1, 2, 2, 1};
    QTest::newRow("exactly a page") << kLarge << 6 << 0 << QList<int>{0, 0, 1, 0};
    QTest::newRow("nothing") << kLarge << 0 << 0 << QList<int>{0, 0, 1, 0};
    QTest::newRow("100 items in 7 x 5") << kSmall << 100 << 70 << QList<int>{1, 11, 5, 11};
    QTest::newRow("10 items in a row of 7") << kInfo << 10 << 7 << QList<int>{1, 2, 1, 2};
}

void TestPageArithmetic::barRange()
{
    QFETCH(lumi::PageGrid, grid);
    QFETCH(int, count);
    QFETCH(int, top);
    const lumi::BarRange range = lumi::barRange(grid, count, top);
    const QList<int> actual{range.minimum, range.maximum, range.pageStep, range.value};
    QTEST(actual, "expected");
}

void TestPageArithmetic::topForBar()
{
    QCOMPARE(lumi::topForBar(3, 0), 0);
    QCOMPARE(lumi::topForBar(3, 1), 0);
    QCOMPARE(lumi::topForBar(3, 6), 15);
}

void TestPageArithmetic::lines_data()
{
    lumi::test::columns<int, int, int, int>();
    QTest::newRow("first page") << 20 << 0 << 3 << 0;
    QTest::newRow("middle") << 20 << 6 << 9 << 3;
    QTest::newRow("last row begins") << 20 << 18 << 18 << 15;
    QTest::newRow("one item behind the row") << 4 << 0 << 3 << 0;
    QTest::newRow("no item behind the row") << 3 << 0 << 0 << 0;
    QTest::newRow("less than a row above") << 20 << 2 << 5 << 2;
}

void TestPageArithmetic::lines()
{
    const auto [count, top, on, back] = lumi::test::row<int, int, int, int>();
    QCOMPARE(lumi::topOneLineOn(3, count, top), on);
    QCOMPARE(lumi::topOneLineBack(3, top), back);
}

void TestPageArithmetic::pages_data()
{
    lumi::test::columns<lumi::PageGrid, int, int, int, int>();
    QTest::newRow("large, first page") << kLarge << 20 << 0 << 6 << 0;
    QTest::newRow("large, middle") << kLarge << 20 << 9 << 15 << 3;
    QTest::newRow("large, one row above") << kLarge << 20 << 3 << 9 << 0;
    QTest::newRow("large, the steps stop at the last row") << kLarge << 20 << 15 << 18 << 9;
    QTest::newRow("small, middle") << kSmall << 200 << 70 << 105 << 35;
    QTest::newRow("off a row, the last step stops at zero") << kLarge << 20 << 5 << 11 << 0;
    QTest::newRow("rows are compared where columns are subtracted")
        << kTall << 100 << 12 << 22 << 0;
}

void TestPageArithmetic::pages()
{
    const auto [grid, count, top, on, back] = lumi::test::row<lumi::PageGrid, int, int, int, int>();
    QCOMPARE(lumi::topOnePageOn(grid, count, top), on);
    QCOMPARE(lumi::topOnePageBack(grid, top), back);
}

void TestPageArithmetic::keys_data()
{
    using lumi::ViewAction;
    lumi::test::columns<int, ViewAction, ViewAction>();
    QTest::newRow("Space") << int(Qt::Key_Space) << ViewAction::ToggleCheck
                           << ViewAction::ToggleCheck;
    QTest::newRow("Backspace") << int(Qt::Key_Backspace) << ViewAction::FolderUp
                               << ViewAction::FolderUp;
    QTest::newRow("Return") << int(Qt::Key_Return) << ViewAction::Open << ViewAction::Open;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << ViewAction::Open << ViewAction::Open;
    QTest::newRow("Left") << int(Qt::Key_Left) << ViewAction::Left << ViewAction::Left;
    QTest::newRow("Right") << int(Qt::Key_Right) << ViewAction::Right << ViewAction::Right;
    QTest::newRow("Up") << int(Qt::Key_Up) << ViewAction::Up << ViewAction::Right;
    QTest::newRow("Down") << int(Qt::Key_Down) << ViewAction::Down << ViewAction::Left;
    QTest::newRow("Delete") << int(Qt::Key_Delete) << ViewAction::None << ViewAction::None;
    QTest::newRow("a letter") << int(Qt::Key_C) << ViewAction::None << ViewAction::None;
}

void TestPageArithmetic::keys()
{
    const auto [key, plain, stepping] = lumi::test::row<int, lumi::ViewAction, lumi::ViewAction>();
    QCOMPARE(lumi::viewAction(key, false), plain);
    QCOMPARE(lumi::viewAction(key, true), stepping);
}

void TestPageArithmetic::cursorMoves_data()
{
    using lumi::CursorMove;
    using lumi::ViewAction;
    QTest::addColumn<ViewAction>("action");
    QTest::addColumn<lumi::PageGrid>("grid");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("index");
    QTest::addColumn<CursorMove::Kind>("kind");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("newTop");
    // All in a list of 20.
    const auto none = CursorMove::Nothing;
    const auto here = CursorMove::OnPage;
    const auto turn = CursorMove::OtherPage;
    const lumi::PageGrid column{1, 4, false};
    QTest::newRow("right on the page") << ViewAction::Right << kLarge << 6 << 7 << here << 8 << 6;
    QTest::newRow("left on the page") << ViewAction::Left << kLarge << 6 << 7 << here << 6 << 6;
    QTest::newRow("down on the page") << ViewAction::Down << kLarge << 6 << 7 << here << 10 << 6;
    QTest::newRow("up on the page") << ViewAction::Up << kLarge << 6 << 10 << here << 7 << 6;
    QTest::newRow("right over the end of the page")
        << ViewAction::Right << kLarge << 6 << 11 << turn << 12 << 9;
    QTest::newRow("down over the end of the page")
        << ViewAction::Down << kLarge << 6 << 10 << turn << 13 << 9;
    QTest::newRow("left over the top of the page")
        << ViewAction::Left << kLarge << 6 << 6 << turn << 5 << 3;
    QTest::newRow("up over the top of the page")
        << ViewAction::Up << kLarge << 6 << 7 << turn << 4 << 3;
    QTest::newRow("up from a page that begins inside the first row")
        << ViewAction::Left << kLarge << 2 << 2 << turn << 1 << 0;
    QTest::newRow("the page is rows away from the cursor")
        << ViewAction::Right << kLarge << 0 << 15 << turn << 16 << 3;
    QTest::newRow("left of the first") << ViewAction::Left << kLarge << 0 << 0 << none << -1 << 0;
    QTest::newRow("up from the first row") << ViewAction::Up << kLarge << 0 << 2 << none << -1 << 0;
    QTest::newRow("right of the last")
        << ViewAction::Right << kLarge << 15 << 19 << none << -1 << 0;
    QTest::newRow("down from the last row")
        << ViewAction::Down << kLarge << 15 << 18 << none << -1 << 0;
    QTest::newRow("no row below, though an item of it is there")
        << ViewAction::Down << kLarge << 15 << 17 << none << -1 << 0;
    QTest::newRow("up in a single column") << ViewAction::Up << column << 0 << 2 << none << -1 << 0;
    QTest::newRow("down in a single column")
        << ViewAction::Down << column << 0 << 2 << none << -1 << 0;
    QTest::newRow("right in a single column")
        << ViewAction::Right << column << 0 << 2 << here << 3 << 0;
    QTest::newRow("no cursor") << ViewAction::Right << kLarge << 0 << -1 << none << -1 << 0;
    QTest::newRow("cursor behind the end")
        << ViewAction::Left << kLarge << 0 << 20 << none << -1 << 0;
    QTest::newRow("an action that is no move")
        << ViewAction::Open << kLarge << 0 << 3 << none << -1 << 0;
}

void TestPageArithmetic::cursorMoves()
{
    QFETCH(lumi::ViewAction, action);
    QFETCH(lumi::PageGrid, grid);
    QFETCH(int, top);
    QFETCH(int, index);
    const lumi::CursorMove move = lumi::cursorMove(action, grid, 20, top, index);
    QTEST(move.kind, "kind");
    QTEST(move.target, "target");
    QTEST(move.top, "newTop");
}

LUMI_TEST(TestPageArithmetic)
#include "TestPageArithmetic.moc"

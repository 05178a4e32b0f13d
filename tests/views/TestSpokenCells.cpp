// SPDX-License-Identifier: MIT
// The cells of a page as screen readers see them.
#include "tests/support/TestMain.h"
#include "tests/views/ViewFixture.h"
#include "widgets/MyImageCheckBox.h"

#include <QAccessible>
#include <QTest>

using lumi::test::ViewFixture;

class TestSpokenCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_view.reset(); }

    void everyModeHasAListOfCells_data();
    void everyModeHasAListOfCells();
    void aCellOfAnotherPageIsForgotten();
    void theStateFollowsCursorAndFocus();
    void theStateFollowsTheMark();
    void aPressActsLikeATap();
    void aFolderOpensAtOnePress();

private:
    [[nodiscard]] QAccessibleInterface *seen(int index) const;
    void press(int index) const;

    std::unique_ptr<ViewFixture> m_view;
};

/// A folder "dir" and the photos a00 and a01.
void TestSpokenCells::init()
{
    m_view = std::make_unique<ViewFixture>();
    m_view->world.makePhotos(2);
    m_view->world.makePhotos(1, QStringLiteral("dir"));
    m_view->list();
    QVERIFY(m_view->waitForThumbnails());
}

QAccessibleInterface *TestSpokenCells::seen(int index) const
{
    return QAccessible::queryAccessibleInterface(m_view->cellOf(index));
}

void TestSpokenCells::press(int index) const
{
    seen(index)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
}

void TestSpokenCells::everyModeHasAListOfCells_data()
{
    QTest::addColumn<char>("mode");
    QTest::newRow("large") << 'l';
    QTest::newRow("small") << 's';
    QTest::newRow("info") << 'd';
}

void TestSpokenCells::everyModeHasAListOfCells()
{
    QFETCH(char, mode);
    if (mode == 's') {
        m_view->showSmall();
    } else if (mode == 'd') {
        m_view->showInfo();
    }
    QVERIFY(m_view->waitForThumbnails());
    const QAccessibleInterface *page = QAccessible::queryAccessibleInterface(m_view->container());
    QCOMPARE(QAccessible::queryAccessibleInterface(&m_view->view)->role(), QAccessible::Pane);
    QCOMPARE(page->role(), QAccessible::List);
    QCOMPARE(page->childCount(), 3);
    const char *const names[] = {"dir", "a00", "a01"};
    for (int i = 0; i < 3; ++i) {
        const QAccessibleInterface *cell = page->child(i);
        const FPVThumbnailItem *widget = m_view->cellOf(i);
        QVERIFY(cell->object() == widget);
        QCOMPARE(cell->role(), QAccessible::ListItem);
        QCOMPARE(cell->text(QAccessible::Name), QLatin1String(names[i]));
        QCOMPARE(cell->text(QAccessible::Description), QLatin1String(i == 0 ? "Folder" : "Photo"));
        QCOMPARE(cell->rect(), QRect(widget->mapToGlobal(QPoint()), widget->size()));
        QCOMPARE(bool(cell->state().checkable), i > 0 && mode != 'd');
        QVERIFY(cell->state().focusable && cell->state().selectable);
    }
}

/// Otherwise a new widget at its address would be described as the old one, and crash the program.
void TestSpokenCells::aCellOfAnotherPageIsForgotten()
{
    const QAccessible::Id id = QAccessible::uniqueId(seen(1));
    QVERIFY(QAccessible::accessibleInterface(id) == seen(1));
    m_view->showSmall();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(QAccessible::accessibleInterface(id) == nullptr);
}

void TestSpokenCells::theStateFollowsCursorAndFocus()
{
    m_view->tap(1);
    QVERIFY(seen(1)->state().selected && seen(1)->state().focused);
    QVERIFY(!seen(2)->state().selected && !seen(2)->state().focused);
    m_view->view.clearFocus();
    QVERIFY(seen(1)->state().selected && !seen(1)->state().focused);
}

void TestSpokenCells::theStateFollowsTheMark()
{
    m_view->tap(1);
    m_view->key(Qt::Key_Space);
    QVERIFY(seen(1)->state().checked);
    const auto *box = m_view->cellOf(1)->findChild<MyImageCheckBox *>();
    QCOMPARE(box->accessibleName(), QStringLiteral("Mark a00"));
    m_view->key(Qt::Key_Space);
    QVERIFY(!seen(1)->state().checked);
}

void TestSpokenCells::aPressActsLikeATap()
{
    press(1);
    QCOMPARE(m_view->news, QStringList{QStringLiteral("selected a00")});
    press(1);
    QCOMPARE(m_view->news.last(), QStringLiteral("decided a00"));
}

void TestSpokenCells::aFolderOpensAtOnePress()
{
    press(0);
    QCOMPARE(m_view->news,
             (QStringList{QStringLiteral("selected dir"), QStringLiteral("decided dir")}));
}

LUMI_TEST(TestSpokenCells)
#include "TestSpokenCells.moc"

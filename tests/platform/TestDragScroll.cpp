// SPDX-License-Identifier: MIT
#include "platform/touch/DragScroll.h"
#include "tests/support/TestMain.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>

#include <memory>

class TestDragScroll : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aDragScrolls();
    void aDragSelectsAndOpensNothing();
    void aTapFollowsALink();

private:
    void press(QPoint at) { QTest::mousePress(window(), Qt::LeftButton, {}, at); }

    void move(QPoint at) { QTest::mouseMove(window(), at); }

    void release(QPoint at) { QTest::mouseRelease(window(), Qt::LeftButton, {}, at); }

    [[nodiscard]] QWindow *window() const { return m_browser->windowHandle(); }

    std::unique_ptr<QTextBrowser> m_browser;
};

void TestDragScroll::init()
{
    m_browser = std::make_unique<QTextBrowser>();
    m_browser->setOpenLinks(false);
    QString html;
    for (int i = 0; i < 100; ++i) {
        html += QStringLiteral("<p><a href=\"x\">a link that fills the whole line of text</a></p>");
    }
    m_browser->setHtml(html);
    m_browser->resize(200, 200);
    new lumi::DragScroll(m_browser.get());
    m_browser->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_browser.get()));
}

void TestDragScroll::aDragScrolls()
{
    press({60, 150});
    move({60, 100});
    QCOMPARE(m_browser->verticalScrollBar()->value(), 50);
    move({60, 120});
    QCOMPARE(m_browser->verticalScrollBar()->value(), 30);
    release({60, 120});
    move({60, 20});
    QCOMPARE(m_browser->verticalScrollBar()->value(), 30);
}

void TestDragScroll::aDragSelectsAndOpensNothing()
{
    const QSignalSpy opened(m_browser.get(), &QTextBrowser::anchorClicked);
    press({60, 150});
    move({80, 100});
    release({80, 100});
    QVERIFY(!m_browser->textCursor().hasSelection());
    QCOMPARE(opened.count(), 0);
}

void TestDragScroll::aTapFollowsALink()
{
    const QSignalSpy opened(m_browser.get(), &QTextBrowser::anchorClicked);
    QPoint link(60, 0);
    while (m_browser->anchorAt(link).isEmpty() && link.y() < 100) {
        ++link.ry();
    }
    link = m_browser->viewport()->mapTo(m_browser.get(), link + QPoint(0, 3));
    press(link);
    release(link);
    QCOMPARE(opened.count(), 1);
}

LUMI_TEST(TestDragScroll)
#include "TestDragScroll.moc"

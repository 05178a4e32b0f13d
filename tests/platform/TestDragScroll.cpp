// SPDX-License-Identifier: MIT
#include "platform/touch/DragScroll.h"
#include "tests/support/TestMain.h"

#include <QMouseEvent>
#include <QPointingDevice>
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
    void theMouseMarksText();
    void aDragSelectsAndOpensNothing();
    void aTapFollowsALink();

private:
    /// The mouse events that TouchJudge makes of a finger.
    void send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons buttons) const
    {
        static QPointingDevice *const finger = QTest::createTouchDevice();
        QMouseEvent event(type, at, at, window()->mapToGlobal(at), button, buttons, {}, finger);
        QCoreApplication::sendEvent(window(), &event);
    }

    void press(QPoint at) const
    {
        send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    }

    void move(QPoint at) const { send(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton); }

    void release(QPoint at) const
    {
        send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
    }

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
    press({60, 50});
    move({60, 20});
    QCOMPARE(m_browser->verticalScrollBar()->value(), 60);
    release({60, 20});
}

void TestDragScroll::theMouseMarksText()
{
    QTest::mousePress(window(), Qt::LeftButton, {}, {20, 150});
    QTest::mouseMove(window(), {80, 100});
    QTest::mouseRelease(window(), Qt::LeftButton, {}, {80, 100});
    QVERIFY(m_browser->textCursor().hasSelection());
    QCOMPARE(m_browser->verticalScrollBar()->value(), 0);
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

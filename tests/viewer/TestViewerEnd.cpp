// SPDX-License-Identifier: MIT
// What ends the viewer: failed decodes, other applications and the user.
#include "platform/screen/FrameBuffer.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ViewerTest.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QTest>
#include <QToolButton>
#include <QWindow>

using lumi::DecodeError;
using lumi::test::kMemoryBox;
using lumi::test::kOpenBox;
using lumi::test::kPhoto;
using lumi::test::ScriptedImage;

Q_DECLARE_METATYPE(lumi::DecodeError)

class TestViewerEnd : public lumi::test::ViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void failedStart_data();
    void failedStart();
    void noPictureAtAll();
    void failureWhileDecoding_data();
    void failureWhileDecoding();
    void failedFullDecode();
    void failedNextPicture();
    void oneBoxOnly();
    void theWindowIsClosedWhileTheBoxIsOpen();
    void anotherApplicationClosesTheViewer();
    void otherMessagesAreIgnored();
    void closing_data();
    void closing();
    void theCloseButtonReplacesATitleBar_data();
    void theCloseButtonReplacesATitleBar();
    void theItemMayBeDeleted();
};

namespace {

constexpr int kCloseButton = 5; ///< of ViewerFixture::button()

/// The times of the waiting QTimer::singleShot(), whose objects belong to the dispatcher.
QList<int> singleShots()
{
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    QList<int> times;
    for (QObject *object : dispatcher->children()) {
        for (const auto &timer : dispatcher->registeredTimers(object)) {
            times.append(timer.interval);
        }
    }
    return times;
}

/// While it exists, new windows have no title bar, as on a bare screen.
class NoTitleBars : public QObject
{
public:
    NoTitleBars() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::WinIdChange && widget != nullptr && widget->isWindow()) {
            widget->windowHandle()->setFlag(Qt::FramelessWindowHint);
        }
        return false;
    }
};

} // namespace

void TestViewerEnd::failedStart_data()
{
    QTest::addColumn<DecodeError>("error");
    QTest::addColumn<QString>("box");
    QTest::newRow("memory") << DecodeError::OutOfMemory << kMemoryBox;
    QTest::newRow("bad file") << DecodeError::Undecodable << kOpenBox;
    QTest::newRow("wrong depth") << DecodeError::WrongDepth << kOpenBox;
    QTest::newRow("no reason given") << DecodeError::None << kOpenBox;
}

void TestViewerEnd::failedStart()
{
    QFETCH(DecodeError, error);
    QFETCH(QString, box);
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), kPhoto);
    image->starts = 0;
    image->reason = error;
    QVERIFY(!singleShots().contains(5));
    m_it->open(image);
    QCOMPARE(m_it->boxes.texts, QStringList(box));
    QVERIFY(singleShots().contains(5));
    QVERIFY(m_it->run(900));
    QVERIFY(!m_it->viewer->isVisible());
    QCOMPARE(m_it->boxes.texts.size(), 1);
}

void TestViewerEnd::noPictureAtAll()
{
    m_it->open(nullptr);
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
}

void TestViewerEnd::failureWhileDecoding_data()
{
    failedStart_data();
}

void TestViewerEnd::failureWhileDecoding()
{
    QFETCH(DecodeError, error);
    QFETCH(QString, box);
    if (error == DecodeError::None) {
        error = DecodeError::Undecodable;
    }
    ScriptedImage *image = openOne();
    QTimer::singleShot(20, image, [image, error] {
        image->slice();
        image->failSlice(error);
    });
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(box));
    QVERIFY(!m_it->viewer->isVisible());
}

void TestViewerEnd::failedFullDecode()
{
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), kPhoto, 2);
    image->starts = 1;
    image->reason = DecodeError::OutOfMemory;
    m_it->open(image);
    image->finish();
    QTimer::singleShot(20, m_it->viewer.get(), &FPVPictureScrollView::zoomIn);
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kMemoryBox));
}

void TestViewerEnd::failedNextPicture()
{
    ScriptedImage *bad = m_it->add(QStringLiteral("b.jpg"), QSize(-1, -1));
    bad->starts = 0;
    openOne()->finish();
    QTimer::singleShot(20, m_it->viewer.get(), &FPVPictureScrollView::btn_next_cliced);
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
    QCOMPARE(m_it->view->currentObject(), bad);
}

void TestViewerEnd::oneBoxOnly()
{
    ScriptedImage *image = openOne();
    m_it->boxes.whileOpen = [image] {
        image->failSlice(DecodeError::OutOfMemory);
    };
    QTimer::singleShot(20, image, [image] {
        image->failSlice(DecodeError::Undecodable);
    });
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
}

void TestViewerEnd::theWindowIsClosedWhileTheBoxIsOpen()
{
    ScriptedImage *image = openOne();
    m_it->boxes.whileOpen = [this] {
        m_it->viewer->systemChannel("appForeground(QString)", {});
    };
    QTimer::singleShot(20, image, [image] {
        image->failSlice(DecodeError::Undecodable);
    });
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts.size(), 1);
}

void TestViewerEnd::anotherApplicationClosesTheViewer()
{
    ScriptedImage *image = openOne();
    image->slice();
    image->calls.clear();
    QCopChannel::send("QPE/System", "appForeground(QString)");
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
    QCOMPARE(image->calls, QStringList(QStringLiteral("abort")));
    // Late signals of the aborted decode.
    image->slice();
    image->failSlice(DecodeError::OutOfMemory);
    image->finish();
    QCoreApplication::processEvents();
    QVERIFY(m_it->boxes.texts.isEmpty());
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestViewerEnd::otherMessagesAreIgnored()
{
    openOne();
    QCopChannel::send("QPE/System", "batteryChanged()");
    QCopChannel::send("QPE/Card", "appForeground(QString)");
    QCoreApplication::processEvents();
    QVERIFY(m_it->viewer->isVisible());
}

void TestViewerEnd::closing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("the window's own button") << false;
}

void TestViewerEnd::closing()
{
    QFETCH(bool, byKey);
    ScriptedImage *image = openOne();
    QTimer::singleShot(20, m_it->viewer.get(), [this, byKey] {
        byKey ? m_it->key(Qt::Key_Escape) : static_cast<void>(m_it->viewer->close());
    });
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
    QVERIFY(!FrameBuffer::instance().isAllocated());
    m_it->close();
    QVERIFY(image->rasterBits() == nullptr);
}

void TestViewerEnd::theCloseButtonReplacesATitleBar_data()
{
    QTest::addColumn<bool>("hasTitleBar");
    QTest::newRow("a desktop's window") << true;
    QTest::newRow("a window without a title bar") << false;
}

void TestViewerEnd::theCloseButtonReplacesATitleBar()
{
    QFETCH(bool, hasTitleBar);
    const auto bare = hasTitleBar ? nullptr : std::make_unique<NoTitleBars>();
    openOne();
    QToolButton *button = m_it->button(kCloseButton);
    QCOMPARE(button->isVisible(), !hasTitleBar);
    QTimer::singleShot(20, button, &QToolButton::click);
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
}

void TestViewerEnd::theItemMayBeDeleted()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    ScriptedImage *image = showOne();
    m_it->view->setCurrentObjectQuiet(other);
    m_it->items.remove(image);
    m_it->scroll()->redraw();
    m_it->viewer->zoomOut();
    m_it->viewer->zoomIn();
    m_it->viewer->fix();
    m_it->viewer->checkRegion();
    m_it->key(Qt::Key_Right);
    QVERIFY(m_it->viewer->isVisible());
    m_it->key(Qt::Key_End);
    other->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
    m_it->items.remove(other);
    m_it->viewer->systemChannel("appForeground(QString)", {});
    QVERIFY(!m_it->viewer->isVisible());
}

LUMI_TEST(TestViewerEnd)
#include "TestViewerEnd.moc"

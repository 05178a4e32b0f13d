// SPDX-License-Identifier: MIT
// Load: how soon keys and taps are answered while large photos are decoded, and what hundreds of
// openings leave behind.
#include "items/FPVItemJpeg.h"
#include "platform/screen/FrameBuffer.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/processFigures.h"
#include "tests/viewer/Leftovers.h"
#include "tests/viewer/ViewerFixture.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>

#include <array>
#include <functional>
#include <memory>

using lumi::test::bytesRead;
using lumi::test::JpegKind;
using lumi::test::ViewerFixture;

namespace {

/// Posts a key and a press of the pen, and records when the viewer gets them.
class Taps : public QObject
{
public:
    explicit Taps(ViewerFixture *fixture)
        : m_fixture(fixture)
    {
        for (QWidget *widget : targets()) {
            widget->installEventFilter(this);
        }
    }

    void post() const
    {
        QCoreApplication::postEvent(targets()[0],
                                    new QKeyEvent(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier));
        const QPointF place(100, 100);
        QCoreApplication::postEvent(targets()[1],
                                    new QMouseEvent(QEvent::MouseButtonPress, place, place,
                                                    Qt::LeftButton, Qt::LeftButton,
                                                    Qt::NoModifier));
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        keys += event->type() == QEvent::KeyPress ? 1 : 0;
        presses += event->type() == QEvent::MouseButtonPress ? 1 : 0;
        if (keys == 1 && presses == 1 && !isAnswered) {
            isAnswered = true;
            answered();
        }
        return false;
    }

    int keys = 0;
    int presses = 0;
    bool isAnswered = false;
    std::function<void()> answered = [] {}; ///< both, for the first time

private:
    [[nodiscard]] std::array<QWidget *, 2> targets() const
    {
        return {m_fixture->scroll(), m_fixture->scroll()->viewport()};
    }

    ViewerFixture *m_fixture;
};

} // namespace

class TestViewerLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void tapsBetweenSlices();
    void tapsWhileScansAreRead();
    void closingWhileScansAreRead();
    void openingsLeaveNothingBehind();

private:
    FPVItemJpeg *addPhoto(const JpegKind &kind);

    std::unique_ptr<ViewerFixture> m_it;
};

void TestViewerLoad::init()
{
    m_it = std::make_unique<ViewerFixture>();
}

void TestViewerLoad::cleanup()
{
    m_it.reset();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

FPVItemJpeg *TestViewerLoad::addPhoto(const JpegKind &kind)
{
    const QString path = m_it->world.makeFile(QStringLiteral("a.jpg"), lumi::test::makeJpeg(kind));
    auto *item = new FPVItemJpeg(path, QString(), false);
    m_it->items.append(item);
    return item;
}

/// In the decode at screen size and in the decode at full size.
void TestViewerLoad::tapsBetweenSlices()
{
    constexpr int kBusy = 3; // slices before the taps
    FPVItemJpeg *item = addPhoto({.size = QSize(4000, 3000)});
    m_it->open(item);
    for (int round = 0; round < 2; ++round) {
        Taps taps(m_it.get());
        int updates = 0;
        int answeredAt = -1;
        taps.answered = [&updates, &answeredAt] {
            answeredAt = updates;
        };
        const auto news = connect(item, &FPVItemImage::decodeUpdate, this, [&updates, &taps] {
            if (++updates == kBusy) {
                taps.post();
            }
        });
        QVERIFY(m_it->waitForLook());
        disconnect(news);
        QVERIFY(updates > kBusy + 2);
        QCOMPARE(taps.keys, 1);
        QCOMPARE(taps.presses, 1);
        QVERIFY2(answeredAt >= kBusy && answeredAt < kBusy + 2,
                 qPrintable(QString::number(answeredAt)));
        if (round == 0) {
            m_it->viewer->zoomIn();
            QVERIFY(m_it->isDecoding());
        }
    }
}

/// A picture of several scans appears only after its last byte was read.
void TestViewerLoad::tapsWhileScansAreRead()
{
    FPVItemJpeg *item = addPhoto({.size = QSize(4000, 3000), .progressive = true});
    const QString path = item->path();
    const qint64 size = QFileInfo(path).size();
    m_it->open(item);
    QVERIFY(bytesRead(path) >= 0);
    QVERIFY(bytesRead(path) < size / 10);
    Taps taps(m_it.get());
    qint64 askedAt = -1;
    qint64 answeredAt = -1;
    taps.answered = [&] {
        answeredAt = bytesRead(path);
    };
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        if (askedAt < 0 && bytesRead(path) > size / 10) {
            askedAt = bytesRead(path);
            taps.post();
        }
    });
    poll.start(1);
    QVERIFY(m_it->waitForLook());
    QCOMPARE(taps.keys, 1);
    QCOMPARE(taps.presses, 1);
    QVERIFY(askedAt > 0);
    QVERIFY2(answeredAt >= askedAt && answeredAt - askedAt < size / 4,
             qPrintable(QString::asprintf("%lld, %lld of %lld", askedAt, answeredAt, size)));
}

void TestViewerLoad::closingWhileScansAreRead()
{
    FPVItemJpeg *item = addPhoto({.size = QSize(4000, 3000), .progressive = true});
    const QString path = item->path();
    m_it->open(item);
    QTimer::singleShot(30, m_it->viewer.get(), [this] {
        m_it->key(Qt::Key_Escape);
    });
    QVERIFY(m_it->run());
    QVERIFY(bytesRead(path) > 0);
    QVERIFY(bytesRead(path) < QFileInfo(path).size());
    m_it->close();
    QCOMPARE(bytesRead(path), -1);
    QVERIFY(item->rasterBits() == nullptr);
}

void TestViewerLoad::openingsLeaveNothingBehind()
{
    constexpr int kViewings = 250;
    FPVItemJpeg *item = addPhoto({.size = QSize(320, 240)});
    lumi::test::leavesNothing(kViewings, [this, item](int number) {
        // Every other one is left in the middle of its decode.
        item->setIncremental(number % 2 == 0);
        m_it->open(item);
        QVERIFY(m_it->viewer->isVisible());
        QVERIFY(item->rasterBits() != nullptr);
        m_it->close();
        QVERIFY(item->rasterBits() == nullptr);
        QVERIFY(!FrameBuffer::instance().isAllocated());
    });
}

LUMI_TEST(TestViewerLoad)
#include "TestViewerLoad.moc"

// SPDX-License-Identifier: MIT
// Browsing and viewing with fingers only.
#include "tests/journeys/Traveller.h"
#include "tests/support/TestMain.h"
#include "viewer/FPVPictureScrollView.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>

using lumi::test::Traveller;

namespace {

constexpr int kPatienceMs = 10000;

QPointingDevice *finger()
{
    static QPointingDevice *const device = QTest::createTouchDevice();
    return device;
}

void swipe(QWindow *window, QPoint from, QPoint to)
{
    QTest::touchEvent(window, finger()).press(0, from);
    QTest::touchEvent(window, finger()).move(0, to);
    QTest::touchEvent(window, finger()).release(0, to);
}

void tapWidget(QWidget *widget)
{
    const QPoint at = widget->mapTo(widget->window(), widget->rect().center());
    QWindow *window = widget->window()->windowHandle();
    QTest::touchEvent(window, finger()).press(0, at);
    QTest::touchEvent(window, finger()).release(0, at);
}

void pinchApart(QWindow *window)
{
    QTest::touchEvent(window, finger()).press(0, {300, 250}).press(1, {340, 250});
    QTest::touchEvent(window, finger()).move(0, {290, 250}).move(1, {350, 250});
    QTest::touchEvent(window, finger()).release(0, {290, 250}).release(1, {350, 250});
}

FPVPictureScrollView *viewer()
{
    return qobject_cast<FPVPictureScrollView *>(QApplication::activeModalWidget());
}

/// Whether the viewer shows this photo and its buttons.
bool isViewing(const QString &name)
{
    return viewer() != nullptr && viewer()->windowTitle() == name
        && !viewer()->findChild<QProgressBar *>()->isVisible();
}

/// Left half red, right half blue.
void makeHalves(const QString &path)
{
    QImage photo(1600, 1200, QImage::Format_RGB32);
    photo.fill(Qt::red);
    QPainter(&photo).fillRect(800, 0, 800, 1200, Qt::blue);
    QVERIFY(photo.save(path));
}

/// Whether the halves of the photo meet here, to 5 pixels.
bool halvesMeetAt(int x)
{
    constexpr int kRow = 300;
    const QImage screen = viewer()->grab().toImage();
    const QColor left = screen.pixelColor(x - 5, kRow);
    const QColor right = screen.pixelColor(x + 5, kRow);
    return left.red() > left.blue() && right.red() < right.blue();
}

bool says(const QString &text)
{
    const auto labels = viewer()->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [&text](const QLabel *label) {
        return label->isVisible() && label->text() == text;
    });
}

} // namespace

class TestFingers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_user.reset(); }

    void aSwipeTurnsThePage();
    void tapsSwipesAndAPinchInTheViewer();

private:
    std::unique_ptr<Traveller> m_user;
};

void TestFingers::init()
{
    m_user = std::make_unique<Traveller>();
    for (int i = 1; i <= 9; ++i) {
        m_user->world.makePhoto(QString::asprintf("a%d.jpg", i), QSize(1600, 1200), Qt::red);
    }
    makeHalves(m_user->world.path(QStringLiteral("a2.jpg")));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesThumbnails());
}

void TestFingers::aSwipeTurnsThePage()
{
    QWindow *window = m_user->window->windowHandle();
    const int first = m_user->view()->topIndex();
    swipe(window, {400, 300}, {250, 300});
    QTRY_VERIFY(m_user->view()->topIndex() > first);
    QVERIFY(m_user->view()->currentObject() == nullptr); // no tap reached a photo
    swipe(window, {250, 300}, {400, 300});
    QTRY_COMPARE(m_user->view()->topIndex(), first);
}

void TestFingers::tapsSwipesAndAPinchInTheViewer()
{
    std::deque<std::function<bool()>> steps{
        [] {
            return isViewing(QStringLiteral("a1.jpg"));
        },
        [] {
            swipe(viewer()->windowHandle(), {400, 300}, {250, 300});
            return true;
        },
        [] {
            return isViewing(QStringLiteral("a2.jpg"));
        },
        [] {
            pinchApart(viewer()->windowHandle());
            return true;
        },
        [] {
            // The fingers are at the middle of the photo, which stays there.
            return isViewing(QStringLiteral("a2.jpg")) && says(QStringLiteral("50%"))
                && halvesMeetAt(320);
        },
        [] {
            // Now a swipe moves the photo instead, as far as its edge.
            swipe(viewer()->windowHandle(), {400, 300}, {250, 300});
            return true;
        },
        [] {
            return isViewing(QStringLiteral("a2.jpg")) && halvesMeetAt(240);
        },
    };
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (!steps.empty() && clock.elapsed() < kPatienceMs) {
            const auto step = steps.front();
            steps.pop_front();
            if (!step()) {
                steps.push_front(step);
            }
        } else if (viewer() != nullptr) {
            viewer()->hide();
        }
    });
    timer.start(20);
    tapWidget(m_user->cell(QStringLiteral("a1.jpg")));
    QCOMPARE(m_user->status(), QStringLiteral("a1"));
    QTest::qWait(QApplication::doubleClickInterval());
    tapWidget(m_user->cell(QStringLiteral("a1.jpg")));
    QTRY_VERIFY(viewer() == nullptr);
    QCOMPARE(steps.size(), std::size_t(0));
}

LUMI_TEST(TestFingers)
#include "TestFingers.moc"

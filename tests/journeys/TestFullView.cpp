// SPDX-License-Identifier: MIT
// Viewing photos full screen by taps and keys on the real windows.
#include "files/FormFile.h"
#include "items/FPVItemImage.h"
#include "platform/screen/FrameBuffer.h"
#include "platform/session/QCopChannel.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/TestMain.h"
#include "viewer/FPVPictureScrollView.h"
#include "viewer/PictureScrollView.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <algorithm>
#include <deque>
#include <functional>

using lumi::test::Traveller;

namespace {

constexpr int kPatienceMs = 10000;
constexpr QSize kPhoto(1600, 1200);

/// The viewer once it is shown with its picture, else null.
FPVPictureScrollView *viewer()
{
    auto *window = qobject_cast<FPVPictureScrollView *>(QApplication::activeModalWidget());
    return window != nullptr && !window->windowTitle().isEmpty() ? window : nullptr;
}

/// Whether the viewer shows a picture.
bool isViewing()
{
    const auto *window = viewer();
    return window != nullptr && !window->findChild<QProgressBar *>()->isVisibleTo(window);
}

bool isViewing(const QString &name)
{
    return isViewing() && viewer()->windowTitle() == name;
}

/// Whether a label of the viewer has this text.
bool says(const QString &text)
{
    const auto labels = viewer()->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [&text](const QLabel *label) {
        return label->isVisible() && label->text() == text;
    });
}

QColor middle()
{
    const QWidget *place = viewer()->findChild<PictureScrollView *>()->viewport();
    const QImage shot = viewer()->grab().toImage();
    return shot.pixelColor(place->mapTo(viewer(), place->rect().center()));
}

bool isNear(const QColor &one, const QColor &other)
{
    return qAbs(one.red() - other.red()) < 12 && qAbs(one.green() - other.green()) < 12
        && qAbs(one.blue() - other.blue()) < 12;
}

/// Steps of the user in a modal window, one after another. Each is tried until it returns true.
/// After a timeout all windows are closed.
class Visit : public QObject
{
public:
    Visit()
    {
        connect(&m_timer, &QTimer::timeout, this, &Visit::go);
        m_clock.start();
        m_timer.start(10);
    }

    Visit &when(std::function<bool()> step)
    {
        m_steps.push_back(std::move(step));
        return *this;
    }

    Visit &then(const std::function<void()> &step)
    {
        return when([step] {
            step();
            return true;
        });
    }

    [[nodiscard]] bool isOver() const { return m_steps.empty() && !m_isLate; }

private:
    void go()
    {
        if (m_clock.elapsed() > kPatienceMs) {
            giveUp();
        } else if (!m_isRunning && !m_steps.empty()) {
            m_isRunning = true;
            if (m_steps.front()()) {
                m_steps.pop_front();
                m_clock.restart();
            }
            m_isRunning = false;
        }
    }

    void giveUp()
    {
        m_isLate = m_isLate || !m_steps.empty() || QApplication::activeModalWidget() != nullptr;
        while (QWidget *window = QApplication::activeModalWidget()) {
            window->hide();
        }
    }

    std::deque<std::function<bool()>> m_steps;
    QTimer m_timer;
    QElapsedTimer m_clock;
    bool m_isRunning = false;
    bool m_isLate = false;
};

} // namespace

class TestFullView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void throughTheFolderAndBack();

private:
    [[nodiscard]] QToolButton *button(int index) const;
    void open(const QString &name);
    void key(int key);
    void drag(QPoint from, QPoint to);

    std::unique_ptr<Traveller> m_user;
};

void TestFullView::init()
{
    m_user = std::make_unique<Traveller>();
    m_user->world.makePhoto(QStringLiteral("a.jpg"), kPhoto, Qt::red);
    m_user->world.makePhoto(QStringLiteral("b.jpg"), QSize(320, 240), Qt::blue);
    m_user->world.makePhoto(QStringLiteral("c.jpg"), kPhoto, Qt::green);
}

void TestFullView::cleanup()
{
    m_user.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

QToolButton *TestFullView::button(int index) const
{
    auto buttons = viewer()->findChildren<QToolButton *>();
    buttons.removeIf([](const QToolButton *one) {
        return !one->isVisible();
    });
    std::sort(buttons.begin(), buttons.end(), [](const auto *one, const auto *other) {
        return one->x() < other->x();
    });
    return buttons.at(index);
}

/// Returns when the viewer is closed.
void TestFullView::open(const QString &name)
{
    m_user->tapItem(name);
    QCOMPARE(m_user->status(), name.section(QLatin1Char('.'), 0, 0));
    m_user->tapItem(name);
}

void TestFullView::key(int key)
{
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
}

void TestFullView::drag(QPoint from, QPoint to)
{
    QWindow *window = viewer()->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    QTest::mouseMove(window, (from + to) / 2);
    QTest::mouseMove(window, to);
    QTest::mouseRelease(window, Qt::LeftButton, {}, to);
}

void TestFullView::throughTheFolderAndBack()
{
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesThumbnails());
    Visit visit;
    visit
        .when([] {
            return isViewing(QStringLiteral("a.jpg"));
        })
        .then([] {
            QVERIFY(isNear(middle(), Qt::red));
        })
        .when([this] {
            return button(0)->isEnabled();
        })
        .then([this] {
            m_user->tapMiddle(button(0));
        })
        .then([] {
            QVERIFY(!isViewing());
        })
        .when([] {
            return isViewing();
        })
        .when([this] {
            return button(0)->isEnabled();
        })
        .then([this] {
            m_user->tapMiddle(button(0));
        })
        .then([this] {
            QVERIFY(isViewing());
            QVERIFY(says(QStringLiteral("100%")));
            drag({300, 300}, {100, 200});
            QVERIFY(isNear(middle(), Qt::red));
        })
        // A card that is inserted now is handled later.
        .then([this] {
            m_user->world.machine->insertCard(Slot::SD);
            QCopChannel::send("QPE/Card", "mtabChanged()");
            key(Qt::Key_End);
        })
        .when([] {
            return isViewing(QStringLiteral("b.jpg"));
        })
        .then([this] {
            QVERIFY(isNear(middle(), Qt::blue));
            QCOMPARE(m_user->combo()->count(), 1);
            m_user->tapMiddle(button(4));
        })
        .when([] {
            return isViewing(QStringLiteral("c.jpg"));
        })
        .then([this] {
            key(Qt::Key_End);
        })
        .when([] {
            return isViewing(QStringLiteral("a.jpg"));
        })
        .then([this] {
            key(Qt::Key_Home);
        })
        .when([] {
            return isViewing(QStringLiteral("c.jpg"));
        })
        .then([this] {
            QVERIFY(isNear(middle(), Qt::green));
            key(Qt::Key_Escape);
        });
    open(QStringLiteral("a.jpg"));
    QVERIFY(visit.isOver());
    QVERIFY(viewer() == nullptr);
    // The cursor of the browser is on the photo that was shown last.
    QVERIFY(m_user->seesThumbnails());
    QCOMPARE(m_user->view()->currentObject()->fileName(), QStringLiteral("c.jpg"));
    QTRY_COMPARE(m_user->status(), QStringLiteral("c"));
    QTRY_COMPARE(m_user->combo()->count(), 2);
    m_user->window->activateWindow(); // there is no window manager
    QVERIFY(QTest::qWaitForWindowActive(m_user->window.get()));
    key(Qt::Key_Left);
    QCOMPARE(m_user->status(), QStringLiteral("b"));
}

LUMI_TEST(TestFullView)
#include "TestFullView.moc"

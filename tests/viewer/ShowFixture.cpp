// SPDX-License-Identifier: MIT
#include "tests/viewer/ShowFixture.h"

#include "items/FPVItemFolder.h"
#include "platform/session/QCopChannel.h"
#include "viewer/SlideMenu.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTest>

#include <cstring>

namespace {

constexpr QSize kPictureSize(64, 48);
constexpr int kWatchMs = 1;

void mustWork(bool ok, const char *what)
{
    if (!ok) {
        qFatal("%s", what);
    }
}

void fill(uchar *raster, const QColor &colour, int depth)
{
    const auto count = std::size_t(kPictureSize.width()) * std::size_t(kPictureSize.height());
    const auto bytes = std::size_t(depth) / 8;
    const quint32 value = depth == 32
        ? colour.rgb()
        : quint32(colour.red() >> 3 << 11 | colour.green() >> 2 << 5 | colour.blue() >> 3);
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(raster + i * bytes, &value, bytes);
    }
}

} // namespace

lumi::test::SlowPicture::SlowPicture(const QString &path, const QColor &colour)
    : FPVItemImage(path, QString(), false)
    , m_colour(colour)
{ }

bool lumi::test::SlowPicture::startDecode(int depth, QSize *outSize, QSize *request)
{
    releaseDecode();
    ++starts;
    startsInOnePiece += m_incremental ? 0 : 1;
    lastRequest = request != nullptr ? *request : QSize();
    m_depth = depth;
    m_error = refuses.value_or(DecodeError::None);
    if (onStart) {
        onStart();
    }
    if (refuses) {
        return false;
    }
    if (outSize != nullptr) {
        *outSize = kPictureSize;
    }
    m_run = starts;
    if (!m_incremental) {
        finish();
        return m_error == DecodeError::None;
    }
    Q_EMIT decodeUpdate();
    if (decodeMs >= 0) {
        QTimer::singleShot(decodeMs, Qt::PreciseTimer, this, [this, run = m_run] {
            if (m_run == run) {
                finish();
            }
        });
    }
    return true;
}

void lumi::test::SlowPicture::finish()
{
    if (m_run == 0) {
        return;
    }
    m_run = 0;
    if (breaksOff) {
        m_error = *breaksOff;
        Q_EMIT decodeUpdate();
        return;
    }
    const auto bytes = std::size_t(kPictureSize.width()) * std::size_t(kPictureSize.height())
        * std::size_t(m_depth) / 8;
    m_raster.reset(new uchar[bytes]);
    fill(m_raster.get(), m_colour, m_depth);
    ++completes;
    m_inDecodeComplete = true;
    Q_EMIT decodeComplete();
    m_inDecodeComplete = false;
}

uchar *lumi::test::SlowPicture::decodedRaster(int /*depth*/, QSize *outSize, QSize * /*request*/)
{
    if (outSize != nullptr) {
        *outSize = kPictureSize;
    }
    return m_raster.get();
}

void lumi::test::SlowPicture::releaseDecode()
{
    m_run = 0;
    m_raster.reset();
}

lumi::test::ShowFixture::ShowFixture()
    : machine(FakeMachine::install())
{ }

lumi::test::ShowFixture::~ShowFixture()
{
    show.reset();
    source.clear();
    Machine::install(nullptr);
}

QString lumi::test::ShowFixture::path(const char *name) const
{
    return m_folder.filePath(QLatin1String(name));
}

lumi::test::SlowPicture *lumi::test::ShowFixture::add(const QString &name, const QColor &colour)
{
    QFile file(m_folder.filePath(name));
    mustWork(file.open(QIODevice::WriteOnly) && file.write("photo") == 5, "no file");
    auto *picture = new SlowPicture(file.fileName(), colour);
    source.append(picture);
    return picture;
}

void lumi::test::ShowFixture::addPictures(int count)
{
    for (int i = 0; i < count; ++i) {
        add(QString(QLatin1Char(char('a' + i))), QColor(40 + 20 * i, 250 - 20 * i, 100));
    }
}

void lumi::test::ShowFixture::addFolder(const QString &name)
{
    source.append(new FPVItemFolder(m_folder.filePath(name), QString(), false));
}

lumi::test::SlowPicture *lumi::test::ShowFixture::picture(const char *name) const
{
    for (FPVItemObject *item : source) {
        if (item->fileName() == QLatin1String(name)) {
            return dynamic_cast<SlowPicture *>(item);
        }
    }
    return nullptr;
}

bool lumi::test::ShowFixture::removeFile(const char *name) const
{
    return QFile::remove(path(name));
}

SlideShow *lumi::test::ShowFixture::make(const ShowOptions &options)
{
    show = std::make_unique<SlideShow>(&parent, &source, options.autoMode, options.inOrder,
                                       options.delay, options.loops, options.start);
    return show.get();
}

int lumi::test::ShowFixture::run(const std::function<void()> &story)
{
    bool isTold = false;
    QTimer watcher;
    watcher.setTimerType(Qt::PreciseTimer);
    m_seen.clear();
    QObject::connect(&watcher, &QTimer::timeout, &watcher, [&] {
        hurryFirst();
        watch();
        if (story && !isTold && !m_seen.isEmpty()) {
            isTold = true;
            // Not called from the timer, which must go on watching.
            QTimer::singleShot(0, show.get(), [&] {
                story();
                watch();
                if (show) {
                    show->close();
                }
            });
        }
    });
    watcher.start(kWatchMs);
    return show->exec();
}

void lumi::test::ShowFixture::hurryFirst() const
{
    if (hurriesFirst && show && timer("screenOutTimer")->isActive()) {
        timer("screenOutTimer")->start(0);
    }
}

void lumi::test::ShowFixture::watch()
{
    const QString name = shown();
    if (!name.isEmpty() && (m_seen.isEmpty() || m_seen.last() != name)) {
        m_seen.append(name);
    }
}

QString lumi::test::ShowFixture::shown() const
{
    return show && show->lastItem() != nullptr ? show->lastItem()->fileName() : QString();
}

bool lumi::test::ShowFixture::sees(const char *name)
{
    return QTest::qWaitFor(
        [this, name] {
            watch();
            return shown() == QLatin1String(name);
        },
        kPatienceMs);
}

bool lumi::test::ShowFixture::seesCount(int count) const
{
    return QTest::qWaitFor(
        [this, count] {
            return m_seen.size() >= count;
        },
        kPatienceMs);
}

QTimer *lumi::test::ShowFixture::timer(const char *name) const
{
    auto *timer = show->findChild<QTimer *>(QLatin1String(name));
    mustWork(timer != nullptr, "no such timer");
    return timer;
}

void lumi::test::ShowFixture::endDelay() const
{
    QVERIFY2(timer("slideTimer")->isActive(), "no delay runs");
    timer("slideTimer")->start(0);
}

/// Ends delays, but not the short waits of the show.
void lumi::test::ShowFixture::hurry() const
{
    QTimer *delay = timer("slideTimer");
    if (delay->isActive() && delay->interval() == kLong) {
        delay->start(0);
    }
}

bool lumi::test::ShowFixture::playsOn(const char *names)
{
    for (const char *name = names; *name != 0; ++name) {
        const QString before = shown();
        const auto comes = [&] {
            watch();
            const bool isThere = shown() != before;
            if (!isThere) {
                hurry();
            }
            return isThere;
        };
        if (!QTest::qWaitFor(comes, kPatienceMs) || shown() != QLatin1Char(*name)) {
            qWarning("%s came, not %c", qPrintable(shown()), *name);
            return false;
        }
    }
    return true;
}

bool lumi::test::ShowFixture::playsToItsEnd()
{
    return QTest::qWaitFor(
        [this] {
            watch();
            hurry();
            return isOver();
        },
        kPatienceMs);
}

bool lumi::test::ShowFixture::isOver() const
{
    return !show || !show->isVisible();
}

bool lumi::test::ShowFixture::ends() const
{
    return QTest::qWaitFor(
        [this] {
            return isOver();
        },
        kPatienceMs);
}

QImage lumi::test::ShowFixture::screen() const
{
    return show->grab().toImage();
}

lumi::SlideMenu *lumi::test::ShowFixture::menu() const
{
    return qobject_cast<SlideMenu *>(QApplication::activePopupWidget());
}

void lumi::test::ShowFixture::inMenu(const std::function<void()> &act) const
{
    const auto isOpen = [this] {
        return menu() != nullptr;
    };
    inLoop(isOpen, act, [this] {
        QTest::mousePress(show.get(), Qt::LeftButton, {}, QPoint(200, 100));
        QTest::mouseRelease(show.get(), Qt::LeftButton, {}, QPoint(200, 100));
    });
}

void lumi::test::ShowFixture::inLoop(const std::function<bool()> &isOpen,
                                     const std::function<void()> &act,
                                     const std::function<void()> &open)
{
    // A timer polls, because a wait here would keep the event loop from ending.
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (isOpen()) {
            timer.stop();
            act();
        }
    });
    timer.start(kWatchMs);
    open();
    QVERIFY2(!timer.isActive(), "nothing was opened");
}

void lumi::test::ShowFixture::choose(int entry) const
{
    inMenu([this, entry] {
        SlideMenu *open = menu();
        open->setActiveAction(open->findItem(entry));
        QTest::keyClick(open, Qt::Key_Return);
    });
}

QMessageBox *lumi::test::ShowFixture::box()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

void lumi::test::ShowFixture::inBox(const std::function<void()> &open,
                                    const std::function<void()> &act)
{
    const auto isOpen = [] {
        return box() != nullptr && box()->isVisible();
    };
    inLoop(isOpen, act, open);
}

void lumi::test::ShowFixture::key(int key) const
{
    press(show.get(), key);
    if (show) {
        release(show.get(), key);
    }
}

void lumi::test::ShowFixture::press(QWidget *target, int key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

void lumi::test::ShowFixture::release(QWidget *target, int key)
{
    QKeyEvent event(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

void lumi::test::ShowFixture::tell(const char *message)
{
    QCopChannel::send("QPE/System", message);
    QCoreApplication::processEvents();
}

lumi::test::DelayLog::DelayLog(const ShowFixture &show)
{
    // The slot of the show was connected before and runs first.
    const QTimer *delay = show.timer("slideTimer");
    connect(delay, &QTimer::timeout, this, [this, &show, delay] {
        shown.append(show.shown());
        lengths.append(delay->interval());
    });
}

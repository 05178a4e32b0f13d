// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"
#include "app/common/FormId.h"
#include "bench/jobs.h"
#include "bench/photos.h"
#include "items/FPVItemJpeg.h"
#include "platform/QPEApplication.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "viewer/FPVPictureScrollView.h"
#include "views/FPVThumbnailView.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>

#include <cstdio>
#include <cstring>

namespace {

constexpr int kStartRounds = 11;
constexpr int kSettleMs = 1500;
constexpr double kMiB = 1024;
constexpr int kFew = 10;
constexpr int kMany = 10000;
constexpr QSize kHuge(12000, 9000);             // 108 megapixels
constexpr const char *kHugePhoto = "/huge.jpg"; // beside the store
constexpr int kPatienceMs = 20000;

/// Notes the first painting of a widget of this class and reports it to the parent process.
class FirstPaint : public QObject
{
public:
    explicit FirstPaint(const char *className)
        : m_className(className)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_seen = m_seen || (event->type() == QEvent::Paint && watched->inherits(m_className));
        return false;
    }

    void wait() const
    {
        while (!m_seen) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        std::puts("painted");
        std::fflush(stdout);
    }

private:
    const char *m_className;
    bool m_seen = false;
};

void settle(int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

QString storeFolder()
{
    return QDir::homePath() + QStringLiteral("/Documents/Photo_Files");
}

QByteArray swapFolder()
{
    return QFile::encodeName(storeFolder() + QStringLiteral("/.photo_swp"));
}

int bareStart(int argc, char **argv)
{
    QApplication application(argc, argv);
    const FirstPaint paint("QLabel");
    QMainWindow window;
    window.setCentralWidget(new QLabel(QStringLiteral("bare")));
    window.resize(640, 480);
    window.show();
    paint.wait();
    return 0;
}

int ourStart(int argc, char **argv)
{
    QPEApplication application(argc, argv);
    const FirstPaint paint("MyImageButton");
    SwapSystem store(swapFolder(), QStringLiteral(".swp"));
    swapSystem(&store);
    MainWindow window;
    application.showMainWidget(&window, false);
    paint.wait();
    return 0;
}

int bareMemory(int argc, char **argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QLabel(QStringLiteral("bare")));
    window.resize(640, 480);
    window.show();
    settle(kSettleMs);
    std::printf("%ld\n", lumi::bench::residentKiB());
    return 0;
}

/// The browser's view, once it has come to rest.
FPVThumbnailView *openBrowser(QPEApplication &application, MainWindow &window)
{
    application.showMainWidget(&window, false);
    window.changeForm(lumi::FileForm, QString());
    settle(kSettleMs);
    return window.findChild<FPVThumbnailView *>();
}

/// The largest resident memory over the first, a middle and the last page of the store.
int ourMemory(int argc, char **argv)
{
    QPEApplication application(argc, argv);
    SwapSystem store(swapFolder(), QStringLiteral(".swp"));
    swapSystem(&store);
    MainWindow window;
    FPVThumbnailView *view = openBrowser(application, window);
    long most = lumi::bench::residentKiB();
    for (const int top : {kMany / 2, kMany}) {
        view->showPage(top, -1, true);
        settle(kSettleMs);
        most = std::max(most, lumi::bench::residentKiB());
    }
    std::printf("%ld\n", most);
    return 0;
}

/// The most resident memory while a photo is viewed: fitted to the screen, then zoomed so far
/// that it is decoded as large as it ever is.
int viewerMemory(int argc, char **argv)
{
    QPEApplication application(argc, argv);
    SwapSystem store(swapFolder(), QStringLiteral(".swp"));
    swapSystem(&store);
    MainWindow window;
    FPVThumbnailView *view = openBrowser(application, window);
    FPVItemJpeg item(QDir::homePath() + QLatin1String(kHugePhoto), QString(), false);
    int decodes = 0;
    QObject::connect(&item, &FPVItemImage::decodeComplete, &window, [&decodes] {
        ++decodes;
    });
    FPVPictureScrollView viewer(&window, view, &item);
    QElapsedTimer clock;
    clock.start();
    for (const int wanted : {1, 2}) {
        while (decodes < wanted && clock.elapsed() < kPatienceMs) {
            settle(kSettleMs);
        }
        if (wanted == 1) {
            viewer.zoomIn();
        }
    }
    QSize size;
    if (decodes != 2 || item.decodedRaster(0, &size) == nullptr || size != kHuge / 4) {
        return 1;
    }
    std::printf("%ld\n", lumi::bench::peakKiB());
    return 0;
}

struct Mode
{
    const char *name;
    int (*run)(int, char **);
};

constexpr Mode kModes[] = {{"bare-start", bareStart},
                           {"our-start", ourStart},
                           {"bare-memory", bareMemory},
                           {"our-memory", ourMemory},
                           {"viewer-memory", viewerMemory}};

void start(QProcess &process, const char *mode, const QString &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QLatin1String(mode)});
}

void awaitEnd(QProcess &process)
{
    if (process.state() != QProcess::NotRunning && !process.waitForFinished()) {
        std::abort();
    }
    if (process.exitCode() != 0) {
        std::abort();
    }
}

void awaitPaint(QProcess &process)
{
    if (!process.waitForReadyRead()) {
        std::abort();
    }
}

double memoryMiB(const char *mode, const QString &home)
{
    QProcess process;
    start(process, mode, home);
    awaitEnd(process);
    return process.readAllStandardOutput().trimmed().toDouble() / kMiB;
}

/// Measures until the paint only: the user does not wait for the end of the program.
lumi::bench::Row startRow(const QString &home)
{
    QProcess process;
    const auto untilPaint = [&process, &home](const char *mode) {
        return [&process, &home, mode] {
            start(process, mode, home);
            awaitPaint(process);
        };
    };
    lumi::bench::Row row = lumi::bench::compare(
        {"start to the first form", "bare main window of that size", 1.3, kStartRounds},
        untilPaint("our-start"), untilPaint("bare-start"), [&process] {
            awaitEnd(process);
        });
    awaitEnd(process);
    return row;
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::processRows(const QString &folder)
{
    const QString few = folder + QStringLiteral("/few");
    const QString many = folder + QStringLiteral("/lots");
    const QString store = QStringLiteral("/Documents/Photo_Files");
    if (!makeFolder(few + store, kFew) || !makeFolder(many + store, kMany)
        || !makeHugePhoto(few + QLatin1String(kHugePhoto), kHuge)) {
        return {};
    }
    std::vector<Row> rows{startRow(few)};
    const double bare = memoryMiB("bare-memory", few);
    const double atRest = memoryMiB("our-memory", few);
    const double inMany = memoryMiB("our-memory", many);
    const double viewing = memoryMiB("viewer-memory", few);
    rows.push_back(
        {"memory at rest in a folder of 10", "bare main window", atRest, bare, "MiB", 8, true});
    rows.push_back({"memory in a folder of 10,000, any page", "memory at rest", inMany, atRest,
                    "MiB", 22, true});
    rows.push_back({"peak while viewing 108 megapixels, zoomed in", "memory at rest", viewing,
                    atRest, "MiB", 44, true});
    return rows;
}

int lumi::bench::processMain(int argc, char **argv)
{
    for (const Mode &mode : kModes) {
        if (std::strcmp(argv[1], mode.name) == 0) {
            return mode.run(argc, argv);
        }
    }
    std::fprintf(stderr, "unknown mode %s\n", argv[1]);
    return 2;
}

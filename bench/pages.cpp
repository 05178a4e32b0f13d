// SPDX-License-Identifier: MIT
#include "bench/jobs.h"
#include "bench/photos.h"
#include "items/FPVItemList.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailMetrics.h"
#include "views/FPVThumbnailView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kColumns = 7;
constexpr int kRows = 5;
constexpr int kCells = kColumns * kRows;
constexpr int kFillMs = 30;
constexpr int kCellMs = 10;
constexpr int kRounds = 5;
constexpr int kPatienceMs = 60000;

FPVThumbnailMetrics smallThumbnails()
{
    FPVThumbnailMetrics metrics('s', kColumns, kRows);
    metrics.showCheck = true;
    return metrics;
}

bool showsThumbnail(const FPVItemObject *item)
{
    const FPVThumbnailItem *cell = item->thumbnailItem();
    if (cell == nullptr) {
        return false;
    }
    const auto labels = cell->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return !label->pixmap().isNull();
    });
}

/// Milliseconds from the change of page to the last thumbnail of the page.
double pageTime(FPVThumbnailView &view, const FPVItemObject *last)
{
    QElapsedTimer clock;
    clock.start();
    view.showPage(0, 0, true);
    QApplication::processEvents();
    while (!showsThumbnail(last)) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (clock.elapsed() > kPatienceMs) {
            std::abort();
        }
    }
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

std::vector<QLabel *> addLabels(QWidget *page)
{
    const QSize size(page->width() / kColumns, page->height() / kRows);
    std::vector<QLabel *> labels;
    for (int i = 0; i < kCells; ++i) {
        auto *label = new QLabel(page);
        label->resize(size);
        label->move(i % kColumns * size.width(), i / kColumns * size.height());
        labels.push_back(label);
    }
    return labels;
}

void showPicture(QLabel *label, const QString &path)
{
    QImage image;
    if (!image.load(path, "JPG")) {
        std::abort();
    }
    label->setPixmap(QPixmap::fromImage(image));
}

/// Milliseconds of the same page in plain labels, with the same timers.
double bareTime(QWidget &window, const QFileInfoList &thumbnails)
{
    QElapsedTimer clock;
    clock.start();
    QWidget page(&window);
    page.resize(window.size());
    std::vector<QLabel *> labels;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    qsizetype next = -1;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (next < 0) {
            labels = addLabels(&page);
            page.show();
        } else {
            showPicture(labels.at(std::size_t(next)), thumbnails.at(next).filePath());
        }
        if (++next < kCells) {
            timer.start(kCellMs);
        } else {
            loop.quit();
        }
    });
    timer.start(kFillMs);
    loop.exec();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::pageRows(const QString &folder)
{
    const QString path = folder + QStringLiteral("/page");
    if (!makeCameraFolder(path, kCells)) {
        return {};
    }
    SwapSystem store(QFile::encodeName(folder + QStringLiteral("/.page_swp")),
                     QStringLiteral(".swp"));
    swapSystem(&store);
    FPVItemList list(path, path);
    QWidget window;
    window.resize(640, 480);
    FPVThumbnailView view(&window, &list);
    view.resize(560, 420);
    view.setVerticalMode(false);
    view.setMetrics(smallThumbnails(), true);
    window.show();
    const FPVItemObject *last = list.at(kCells - 1);
    pageTime(view, last);
    const QFileInfoList thumbnails = QDir(folder + QStringLiteral("/.page_swp"))
                                         .entryInfoList({QStringLiteral("*.swp")}, QDir::Files);
    if (thumbnails.size() != kCells) {
        return {};
    }
    QWidget bareWindow;
    bareWindow.resize(view.size());
    bareWindow.show();
    std::vector<double> times;
    std::vector<double> bare;
    times.reserve(kRounds);
    bare.reserve(kRounds);
    for (int round = 0; round < kRounds; ++round) {
        times.push_back(pageTime(view, last));
        bare.push_back(bareTime(bareWindow, thumbnails));
    }
    return {{"warm page of 35 cells", "the same timers and thumbnails in plain labels",
             median(times), median(bare), "ms", 25, true}};
}

// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"
#include "app/common/FormId.h"
#include "bench/jobs.h"
#include "bench/photos.h"
#include "files/FormFile.h"
#include "items/FPVItemFolder.h"
#include "items/FPVItemList.h"
#include "platform/QPEApplication.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "views/FPVThumbnailItem.h"

#include <QDir>
#include <QFile>

#include <cstdlib>
#include <functional>

namespace {

constexpr int kFew = 10;
constexpr int kMany = 10000;
constexpr int kRounds = 9;

/// Counts the paintings of cells.
class CellPaints : public QObject
{
public:
    CellPaints() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_seen = m_seen
            || (event->type() == QEvent::Paint
                && qobject_cast<FPVThumbnailItem *>(watched) != nullptr);
        return false;
    }

    void waitForOne()
    {
        m_seen = false;
        while (!m_seen) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

private:
    bool m_seen = false;
};

double listingTime(const QString &path)
{
    FPVItemList items; // its end is not part of an opening
    return lumi::bench::milliseconds([&path, &items] {
        if (items.load(path, path) != lumi::ListResult::Listed) {
            std::abort();
        }
    });
}

/// The median, in milliseconds. `before` runs untimed ahead of each listing.
double usualListingTime(const QString &path, const std::function<void()> &before)
{
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        before();
        times.push_back(listingTime(path));
    }
    return lumi::bench::median(times);
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::openingRows(const QString &folder)
{
    const QString home = folder + QStringLiteral("/opening");
    const QString store = home + QStringLiteral("/Documents/Photo_Files");
    const QString few = store + QStringLiteral("/few");
    const QString many = store + QStringLiteral("/many");
    if (!makeFolder(few, kFew) || !makeFolder(many, kMany)) {
        return {};
    }
    const QByteArray oldHome = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(home));
    SwapSystem swap(QFile::encodeName(home + QStringLiteral("/.photo_swp")),
                    QStringLiteral(".swp"));
    swapSystem(&swap);
    std::vector<Row> rows;
    {
        MainWindow window;
        window.resize(640, 480);
        window.show();
        window.changeForm(lumi::FileForm, QString());
        CellPaints paints;
        paints.waitForOne();
        auto *form = window.findChild<FormFile *>();
        const auto open = [form, &paints](const QString &path) {
            FPVItemFolder item(path, QString(), false);
            form->filelist_decided(&item);
            paints.waitForOne();
        };
        const auto leave = [&open, &store] {
            open(store);
        };
        Row row = compare(
            {"open a folder of 10,000, listing left out", "the same of a folder of 10", 1.25,
             kRounds},
            [&open, &many] {
                open(many);
            },
            [&open, &few] {
                open(few);
            },
            leave);
        row.ours -= usualListingTime(many, leave);
        row.bare -= usualListingTime(few, leave);
        rows.push_back(row);
    }
    qputenv("HOME", oldHome);
    QDir(home).removeRecursively();
    return rows;
}

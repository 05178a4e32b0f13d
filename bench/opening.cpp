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
    std::vector<double> times[2];
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
        for (int round = 0; round <= kRounds; ++round) {
            for (const bool isMany : {false, true}) {
                const QString path = isMany ? many : few;
                open(store);
                const double time = milliseconds([&open, &path] {
                    open(path);
                });
                if (round > 0) {
                    times[isMany ? 1 : 0].push_back(time - listingTime(path));
                }
            }
        }
    }
    qputenv("HOME", oldHome);
    QDir(home).removeRecursively();
    return {{"open a folder of 10,000, listing left out", "the same of a folder of 10",
             median(times[1]), median(times[0]), "ms", 1.25, false}};
}

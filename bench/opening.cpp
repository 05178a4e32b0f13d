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
#include <memory>

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

void mustList(FPVItemList *items, const QString &path)
{
    if (items->load(path, path) != lumi::ListResult::Listed) {
        std::abort();
    }
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
        std::unique_ptr<FPVItemList> listed; // its end is not part of an opening
        rows.push_back(compare(
            {"open a folder of 10,000", "listing it and opening a folder of 10", 1.15, kRounds},
            [&open, &many] {
                open(many);
            },
            [&open, &few, &many, &listed] {
                open(few);
                listed = std::make_unique<FPVItemList>();
                mustList(listed.get(), many);
            },
            [&open, &store, &listed] {
                listed.reset();
                open(store);
            }));
    }
    qputenv("HOME", oldHome);
    QDir(home).removeRecursively();
    return rows;
}

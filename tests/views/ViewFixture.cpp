// SPDX-License-Identifier: MIT
#include "tests/views/ViewFixture.h"

#include "files/engine/FPVFileTree.h"
#include "platform/toolkit/BackgroundWidget.h"
#include "tests/support/nameList.h"
#include "views/FPVThumbnailLabel.h"

#include <QFile>
#include <QTest>

namespace {

constexpr int kPageTimeout = 5000;

PagingScrollBar *bar(const FPVThumbnailView &view, Qt::Orientation orientation)
{
    const auto bars = view.findChildren<PagingScrollBar *>(QString(), Qt::FindDirectChildrenOnly);
    for (PagingScrollBar *candidate : bars) {
        if (candidate->orientation() == orientation) {
            return candidate;
        }
    }
    return nullptr;
}

FPVThumbnailMetrics mode(char kind, int columns, int rows)
{
    FPVThumbnailMetrics metrics(kind, columns, rows);
    metrics.showName = kind == 'l';
    metrics.showCheck = kind != 'd';
    return metrics;
}

} // namespace

lumi::test::ViewFixture::ViewFixture()
    : view(nullptr, &items)
    , vBar(bar(view, Qt::Vertical))
    , hBar(bar(view, Qt::Horizontal))
{
    FPVFileTree::resetState();
    QObject::connect(&view, &FPVThumbnailView::selected, &view, [this](FPVItemObject *item) {
        news.append(QStringLiteral("selected ") + item->baseName());
    });
    QObject::connect(&view, &FPVThumbnailView::decided, &view, [this](FPVItemObject *item) {
        news.append(item == nullptr ? QStringLiteral("up")
                                    : QString(QStringLiteral("decided ") + item->baseName()));
    });
    view.resize(548, 330);
    view.show();
    view.activateWindow();
    view.setFocus();
    if (!QTest::qWaitForWindowActive(&view)) {
        qFatal("the view can't have the focus");
    }
}

void lumi::test::ViewFixture::showLarge()
{
    view.setVerticalMode(false);
    view.setMetrics(mode('l', 3, 2), true);
}

void lumi::test::ViewFixture::showSmall()
{
    view.setVerticalMode(false);
    view.setMetrics(mode('s', 7, 5), true);
}

void lumi::test::ViewFixture::showInfo()
{
    view.setHorizontalMode(false);
    view.setMetrics(mode('d', 7, 1), true);
}

void lumi::test::ViewFixture::fill(int count)
{
    const QString file = world.makeFile(QStringLiteral("one.jpg"), "no photo");
    for (int i = 0; i < count; ++i) {
        items.append(new NotingImage(file));
    }
    showLarge();
}

void lumi::test::ViewFixture::list(const QString &folder)
{
    items.load(folder.isEmpty() ? world.store : world.path(folder), world.store);
    showLarge();
}

QStringList lumi::test::ViewFixture::names() const
{
    QStringList result;
    for (const FPVItemObject *item : items) {
        result.append(item->fileName());
    }
    return result;
}

void lumi::test::ViewFixture::check(const char *fileNames)
{
    const QStringList wanted = lumi::test::list(fileNames);
    for (FPVItemObject *item : items) {
        item->setChecked(wanted.contains(item->fileName()));
    }
}

bool lumi::test::ViewFixture::exists(const char *name) const
{
    return QFile::exists(world.path(QString::fromUtf8(name)));
}

bool lumi::test::ViewFixture::waitForPage()
{
    return QTest::qWaitFor(
        [this] {
            return !cells().isEmpty();
        },
        kPageTimeout);
}

bool lumi::test::ViewFixture::waitForThumbnails()
{
    const auto haveAll = [this] {
        const QList<FPVThumbnailItem *> page = cells();
        return !page.isEmpty()
            && std::all_of(page.begin(), page.end(), [](const FPVThumbnailItem *cell) {
                   const auto labels = cell->findChildren<FPVThumbnailLabel *>();
                   const bool isPicture = cell->item() != nullptr && cell->item()->isPicture();
                   return !isPicture || !labels.first()->pixmap().isNull();
               });
    };
    return QTest::qWaitFor(haveAll, kPageTimeout);
}

QList<FPVThumbnailItem *> lumi::test::ViewFixture::cells() const
{
    QList<FPVThumbnailItem *> found = view.findChildren<FPVThumbnailItem *>();
    std::sort(found.begin(), found.end(), [](const auto *one, const auto *other) {
        return one->index() < other->index();
    });
    return found;
}

QList<int> lumi::test::ViewFixture::indexes() const
{
    QList<int> result;
    const QList<FPVThumbnailItem *> page = cells();
    for (const FPVThumbnailItem *cell : page) {
        result.append(cell->index());
    }
    return result;
}

FPVThumbnailItem *lumi::test::ViewFixture::cellOf(int index) const
{
    const QList<FPVThumbnailItem *> page = cells();
    for (FPVThumbnailItem *cell : page) {
        if (cell->index() == index) {
            return cell;
        }
    }
    return nullptr;
}

int lumi::test::ViewFixture::shownCursor() const
{
    const QList<FPVThumbnailItem *> page = cells();
    for (FPVThumbnailItem *cell : page) {
        const QColor colour = cell->grab().toImage().pixelColor(0, 0);
        for (const char *frame :
             {"frame_pic_l_on", "frame_folder_l_on", "frame_folder_pl_on", "frame_pic_s_on"}) {
            if (colour == BrowserWorld::frameColour(QLatin1String(frame))) {
                return cell->index();
            }
        }
    }
    return -1;
}

lumi::test::NotingImage *lumi::test::ViewFixture::noting(int index)
{
    return qobject_cast<NotingImage *>(items.at(index));
}

QWidget *lumi::test::ViewFixture::container() const
{
    return view.viewport()->findChild<BackgroundWidget *>();
}

void lumi::test::ViewFixture::key(int key)
{
    QTest::keyClick(&view, static_cast<Qt::Key>(key));
}

void lumi::test::ViewFixture::tap(int index)
{
    QTest::mouseClick(cellOf(index), Qt::LeftButton, {}, QPoint(1, 1));
}

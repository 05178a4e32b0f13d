// SPDX-License-Identifier: MIT
#include "tests/views/CellFixture.h"

#include <QTest>

lumi::test::CellFixture::CellFixture()
    : metrics('l', 3, 2)
{
    page.resize(400, 300);
    page.setFocusPolicy(Qt::StrongFocus);
    metrics.showName = true;
    metrics.showCheck = true;
    metrics.layOut(QSize(14, 0));
}

FPVThumbnailItem *lumi::test::CellFixture::makeCell(FPVItemObject *item)
{
    auto *cell = new FPVThumbnailItem(&page, item, &metrics, 0);
    cell->resize(metrics.pitch);
    return cell;
}

FPVThumbnailItem *lumi::test::CellFixture::makeFullCell(FPVItemObject *item)
{
    FPVThumbnailItem *cell = makeCell(item);
    cell->showPlaceholder(metrics.imageSize);
    cell->setCheckVisible(metrics.showCheck, false);
    cell->setNameVisible(metrics.showName, false);
    cell->setDetailVisible(metrics.showDetail, true);
    cell->setNext(nullptr, metrics.imageSize, metrics.showCheck);
    cell->show();
    page.show();
    return cell;
}

bool lumi::test::CellFixture::focusPage(FPVThumbnailItem *cell)
{
    cell->setFocusProxy(&page);
    page.activateWindow();
    page.setFocus();
    return QTest::qWaitForWindowActive(&page);
}

QList<FPVThumbnailLabel *> lumi::test::labels(const FPVThumbnailItem *cell)
{
    return cell->findChildren<FPVThumbnailLabel *>();
}

FPVThumbnailLabel *lumi::test::nameLabel(const FPVThumbnailItem *cell)
{
    for (FPVThumbnailLabel *label : labels(cell)) {
        if (!label->text().isEmpty()) {
            return label;
        }
    }
    return nullptr;
}

FPVThumbnailLabel *lumi::test::pictureLabel(const FPVThumbnailItem *cell)
{
    for (FPVThumbnailLabel *label : labels(cell)) {
        if (label->text().isEmpty()) {
            return label;
        }
    }
    return nullptr;
}

MyImageCheckBox *lumi::test::checkBox(const FPVThumbnailItem *cell)
{
    return cell->findChild<MyImageCheckBox *>();
}

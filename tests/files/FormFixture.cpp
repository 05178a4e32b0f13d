// SPDX-License-Identifier: MIT
#include "tests/files/FormFixture.h"

#include "items/FPVItemList.h"
#include "platform/QCopChannel.h"
#include "platform/QPEMenuBar.h"

#include <QTest>

namespace {

constexpr int kPageTimeout = 5000;

} // namespace

lumi::test::FormFixture::FormFixture()
    : toolBar(&window)
{
    window.resize(640, 480);
    FPVItemList::resetRootMissing();
}

lumi::test::FormFixture::~FormFixture()
{
    form.reset();
}

void lumi::test::FormFixture::start()
{
    form = std::make_unique<FormFile>(&window, &toolBar);
    window.setCentralWidget(form.get());
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        qFatal("the window can't have the focus");
    }
    view = form->findChild<FPVThumbnailView *>();
    combo = form->findChild<QComboBox *>();
    up = form->findChild<QToolButton *>();
    const auto labels = form->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->alignment() == (Qt::AlignRight | Qt::AlignVCenter)) {
            status = label;
        }
    }
    form->formStarted();
}

bool lumi::test::FormFixture::waitForCells(int count)
{
    return QTest::qWaitFor(
        [this, count] {
            return names().size() == count;
        },
        kPageTimeout);
}

QStringList lumi::test::FormFixture::names() const
{
    auto cells = view->findChildren<FPVThumbnailItem *>();
    std::sort(cells.begin(), cells.end(), [](const auto *one, const auto *other) {
        return one->index() < other->index();
    });
    QStringList result;
    for (const FPVThumbnailItem *cell : cells) {
        result.append(cell->item() != nullptr ? cell->item()->fileName() : QString());
    }
    return result;
}

FPVThumbnailItem *lumi::test::FormFixture::cell(const QString &fileName) const
{
    const auto cells = view->findChildren<FPVThumbnailItem *>();
    for (FPVThumbnailItem *cell : cells) {
        if (cell->item() != nullptr && cell->item()->fileName() == fileName) {
            return cell;
        }
    }
    return nullptr;
}

void lumi::test::FormFixture::tap(const QString &fileName)
{
    QTest::mouseClick(cell(fileName), Qt::LeftButton, {}, QPoint(1, 1));
}

void lumi::test::FormFixture::choose(const QString &medium)
{
    combo->setCurrentIndex(combo->findText(medium));
    Q_EMIT combo->textActivated(medium);
}

QStringList lumi::test::FormFixture::media() const
{
    QStringList result;
    for (int i = 0; i < combo->count(); ++i) {
        result.append(combo->itemText(i));
    }
    return result;
}

void lumi::test::FormFixture::tellCardChange()
{
    QCopChannel::send("QPE/Card", "mtabChanged()");
    QCoreApplication::processEvents();
}

QList<QPopupMenu *> lumi::test::FormFixture::menus() const
{
    QList<QPopupMenu *> result;
    const auto actions = toolBar.findChild<QPEMenuBar *>()->actions();
    for (QAction *action : actions) {
        result.append(qobject_cast<QPopupMenu *>(action->menu()));
    }
    return result;
}

QAction *lumi::test::FormFixture::entry(int id) const
{
    const auto all = menus();
    for (QPopupMenu *menu : all) {
        if (QAction *action = menu->findItem(id)) {
            return action;
        }
    }
    return nullptr;
}

void lumi::test::FormFixture::grayOut()
{
    Q_EMIT menus().first()->aboutToShow();
}

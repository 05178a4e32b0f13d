// SPDX-License-Identifier: MIT
#include "tests/journeys/Traveller.h"

#include "app/FormTop.h"
#include "files/FormFile.h"
#include "items/FPVItemList.h"
#include "platform/windows/QPEMenuBar.h"
#include "swap/swapStore.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailLabel.h"
#include "views/FPVThumbnailView.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyImageCheckBox.h"
#include "widgets/MyLeftWidget.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QToolButton>
#include <QWindow>

namespace {

constexpr int kPatienceMs = 10000;
constexpr QSize kPanel(640, 480);

void mustWork(bool ok, const char *what)
{
    if (!ok) {
        qFatal("%s", what);
    }
}

QAction *actionOf(const QWidget *menu, const QString &text)
{
    const auto actions = menu->actions();
    const auto found = std::find_if(actions.begin(), actions.end(), [&text](const QAction *action) {
        return action->text() == text;
    });
    mustWork(found != actions.end(), qPrintable(text));
    return *found;
}

} // namespace

lumi::test::Traveller::Traveller()
{
    FPVItemList::resetRootMissing();
}

lumi::test::Traveller::~Traveller()
{
    endProgram();
}

void lumi::test::Traveller::startProgram()
{
    const QString folder = world.store + QStringLiteral("/.photo_swp");
    swap = std::make_unique<SwapSystem>(folder.toUtf8(), QStringLiteral(".swp"));
    swapSystem(swap.get());
    window = std::make_unique<MainWindow>();
    window->resize(kPanel);
    window->show();
    window->activateWindow();
    mustWork(QTest::qWaitForWindowActive(window.get()), "no window");
}

void lumi::test::Traveller::endProgram()
{
    window.reset();
    swap.reset();
}

void lumi::test::Traveller::openBrowser()
{
    const auto isTop = [this] {
        return qobject_cast<FormTop *>(window->currentForm()) != nullptr
            && window->currentForm()->isVisible();
    };
    mustWork(QTest::qWaitFor(isTop, kPatienceMs), "no top menu");
    QTest::qWait(20);
    // The right one of the two big buttons.
    tap(window->currentForm(), QPoint(72 + 290 + 100, 85 + 100));
    const auto isBrowser = [this] {
        return browser() != nullptr && browser()->isVisible();
    };
    mustWork(QTest::qWaitFor(isBrowser, kPatienceMs), "no browser");
    QTest::qWait(20);
}

void lumi::test::Traveller::tap(QWidget *widget, QPoint at)
{
    QWidget *top = widget->window();
    QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {}, widget->mapTo(top, at));
}

void lumi::test::Traveller::tapMiddle(QWidget *widget)
{
    tap(widget, widget->rect().center());
}

void lumi::test::Traveller::tapItem(const QString &fileName)
{
    QWidget *target = cell(fileName);
    mustWork(target != nullptr, qPrintable(fileName));
    tap(target, QPoint(target->width() / 2, target->height() / 3));
}

void lumi::test::Traveller::tapColumn(int button)
{
    tapMiddle(browser()->findChild<MyLeftWidget *>()->button(button));
}

void lumi::test::Traveller::chooseEntry(const QString &menu, const QString &entry)
{
    auto *bar = window->findChild<QPEMenuBar *>();
    QAction *title = actionOf(bar, menu);
    tap(bar, bar->actionGeometry(title).center());
    QMenu *popup = title->menu();
    mustWork(QTest::qWaitFor(
                 [popup] {
                     return popup->isVisible();
                 },
                 kPatienceMs),
             "no menu");
    QAction *action = actionOf(popup, entry);
    mustWork(action->isEnabled(), qPrintable(entry));
    tap(popup, popup->actionGeometry(action).center());
}

void lumi::test::Traveller::tapCheckBox(const QString &fileName)
{
    auto *box = cell(fileName)->findChild<MyImageCheckBox *>();
    mustWork(QTest::qWaitFor(
                 [box] {
                     return box->isVisible();
                 },
                 kPatienceMs),
             "no check box");
    tapMiddle(box);
}

void lumi::test::Traveller::choose(const QString &medium)
{
    tapMiddle(combo());
    QAbstractItemView *list = combo()->view();
    mustWork(QTest::qWaitFor(
                 [list] {
                     return list->isVisible();
                 },
                 kPatienceMs),
             "no list");
    const QModelIndex row = combo()->model()->index(combo()->findText(medium), 0);
    mustWork(row.isValid(), qPrintable(medium));
    // An immediate tap would count as the release of the press that opened the list.
    QTest::qWait(QApplication::doubleClickInterval());
    tap(list->viewport(), list->visualRect(row).center());
    mustWork(QTest::qWaitFor(
                 [list] {
                     return !list->isVisible();
                 },
                 kPatienceMs),
             "list stays");
}

FormFile *lumi::test::Traveller::browser() const
{
    return qobject_cast<FormFile *>(window->currentForm());
}

FPVThumbnailView *lumi::test::Traveller::view() const
{
    return browser()->findChild<FPVThumbnailView *>();
}

QComboBox *lumi::test::Traveller::combo() const
{
    return browser()->findChild<QComboBox *>();
}

QToolButton *lumi::test::Traveller::upButton() const
{
    return browser()->findChild<QToolButton *>();
}

QString lumi::test::Traveller::status() const
{
    const auto labels = browser()->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->alignment() == (Qt::AlignRight | Qt::AlignVCenter)) {
            return label->text();
        }
    }
    return {};
}

FPVThumbnailItem *lumi::test::Traveller::cell(const QString &fileName) const
{
    const auto cells = view()->findChildren<FPVThumbnailItem *>();
    for (FPVThumbnailItem *candidate : cells) {
        if (candidate->item() != nullptr && candidate->item()->fileName() == fileName) {
            return candidate;
        }
    }
    return nullptr;
}

QStringList lumi::test::Traveller::page() const
{
    auto cells = view()->findChildren<FPVThumbnailItem *>();
    std::sort(cells.begin(), cells.end(), [](const auto *one, const auto *other) {
        return one->index() < other->index();
    });
    QStringList names;
    for (const FPVThumbnailItem *cell : cells) {
        names.append(cell->item() != nullptr ? cell->item()->fileName() : QString());
    }
    return names;
}

QColor lumi::test::Traveller::thumbnailColour(const QString &fileName) const
{
    const FPVThumbnailItem *shown = cell(fileName);
    const auto labels = shown == nullptr ? QList<FPVThumbnailLabel *>()
                                         : shown->findChildren<FPVThumbnailLabel *>();
    if (labels.isEmpty() || labels.first()->pixmap().isNull()) {
        return {};
    }
    const QImage image = labels.first()->pixmap().toImage();
    return image.pixelColor(image.rect().center());
}

bool lumi::test::Traveller::seesPage(const QStringList &names) const
{
    return QTest::qWaitFor(
        [this, &names] {
            return page() == names;
        },
        kPatienceMs);
}

bool lumi::test::Traveller::seesThumbnails() const
{
    const auto haveAll = [this] {
        const QStringList names = page();
        return !names.isEmpty()
            && std::all_of(names.begin(), names.end(), [this](const QString &name) {
                   const bool isPicture = cell(name)->item()->isPicture();
                   return !isPicture || thumbnailColour(name).isValid();
               });
    };
    return QTest::qWaitFor(haveAll, kPatienceMs);
}

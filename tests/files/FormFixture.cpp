// SPDX-License-Identifier: MIT
#include "tests/files/FormFixture.h"

#include "files/engine/FPVFileTree.h"
#include "items/FPVItemList.h"
#include "platform/cards/CardSlots.h"
#include "platform/session/QCopChannel.h"
#include "platform/windows/QPEMenuBar.h"
#include "widgets/MyLeftWidget.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>

namespace {

constexpr int kPageTimeout = 5000;

} // namespace

lumi::test::DialogAnswer lumi::test::yes()
{
    return clicking(QMessageBox::Yes);
}

lumi::test::DialogAnswer lumi::test::ok()
{
    return clicking(QMessageBox::Ok);
}

lumi::test::DialogAnswer lumi::test::cancel()
{
    return pressing(Qt::Key_Escape);
}

lumi::test::FormFixture::FormFixture()
    : toolBar(&window)
{
    window.resize(640, 480);
    FPVFileTree::resetState();
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

void lumi::test::FormFixture::startMarked(const char *current)
{
    start();
    const int count = static_cast<int>(qMin(store().size(), qsizetype(6)));
    QVERIFY(waitForCells(count));
    if (current != nullptr) {
        select(current);
    }
    view->checkAll();
    QVERIFY(waitForCells(count));
}

void lumi::test::FormFixture::select(const char *name) const
{
    QTest::mousePress(cell(QString::fromUtf8(name)), Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(view->currentObject()->fileName(), QString::fromUtf8(name));
}

QStringList lumi::test::FormFixture::play(int entry, const QList<DialogAnswer> &answers,
                                          const std::function<void()> &atWait)
{
    DialogDriver driver;
    driver.answerInOrder(answers);
    if (atWait) {
        driver.expect(QStringLiteral("MyDialogWait"), [atWait](QDialog *) {
            atWait();
        });
    }
    bool wasIdle = false;
    driver.atShow = [this, &wasIdle] {
        wasIdle = wasIdle || !form->isBusy();
    };
    grayOut();
    QAction *action = this->entry(entry);
    action->setEnabled(true);
    action->trigger();
    QStringList lines = driver.lines();
    if (wasIdle || form->isBusy()) {
        lines.append(QStringLiteral("not busy in time"));
    }
    for (const SeenDialog &dialog : driver.seen) {
        if (dialog.parent != form.get()) {
            lines.append(QStringLiteral("not the form's own: ") + dialog.line);
        }
    }
    if (QApplication::activeModalWidget() != nullptr) {
        lines.append(QStringLiteral("a dialog stays"));
    }
    return lines;
}

QStringList lumi::test::FormFixture::store() const
{
    return QDir(world.store)
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

QStringList lumi::test::FormFixture::storeTree() const
{
    QStringList found;
    QDirIterator walk(world.store, QDir::AllEntries | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        found.append(walk.next().mid(world.store.size() + 1));
    }
    found.sort();
    return found;
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
    lumi::CardSlots::look(); // as MountWatcher does before it sends the message
    QCopChannel::send("QPE/Card", "mtabChanged()");
    QCoreApplication::processEvents();
}

MyImageButton *lumi::test::FormFixture::columnButton(int index) const
{
    return form->findChild<MyLeftWidget *>()->button(index);
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

// SPDX-License-Identifier: MIT
// The keys of the browser form act wherever the focus is, unless a text is being edited or a
// list is open.
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/TestMain.h"
#include "widgets/MyImageButton.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>

using namespace lumi::test;

namespace {

const QString kSd = QStringLiteral("SD Card");

} // namespace

class TestFormFileKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_form.reset(); }

    void aPasteGoesIntoTheChosenMedium();
    void theyActWhereverTheFocusIs_data();
    void theyActWhereverTheFocusIs();
    void everyKeyActsOnce();
    void aListOfPlacesKeepsItsOwnKeys();
    void anOpenListKeepsAllKeys();
    void anEditedTextKeepsAllKeys();
    void aQuestionKeepsAllKeys();
    void tabLeadsToTheFirstCell_data();
    void tabLeadsToTheFirstCell();
    void tabReachesEverything();

private:
    /// Starts in this mode with the cursor on the first photo.
    void start(void (FormFile::*mode)() = &FormFile::menu_disp_ThumbnailLarge);
    /// Sends a key to the focus widget and closes all dialogs. Returns their lines.
    QStringList press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const;
    /// All visible widgets that accept the focus.
    [[nodiscard]] QWidgetList focusWidgets() const;
    /// Whether each of the keys acts exactly once.
    [[nodiscard]] bool allAct();

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileKeys::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->world.makePhotos(2);
    m_form->world.machine->insertCard(Slot::SD);
    m_form->world.makePhoto(m_form->world.machine->sd + QStringLiteral("/dcim/s.jpg"));
}

void TestFormFileKeys::start(void (FormFile::*mode)())
{
    m_form->start();
    (m_form->form.get()->*mode)();
    QVERIFY(m_form->waitForCells(2));
    m_form->select("a00.jpg");
}

QStringList TestFormFileKeys::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    DialogDriver driver;
    driver.answerInOrder({});
    QTest::keyClick(m_form->window.windowHandle(), key, modifiers);
    return driver.lines();
}

QWidgetList TestFormFileKeys::focusWidgets() const
{
    QWidgetList result;
    const auto all = m_form->form->findChildren<QWidget *>();
    for (QWidget *widget : all) {
        const bool canHaveFocus
            = widget->focusPolicy() != Qt::NoFocus && widget->focusProxy() == nullptr;
        if (canHaveFocus && widget->isVisible() && widget->isEnabled()) {
            result.append(widget);
        }
    }
    return result;
}

bool TestFormFileKeys::allAct()
{
    FPVClipboard &clipboard = m_form->view->clipboard();
    const qsizetype before = m_form->store().size();
    clipboard.take({}, false);
    // The panel may show the same wait dialog at any of these keys, when it reads a photo.
    const auto withoutWaits = [](QStringList lines) {
        lines.removeAll(kWorking);
        return lines;
    };
    const bool isCopied = withoutWaits(press(Qt::Key_C)).isEmpty() && clipboard.paths().size() == 1;
    const bool isCut = withoutWaits(press(Qt::Key_X)).isEmpty() && clipboard.isCut();
    clipboard.take(clipboard.paths(), false);
    const QStringList pasting = press(Qt::Key_V);
    const bool isPasted = pasting.contains(kWorking) && withoutWaits(pasting).isEmpty();
    const bool isAsked = withoutWaits(press(Qt::Key_Delete, Qt::NoModifier)).size() == 1;
    return isCopied && isCut && isPasted && isAsked && m_form->store().size() == before + 1;
}

void TestFormFileKeys::aPasteGoesIntoTheChosenMedium()
{
    m_form->startMarked();
    m_form->form->menu_edit_CopyCheckItem();
    m_form->combo->setFocus();
    QTest::keyClick(m_form->window.windowHandle(), Qt::Key_Down); // chooses the card
    QCOMPARE(m_form->combo->currentText(), kSd);
    QTRY_COMPARE(m_form->names(), list("s.jpg"));
    QVERIFY(m_form->combo->hasFocus());
    QCOMPARE(press(Qt::Key_V), QStringList{kWorking});
    QTRY_COMPARE(m_form->names(), list("s.jpg a00.jpg a01.jpg"));
}

void TestFormFileKeys::theyActWhereverTheFocusIs_data()
{
    QTest::addColumn<bool>("isInfo");
    QTest::addColumn<int>("places"); // at least
    QTest::newRow("large thumbnails") << false << 7;
    QTest::newRow("the info panel") << true << 9;
}

void TestFormFileKeys::theyActWhereverTheFocusIs()
{
    QFETCH(bool, isInfo);
    QFETCH(int, places);
    start(isInfo ? &FormFile::menu_disp_DispDetail : &FormFile::menu_disp_ThumbnailLarge);
    const QWidgetList widgets = focusWidgets();
    for (QWidget *widget : widgets) {
        m_form->window.activateWindow(); // allAct() has closed a box
        QVERIFY(QTest::qWaitForWindowActive(&m_form->window));
        widget->setFocus();
        QCOMPARE(QApplication::focusWidget(), widget);
        QVERIFY2(allAct(), widget->metaObject()->className());
    }
    QVERIFY2(widgets.size() >= places, qPrintable(QString::number(widgets.size())));
}

/// The form receives a key once, then the window does.
void TestFormFileKeys::everyKeyActsOnce()
{
    struct Listener : QObject
    {
        QList<QObject *> heard;

        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::KeyPress
                && static_cast<QKeyEvent *>(event)->key() == Qt::Key_C) {
                heard.append(watched);
            }
            return false;
        }
    } listener;

    start();
    m_form->combo->setFocus();
    m_form->form->installEventFilter(&listener);
    m_form->window.installEventFilter(&listener);
    press(Qt::Key_C);
    QCOMPARE(listener.heard, (QList<QObject *>{m_form->form.get(), &m_form->window}));
}

/// A letter chooses the medium whose name begins with it.
void TestFormFileKeys::aListOfPlacesKeepsItsOwnKeys()
{
    start();
    m_form->combo->setFocus();
    QTest::keyClick(m_form->window.windowHandle(), Qt::Key_S);
    QCOMPARE(m_form->combo->currentText(), kSd);
}

void TestFormFileKeys::anOpenListKeepsAllKeys()
{
    start();
    m_form->form->menu_edit_Copy();
    m_form->combo->setFocus();
    m_form->combo->showPopup();
    QWidget *rows = m_form->combo->view();
    QTRY_VERIFY(rows->isVisible());
    DialogDriver driver;
    driver.answerInOrder({});
    QTest::keyClick(rows, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(rows, Qt::Key_Delete);
    QVERIFY(driver.seen.isEmpty());
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg"));
}

void TestFormFileKeys::anEditedTextKeepsAllKeys()
{
    start();
    m_form->form->menu_edit_Copy();
    QGuiApplication::clipboard()->setText(QStringLiteral("trip"));
    QString text;
    const auto edit = [&text](QDialog *dialog) {
        auto *line = dialog->findChild<QLineEdit *>();
        line->clear();
        QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(line, Qt::Key_Home);
        QTest::keyClick(line, Qt::Key_Delete);
        text = line->text();
        dialog->reject();
    };
    QCOMPARE(m_form->play(kRename, {edit}).size(), 1);
    QCOMPARE(text, QStringLiteral("rip"));
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg"));
}

void TestFormFileKeys::aQuestionKeepsAllKeys()
{
    start();
    m_form->form->menu_edit_Copy();
    const auto paste = [](QDialog *dialog) {
        QTest::keyClick(dialog->focusWidget(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Delete);
        dialog->reject();
    };
    QCOMPARE(m_form->play(kDelete, {paste}).size(), 1);
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg"));
}

void TestFormFileKeys::tabLeadsToTheFirstCell_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("the form gave the focus to the photos") << QStringLiteral("view");
    QTest::newRow("the list of places") << QStringLiteral("combo");
    QTest::newRow("nothing") << QString();
}

void TestFormFileKeys::tabLeadsToTheFirstCell()
{
    QFETCH(QString, place);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    QVERIFY(m_form->view->hasFocus());
    if (place.isEmpty()) {
        m_form->view->clearFocus();
    } else if (place == QLatin1String("combo")) {
        m_form->combo->setFocus();
    }
    QVERIFY(m_form->view->currentObject() == nullptr);
    int steps = 0;
    while (m_form->view->currentObject() == nullptr && steps < 10) {
        ++steps;
        QTest::keyClick(m_form->window.windowHandle(), Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    QVERIFY2(steps <= 3, qPrintable(QString::number(steps)));
    QVERIFY(m_form->view->hasFocus());
    QCOMPARE(m_form->view->currentObject()->fileName(), QStringLiteral("a00.jpg"));
    QCOMPARE(m_form->status->text(), QStringLiteral("a00"));
}

void TestFormFileKeys::tabReachesEverything()
{
    start(&FormFile::menu_disp_DispDetail);
    m_form->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_form->window));
    m_form->view->setFocus();
    QWidgetList reached;
    while (!reached.contains(QApplication::focusWidget())) {
        reached.append(QApplication::focusWidget());
        QTest::keyClick(m_form->window.windowHandle(), Qt::Key_Tab);
    }
    const QWidgetList wanted = focusWidgets();
    QVERIFY(wanted.size() >= 9);
    for (QWidget *widget : wanted) {
        QVERIFY2(reached.contains(widget), widget->metaObject()->className());
    }
    QVERIFY(reached.at(0) == m_form->view);
    QVERIFY(reached.at(1) == m_form->columnButton(0));
}

LUMI_TEST(TestFormFileKeys)
#include "TestFormFileKeys.moc"

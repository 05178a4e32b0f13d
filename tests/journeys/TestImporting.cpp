// SPDX-License-Identifier: MIT
// Importing cards from the top menu and finding their photos in the browser.
#include "app/FormTop.h"
#include "files/FormFile.h"
#include "import/FormImport.h"
#include "platform/session/QCopChannel.h"
#include "tests/import/cardTree.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestMain.h"
#include "views/FPVThumbnailView.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

using lumi::test::DialogDriver;
using lumi::test::importableTree;
using lumi::test::stateOf;
using lumi::test::Traveller;
using lumi::test::Tree;
using lumi::test::treeOf;

namespace {

constexpr int kPatienceMs = 10000;
constexpr QPoint kImportButton(72 + 34 + 100, 85 + 100);
constexpr QPoint kSdButton(72 + 284 + 120, 117 + 56);

} // namespace

class TestImporting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void fromTheCardIntoTheBrowser();
    void theWindowStaysUntilTheCopyHasStopped();

private:
    template <typename Form> [[nodiscard]] bool sees() const
    {
        return QTest::qWaitFor(
            [this] {
                auto *form = qobject_cast<Form *>(m_user->window->currentForm());
                return form != nullptr && form->isVisible();
            },
            kPatienceMs);
    }

    [[nodiscard]] bool goFromTopToImport();

    void tapForm(QPoint at) { m_user->tap(m_user->window->currentForm(), at); }

    void nameIt(const QString &name);

    std::unique_ptr<Traveller> m_user;
    std::unique_ptr<DialogDriver> m_driver;
};

void TestImporting::init()
{
    m_driver.reset();
    m_user.reset(); // a failed test may have left one, and two would disturb each other
    m_user = std::make_unique<Traveller>();
    m_driver = std::make_unique<DialogDriver>();
}

void TestImporting::cleanup()
{
    QCOMPARE(m_driver->unused(), 0);
    m_driver.reset();
    m_user.reset();
}

bool TestImporting::goFromTopToImport()
{
    if (!sees<FormTop>()) {
        return false;
    }
    QTest::qWait(20);
    tapForm(kImportButton);
    const bool isThere = sees<FormImport>();
    QTest::qWait(20);
    return isThere;
}

void TestImporting::nameIt(const QString &name)
{
    m_driver->expect(QStringLiteral("New Folder"), [name](QDialog *dialog) {
        auto *line = dialog->findChild<QLineEdit *>();
        QTest::keyClicks(line, name); // replaces the selected date
        QTest::keyClick(line, Qt::Key_Return);
    });
}

void TestImporting::fromTheCardIntoTheBrowser()
{
    const QString card = m_user->world.machine->sd;
    m_user->world.makePhoto(QStringLiteral("old.jpg"));
    m_user->world.makePhotos(12, card + QStringLiteral("/dcim/100"));
    m_user->world.makePhoto(card + QStringLiteral("/dcim/101/big.jpg"), QSize(800, 600), Qt::red);
    m_user->world.makeFile(card + QStringLiteral("/dcim/101/movie.mov"), QByteArray(50000, 'm'));
    m_user->startProgram();
    QVERIFY(goFromTopToImport());
    // The button of an empty slot can't be pressed.
    tapForm(kSdButton);
    QVERIFY(m_driver->seen.isEmpty());
    m_user->world.machine->insertCard(Slot::SD);
    QCopChannel::send("QPE/Card", "mtabChanged()");
    QCoreApplication::processEvents();
    const Tree before = stateOf(card);
    nameIt(QStringLiteral("Summer"));
    tapForm(kSdButton);
    QCOMPARE(m_driver->captions(),
             (QStringList{QStringLiteral("Search Result"), QStringLiteral("New Folder"),
                          QStringLiteral("Done")}));
    QCOMPARE(treeOf(m_user->world.path(QStringLiteral("Summer"))), importableTree(card));
    QCOMPARE(stateOf(card), before);

    m_user->tapMiddle(
        m_user->window->currentForm()->findChild<MyLeftWidget *>()->button(MyLeftWidget::Top));
    QVERIFY(sees<FormTop>());
    m_user->openBrowser();
    QVERIFY(m_user->seesPage({QStringLiteral("Summer"), QStringLiteral("old.jpg")}));
    m_user->tapItem(QStringLiteral("Summer"));
    QVERIFY(m_user->seesPage({QStringLiteral("dcim")}));
    m_user->tapItem(QStringLiteral("dcim"));
    QVERIFY(m_user->seesPage({QStringLiteral("100"), QStringLiteral("101")}));
    m_user->tapItem(QStringLiteral("101"));
    QVERIFY(m_user->seesPage({QStringLiteral("big.jpg")}));
    QVERIFY(m_user->seesThumbnails());
    const QColor colour = m_user->thumbnailColour(QStringLiteral("big.jpg"));
    QVERIFY(colour.red() > 240 && colour.green() < 16);
}

void TestImporting::theWindowStaysUntilTheCopyHasStopped()
{
    const QString card = m_user->world.machine->sd;
    m_user->world.machine->insertCard(Slot::SD);
    for (const char *name : {"/a.mov", "/b.mov", "/c.mov"}) {
        m_user->world.makeFile(card + QLatin1String(name), QByteArray(100000, 'm'));
    }
    m_user->startProgram();
    QVERIFY(goFromTopToImport());
    nameIt(QStringLiteral("Day"));
    m_driver->press(QStringLiteral("Done"), QStringLiteral("Exit"));
    const QPointer<FormBase> form(m_user->window->currentForm());
    bool done = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [this, &done, form] {
        if (done || lumi::test::openFile(QStringLiteral("/b.mov")) < 0) {
            return;
        }
        done = true;
        m_user->window->close();
        QVERIFY(m_user->window->isVisible());
        QVERIFY(DialogDriver::pressButton(
            qobject_cast<QDialog *>(QApplication::activeModalWidget()), QStringLiteral("Cancel")));
        // The dialog is closed, but the copy still runs: Top and closing the window must wait.
        m_user->tapMiddle(form->findChild<MyLeftWidget *>()->button(MyLeftWidget::Top));
        tapForm(kSdButton);
        m_user->window->close();
        QVERIFY(m_user->window->isVisible());
        QVERIFY(!form->canClose());
    });
    timer.start(0);
    tapForm(kSdButton);
    timer.stop();
    QVERIFY(done);
    QCOMPARE(m_driver->captions(),
             (QStringList{QStringLiteral("Search Result"), QStringLiteral("New Folder"),
                          QStringLiteral("Stop"), QStringLiteral("Done")}));
    QCOMPARE(treeOf(m_user->world.path(QStringLiteral("Day"))).keys(),
             QStringList{QStringLiteral("a.mov")});
    // The request for the top menu is served now.
    QVERIFY(sees<FormTop>());
    QVERIFY(form.isNull());
}

LUMI_TEST(TestImporting)
#include "TestImporting.moc"

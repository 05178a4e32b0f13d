// SPDX-License-Identifier: MIT
// The mail key in the browser: its dialogs, its files, and what stays unchanged.
#include "files/mailCopy.h"
#include "platform/keys/deviceKey.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/oneDay.h"
#include "tests/support/rows.h"

#include <QDate>
#include <QDir>
#include <QMessageBox>
#include <QTest>
#include <QTime>

#include <memory>

using lumi::test::DialogDriver;
using lumi::test::FormFixture;

namespace {

const QString kFailed = QStringLiteral("Mail attachment failed");

QString todaysName(int number)
{
    return lumi::mailFileName(QDate::currentDate(), number);
}

} // namespace

class TestFormFileMail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theKeyMakesTheCopy_data();
    void theKeyMakesTheCopy();
    void theCopyIsMadeAndNamed();
    void aPhotoThatGoesDuringTheWaitIsAFailure();
    void theViewStaysAsItWas();
    void aCardsPhotoGoesToTheStoreToo();
    void nothingHappens_data();
    void nothingHappens();
    void failuresHaveOneMessage_data();
    void failuresHaveOneMessage();
    void theKeyIsIgnoredWhileACopyIsMade();

private:
    void chooseItem(const QString &name);
    QStringList mailFiles() const;

    std::unique_ptr<FormFixture> m_form;
    std::unique_ptr<DialogDriver> m_driver;
};

void TestFormFileMail::init()
{
    lumi::test::waitForOneDay();
    m_form = std::make_unique<FormFixture>();
    m_form->world.makePhoto(QStringLiteral("big.jpg"), QSize(1280, 960));
    m_form->world.makePhoto(QStringLiteral("dir/in.jpg"));
    m_form->world.makePhoto(QStringLiteral("small.jpg"));
    m_driver = std::make_unique<DialogDriver>();
}

void TestFormFileMail::cleanup()
{
    m_driver.reset();
    m_form.reset();
}

void TestFormFileMail::chooseItem(const QString &name)
{
    m_form->start();
    QVERIFY(m_form->waitForCells(3));
    m_form->view->setCurrentObjectQuiet(m_form->cell(name)->item());
    QCOMPARE(m_form->view->currentObject()->fileName(), name);
}

QStringList TestFormFileMail::mailFiles() const
{
    return QDir(lumi::mailFolderPath()).entryList(QDir::Files | QDir::Hidden);
}

void TestFormFileMail::theKeyMakesTheCopy_data()
{
    lumi::test::columns<int, Qt::KeyboardModifiers>();
    const Qt::KeyboardModifiers none;
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    QTest::newRow("the handheld's") << kKeyMail << none;
    QTest::newRow("a desktop keyboard's") << static_cast<int>(Qt::Key_LaunchMail) << none;
    QTest::newRow("Ctrl and M") << static_cast<int>(Qt::Key_M) << control;
}

/// Sent as by the window system, through the key translation.
void TestFormFileMail::theKeyMakesTheCopy()
{
    const auto [key, modifiers] = lumi::test::row<int, Qt::KeyboardModifiers>();
    m_form->start();
    QVERIFY(m_form->waitForCells(3));
    m_form->select("big.jpg");
    QWindow *window = m_form->window.windowHandle();
    qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers);
    qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers);
    QCoreApplication::processEvents();
    QCOMPARE(mailFiles(), QStringList{todaysName(1)});
    QCOMPARE(m_driver->captions(), QStringList{QStringLiteral("Attach to mail")});
    QVERIFY(m_driver->texts().constFirst().contains(todaysName(1)));
    QVERIFY(!m_form->form->isBusy());
}

void TestFormFileMail::theCopyIsMadeAndNamed()
{
    chooseItem(QStringLiteral("big.jpg"));
    m_form->form->accel_appendToMail();
    QCOMPARE(mailFiles(), QStringList{todaysName(1)});
    QCOMPARE(QImage(m_form->world.path(QStringLiteral("mail/") + todaysName(1))).size(),
             QSize(640, 480));
    QCOMPARE(m_driver->captions(), QStringList{QStringLiteral("Attach to mail")});
    QCOMPARE(m_driver->texts().constFirst(),
             QString(QStringLiteral("The photo\n") + todaysName(1)
                     + QStringLiteral("\nwassaved from \"mail\" to \"Photo_Files\"."))); // sic
    QCOMPARE(m_driver->seen.constLast().icon, int(QMessageBox::Information));
    QCOMPARE(m_driver->seen.constLast().buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(m_driver->seen.constLast().parent.data(), m_form->form.get());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(!m_form->form->isBusy());
}

/// Events run while the wait dialog is painted; the listing may be read again.
void TestFormFileMail::aPhotoThatGoesDuringTheWaitIsAFailure()
{
    chooseItem(QStringLiteral("big.jpg"));
    const QPointer<FPVItemObject> item = m_form->view->currentObject();
    bool isGoneInTime = false;
    m_driver->expect(QStringLiteral("MyDialogWait"), [this, &isGoneInTime, item](QDialog *) {
        m_form->view->reload(m_form->world.store);
        isGoneInTime = item.isNull() && mailFiles().isEmpty();
    });
    m_form->form->accel_appendToMail();
    QVERIFY(isGoneInTime);
    QCOMPARE(m_driver->texts(), QStringList{kFailed});
    QVERIFY(mailFiles().isEmpty());
    QVERIFY(!m_form->form->isBusy());
}

void TestFormFileMail::theViewStaysAsItWas()
{
    chooseItem(QStringLiteral("small.jpg"));
    const QStringList before = m_form->names();
    const QPointer<FPVThumbnailItem> cell = m_form->cell(QStringLiteral("small.jpg"));
    m_form->form->accel_appendToMail();
    QTest::qWait(60);
    QVERIFY(!cell.isNull());
    QCOMPARE(m_form->names(), before);
}

void TestFormFileMail::aCardsPhotoGoesToTheStoreToo()
{
    m_form->world.machine->insertCard(Slot::SD);
    const QString card = m_form->world.machine->sd;
    m_form->world.makePhoto(card + QStringLiteral("/dcim/c.jpg"), QSize(700, 500));
    m_form->start();
    m_form->choose(QStringLiteral("SD Card"));
    QTRY_COMPARE(m_form->names(), QStringList{QStringLiteral("c.jpg")});
    m_form->form->accel_appendToMail();
    QCOMPARE(mailFiles(), QStringList{todaysName(1)});
    QCOMPARE(QDir(card + QStringLiteral("/dcim")).entryList(QDir::Files).size(), qsizetype(1));
    QVERIFY(!QFile::exists(card + QStringLiteral("/mail")));
}

void TestFormFileMail::nothingHappens_data()
{
    QTest::addColumn<bool>("onFolder");
    QTest::newRow("on a folder") << true;
    QTest::newRow("without a cursor") << false;
}

void TestFormFileMail::nothingHappens()
{
    QFETCH(bool, onFolder);
    if (onFolder) {
        chooseItem(QStringLiteral("dir"));
    } else {
        m_form->start();
        QVERIFY(m_form->view->currentObject() == nullptr);
    }
    m_form->form->accel_appendToMail();
    QVERIFY(m_driver->seen.isEmpty());
    QVERIFY(!QFile::exists(lumi::mailFolderPath()));
}

void TestFormFileMail::failuresHaveOneMessage_data()
{
    QTest::addColumn<QString>("cause");
    QTest::addColumn<bool>("waited"); // whether the wait dialog was shown
    QTest::newRow("all numbers of the day are taken") << QStringLiteral("numbers") << false;
    QTest::newRow("the photo can't be decoded") << QStringLiteral("photo") << true;
    QTest::newRow("the folder can't be made") << QStringLiteral("folder") << true;
}

void TestFormFileMail::failuresHaveOneMessage()
{
    QFETCH(QString, cause);
    QFETCH(bool, waited);
    chooseItem(QStringLiteral("big.jpg"));
    lumi::test::BrowserWorld &world = m_form->world;
    if (cause == QLatin1String("numbers")) {
        for (int i = 1; i <= 999; ++i) {
            world.makeFile(QStringLiteral("mail/") + todaysName(i), QByteArray());
        }
    } else if (cause == QLatin1String("photo")) {
        world.makeFile(QStringLiteral("big.jpg"), "no photo");
    } else {
        world.makeFile(QStringLiteral("mail"), QByteArray());
    }
    const QStringList before = mailFiles();
    m_form->form->accel_appendToMail();
    QCOMPARE(m_driver->captions(), QStringList{QStringLiteral("Error")});
    QCOMPARE(m_driver->texts(), QStringList{kFailed});
    QCOMPARE(m_driver->seen.constLast().icon, int(QMessageBox::Critical));
    QCOMPARE(m_driver->seen.constLast().buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(m_driver->seen.size(), qsizetype(waited ? 2 : 1));
    QCOMPARE(mailFiles(), before);
    QVERIFY(!m_form->form->isBusy());
}

void TestFormFileMail::theKeyIsIgnoredWhileACopyIsMade()
{
    chooseItem(QStringLiteral("small.jpg"));
    m_driver->expect(QStringLiteral("Attach to mail"), [this](QDialog *dialog) {
        m_form->form->accel_appendToMail();
        dialog->accept();
    });
    m_form->form->accel_appendToMail();
    QCOMPARE(mailFiles().size(), qsizetype(1));
    QCOMPARE(m_driver->captions().size(), qsizetype(1));
    // It does not begin a second copy under the wait dialog of the first either.
    m_driver->expect(QStringLiteral("MyDialogWait"), [this](QDialog *) {
        m_form->form->accel_appendToMail();
        m_form->form->accel_appendToMail();
    });
    m_form->form->accel_appendToMail();
    QCOMPARE(m_driver->unused(), 0);
    QCOMPARE(mailFiles().size(), qsizetype(2));
    QCOMPARE(m_driver->ofClass(QStringLiteral("MyDialogWait")).size(), qsizetype(2));
}

LUMI_TEST(TestFormFileMail)
#include "TestFormFileMail.moc"

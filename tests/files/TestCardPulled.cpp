// SPDX-License-Identifier: MIT
// A card that is removed during a file operation: its files are gone, and the message arrives while
// the form is busy. Each operation ends with its own error box, and then the store is shown.
#include "platform/session/QCopChannel.h"
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace lumi::test;

class TestCardPulled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void underADialog_data();
    void underADialog();
    void withTheSourceOfAPaste();
    void withTheTargetOfAPaste();
    void withItsRootOnShow_data();
    void withItsRootOnShow();
    void asANewFolderOfItsRootIsNamed_data();
    void asANewFolderOfItsRootIsNamed();

private:
    void showCard();
    void showStore();
    /// Removes the card and its files.
    void pull();
    /// Whether the form shows the store, and the store is unchanged.
    [[nodiscard]] bool isInStore() const;

    std::unique_ptr<FormFixture> m_form;
    QString m_card;
};

void TestCardPulled::init()
{
    m_form = std::make_unique<FormFixture>();
    FakeMachine *machine = m_form->world.machine;
    m_card = machine->sd;
    machine->insertCard(Slot::SD);
    const auto plenty = machine->diskAt;
    machine->diskAt = [plenty](const QByteArray &path) {
        return QFileInfo::exists(QFile::decodeName(path)) ? plenty(path) : DiskFigures{};
    };
    m_form->world.makePhotos(2, m_card + QStringLiteral("/dcim"));
    m_form->world.makePhotos(2, m_card + QStringLiteral("/dcim/trip"));
    m_form->world.makePhoto(QStringLiteral("mine.jpg"));
    m_form->world.makePhotos(2, QStringLiteral("day"));
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
}

void TestCardPulled::cleanup()
{
    m_form.reset();
}

void TestCardPulled::showCard()
{
    m_form->choose(QStringLiteral("SD Card"));
    QTRY_COMPARE(m_form->names(), list("trip a00.jpg a01.jpg"));
}

void TestCardPulled::showStore()
{
    m_form->choose(QStringLiteral("Photo_Files"));
    QTRY_COMPARE(m_form->names(), list("day mine.jpg"));
}

void TestCardPulled::pull()
{
    QVERIFY(QDir(m_card).removeRecursively());
    m_form->world.machine->removeCard(Slot::SD);
    QCopChannel::send("QPE/Card", "mtabChanged()");
}

bool TestCardPulled::isInStore() const
{
    const bool isShown = QTest::qWaitFor([this] {
        return m_form->combo->count() == 1 && m_form->names().contains(QStringLiteral("mine.jpg"));
    });
    return isShown && m_form->combo->currentText() == QLatin1String("Photo_Files")
        && QFile::exists(m_form->world.path(QStringLiteral("mine.jpg")))
        && QDir(m_form->world.path(QStringLiteral("day"))).entryList(QDir::Files).size() == 2
        && !m_form->form->isBusy();
}

void TestCardPulled::underADialog_data()
{
    addQuestionsInVain();
}

void TestCardPulled::underADialog()
{
    QFETCH(int, entry);
    showCard();
    m_form->select("a00.jpg");
    m_form->view->checkAll();
    QTRY_COMPARE(m_form->names().size(), qsizetype(3));
    const DialogAnswer answer = [](QDialog *dialog) {
        const bool isQuestion = qobject_cast<QMessageBox *>(dialog) != nullptr;
        (isQuestion ? yes() : typing(QStringLiteral("new")))(dialog);
    };
    const auto takeOut = [this] {
        pull();
    };
    QTEST(m_form->play(entry, {after(takeOut, answer), ok()}), "dialogs");
    QVERIFY(isInStore());
    QCOMPARE(QDir(m_card).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), list("NotAvailable"));
}

void TestCardPulled::withTheSourceOfAPaste()
{
    showCard();
    m_form->select("a00.jpg");
    m_form->play(kCopy);
    showStore();
    const auto takeOut = [this] {
        pull();
    };
    QCOMPARE(m_form->play(kPaste, {ok()}, takeOut), (QStringList{kWorking, kNotPasted}));
    QVERIFY(isInStore());
    QCOMPARE(m_form->store(), list("day mine.jpg"));
}

void TestCardPulled::withTheTargetOfAPaste()
{
    m_form->select("mine.jpg");
    m_form->play(kCopy);
    showCard();
    const auto takeOut = [this] {
        pull();
    };
    QCOMPARE(m_form->play(kPaste, {ok()}, takeOut), (QStringList{kWorking, kNotPasted}));
    QVERIFY(isInStore());
    QVERIFY(!QFile::exists(m_card + QStringLiteral("/dcim")));
}

void TestCardPulled::withItsRootOnShow_data()
{
    QTest::addColumn<int>("take");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isLate"); // it goes under the wait dialog, and not just before
    QTest::newRow("a photo was cut, under the wait dialog") << kCut << "mine.jpg" << true;
    QTest::newRow("a photo was cut, before the card message") << kCut << "mine.jpg" << false;
    QTest::newRow("a photo was copied") << kCopy << "mine.jpg" << true;
    QTest::newRow("a folder was copied") << kCopy << "day" << true;
}

/// The mount point remains as an empty folder. The next card would hide files written there.
void TestCardPulled::withItsRootOnShow()
{
    QFETCH(int, take);
    QFETCH(QString, name);
    QFETCH(bool, isLate);
    m_form->select(qPrintable(name));
    m_form->play(take);
    showCard();
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    if (!isLate) {
        QVERIFY(QDir(m_card).removeRecursively());
        m_form->world.machine->removeCard(Slot::SD);
    }
    const auto takeOut = [this, isLate] {
        if (isLate) {
            pull();
        }
    };
    QCOMPARE(m_form->play(kPaste, {ok()}, takeOut), (QStringList{kWorking, kNotPasted}));
    QCOMPARE(QDir(m_card).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), list("NotAvailable"));
    QCOMPARE(m_form->store(), list("day mine.jpg"));
    m_form->tellCardChange();
    QVERIFY(isInStore());
}

void TestCardPulled::asANewFolderOfItsRootIsNamed_data()
{
    QTest::addColumn<bool>("isTold");
    QTest::newRow("with the card message") << true;
    QTest::newRow("before the card message") << false;
}

void TestCardPulled::asANewFolderOfItsRootIsNamed()
{
    QFETCH(bool, isTold);
    showCard();
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    const auto takeOut = [this, isTold] {
        QVERIFY(QDir(m_card).removeRecursively());
        m_form->world.machine->removeCard(Slot::SD);
        if (isTold) {
            m_form->tellCardChange();
        }
    };
    const QStringList dialogs{QStringLiteral("input New Folder: Enter the folder name: ''"),
                              QStringLiteral("critical Error: Folder cannot be created. OK*")};
    QCOMPARE(m_form->play(kNewFolder, {after(takeOut, typing(QStringLiteral("new"))), ok()}),
             dialogs);
    QCOMPARE(QDir(m_card).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), list("NotAvailable"));
    m_form->tellCardChange();
    QVERIFY(isInStore());
}

LUMI_TEST(TestCardPulled)
#include "TestCardPulled.moc"

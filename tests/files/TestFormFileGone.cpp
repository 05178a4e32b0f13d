// SPDX-License-Identifier: MIT
// The form goes while one of its dialogs is up, as at the end of the program: what comes after
// the dialog must not touch it.
#include "files/engine/FPVFileTree.h"
#include "tests/files/FormFixture.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace lumi::test;

using Slot0 = void (FormFile::*)();
Q_DECLARE_METATYPE(Slot0)

namespace {

const QString kWait = QStringLiteral("MyDialogWait");

} // namespace

class TestFormFileGone : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form.reset(new FormFixture); }

    void cleanup() { m_form.reset(); }

    void underADialog_data();
    void underADialog();
    void inTheWalkOfAPaste();

private:
    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileGone::underADialog_data()
{
    QTest::addColumn<Slot0>("slot");
    QTest::addColumn<int>("boxes"); // up to the one under which it goes; 0 is the wait dialog
    QTest::addColumn<QString>("typed");
    QTest::newRow("New Folder, the name") << &FormFile::menu_file_NewFolder << 1 << "x";
    QTest::newRow("New Folder, no name") << &FormFile::menu_file_NewFolder << 2 << "";
    QTest::newRow("New Folder, the name is taken") << &FormFile::menu_file_NewFolder << 2 << "dir";
    QTest::newRow("New Folder, it can't be made") << &FormFile::menu_file_NewFolder << 2 << "a/b";
    QTest::newRow("Rename, the name") << &FormFile::menu_file_Rename << 1 << "x";
    QTest::newRow("Rename, no name") << &FormFile::menu_file_Rename << 2 << "";
    QTest::newRow("Rename, the name is taken") << &FormFile::menu_file_Rename << 2 << "taken";
    QTest::newRow("Rename, it can't be done") << &FormFile::menu_file_Rename << 2 << "a/b";
    QTest::newRow("Delete, the question") << &FormFile::menu_file_Delete << 1 << "";
    QTest::newRow("Delete, the work") << &FormFile::menu_file_Delete << 0 << "";
    QTest::newRow("Delete, the failure") << &FormFile::menu_file_Delete << 2 << "";
    QTest::newRow("Delete Selected, the question")
        << &FormFile::menu_file_DeleteCheckItem << 1 << "";
    QTest::newRow("Delete Selected, the work") << &FormFile::menu_file_DeleteCheckItem << 0 << "";
    QTest::newRow("Delete Selected, the failure")
        << &FormFile::menu_file_DeleteCheckItem << 2 << "";
    QTest::newRow("Delete Empty Folder, the question")
        << &FormFile::menu_file_DeleteEmptyFolder << 1 << "";
    QTest::newRow("Delete Empty Folder, the work")
        << &FormFile::menu_file_DeleteEmptyFolder << 0 << "";
    QTest::newRow("Paste, the work") << &FormFile::menu_edit_Paste << 0 << "";
    QTest::newRow("Paste, the failure") << &FormFile::menu_edit_Paste << 1 << "";
    QTest::newRow("mail, the work") << &FormFile::accel_appendToMail << 0 << "";
    QTest::newRow("mail, the message") << &FormFile::accel_appendToMail << 1 << "";
}

void TestFormFileGone::underADialog()
{
    QFETCH(Slot0, slot);
    QFETCH(int, boxes);
    QFETCH(QString, typed);
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    m_form->world.makePhoto(QStringLiteral("taken.jpg"));
    m_form->startMarked("a00.jpg");
    m_form->view->clipboard().take({m_form->world.path(QStringLiteral("gone.jpg"))}, false);
    // So that there are failures to tell of.
    const bool isProtected = boxes == 2;
    for (const char *name : {"a00.jpg", "taken.jpg"}) {
        QVERIFY(
            !isProtected
            || QFile::setPermissions(m_form->world.path(QLatin1String(name)), QFile::ReadOwner));
    }
    const DialogAnswer end = [this](QDialog *) {
        m_form->window.takeCentralWidget();
        m_form->form.reset();
    };
    const DialogAnswer first = [typed](QDialog *dialog) {
        const bool isBox = qobject_cast<QMessageBox *>(dialog) != nullptr;
        (isBox ? yes() : typing(typed))(dialog);
    };
    DialogDriver driver;
    QList<DialogAnswer> answers{boxes == 1 ? end : first};
    if (boxes == 2) {
        answers.append(end);
    }
    driver.answerInOrder(answers);
    if (boxes == 0) {
        driver.expect(kWait, end);
    }
    (m_form->form.get()->*slot)();
    QVERIFY(m_form->form == nullptr);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(driver.unused(), 0);
    // Nothing was done behind its back.
    QStringList left = m_form->store();
    left.removeOne(QStringLiteral("mail")); // made before the message
    QCOMPARE(left, list("a00.jpg dir taken.jpg"));
}

/// The walk through a folder that is pasted lets events in after the wait dialog has its paint.
void TestFormFileGone::inTheWalkOfAPaste()
{
    m_form->world.makePhotos(2, QStringLiteral("dir"));
    m_form->world.makePhoto(QStringLiteral("taken.jpg"));
    m_form->startMarked();
    const QString folder = m_form->world.path(QStringLiteral("dir"));
    m_form->view->clipboard().take({folder, m_form->world.path(QStringLiteral("taken.jpg"))},
                                   false);
    QString walked;
    DialogDriver driver;
    FileFaults faults(folder);
    faults.doBefore(FileFaults::ListFolder, 1, [this, &walked] {
        QTimer::singleShot(0, this, [this, &walked] {
            walked = FPVFileTree::rootPrefix();
            m_form->window.takeCentralWidget();
            m_form->form.reset();
        });
    });
    m_form->form->menu_edit_Paste();
    QVERIFY(m_form->form == nullptr);
    QCOMPARE(walked, folder);
    QCOMPARE(driver.lines(), QStringList{QStringLiteral("wait Working...")});
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(m_form->store(), list("dir taken.jpg"));
    QCOMPARE(QDir(folder).entryList(QDir::Files), list("a00.jpg a01.jpg"));
}

LUMI_TEST(TestFormFileGone)
#include "TestFormFileGone.moc"

// SPDX-License-Identifier: MIT
// New folder and rename: their dialogs, their messages, and what is shown afterwards.
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace lumi::test;

namespace {

const QString kAskFolder = QStringLiteral("input New Folder: Enter the folder name: ''");
const QString kNoName = QStringLiteral("critical Error: Enter the folder name: OK*");
const QString kFolderExists
    = QStringLiteral("critical Error: Cannot create folder because it already exists. OK*");
const QString kNotCreated = QStringLiteral("critical Error: Folder cannot be created. OK*");
const QString kNoNewName = QStringLiteral("critical Error: Enter the new folder name: OK*");
const QString kNameExists
    = QStringLiteral("critical Error: File name already exists. Change the name. OK*");
const QString kNotRenamed = QStringLiteral("critical Error: Rename OK*");

QString askName(const char *offered)
{
    return QStringLiteral("input Change Name: Enter the new folder name: '")
        + QString::fromUtf8(offered) + QLatin1Char('\'');
}

} // namespace

class TestFormFileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void aNewFolderIsShown();
    void aNewFolderIsAskedAgain_data();
    void aNewFolderIsAskedAgain();
    void aFolderThatCantBeMade_data();
    void aFolderThatCantBeMade();
    void aNewFolderClearsTheMarks();
    void renameOffersAndKeeps_data();
    void renameOffersAndKeeps();
    void renameOfAFileWithoutADot();
    void renameIsAskedAgain_data();
    void renameIsAskedAgain();
    void renameToTheOldNameDoesNothing();
    void renameThatFails_data();
    void renameThatFails();
    void renameOfAMissingItem();
    void renameWithoutAnItemDoesNothing();
    void renameStaysInItsFolder();
    void renameStaysWithItsItem();

private:
    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileOperations::aNewFolderIsShown()
{
    m_form->world.makePhotos(2);
    m_form->startMarked("a01.jpg");
    QCOMPARE(m_form->play(kNewFolder, {typing(QStringLiteral("day %1 夏"))}),
             QStringList{kAskFolder});
    QVERIFY(QFileInfo(m_form->world.path(QStringLiteral("day %1 夏"))).isDir());
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->names().first(), QStringLiteral("day %1 夏"));
    // The folder was read again.
    QCOMPARE(m_form->view->currentIndex(), 0);
}

void TestFormFileOperations::aNewFolderIsAskedAgain_data()
{
    lumi::test::columns<QString, QString>();
    QTest::newRow("nothing typed") << "" << kNoName;
    QTest::newRow("a folder's name") << "dir" << kFolderExists;
    QTest::newRow("a photo's name") << "a.jpg" << kFolderExists;
    QTest::newRow("a hidden file's name") << ".h" << kFolderExists;
    QTest::newRow("the folder itself") << "." << kFolderExists;
    QTest::newRow("its parent") << ".." << kFolderExists;
}

void TestFormFileOperations::aNewFolderIsAskedAgain()
{
    const auto [name, message] = lumi::test::row<QString, QString>();
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->startMarked();
    m_form->world.makeFile(QStringLiteral(".h"), "1");
    QCOMPARE(m_form->play(kNewFolder, {typing(name), ok(), typing(name), cancel(), cancel()}),
             (QStringList{kAskFolder, message, kAskFolder, message, kAskFolder}));
    QCOMPARE(m_form->store(), list(".h a.jpg dir"));
    QVERIFY(!m_form->wasReadAgain());
    QCOMPARE(m_form->play(kNewFolder, {typing(name), closing(), typing(QStringLiteral("new"))}),
             (QStringList{kAskFolder, message, kAskFolder}));
    QCOMPARE(m_form->store(), list(".h a.jpg dir new"));
}

void TestFormFileOperations::aFolderThatCantBeMade_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a path into a folder") << "dir/new";
    QTest::newRow("a path out of the folder") << "../new";
    QTest::newRow("a slash alone") << "/";
    QTest::newRow("a leading dot") << ".new";
    QTest::newRow("dots only") << "...";
    QTest::newRow("too long a name") << QString(QStringLiteral("x")).repeated(256);
}

void TestFormFileOperations::aFolderThatCantBeMade()
{
    QFETCH(QString, name);
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    m_form->startMarked();
    QCOMPARE(m_form->play(kNewFolder, {typing(name), ok()}),
             (QStringList{kAskFolder, kNotCreated}));
    QCOMPARE(m_form->store(), list("a00.jpg dir"));
    QVERIFY(m_form->wasReadAgain());
}

void TestFormFileOperations::aNewFolderClearsTheMarks()
{
    m_form->world.makePhotos(2);
    m_form->startMarked();
    QVERIFY(m_form->view->anyChecked());
    m_form->play(kNewFolder, {cancel()});
    QVERIFY(m_form->view->anyChecked());
    m_form->play(kNewFolder, {typing(QStringLiteral("new"))});
    QVERIFY(!m_form->view->anyChecked());
}

void TestFormFileOperations::renameOffersAndKeeps_data()
{
    lumi::test::columns<QString, QString, QString, QString>();
    QTest::newRow("a photo keeps its extension") << "a.jpg"
                                                 << "a"
                                                 << "b"
                                                 << "b.jpg";
    QTest::newRow("and its letters") << "a.JPG"
                                     << "a"
                                     << "B"
                                     << "B.JPG";
    QTest::newRow("a typed extension is kept before the old one") << "a.jpg"
                                                                  << "a"
                                                                  << "b.png"
                                                                  << "b.png.jpg";
    QTest::newRow("only the front part is offered") << "a.b.JPG"
                                                    << "a"
                                                    << "c"
                                                    << "c.JPG";
    QTest::newRow("so that the middle is removed") << "a.b.JPG"
                                                   << "a"
                                                   << "a"
                                                   << "a.JPG";
    QTest::newRow("blanks and other scripts") << "写 真.jpeg"
                                              << "写 真"
                                              << " é "
                                              << " é .jpeg";
    QTest::newRow("format characters") << "%1.jpg"
                                       << "%1"
                                       << "%2%1"
                                       << "%2%1.jpg";
    QTest::newRow("a folder") << "dir"
                              << "dir"
                              << "trip"
                              << "trip";
    QTest::newRow("a folder is offered whole") << "d.i.r"
                                               << "d.i.r"
                                               << "dir.2"
                                               << "dir.2";
    QTest::newRow("a folder named like a photo") << "x.jpg/"
                                                 << "x.jpg"
                                                 << "y"
                                                 << "y";
    QTest::newRow("different case is another name") << "a.jpg"
                                                    << "a"
                                                    << "A"
                                                    << "A.jpg";
}

void TestFormFileOperations::renameOffersAndKeeps()
{
    auto [old, offered, typed, renamed] = lumi::test::row<QString, QString, QString, QString>();
    if (!old.contains(QLatin1Char('.')) || old == QLatin1String("d.i.r")
        || old.endsWith(QLatin1Char('/'))) {
        m_form->world.makeFolder(old);
        old.remove(QLatin1Char('/'));
    } else {
        m_form->world.makePhoto(old);
    }
    m_form->startMarked(qPrintable(old));
    QCOMPARE(m_form->play(kRename, {typing(typed)}), QStringList{askName(qPrintable(offered))});
    QCOMPARE(m_form->store(), QStringList{renamed});
    QVERIFY(m_form->waitForCells(1));
    QTRY_COMPARE(m_form->names(), QStringList{renamed});
    QVERIFY(m_form->wasReadAgain());
}

void TestFormFileOperations::renameOfAFileWithoutADot()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->startMarked("dir");
    // Only a folder that became a file after the listing has such a name.
    QVERIFY(QDir().rmdir(m_form->world.path(QStringLiteral("dir"))));
    m_form->world.makeFile(QStringLiteral("dir"), "1");
    QCOMPARE(m_form->play(kRename, {typing(QStringLiteral("x"))}), QStringList{askName("dir")});
    QCOMPARE(m_form->store(), list("x."));
}

void TestFormFileOperations::renameIsAskedAgain_data()
{
    lumi::test::columns<QString, QString, QString>();
    QTest::newRow("nothing typed for a photo") << "a.jpg"
                                               << "" << kNoNewName;
    QTest::newRow("nothing typed for a folder") << "dir"
                                                << "" << kNoNewName;
    QTest::newRow("another photo's name") << "a.jpg"
                                          << "b" << kNameExists;
    QTest::newRow("a folder's name") << "a.jpg"
                                     << "c" << kNameExists;
    QTest::newRow("a photo's name for a folder") << "dir"
                                                 << "b.jpg" << kNameExists;
    QTest::newRow("the folder itself") << "dir"
                                       << "." << kNameExists;
    QTest::newRow("its parent") << "dir"
                                << ".." << kNameExists;
}

void TestFormFileOperations::renameIsAskedAgain()
{
    const auto [item, typed, message] = lumi::test::row<QString, QString, QString>();
    for (const char *name : {"a.jpg", "b.jpg"}) {
        m_form->world.makePhoto(QString::fromUtf8(name));
    }
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makeFolder(QStringLiteral("c.jpg"));
    m_form->startMarked(qPrintable(item));
    const QString ask = askName(qPrintable(item.section(QLatin1Char('.'), 0, 0)));
    QCOMPARE(m_form->play(kRename, {typing(typed), ok(), typing(typed), ok(), cancel()}),
             (QStringList{ask, message, ask, message, ask}));
    QCOMPARE(m_form->store(), list("a.jpg b.jpg c.jpg dir"));
    QVERIFY(!m_form->wasReadAgain());
}

void TestFormFileOperations::renameToTheOldNameDoesNothing()
{
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->startMarked("a.jpg");
    QCOMPARE(m_form->play(kRename, {pressing(Qt::Key_Return)}), QStringList{askName("a")});
    QVERIFY(!m_form->wasReadAgain());
    m_form->view->showPage(0, 0, true);
    QCOMPARE(m_form->play(kRename, {typing(QStringLiteral("dir"))}), QStringList{askName("dir")});
    QVERIFY(!m_form->wasReadAgain());
    QCOMPARE(m_form->store(), list("a.jpg dir"));
}

void TestFormFileOperations::renameThatFails_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("a path into a folder") << "dir/b";
    QTest::newRow("a path out of the folder") << "../b";
    QTest::newRow("a leading dot") << ".b";
    QTest::newRow("a dot alone") << ".";
    QTest::newRow("too long a name") << QString(QStringLiteral("x")).repeated(252);
}

void TestFormFileOperations::renameThatFails()
{
    QFETCH(QString, typed);
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->startMarked("a.jpg");
    QCOMPARE(m_form->play(kRename, {typing(typed), ok()}),
             (QStringList{askName("a"), kNotRenamed}));
    QCOMPARE(m_form->store(), list("a.jpg dir"));
    QVERIFY(!m_form->wasReadAgain());
}

void TestFormFileOperations::renameOfAMissingItem()
{
    m_form->world.makePhotos(2);
    m_form->startMarked("a00.jpg");
    const auto remove = [this] {
        QVERIFY(QFile::remove(m_form->world.path(QStringLiteral("a00.jpg"))));
    };
    QCOMPARE(m_form->play(kRename, {after(remove, typing(QStringLiteral("b"))), ok()}),
             (QStringList{askName("a00"), kNotRenamed}));
    // The extension of a file that no longer exists is not kept.
    QCOMPARE(m_form->play(kRename, {typing(QStringLiteral("b")), ok()}),
             (QStringList{askName("a00.jpg"), kNotRenamed}));
    QCOMPARE(m_form->store(), list("a01.jpg"));
}

void TestFormFileOperations::renameWithoutAnItemDoesNothing()
{
    m_form->world.makePhotos(1);
    m_form->startMarked();
    QVERIFY(m_form->play(kRename, {}).isEmpty());
    QVERIFY(!m_form->wasReadAgain());
}

/// The current folder may change while the dialog is open.
void TestFormFileOperations::renameStaysInItsFolder()
{
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->world.makePhoto(QStringLiteral("dir/a.jpg"));
    m_form->startMarked("a.jpg");
    const auto enter = [this] {
        m_form->form->filelist_decided(m_form->cell(QStringLiteral("dir"))->item());
    };
    QCOMPARE(m_form->play(kRename, {after(enter, typing(QStringLiteral("b"))), ok()}),
             (QStringList{askName("a"), kNotRenamed}));
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("a.jpg"))));
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("dir/a.jpg"))));
}

/// The cursor may move while the dialog is open.
void TestFormFileOperations::renameStaysWithItsItem()
{
    m_form->world.makePhotos(3);
    m_form->startMarked("a01.jpg");
    const auto move = [this] {
        QTest::keyClick(m_form->view, Qt::Key_Right);
        QCOMPARE(m_form->view->currentObject()->fileName(), QStringLiteral("a02.jpg"));
    };
    QCOMPARE(m_form->play(kRename, {after(move, typing(QStringLiteral("b")))}),
             QStringList{askName("a01")});
    QCOMPARE(m_form->store(), list("a00.jpg a02.jpg b.jpg"));
}

LUMI_TEST(TestFormFileOperations)
#include "TestFormFileOperations.moc"

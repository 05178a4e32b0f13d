// SPDX-License-Identifier: MIT
// New folder and rename: what is asked, what is told, and what is on show afterwards.
#include "tests/files/DialogScript.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"

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

constexpr int kNewFolder = 0;
constexpr int kRename = 1;

QString askName(const char *offered)
{
    return QStringLiteral("input Change Name: Enter the new folder name: '")
        + QString::fromUtf8(offered) + QLatin1Char('\'');
}

DialogAnswer ok()
{
    return clicking(QMessageBox::Ok);
}

DialogAnswer cancel()
{
    return pressing(Qt::Key_Escape);
}

QStringList list(const char *names)
{
    return QString::fromUtf8(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class TestFormFileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form.reset(new FormFixture); }

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
    void renameWithoutAnItemDoesNothing();
    void renameStaysInItsFolder();
    void renameStaysWithItsItem();

private:
    /// The form over the store, with the cursor on this item if any.
    void start(const char *current = nullptr);
    /// Chooses a menu entry and plays the script to its end.
    QStringList play(int entry, const QList<DialogAnswer> &answers);
    [[nodiscard]] QStringList store() const;
    /// Whether the listing was read again since start(): fresh items have no marks.
    [[nodiscard]] bool wasReadAgain() const;

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileOperations::start(const char *current)
{
    m_form->start();
    const int count = static_cast<int>(qMin(store().size(), qsizetype(6)));
    QVERIFY(m_form->waitForCells(count));
    if (current != nullptr) {
        QTest::mousePress(m_form->cell(QString::fromUtf8(current)), Qt::LeftButton, {},
                          QPoint(1, 1));
        QCOMPARE(m_form->view->currentObject()->fileName(), QString::fromUtf8(current));
    }
    m_form->view->checkAll();
    QVERIFY(m_form->waitForCells(count));
}

QStringList TestFormFileOperations::play(int entry, const QList<DialogAnswer> &answers)
{
    DialogScript script(answers);
    script.isBusy = [this] {
        return m_form->form->isBusy();
    };
    m_form->grayOut();
    m_form->entry(entry)->setEnabled(true);
    m_form->entry(entry)->trigger();
    if (script.wasIdle || m_form->form->isBusy()) {
        script.seen.append(QStringLiteral("not busy in time"));
    }
    if (QApplication::activeModalWidget() != nullptr) {
        script.seen.append(QStringLiteral("a dialog stays"));
    }
    return script.seen;
}

QStringList TestFormFileOperations::store() const
{
    return QDir(m_form->world.store)
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

bool TestFormFileOperations::wasReadAgain() const
{
    return !m_form->view->anyChecked();
}

void TestFormFileOperations::aNewFolderIsShown()
{
    m_form->world.makePhotos(2);
    start("a01.jpg");
    QCOMPARE(play(kNewFolder, {typing(QStringLiteral("day %1 夏"))}), QStringList{kAskFolder});
    QVERIFY(QFileInfo(m_form->world.path(QStringLiteral("day %1 夏"))).isDir());
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->names().first(), QStringLiteral("day %1 夏"));
    // The folder was entered anew.
    QCOMPARE(m_form->view->currentIndex(), 0);
}

void TestFormFileOperations::aNewFolderIsAskedAgain_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing typed") << "" << kNoName;
    QTest::newRow("a folder's name") << "dir" << kFolderExists;
    QTest::newRow("a photo's name") << "a.jpg" << kFolderExists;
    QTest::newRow("a hidden file's name") << ".h" << kFolderExists;
    QTest::newRow("the folder itself") << "." << kFolderExists;
    QTest::newRow("its parent") << ".." << kFolderExists;
}

void TestFormFileOperations::aNewFolderIsAskedAgain()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    start();
    m_form->world.makeFile(QStringLiteral(".h"), "1");
    QCOMPARE(play(kNewFolder, {typing(name), ok(), typing(name), cancel(), cancel()}),
             (QStringList{kAskFolder, message, kAskFolder, message, kAskFolder}));
    QCOMPARE(store(), list(".h a.jpg dir"));
    QVERIFY(!wasReadAgain());
    QCOMPARE(play(kNewFolder, {typing(name), closing(), typing(QStringLiteral("new"))}),
             (QStringList{kAskFolder, message, kAskFolder}));
    QCOMPARE(store(), list(".h a.jpg dir new"));
}

void TestFormFileOperations::aFolderThatCantBeMade_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a way into a folder") << "dir/new";
    QTest::newRow("a way out") << "../new";
    QTest::newRow("a slash alone") << "/";
    QTest::newRow("too long a name") << QString(QStringLiteral("x")).repeated(256);
}

void TestFormFileOperations::aFolderThatCantBeMade()
{
    QFETCH(QString, name);
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    start();
    QCOMPARE(play(kNewFolder, {typing(name), ok()}), (QStringList{kAskFolder, kNotCreated}));
    QCOMPARE(store(), list("a00.jpg dir"));
    QVERIFY(wasReadAgain());
}

void TestFormFileOperations::aNewFolderClearsTheMarks()
{
    m_form->world.makePhotos(2);
    start();
    QVERIFY(m_form->view->anyChecked());
    play(kNewFolder, {cancel()});
    QVERIFY(m_form->view->anyChecked());
    play(kNewFolder, {typing(QStringLiteral("new"))});
    QVERIFY(!m_form->view->anyChecked());
}

void TestFormFileOperations::renameOffersAndKeeps_data()
{
    QTest::addColumn<QString>("old");
    QTest::addColumn<QString>("offered");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("renamed");
    QTest::newRow("a photo keeps its extension") << "a.jpg"
                                                 << "a"
                                                 << "b"
                                                 << "b.jpg";
    QTest::newRow("and its letters") << "a.JPG"
                                     << "a"
                                     << "B"
                                     << "B.JPG";
    QTest::newRow("a typed extension comes on top") << "a.jpg"
                                                    << "a"
                                                    << "b.png"
                                                    << "b.png.jpg";
    QTest::newRow("only the front part is offered") << "a.b.JPG"
                                                    << "a"
                                                    << "c"
                                                    << "c.JPG";
    QTest::newRow("so that the middle goes by itself") << "a.b.JPG"
                                                       << "a"
                                                       << "a"
                                                       << "a.JPG";
    QTest::newRow("blanks and other scripts") << "写 真.jpeg"
                                              << "写 真"
                                              << " é "
                                              << " é .jpeg";
    QTest::newRow("signs of formats") << "%1.jpg"
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
    QTest::newRow("other letters are another name") << "a.jpg"
                                                    << "a"
                                                    << "A"
                                                    << "A.jpg";
}

void TestFormFileOperations::renameOffersAndKeeps()
{
    QFETCH(QString, old);
    QFETCH(QString, offered);
    QFETCH(QString, typed);
    QFETCH(QString, renamed);
    if (!old.contains(QLatin1Char('.')) || old == QLatin1String("d.i.r")
        || old.endsWith(QLatin1Char('/'))) {
        m_form->world.makeFolder(old);
        old.remove(QLatin1Char('/'));
    } else {
        m_form->world.makePhoto(old);
    }
    start(qPrintable(old));
    QCOMPARE(play(kRename, {typing(typed)}), QStringList{askName(qPrintable(offered))});
    QCOMPARE(store(), QStringList{renamed});
    QVERIFY(m_form->waitForCells(1));
    QTRY_COMPARE(m_form->names(), QStringList{renamed});
    QVERIFY(wasReadAgain());
}

void TestFormFileOperations::renameOfAFileWithoutADot()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    start("dir");
    // Only what was listed as a folder and became a file has such a name.
    QVERIFY(QDir().rmdir(m_form->world.path(QStringLiteral("dir"))));
    m_form->world.makeFile(QStringLiteral("dir"), "1");
    QCOMPARE(play(kRename, {typing(QStringLiteral("x"))}), QStringList{askName("dir")});
    QCOMPARE(store(), list("x."));
}

void TestFormFileOperations::renameIsAskedAgain_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("message");
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
    QFETCH(QString, item);
    QFETCH(QString, typed);
    QFETCH(QString, message);
    for (const char *name : {"a.jpg", "b.jpg"}) {
        m_form->world.makePhoto(QString::fromUtf8(name));
    }
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makeFolder(QStringLiteral("c.jpg"));
    start(qPrintable(item));
    const QString ask = askName(qPrintable(item.section(QLatin1Char('.'), 0, 0)));
    QCOMPARE(play(kRename, {typing(typed), ok(), typing(typed), ok(), cancel()}),
             (QStringList{ask, message, ask, message, ask}));
    QCOMPARE(store(), list("a.jpg b.jpg c.jpg dir"));
    QVERIFY(!wasReadAgain());
}

void TestFormFileOperations::renameToTheOldNameDoesNothing()
{
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->world.makeFolder(QStringLiteral("dir"));
    start("a.jpg");
    QCOMPARE(play(kRename, {pressing(Qt::Key_Return)}), QStringList{askName("a")});
    QVERIFY(!wasReadAgain());
    m_form->view->showPage(0, 0, true);
    QCOMPARE(play(kRename, {typing(QStringLiteral("dir"))}), QStringList{askName("dir")});
    QVERIFY(!wasReadAgain());
    QCOMPARE(store(), list("a.jpg dir"));
}

void TestFormFileOperations::renameThatFails_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("a way into a folder") << "dir/b";
    QTest::newRow("a way out") << "../b";
    QTest::newRow("too long a name") << QString(QStringLiteral("x")).repeated(252);
}

void TestFormFileOperations::renameThatFails()
{
    QFETCH(QString, typed);
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->world.makeFolder(QStringLiteral("dir"));
    start("a.jpg");
    QCOMPARE(play(kRename, {typing(typed), ok()}), (QStringList{askName("a"), kNotRenamed}));
    QCOMPARE(store(), list("a.jpg dir"));
    QVERIFY(!wasReadAgain());
}

void TestFormFileOperations::renameWithoutAnItemDoesNothing()
{
    m_form->world.makePhotos(1);
    start();
    QVERIFY(play(kRename, {}).isEmpty());
    QVERIFY(!wasReadAgain());
}

/// The folder on show may change under the dialog.
void TestFormFileOperations::renameStaysInItsFolder()
{
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->world.makePhoto(QStringLiteral("dir/a.jpg"));
    start("a.jpg");
    const auto enter = [this] {
        m_form->form->filelist_decided(m_form->cell(QStringLiteral("dir"))->item());
    };
    QCOMPARE(play(kRename, {after(enter, typing(QStringLiteral("b"))), ok()}),
             (QStringList{askName("a"), kNotRenamed}));
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("a.jpg"))));
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("dir/a.jpg"))));
}

/// So may the cursor, in the folder.
void TestFormFileOperations::renameStaysWithItsItem()
{
    m_form->world.makePhotos(3);
    start("a01.jpg");
    const auto move = [this] {
        QTest::keyClick(m_form->view, Qt::Key_Right);
        QCOMPARE(m_form->view->currentObject()->fileName(), QStringLiteral("a02.jpg"));
    };
    QCOMPARE(play(kRename, {after(move, typing(QStringLiteral("b")))}),
             QStringList{askName("a01")});
    QCOMPARE(store(), list("a00.jpg a02.jpg b.jpg"));
}

LUMI_TEST(TestFormFileOperations)
#include "TestFormFileOperations.moc"

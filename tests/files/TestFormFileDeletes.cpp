// SPDX-License-Identifier: MIT
// The three delete entries: their questions, their messages, and what is shown afterwards.
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>

#include <cerrno>

using namespace lumi::test;

namespace {

const QString kNotDeleted = QStringLiteral("critical Error: Deletion failed. OK*");
const QString kAskMarked = QStringLiteral(
    "warning Delete Selected: Are you sure you want to delete these photos? Yes/No*");
const QString kPartStayed
    = QStringLiteral("critical Error: Part of the file could not be deleted. OK*");
const QString kAskEmpty = QStringLiteral(
    "warning Delete Empty Folder: Are you sure you want to delete this folder? Yes/No*");
const QString kFoldersStayed = QStringLiteral("critical Error: Folder deletion failed. OK*");

QString askDelete(const QString &name)
{
    return QStringLiteral("warning Delete: %1 will be deleted. Are you sure? Yes/No*").arg(name);
}

} // namespace

class TestFormFileDeletes : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void aPhotoIsDeleted();
    void aProtectedPhotoStays();
    void aPhotoThatTheSystemKeepsStays();
    void aMissingPhotoIsNotDeleted();
    void aFolderIsNotDeleted();
    void deleteWithoutAnItemDoesNothing();
    void longNamesAreCutInTheQuestion();
    void onlyWhatWasAskedAboutIsDeleted();
    void noOtherPhotoIsDeletedAfterTheWait_data();
    void noOtherPhotoIsDeletedAfterTheWait();
    void markedPhotosAreDeleted();
    void theStatusFieldForgetsThem_data();
    void theStatusFieldForgetsThem();
    void anEmptyFolderLeavesNoName();
    void partOfTheMarkedPhotosStays_data();
    void partOfTheMarkedPhotosStays();
    void marksLostDuringTheQuestion();
    void emptyFoldersAreDeleted();
    void emptyFoldersOfANotListedFolder();
    void questionsThatAreNotAnsweredWithYes_data();
    void questionsThatAreNotAnsweredWithYes();

private:
    void protect(const char *name) const;

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileDeletes::protect(const char *name) const
{
    QVERIFY(QFile::setPermissions(m_form->world.path(QString::fromUtf8(name)), QFile::ReadOwner));
}

void TestFormFileDeletes::aPhotoIsDeleted()
{
    m_form->world.makePhotos(3);
    m_form->startMarked("a01.jpg");
    QCOMPARE(m_form->play(kDelete, {yes()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking}));
    QCOMPARE(m_form->store(), list("a00.jpg a02.jpg"));
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), list("a00.jpg a02.jpg"));
    QCOMPARE(m_form->view->currentIndex(), 0);
    QVERIFY(m_form->wasReadAgain());
}

void TestFormFileDeletes::aProtectedPhotoStays()
{
    m_form->world.makePhotos(2);
    protect("a01.jpg");
    m_form->startMarked("a01.jpg");
    // The wait dialog is closed before the error box opens.
    QCOMPARE(m_form->play(kDelete, {yes(), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg"));
    QVERIFY(m_form->wasReadAgain());
    QVERIFY(m_form->waitForCells(2));
}

/// As in a read-only folder.
void TestFormFileDeletes::aPhotoThatTheSystemKeepsStays()
{
    m_form->world.makePhotos(2);
    m_form->startMarked("a01.jpg");
    FileFaults faults(m_form->world.store);
    faults.fail(FileFaults::Remove, 1, EACCES);
    QCOMPARE(m_form->play(kDelete, {yes(), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(faults.hits(), 1);
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg"));
    QVERIFY(m_form->wasReadAgain());
}

void TestFormFileDeletes::aMissingPhotoIsNotDeleted()
{
    m_form->world.makePhotos(2);
    m_form->startMarked("a01.jpg");
    const auto remove = [this] {
        QVERIFY(QFile::remove(m_form->world.path(QStringLiteral("a01.jpg"))));
    };
    QCOMPARE(m_form->play(kDelete, {after(remove, yes()), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QVERIFY(m_form->waitForCells(1));
    QCOMPARE(m_form->names(), list("a00.jpg"));
}

void TestFormFileDeletes::aFolderIsNotDeleted()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    m_form->startMarked("dir");
    QCOMPARE(m_form->play(kDelete, {yes(), ok()}),
             (QStringList{askDelete(QStringLiteral("dir")), kWorking, kNotDeleted}));
    QCOMPARE(m_form->store(), list("a00.jpg dir"));
    QVERIFY(m_form->wasReadAgain());
}

void TestFormFileDeletes::deleteWithoutAnItemDoesNothing()
{
    m_form->world.makePhotos(1);
    m_form->startMarked();
    QVERIFY(m_form->play(kDelete, {}).isEmpty());
    QVERIFY(!m_form->wasReadAgain());
}

void TestFormFileDeletes::longNamesAreCutInTheQuestion()
{
    const QString name = QString(QStringLiteral("X")).repeated(30) + QStringLiteral(".jpg");
    m_form->world.makePhoto(name);
    m_form->startMarked(qPrintable(name));
    const QStringList seen = m_form->play(kDelete, {cancel()});
    QCOMPARE(seen.size(), 1);
    const QString shown = seen.first().section(QLatin1Char(' '), 2, 2);
    QVERIFY2(shown.startsWith(QLatin1String("XXXXXXXXXXXXXXX")), qPrintable(shown));
    QVERIFY(shown.endsWith(QLatin1String("...")));
    QVERIFY(shown.size() <= 23);
}

/// The cursor may move while the question is shown.
void TestFormFileDeletes::onlyWhatWasAskedAboutIsDeleted()
{
    m_form->world.makePhotos(3);
    m_form->startMarked("a01.jpg");
    const auto move = [this] {
        QTest::keyClick(m_form->view, Qt::Key_Right);
    };
    QCOMPARE(m_form->play(kDelete, {after(move, yes()), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg a02.jpg"));
    // A photo that has moved to another position in the list is not deleted either.
    m_form->startMarked("a01.jpg");
    const auto reload = [this] {
        QVERIFY(QFile::remove(m_form->world.path(QStringLiteral("a00.jpg"))));
        m_form->view->reload(m_form->world.store);
    };
    QCOMPARE(m_form->play(kDelete, {after(reload, yes()), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(m_form->store(), list("a01.jpg a02.jpg"));
}

void TestFormFileDeletes::noOtherPhotoIsDeletedAfterTheWait_data()
{
    QTest::addColumn<bool>("isListChanged");
    QTest::newRow("the cursor moves on") << false;
    QTest::newRow("another photo comes to its place") << true;
}

/// Events run while the wait dialog is painted.
void TestFormFileDeletes::noOtherPhotoIsDeletedAfterTheWait()
{
    QFETCH(bool, isListChanged);
    m_form->world.makePhotos(3);
    m_form->startMarked("a01.jpg");
    QString other;
    const auto change = [this, isListChanged, &other] {
        if (isListChanged) {
            QVERIFY(QFile::rename(m_form->world.path(QStringLiteral("a00.jpg")),
                                  m_form->world.path(QStringLiteral("b00.jpg"))));
            m_form->view->reload(m_form->world.store);
            m_form->view->showPage(0, 1, true);
        } else {
            QTest::keyClick(m_form->view, Qt::Key_Right);
        }
        other = m_form->view->currentObject()->fileName();
    };
    QCOMPARE(m_form->play(kDelete, {yes(), ok()}, change),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(other, QStringLiteral("a02.jpg"));
    const QLatin1String first(isListChanged ? "b00.jpg" : "a00.jpg");
    QStringList all = list("a01.jpg a02.jpg") << first;
    all.sort();
    QCOMPARE(m_form->store(), all);
}

void TestFormFileDeletes::markedPhotosAreDeleted()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(4);
    m_form->startMarked("a03.jpg");
    m_form->view->uncheckAll();
    QVERIFY(m_form->waitForCells(5));
    for (const char *name : {"a00.jpg", "a02.jpg"}) {
        m_form->cell(QString::fromUtf8(name))->toggleItemCheck(true);
    }
    QCOMPARE(m_form->play(kDeleteChecked, {yes()}), (QStringList{kAskMarked, kWorking}));
    QCOMPARE(m_form->store(), list("a01.jpg a03.jpg dir"));
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->names(), list("dir a01.jpg a03.jpg"));
}

void TestFormFileDeletes::theStatusFieldForgetsThem_data()
{
    QTest::addColumn<int>("photos");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<int>("deleted"); // number of photos, from the cursor on
    QTest::addColumn<QString>("status");
    QTest::newRow("everything is deleted") << 2 << 0 << 2 << QString();
    QTest::newRow("the cursor is behind the end") << 3 << 2 << 1 << QString();
    QTest::newRow("the page of the cursor is not on show")
        << 20 << 12 << 2 << QStringLiteral("a14");
}

void TestFormFileDeletes::theStatusFieldForgetsThem()
{
    QFETCH(int, photos);
    QFETCH(int, cursor);
    QFETCH(int, deleted);
    m_form->world.makePhotos(photos);
    m_form->start();
    QVERIFY(m_form->waitForCells(std::min(photos, 6)));
    m_form->view->showPage(-1, cursor, true);
    QTRY_COMPARE(m_form->status->text(), QString::asprintf("a%02d", cursor));
    for (int i = cursor; i < cursor + deleted; ++i) {
        m_form->cell(QString::asprintf("a%02d.jpg", i))->toggleItemCheck(true);
    }
    QCOMPARE(m_form->play(kDeleteChecked, {yes()}), (QStringList{kAskMarked, kWorking}));
    QCOMPARE(m_form->store().size(), photos - deleted);
    QTEST(m_form->status->text(), "status");
    QVERIFY(m_form->waitForCells(std::min(photos - deleted, 6)));
    QTEST(m_form->status->text(), "status");
}

/// Deletes the last photo of a folder by the key.
void TestFormFileDeletes::anEmptyFolderLeavesNoName()
{
    m_form->world.makePhotos(1);
    m_form->startMarked("a00.jpg");
    QCOMPARE(m_form->status->text(), QStringLiteral("a00"));
    m_form->play(kDelete, {yes()});
    QVERIFY(m_form->store().isEmpty());
    QVERIFY(m_form->waitForCells(0));
    QVERIFY(m_form->status->text().isEmpty());
}

void TestFormFileDeletes::partOfTheMarkedPhotosStays_data()
{
    lumi::test::columns<QStringList, QStringList>();
    QTest::newRow("two of three") << list("a00.jpg a02.jpg") << QStringList{kAskMarked, kWorking};
    QTest::newRow("all of them") << list("a00.jpg a01.jpg a02.jpg")
                                 << QStringList{kAskMarked, kWorking, kPartStayed};
}

void TestFormFileDeletes::partOfTheMarkedPhotosStays()
{
    const auto [protectedOnes, dialogs] = lumi::test::row<QStringList, QStringList>();
    m_form->world.makePhotos(3);
    for (const QString &name : protectedOnes) {
        protect(qPrintable(name));
    }
    m_form->startMarked("a01.jpg");
    const int cursor = m_form->view->currentIndex();
    QCOMPARE(m_form->play(kDeleteChecked, {yes(), ok()}), dialogs);
    QCOMPARE(m_form->store(), protectedOnes);
    // The folder is not read again: marks and cursor stay.
    QVERIFY(m_form->view->anyChecked());
    QCOMPARE(m_form->view->currentIndex(), cursor);
}

/// If the listing is read again under the question, its items have no marks.
void TestFormFileDeletes::marksLostDuringTheQuestion()
{
    m_form->world.makePhotos(2);
    m_form->startMarked();
    const auto reload = [this] {
        m_form->view->reload(m_form->world.store);
    };
    QCOMPARE(m_form->play(kDeleteChecked, {after(reload, yes()), ok()}),
             (QStringList{kAskMarked, kWorking, kPartStayed}));
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg"));
}

void TestFormFileDeletes::emptyFoldersAreDeleted()
{
    for (const char *name : {"empty", "two words", "full/sub"}) {
        m_form->world.makeFolder(QString::fromUtf8(name));
    }
    m_form->world.makePhotos(1);
    m_form->startMarked("full");
    QCOMPARE(m_form->play(kDeleteEmpty, {yes()}), (QStringList{kAskEmpty, kWorking}));
    QCOMPARE(m_form->store(), list("a00.jpg full"));
    QVERIFY(m_form->waitForCells(2));
    QVERIFY(m_form->wasReadAgain());
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("full/sub"))));
    // No empty folder is left: no message, but the listing is read again.
    m_form->view->checkAll();
    QCOMPARE(m_form->play(kDeleteEmpty, {yes()}), (QStringList{kAskEmpty, kWorking}));
    QVERIFY(m_form->wasReadAgain());
}

void TestFormFileDeletes::emptyFoldersOfANotListedFolder()
{
    m_form->startMarked();
    m_form->view->setList(nullptr);
    QCOMPARE(m_form->play(kDeleteEmpty, {yes(), ok()}),
             (QStringList{kAskEmpty, kWorking, kFoldersStayed}));
}

void TestFormFileDeletes::questionsThatAreNotAnsweredWithYes_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("Delete Selected") << kDeleteChecked << kAskMarked;
    QTest::newRow("Delete Empty Folder") << kDeleteEmpty << kAskEmpty;
}

void TestFormFileDeletes::questionsThatAreNotAnsweredWithYes()
{
    const auto [entry, question] = lumi::test::row<int, QString>();
    m_form->world.makeFolder(QStringLiteral("empty"));
    m_form->world.makePhotos(2);
    m_form->startMarked("a00.jpg");
    for (const DialogAnswer &no : {pressing(Qt::Key_Return), pressing(Qt::Key_Escape), closing(),
                                   clicking(QMessageBox::No)}) {
        QCOMPARE(m_form->play(entry, {no}), QStringList{question});
    }
    QCOMPARE(m_form->store(), list("a00.jpg a01.jpg empty"));
    QVERIFY(!m_form->wasReadAgain());
}

LUMI_TEST(TestFormFileDeletes)
#include "TestFormFileDeletes.moc"

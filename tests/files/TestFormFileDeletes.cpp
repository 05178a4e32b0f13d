// SPDX-License-Identifier: MIT
// The three deletes: what is asked, what is told, and what is on show afterwards.
#include "tests/files/DialogScript.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <functional>

using namespace lumi::test;

namespace {

const QString kNotDeleted = QStringLiteral("critical Error: Deletion failed. OK*");
const QString kWorking = QStringLiteral("wait Working...");
const QString kAskMarked = QStringLiteral(
    "warning Delete Selected: Are you sure you want to delete these photos? Yes/No*");
const QString kPartStayed
    = QStringLiteral("critical Error: Part of the file could not be deleted. OK*");
const QString kAskEmpty = QStringLiteral(
    "warning Delete Empty Folder: Are you sure you want to delete this folder? Yes/No*");
const QString kFoldersStayed = QStringLiteral("critical Error: Folder deletion failed. OK*");

constexpr int kDelete = 2;
constexpr int kDeleteChecked = 3;
constexpr int kDeleteEmpty = 4;

QString askDelete(const QString &name)
{
    return QStringLiteral("warning Delete: %1 will be deleted. Are you sure? Yes/No*").arg(name);
}

DialogAnswer yes()
{
    return clicking(QMessageBox::Yes);
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

class TestFormFileDeletes : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form.reset(new FormFixture); }

    void cleanup() { m_form.reset(); }

    void aPhotoIsDeleted();
    void onlyYesDeletes_data();
    void onlyYesDeletes();
    void aProtectedPhotoStays();
    void aFolderIsNotDeleted();
    void deleteWithoutAnItemDoesNothing();
    void longNamesAreCutInTheQuestion();
    void namesAreNoMarkup();
    void onlyWhatWasAskedAboutIsDeleted();
    void theWaitLetsNoOtherPhotoIn_data();
    void theWaitLetsNoOtherPhotoIn();
    void markedPhotosAreDeleted();
    void partOfTheMarkedPhotosStays_data();
    void partOfTheMarkedPhotosStays();
    void emptyFoldersAreDeleted();
    void emptyFoldersOfANotListedFolder();
    void questionsThatAreNotAnsweredWithYes_data();
    void questionsThatAreNotAnsweredWithYes();
    void cardsWaitUntilTheQuestionIsAnswered();

private:
    /// The form over the store, with the cursor on this item if any.
    void start(const char *current = nullptr);
    /// Chooses a menu entry and plays the script to its end.
    QStringList play(int entry, const QList<DialogAnswer> &answers,
                     const std::function<void()> &atWait = {});
    [[nodiscard]] QStringList store() const;
    /// Whether the listing was read again since start(): fresh items have no marks.
    [[nodiscard]] bool wasReadAgain() const;
    void protect(const char *name) const;

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileDeletes::start(const char *current)
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

QStringList TestFormFileDeletes::play(int entry, const QList<DialogAnswer> &answers,
                                      const std::function<void()> &atWait)
{
    DialogScript script(answers);
    script.atWait = atWait;
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

QStringList TestFormFileDeletes::store() const
{
    return QDir(m_form->world.store)
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

bool TestFormFileDeletes::wasReadAgain() const
{
    return !m_form->view->anyChecked();
}

void TestFormFileDeletes::protect(const char *name) const
{
    QVERIFY(QFile::setPermissions(m_form->world.path(QString::fromUtf8(name)), QFile::ReadOwner));
}

void TestFormFileDeletes::aPhotoIsDeleted()
{
    m_form->world.makePhotos(3);
    start("a01.jpg");
    QCOMPARE(play(kDelete, {yes()}), (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking}));
    QCOMPARE(store(), list("a00.jpg a02.jpg"));
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), list("a00.jpg a02.jpg"));
    QCOMPARE(m_form->view->currentIndex(), 0);
    QVERIFY(wasReadAgain());
}

void TestFormFileDeletes::onlyYesDeletes_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("the default") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("the window's control") << 2;
    QTest::newRow("No") << 3;
}

void TestFormFileDeletes::onlyYesDeletes()
{
    QFETCH(int, way);
    const QList<DialogAnswer> ways{pressing(Qt::Key_Return), pressing(Qt::Key_Escape), closing(),
                                   clicking(QMessageBox::No)};
    m_form->world.makePhotos(1);
    start("a00.jpg");
    QCOMPARE(play(kDelete, {ways.at(way)}), QStringList{askDelete(QStringLiteral("a00.jpg"))});
    QCOMPARE(store(), list("a00.jpg"));
    QVERIFY(!wasReadAgain());
}

void TestFormFileDeletes::aProtectedPhotoStays()
{
    m_form->world.makePhotos(2);
    protect("a01.jpg");
    start("a01.jpg");
    // The wait dialog has gone when the failure is told.
    QCOMPARE(play(kDelete, {yes(), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(store(), list("a00.jpg a01.jpg"));
    QVERIFY(wasReadAgain());
    QVERIFY(m_form->waitForCells(2));
}

void TestFormFileDeletes::aFolderIsNotDeleted()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    start("dir");
    QCOMPARE(play(kDelete, {yes(), ok()}),
             (QStringList{askDelete(QStringLiteral("dir")), kWorking, kNotDeleted}));
    QCOMPARE(store(), list("a00.jpg dir"));
    QVERIFY(wasReadAgain());
}

void TestFormFileDeletes::deleteWithoutAnItemDoesNothing()
{
    m_form->world.makePhotos(1);
    start();
    QVERIFY(play(kDelete, {}).isEmpty());
    QVERIFY(!wasReadAgain());
}

void TestFormFileDeletes::longNamesAreCutInTheQuestion()
{
    const QString name = QString(QStringLiteral("X")).repeated(30) + QStringLiteral(".jpg");
    m_form->world.makePhoto(name);
    start(qPrintable(name));
    const QStringList seen = play(kDelete, {cancel()});
    QCOMPARE(seen.size(), 1);
    const QString shown = seen.first().section(QLatin1Char(' '), 2, 2);
    QVERIFY2(shown.startsWith(QLatin1String("XXXXXXXXXXXXXXX")), qPrintable(shown));
    QVERIFY(shown.endsWith(QLatin1String("...")));
    QVERIFY(shown.size() <= 23);
}

void TestFormFileDeletes::namesAreNoMarkup()
{
    const QString name = QStringLiteral("<b>x<b>%1.jpg");
    m_form->world.makePhoto(name);
    start(qPrintable(name));
    // A box that took it for markup would say so.
    QCOMPARE(play(kDelete, {cancel()}), QStringList{askDelete(name)});
}

/// The listing may be read again under the question, so that the cursor is on another photo.
void TestFormFileDeletes::onlyWhatWasAskedAboutIsDeleted()
{
    m_form->world.makePhotos(3);
    start("a01.jpg");
    const auto move = [this] {
        QTest::keyClick(m_form->view, Qt::Key_Right);
    };
    QCOMPARE(play(kDelete, {after(move, yes()), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(store(), list("a00.jpg a01.jpg a02.jpg"));
    // Nor is another one whose place it has.
    start("a01.jpg");
    const auto reload = [this] {
        QVERIFY(QFile::remove(m_form->world.path(QStringLiteral("a00.jpg"))));
        m_form->view->reload(m_form->world.store);
    };
    QCOMPARE(play(kDelete, {after(reload, yes()), ok()}),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(store(), list("a01.jpg a02.jpg"));
}

void TestFormFileDeletes::theWaitLetsNoOtherPhotoIn_data()
{
    QTest::addColumn<bool>("isListChanged");
    QTest::newRow("the cursor moves on") << false;
    QTest::newRow("another photo comes to its place") << true;
}

/// Events run while the wait dialog is painted.
void TestFormFileDeletes::theWaitLetsNoOtherPhotoIn()
{
    QFETCH(bool, isListChanged);
    m_form->world.makePhotos(3);
    start("a01.jpg");
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
    QCOMPARE(play(kDelete, {yes(), ok()}, change),
             (QStringList{askDelete(QStringLiteral("a01.jpg")), kWorking, kNotDeleted}));
    QCOMPARE(other, QStringLiteral("a02.jpg"));
    const QLatin1String first(isListChanged ? "b00.jpg" : "a00.jpg");
    QStringList all = list("a01.jpg a02.jpg") << first;
    all.sort();
    QCOMPARE(store(), all);
}

void TestFormFileDeletes::markedPhotosAreDeleted()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(4);
    start("a03.jpg");
    m_form->view->uncheckAll();
    QVERIFY(m_form->waitForCells(5));
    for (const char *name : {"a00.jpg", "a02.jpg"}) {
        m_form->cell(QString::fromUtf8(name))->toggleItemCheck(true);
    }
    QCOMPARE(play(kDeleteChecked, {yes()}), (QStringList{kAskMarked, kWorking}));
    QCOMPARE(store(), list("a01.jpg a03.jpg dir"));
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->names(), list("dir a01.jpg a03.jpg"));
}

void TestFormFileDeletes::partOfTheMarkedPhotosStays_data()
{
    QTest::addColumn<QStringList>("protectedOnes");
    QTest::addColumn<QStringList>("dialogs");
    QTest::newRow("two of three") << list("a00.jpg a02.jpg") << QStringList{kAskMarked, kWorking};
    QTest::newRow("all of them") << list("a00.jpg a01.jpg a02.jpg")
                                 << QStringList{kAskMarked, kWorking, kPartStayed};
}

void TestFormFileDeletes::partOfTheMarkedPhotosStays()
{
    QFETCH(QStringList, protectedOnes);
    m_form->world.makePhotos(3);
    for (const QString &name : protectedOnes) {
        protect(qPrintable(name));
    }
    start("a01.jpg");
    const int cursor = m_form->view->currentIndex();
    QTEST(play(kDeleteChecked, {yes(), ok()}), "dialogs");
    QCOMPARE(store(), protectedOnes);
    // The folder is not entered anew: marks and cursor stay.
    QVERIFY(m_form->view->anyChecked());
    QCOMPARE(m_form->view->currentIndex(), cursor);
}

void TestFormFileDeletes::emptyFoldersAreDeleted()
{
    for (const char *name : {"empty", "two words", "full/sub"}) {
        m_form->world.makeFolder(QString::fromUtf8(name));
    }
    m_form->world.makePhotos(1);
    start("full");
    QCOMPARE(play(kDeleteEmpty, {yes()}), (QStringList{kAskEmpty, kWorking}));
    QCOMPARE(store(), list("a00.jpg full"));
    QVERIFY(m_form->waitForCells(2));
    QVERIFY(wasReadAgain());
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("full/sub"))));
    // None left: not a word, but the listing is read again.
    m_form->view->checkAll();
    QCOMPARE(play(kDeleteEmpty, {yes()}), (QStringList{kAskEmpty, kWorking}));
    QVERIFY(wasReadAgain());
}

void TestFormFileDeletes::emptyFoldersOfANotListedFolder()
{
    start();
    m_form->view->setList(nullptr);
    QCOMPARE(play(kDeleteEmpty, {yes(), ok()}), (QStringList{kAskEmpty, kWorking, kFoldersStayed}));
}

void TestFormFileDeletes::questionsThatAreNotAnsweredWithYes_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("question");
    QTest::newRow("Delete Selected") << kDeleteChecked << kAskMarked;
    QTest::newRow("Delete Empty Folder") << kDeleteEmpty << kAskEmpty;
}

void TestFormFileDeletes::questionsThatAreNotAnsweredWithYes()
{
    QFETCH(int, entry);
    QFETCH(QString, question);
    m_form->world.makeFolder(QStringLiteral("empty"));
    m_form->world.makePhotos(2);
    start("a00.jpg");
    for (const DialogAnswer &no : {pressing(Qt::Key_Return), pressing(Qt::Key_Escape), closing(),
                                   clicking(QMessageBox::No)}) {
        QCOMPARE(play(entry, {no}), QStringList{question});
    }
    QCOMPARE(store(), list("a00.jpg a01.jpg empty"));
    QVERIFY(!wasReadAgain());
}

void TestFormFileDeletes::cardsWaitUntilTheQuestionIsAnswered()
{
    m_form->world.makePhotos(2);
    start("a00.jpg");
    const auto insert = [this] {
        m_form->world.machine->insertCard(Slot::SD);
        m_form->tellCardChange();
        QCOMPARE(m_form->combo->count(), 1);
    };
    play(kDelete, {after(insert, yes())});
    QTRY_COMPARE(m_form->combo->count(), 2);
    QCOMPARE(store(), list("a01.jpg"));
}

LUMI_TEST(TestFormFileDeletes)
#include "TestFormFileDeletes.moc"

// SPDX-License-Identifier: MIT
// Copy, cut, paste and marks, by menu and by key.
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using namespace lumi::test;

namespace {

const QString kFull = QStringLiteral("critical Error: Free some memory and try again OK*");

/// Size of a disk in bytes; enough for a small photo.
constexpr int kRoom = 20000;

} // namespace

class TestFormFileClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void aCopyGoesIntoAnotherFolder();
    void aCutIsPastedOnce();
    void markedPhotosGoTogether_data();
    void markedPhotosGoTogether();
    void marksOutliveTheClipboard();
    void nothingOnTheClipboardIsSilent();
    void failuresAreReported_data();
    void failuresAreReported();
    void tooLittleSpaceIsReported_data();
    void tooLittleSpaceIsReported();
    void allAreMarkedAndUnmarked();
    void keysLeaveFoldersAlone();

private:
    void start(int cells);
    void enter(const char *folder, int cells);
    /// Chooses an entry, which must be enabled.
    QStringList play(int entry, const QList<DialogAnswer> &answers = {});
    QStringList playKey(Qt::Key key, Qt::KeyboardModifiers modifiers,
                        const QList<DialogAnswer> &answers = {});

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileClipboard::start(int cells)
{
    m_form->start();
    QVERIFY(m_form->waitForCells(cells));
}

void TestFormFileClipboard::enter(const char *folder, int cells)
{
    m_form->form->filelist_decided(m_form->cell(QString::fromUtf8(folder))->item());
    QVERIFY(m_form->waitForCells(cells));
}

QStringList TestFormFileClipboard::play(int entry, const QList<DialogAnswer> &answers)
{
    m_form->grayOut();
    if (!m_form->entry(entry)->isEnabled()) {
        return {QStringLiteral("the entry is gray")};
    }
    return m_form->play(entry, answers);
}

QStringList TestFormFileClipboard::playKey(Qt::Key key, Qt::KeyboardModifiers modifiers,
                                           const QList<DialogAnswer> &answers)
{
    DialogDriver driver;
    driver.answerInOrder(answers);
    QTest::keyClick(m_form->view, key, modifiers);
    return driver.lines();
}

void TestFormFileClipboard::aCopyGoesIntoAnotherFolder()
{
    m_form->world.makePhotos(2);
    m_form->world.makePhoto(QStringLiteral("dir/b.jpg"));
    start(3);
    m_form->select("a01.jpg");
    QVERIFY(play(kCopy).isEmpty());
    enter("dir", 1);
    QCOMPARE(play(kPaste), QStringList{kWorking});
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), list("b.jpg a01.jpg"));
    // The cursor is on the new photo.
    QCOMPARE(m_form->view->currentObject()->fileName(), QStringLiteral("a01.jpg"));
    QCOMPARE(m_form->status->text(), QStringLiteral("a01"));
    QCOMPARE(play(kPaste), QStringList{kWorking});
    QCOMPARE(m_form->storeTree(), list("a00.jpg a01.jpg dir dir/a01-1.jpg dir/a01.jpg dir/b.jpg"));
}

void TestFormFileClipboard::aCutIsPastedOnce()
{
    m_form->world.makePhotos(2);
    m_form->world.makeFolder(QStringLiteral("dir"));
    start(3);
    m_form->select("a01.jpg");
    QVERIFY(play(kCut).isEmpty());
    QCOMPARE(m_form->storeTree(), list("a00.jpg a01.jpg dir"));
    enter("dir", 0);
    QCOMPARE(play(kPaste), QStringList{kWorking});
    QVERIFY(m_form->waitForCells(1));
    QCOMPARE(m_form->storeTree(), list("a00.jpg dir dir/a01.jpg"));
    m_form->grayOut();
    QVERIFY(!m_form->entry(kPaste)->isEnabled());
    m_form->form->filelist_decided(nullptr);
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), list("dir a00.jpg"));
}

void TestFormFileClipboard::markedPhotosGoTogether_data()
{
    lumi::test::columns<int, QStringList>();
    QTest::newRow("copied") << kCopyChecked << list("a00.jpg a01.jpg a02.jpg");
    QTest::newRow("cut") << kCutChecked << list("a01.jpg");
}

void TestFormFileClipboard::markedPhotosGoTogether()
{
    const auto [entry, left] = lumi::test::row<int, QStringList>();
    m_form->world.makePhotos(3);
    m_form->world.makeFolder(QStringLiteral("to"));
    start(4);
    // They are pasted in the order of the listing, not of marking.
    for (const char *name : {"a02.jpg", "a00.jpg"}) {
        m_form->cell(QString::fromUtf8(name))->toggleItemCheck(true);
    }
    QVERIFY(play(entry).isEmpty());
    enter("to", 0);
    QCOMPARE(play(kPaste), QStringList{kWorking});
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), list("a00.jpg a02.jpg"));
    QCOMPARE(m_form->storeTree(), QStringList(left + list("to to/a00.jpg to/a02.jpg")));
}

void TestFormFileClipboard::marksOutliveTheClipboard()
{
    m_form->world.makePhotos(2);
    start(2);
    m_form->cell(QStringLiteral("a00.jpg"))->toggleItemCheck(true);
    for (const int entry : {kCopyChecked, kCutChecked, kCopy, kCut}) {
        play(entry);
        QVERIFY(m_form->view->anyChecked());
    }
    m_form->view->clipboard().take({m_form->world.path(QStringLiteral("a01.jpg"))}, false);
    play(kPaste);
    QVERIFY(m_form->view->anyChecked());
    QVERIFY(m_form->waitForCells(3));
}

void TestFormFileClipboard::nothingOnTheClipboardIsSilent()
{
    m_form->world.makePhotos(1);
    start(1);
    const DialogDriver driver;
    m_form->form->menu_edit_Paste();
    QVERIFY(driver.seen.isEmpty());
    QCOMPARE(m_form->storeTree(), list("a00.jpg"));
}

void TestFormFileClipboard::failuresAreReported_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a missing photo") << "gone.jpg";
    QTest::newRow("a broken link") << "link.jpg";
    QTest::newRow("no name is free") << "dir/plain";
    QTest::newRow("a pipe in a photo's place") << "dir/pipe.jpg";
    QTest::newRow("the disk is full") << "dir/big.jpg";
}

void TestFormFileClipboard::failuresAreReported()
{
    QFETCH(QString, path);
    m_form->world.makePhotos(1);
    m_form->world.makeFile(QStringLiteral("plain"), "mine");
    m_form->world.makeFile(QStringLiteral("dir/plain"), "new");
    QVERIFY(QFile::link(QStringLiteral("none"), m_form->world.path(QStringLiteral("link.jpg"))));
    m_form->world.makeFile(QStringLiteral("dir/big.jpg"), QByteArray(kRoom + 1, 'x'));
    const QString pipe = m_form->world.path(QStringLiteral("dir/pipe.jpg"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    start(2);
    const QStringList before = m_form->storeTree();
    auto limit = std::make_unique<FileSizeLimit>(kRoom);
    // Copies made before the failure stay and are shown.
    m_form->view->clipboard().take(
        {m_form->world.path(QStringLiteral("a00.jpg")), m_form->world.path(path)}, true);
    QCOMPARE(play(kPaste, {clicking(QMessageBox::Ok)}), (QStringList{kWorking, kNotPasted}));
    QCOMPARE(m_form->storeTree(), before);
    QVERIFY(m_form->view->clipboardPaths().isEmpty());
    m_form->view->clipboard().take(
        {m_form->world.path(QStringLiteral("a00.jpg")), m_form->world.path(path)}, false);
    QCOMPARE(play(kPaste, {closing()}), (QStringList{kWorking, kNotPasted}));
    limit.reset();
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->names().last(), QStringLiteral("a00-1.jpg"));
    QCOMPARE(m_form->view->clipboardPaths().size(), 2);
}

void TestFormFileClipboard::tooLittleSpaceIsReported_data()
{
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<QStringList>("dialogs");
    QTest::newRow("10240 KB are too little") << 10240 << QStringList{kWorking, kFull};
    QTest::newRow("10241 KB are enough") << 10241 << QStringList{kWorking};
}

void TestFormFileClipboard::tooLittleSpaceIsReported()
{
    QFETCH(int, freeKB);
    m_form->world.makePhotos(1);
    start(1);
    m_form->select("a00.jpg");
    play(kCopy);
    m_form->world.machine->diskAt = [freeKB](const QByteArray &) {
        // A block of this size counts as 1 KB.
        return DiskFigures{1536, freeKB, freeKB, true};
    };
    QTEST(play(kPaste, {clicking(QMessageBox::Ok)}), "dialogs");
    QCOMPARE(m_form->storeTree(), freeKB > 10240 ? list("a00-1.jpg a00.jpg") : list("a00.jpg"));
    QCOMPARE(m_form->view->clipboardPaths().size(), 1);
}

void TestFormFileClipboard::allAreMarkedAndUnmarked()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhotos(2);
    start(3);
    m_form->select("a01.jpg");
    QVERIFY(play(kCheckAll).isEmpty());
    QVERIFY(m_form->waitForCells(3));
    QVERIFY(!m_form->cell(QStringLiteral("dir"))->item()->isChecked());
    QVERIFY(m_form->cell(QStringLiteral("a00.jpg"))->item()->isChecked());
    QVERIFY(m_form->cell(QStringLiteral("a01.jpg"))->item()->isChecked());
    QCOMPARE(m_form->view->currentIndex(), 2);
    QVERIFY(play(kReleaseCheck).isEmpty());
    QVERIFY(!m_form->view->anyChecked());
    QVERIFY(m_form->waitForCells(3));
}

void TestFormFileClipboard::keysLeaveFoldersAlone()
{
    m_form->world.makeFolder(QStringLiteral("dir"));
    start(1);
    m_form->select("dir");
    QVERIFY(playKey(Qt::Key_X, Qt::ControlModifier).isEmpty());
    QVERIFY(playKey(Qt::Key_Delete, {}).isEmpty());
    QVERIFY(m_form->view->clipboardPaths().isEmpty());
    QVERIFY(playKey(Qt::Key_C, Qt::ControlModifier).isEmpty());
    QCOMPARE(m_form->view->clipboardPaths(),
             QStringList{m_form->world.path(QStringLiteral("dir"))});
}

LUMI_TEST(TestFormFileClipboard)
#include "TestFormFileClipboard.moc"

// SPDX-License-Identifier: MIT
// Pastes of files without failures.
#include "items/FPVItemList.h"
#include "platform/session/QuitRequest.h"
#include "tests/files/engine/PasteTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <csignal>

#include <unistd.h>

using lumi::PasteResult;
using lumi::test::FileFixture;
using lumi::test::list;

class TestFPVClipboard : public PasteTest
{
    Q_OBJECT

private Q_SLOTS:
    void contentsArrive_data();
    void contentsArrive();
    void onlyContentsArePasted();
    void aCopyCanBePastedAnyNumberOfTimes();
    void aCutCanBePastedOnce();
    void aCopyIntoItsOwnFolderGetsANumber();
    void aCutIntoItsOwnFolderStaysUnderAnySpelling();
    void aHardLinkElsewhereIsAnotherPhoto();
    void freeNames_data();
    void freeNames();
    void withoutADotThereIsNoFreeName();
    void theNumberMayGoIntoAFoldersName();
    void numbersEndAt65534();
    void aClosingSlashOfTheFolder();
    void roomIsAskedWhereTheCopyGoes();
    void theListGetsItems();
    void pathsGoInTheirOrder();
    void theEndOfTheProgramEndsAPaste_data();
    void theEndOfTheProgramEndsAPaste();
};

void TestFPVClipboard::contentsArrive_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("an empty file") << 0 << "a.jpg";
    QTest::newRow("one byte") << 1 << "a.jpg";
    QTest::newRow("one byte less than a block") << 8191 << "a.jpg";
    QTest::newRow("a block") << 8192 << "a.jpg";
    QTest::newRow("a block and a byte") << 8193 << "a.jpg";
    QTest::newRow("many blocks") << 1000003 << "a.jpg";
    QTest::newRow("blanks in the name") << 5 << " two  words .jpg";
    QTest::newRow("other scripts") << 5 << "写真 été.jpg";
    QTest::newRow("format characters") << 5 << "100%d %1%s.jpg";
}

void TestFPVClipboard::contentsArrive()
{
    const auto [size, name] = lumi::test::row<int, QString>();
    const QByteArray content = FileFixture::noise(size);
    for (const bool cut : {false, true}) {
        const QString source = m_files->make(name, content);
        m_clipboard.take({source}, cut);
        QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), nullptr),
                 PasteResult::Done);
        const QString target = QStringLiteral("to/") + name;
        QCOMPARE(m_files->content(target), size == 0 ? QByteArray("") : content);
        QCOMPARE(QFile::exists(source), !cut);
        QVERIFY(QFile::remove(m_files->path(target)));
    }
}

void TestFPVClipboard::onlyContentsArePasted()
{
    QFile file(m_files->make(QStringLiteral("a.jpg"), "1"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addYears(-3),
                             QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(paste("a.jpg", false), PasteResult::Done);
    const QFileInfo copied(m_files->path(QStringLiteral("to/a.jpg")));
    QVERIFY(copied.lastModified() > QDateTime::currentDateTime().addDays(-1));
    QVERIFY(copied.permission(QFile::WriteOwner) && !copied.permission(QFile::ExeOwner));
}

void TestFPVClipboard::aCopyCanBePastedAnyNumberOfTimes()
{
    m_files->make(QStringLiteral("a.jpg"), "1");
    QCOMPARE(paste("a.jpg", false), PasteResult::Done);
    const QString folder = m_files->path(QStringLiteral("to"));
    QCOMPARE(m_clipboard.paste(folder, nullptr), PasteResult::Done);
    QCOMPARE(m_clipboard.paste(folder, nullptr), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a-1.jpg a-2.jpg a.jpg"));
    QCOMPARE(m_clipboard.paths(), QStringList{m_files->path(QStringLiteral("a.jpg"))});
    QVERIFY(!m_clipboard.isCut());
}

void TestFPVClipboard::aCutCanBePastedOnce()
{
    m_files->make(QStringLiteral("a.jpg"), "1");
    QCOMPARE(paste("a.jpg", true), PasteResult::Done);
    QCOMPARE(m_files->entries(), list("to/ to/a.jpg"));
    QVERIFY(m_clipboard.paths().isEmpty());
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), nullptr), PasteResult::Done);
    QCOMPARE(m_files->entries(), list("to/ to/a.jpg"));
}

void TestFPVClipboard::aCopyIntoItsOwnFolderGetsANumber()
{
    m_files->make(QStringLiteral("to/a.jpg"), "1");
    m_files->make(QStringLiteral("to/b.jpg"), "2");
    QCOMPARE(paste("to/a.jpg to/b.jpg", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a-1.jpg a.jpg b-1.jpg b.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/b-1.jpg")), QByteArray("2"));
}

/// On a card "to" and "TO" may be the same folder. Here a link stands in for that.
void TestFPVClipboard::aCutIntoItsOwnFolderStaysUnderAnySpelling()
{
    const QString photo = m_files->make(QStringLiteral("to/a.jpg"), "1");
    const QString other = m_files->makeLink(QStringLiteral("TO"), QStringLiteral("to"));
    FPVItemList items(other, m_files->path());
    m_clipboard.take({photo}, true);
    QCOMPARE(m_clipboard.paste(other, &items), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), QByteArray("1"));
    QCOMPARE(items.count(), 1);
    QVERIFY(m_clipboard.paths().isEmpty());
    // A copy still gets a number.
    QCOMPARE(paste("TO/a.jpg", false), PasteResult::Done);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a-1.jpg a.jpg"));
}

void TestFPVClipboard::aHardLinkElsewhereIsAnotherPhoto()
{
    const QString photo = m_files->make(QStringLiteral("a.jpg"), "1");
    const QString linked = m_files->path(QStringLiteral("to/a.jpg"));
    QCOMPARE(::link(QFile::encodeName(photo).constData(), QFile::encodeName(linked).constData()),
             0);
    QCOMPARE(paste("a.jpg", true), PasteResult::Done);
    QCOMPARE(m_files->entries(), list("to/ to/a-1.jpg to/a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a-1.jpg")), QByteArray("1"));
}

void TestFPVClipboard::freeNames_data()
{
    lumi::test::columns<QString, QStringList, QString>();
    QTest::newRow("a free name stands") << "a.jpg" << list("b.jpg") << "a.jpg";
    QTest::newRow("different case is another name") << "a.jpg" << list("A.JPG") << "a.jpg";
    QTest::newRow("before the extension") << "a.jpg" << list("a.jpg") << "a-1.jpg";
    QTest::newRow("the next number") << "a.jpg" << list("a.jpg a-1.jpg a-2.jpg") << "a-3.jpg";
    QTest::newRow("a gap is used") << "a.jpg" << list("a.jpg a-2.jpg") << "a-1.jpg";
    QTest::newRow("the last of several dots") << "a.b.JPG" << list("a.b.JPG") << "a.b-1.JPG";
    QTest::newRow("a number behind a number") << "a-1.jpg" << list("a-1.jpg") << "a-1-1.jpg";
    QTest::newRow("nothing before the dot") << ".jpg" << list(".jpg") << "-1.jpg";
    QTest::newRow("a dot at the end") << "a." << list("a.") << "a-1.";
    QTest::newRow("a name is taken by a folder") << "a.jpg" << list("a.jpg/") << "a-1.jpg";
    QTest::newRow("a name is taken by a broken link") << "a.jpg" << list("a.jpg@") << "a-1.jpg";
    QTest::newRow("a name is taken by a pipe") << "a.jpg" << list("a.jpg|") << "a-1.jpg";
}

void TestFPVClipboard::freeNames()
{
    const auto [name, taken, expected] = lumi::test::row<QString, QStringList, QString>();
    for (const QString &one : taken) {
        const QString path = QStringLiteral("to/") + one;
        if (one.endsWith(QLatin1Char('/'))) {
            m_files->makeFolder(path);
        } else if (one.endsWith(QLatin1Char('@'))) {
            m_files->makeLink(path.chopped(1), QStringLiteral("gone"));
        } else if (one.endsWith(QLatin1Char('|'))) {
            m_files->makePipe(path.chopped(1));
        } else {
            m_files->make(path, "mine");
        }
    }
    const QStringList before = m_files->entries(QStringLiteral("to"));
    m_clipboard.take({m_files->make(QStringLiteral("from/") + name, "new")}, false);
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), nullptr), PasteResult::Done);
    QCOMPARE(m_files->content(QStringLiteral("to/") + expected), QByteArray("new"));
    QStringList after = m_files->entries(QStringLiteral("to"));
    QVERIFY(after.removeOne(expected));
    QCOMPARE(after, before);
}

void TestFPVClipboard::withoutADotThereIsNoFreeName()
{
    m_files->make(QStringLiteral("photo"), "new");
    m_files->make(QStringLiteral("to/photo"), "mine");
    QVERIFY(!m_files->path().contains(QLatin1Char('.')));
    for (const bool cut : {false, true}) {
        QCOMPARE(paste("photo", cut), PasteResult::TargetNotMade);
        QCOMPARE(m_files->content(QStringLiteral("to/photo")), QByteArray("mine"));
        QCOMPARE(m_files->content(QStringLiteral("photo")), QByteArray("new"));
    }
}

void TestFPVClipboard::theNumberMayGoIntoAFoldersName()
{
    m_files->make(QStringLiteral("photo"), "new");
    m_files->make(QStringLiteral("x.d/photo"), "mine");
    QCOMPARE(paste("photo", false, "x.d"), PasteResult::TargetNotMade);
    m_files->makeFolder(QStringLiteral("x-1.d"));
    QCOMPARE(paste("photo", false, "x.d"), PasteResult::Done);
    QCOMPARE(m_files->content(QStringLiteral("x-1.d/photo")), QByteArray("new"));
    QCOMPARE(m_files->content(QStringLiteral("x.d/photo")), QByteArray("mine"));
}

void TestFPVClipboard::numbersEndAt65534()
{
    constexpr int kLast = 65534;
    m_files->make(QStringLiteral("a.jpg"), "new");
    m_files->make(QStringLiteral("to/a.jpg"), "mine");
    for (int n = 1; n < kLast; ++n) {
        m_files->make(QStringLiteral("to/a-%1.jpg").arg(n));
    }
    const QString last = QStringLiteral("to/a-%1.jpg").arg(kLast);
    QCOMPARE(paste("a.jpg", false), PasteResult::Done);
    QCOMPARE(m_files->content(last), QByteArray("new"));
    m_files->make(last, "mine too");
    QCOMPARE(paste("a.jpg", true), PasteResult::TargetNotMade);
    QCOMPARE(m_files->content(last), QByteArray("mine too"));
    QCOMPARE(m_files->content(QStringLiteral("a.jpg")), QByteArray("new"));
    QVERIFY(!QFile::exists(m_files->path(QStringLiteral("to/a-65535.jpg"))));
}

void TestFPVClipboard::aClosingSlashOfTheFolder()
{
    m_files->make(QStringLiteral("a.jpg"), "1");
    FPVItemList items;
    m_clipboard.take({m_files->path(QStringLiteral("a.jpg"))}, false);
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to/")), &items), PasteResult::Done);
    QCOMPARE(items.at(0)->path(), m_files->path(QStringLiteral("to/a.jpg")));
}

void TestFPVClipboard::roomIsAskedWhereTheCopyGoes()
{
    QByteArrayList asked;
    m_machine->diskAt = [&asked](const QByteArray &path) {
        asked.append(path);
        return DiskFigures{};
    };
    m_files->make(QStringLiteral("a.jpg"), "1");
    // An unknown free space counts as none.
    QCOMPARE(paste("a.jpg", false), PasteResult::NoRoom);
    QCOMPARE(asked, QByteArrayList{QFile::encodeName(m_files->path(QStringLiteral("to")))});
    // A cut into its own folder needs no space.
    m_files->make(QStringLiteral("to/b.jpg"), "1");
    QCOMPARE(paste("to/b.jpg", true), PasteResult::Done);
    QCOMPARE(asked.size(), 1);
}

void TestFPVClipboard::theListGetsItems()
{
    m_files->make(QStringLiteral("to/x.jpg"), "0");
    m_files->make(QStringLiteral("a.jpg"), "1");
    m_files->make(QStringLiteral("b.jpg"), "2");
    FPVItemList items(m_files->path(QStringLiteral("to")), m_files->path());
    QCOMPARE(items.count(), 1);
    m_clipboard.take(
        {m_files->path(QStringLiteral("b.jpg")), m_files->path(QStringLiteral("a.jpg"))}, true);
    QCOMPARE(m_clipboard.paste(items.currentPath(), &items), PasteResult::Done);
    QCOMPARE(items.count(), 3);
    QCOMPARE(items.at(1)->path(), m_files->path(QStringLiteral("to/b.jpg")));
    QCOMPARE(items.at(2)->path(), m_files->path(QStringLiteral("to/a.jpg")));
    QVERIFY(items.at(1)->isPicture());
    QCOMPARE(items.at(1)->ownerList(), &items);
    QVERIFY(!items.at(1)->isChecked());
}

void TestFPVClipboard::pathsGoInTheirOrder()
{
    for (const char *name : {"one/a.jpg", "two/a.jpg", "three/a.jpg"}) {
        m_files->make(QLatin1String(name), name);
    }
    QCOMPARE(paste("two/a.jpg three/a.jpg one/a.jpg", true), PasteResult::Done);
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), QByteArray("two/a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a-1.jpg")), QByteArray("three/a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a-2.jpg")), QByteArray("one/a.jpg"));
}

void TestFPVClipboard::theEndOfTheProgramEndsAPaste_data()
{
    lumi::test::columns<bool>();
    QTest::newRow("copied") << false;
    QTest::newRow("cut") << true;
}

/// The request comes when the second file is about to be copied.
void TestFPVClipboard::theEndOfTheProgramEndsAPaste()
{
    const auto [cut] = lumi::test::row<bool>();
    const lumi::QuitRequest request;
    for (const char *name : {"a.jpg", "b.jpg", "c.jpg"}) {
        m_files->make(QLatin1String(name), name);
    }
    int question = 0;
    m_machine->diskAt = [&question](const QByteArray &) {
        if (++question == 2) {
            ::raise(SIGTERM);
        }
        return DiskFigures{1024, 1 << 20, 1 << 20, true};
    };
    QCOMPARE(paste("a.jpg b.jpg c.jpg", cut), PasteResult::Done);
    QCOMPARE(question, 2);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a.jpg b.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/b.jpg")), QByteArray("b.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("c.jpg")), QByteArray("c.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")).isNull(), cut);
}

LUMI_TEST(TestFPVClipboard)
#include "TestFPVClipboard.moc"

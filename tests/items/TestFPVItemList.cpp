// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "items/FPVItemList.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/OpenWatch.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/processFigures.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::ListResult;
using lumi::test::BoxCloser;

class TestFPVItemList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void foldersFirstThenCapitals();
    void namesThatAreListed_data();
    void namesThatAreListed();
    void entriesThatBecomeItems();
    void itemsKnowTheirList();
    void aNewListIsEmpty();
    void theConstructorLoads();
    void pathsAreCleaned();
    void aFolderReachedByUpIsFoundWithoutItsChild();
    void theRootIsKept();
    void aMissingFolderChangesNothing();
    void anEmptyFolderEmptiesTheList();
    void aMissingRootIsToldOnce();
    void loadingWhileTheBoxIsOpenIsRefused();
    void unreadableEntriesAreNotListed();
    void listingOpensNoFile();
    void itemsAreSmall();

private:
    void make(const QString &name) const;

    [[nodiscard]] QString root() const { return m_folder->path(); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QStringList namesOf(const FPVItemList &list)
{
    QStringList names;
    for (const FPVItemObject *item : list) {
        names.append(item->fileName());
    }
    return names;
}

} // namespace

void TestFPVItemList::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestFPVItemList::cleanup()
{
    FPVItemList::resetRootMissing();
}

void TestFPVItemList::make(const QString &name) const
{
    lumi::test::writeFile(m_folder->filePath(name), QByteArray("no photo at all"));
}

void TestFPVItemList::foldersFirstThenCapitals()
{
    for (const char *name : {"b.jpg", "A.JPG", "c.txt", "a.jpeg", "B.jpg", "_.jpg"}) {
        make(QString::fromUtf8(name));
    }
    QVERIFY(QDir(root()).mkdir(QStringLiteral("z")));
    QVERIFY(QDir(root()).mkdir(QStringLiteral("Y")));
    FPVItemList list;
    QCOMPARE(list.load(root(), root()), ListResult::Listed);
    QCOMPARE(namesOf(list), lumi::test::words("Y z A.JPG B.jpg _.jpg a.jpeg b.jpg"));
}

void TestFPVItemList::namesThatAreListed_data()
{
    lumi::test::columns<QString, int>();
    QTest::newRow("jpg") << "a.jpg" << 257;
    QTest::newRow("jpeg, in mixed letters") << "a.JpEg" << 257;
    QTest::newRow("the last extension counts") << "a.b.JPG" << 257;
    QTest::newRow("another extension of JPEG files") << "a.jpe" << 0;
    QTest::newRow("jpg before the last dot") << "a.jpg.bak" << 0;
    QTest::newRow("a name without a dot") << "jpg" << 0;
    QTest::newRow("a hidden photo") << ".a.jpg" << 0;
    QTest::newRow("nothing but the extension is hidden") << ".jpg" << 0;
    QTest::newRow("a folder") << "sub/" << 2;
    QTest::newRow("a folder named like a photo") << "x.jpg/" << 2;
    QTest::newRow("a hidden folder") << ".photo_swp/" << 0;
    QTest::newRow("a blank and a per cent sign") << "a %1 b.jpg" << 257;
}

void TestFPVItemList::namesThatAreListed()
{
    auto [name, kind] = lumi::test::row<QString, int>();
    if (name.endsWith(QLatin1Char('/'))) {
        name.chop(1);
        QVERIFY(QDir(root()).mkdir(name));
    } else {
        make(name);
    }
    FPVItemList list(root(), root());
    QCOMPARE(list.count(), kind == 0 ? 0 : 1);
    if (kind != 0) {
        QCOMPARE(list.at(0)->itemKind(), kind);
        QCOMPARE(list.at(0)->path(), m_folder->filePath(name));
        QCOMPARE(list.at(0)->displayName(), name);
        QVERIFY(!list.at(0)->isChecked());
    }
}

void TestFPVItemList::entriesThatBecomeItems()
{
    make(QStringLiteral("a.jpg"));
    QVERIFY(QFile::link(QStringLiteral("a.jpg"), m_folder->filePath(QStringLiteral("link.jpg"))));
    QVERIFY(QFile::link(QStringLiteral("no"), m_folder->filePath(QStringLiteral("gone.jpg"))));
    QCOMPARE(::mkfifo(QFile::encodeName(m_folder->filePath(QStringLiteral("pipe.jpg"))), 0600), 0);
    FPVItemList list(root(), root());
    QCOMPARE(namesOf(list), QStringList{QStringLiteral("a.jpg")});

    const auto made = [this](const char *name) {
        const std::unique_ptr<FPVItemObject> item(
            FPVItemList::makeItem(QFileInfo(m_folder->filePath(QString::fromUtf8(name)))));
        return item != nullptr;
    };
    QVERIFY(made("a.jpg"));
    QVERIFY(made("link.jpg"));
    QVERIFY(!made("pipe.jpg"));
    QVERIFY(!made("."));
    QVERIFY(!made(".."));
    QVERIFY(!made("a.txt"));
}

void TestFPVItemList::itemsKnowTheirList()
{
    make(QStringLiteral("a.jpg"));
    FPVItemList list(root(), root());
    QCOMPARE(list.at(0)->ownerList(), &list);
    QVERIFY(list.at(0)->thumbnailItem() == nullptr);
    const QPointer<FPVItemObject> item = list.at(0);
    list.clear();
    QVERIFY(item.isNull());
}

void TestFPVItemList::aNewListIsEmpty()
{
    const FPVItemList list;
    QCOMPARE(list.count(), 0);
    QCOMPARE(list.rootPath(), QStringLiteral("/"));
    QVERIFY(list.autoDelete());
}

void TestFPVItemList::theConstructorLoads()
{
    make(QStringLiteral("a.jpg"));
    const FPVItemList list(root(), root());
    QCOMPARE(list.count(), 1);
    QCOMPARE(list.rootPath(), root());
    QCOMPARE(list.currentPath(), root());
}

void TestFPVItemList::pathsAreCleaned()
{
    QVERIFY(QDir(root()).mkdir(QStringLiteral("sub")));
    const QString crooked = root() + QStringLiteral("/sub/..//sub/");
    const FPVItemList list(crooked, crooked);
    QCOMPARE(list.currentPath(), m_folder->filePath(QStringLiteral("sub")));
    QCOMPARE(list.rootPath(), m_folder->filePath(QStringLiteral("sub")));
}

void TestFPVItemList::aFolderReachedByUpIsFoundWithoutItsChild()
{
    make(QStringLiteral("a.jpg"));
    FPVItemList list;
    QCOMPARE(list.load(root() + QStringLiteral("/gone/.."), root()), ListResult::Listed);
    QCOMPARE(list.currentPath(), root());
    QCOMPARE(namesOf(list), QStringList{QStringLiteral("a.jpg")});
}

void TestFPVItemList::theRootIsKept()
{
    QVERIFY(QDir(root()).mkdir(QStringLiteral("sub")));
    FPVItemList list(root(), root());
    QCOMPARE(list.load(m_folder->filePath(QStringLiteral("sub")), QString()), ListResult::Listed);
    QCOMPARE(list.rootPath(), root());
    QCOMPARE(list.currentPath(), m_folder->filePath(QStringLiteral("sub")));
}

void TestFPVItemList::aMissingFolderChangesNothing()
{
    make(QStringLiteral("a.jpg"));
    FPVItemList list(root(), root());
    const QPointer<FPVItemObject> item = list.at(0);
    QCOMPARE(list.load(m_folder->filePath(QStringLiteral("gone")), QString()),
             ListResult::PathMissing);
    QVERIFY(!item.isNull());
    QCOMPARE(list.at(0), item.data());
    QCOMPARE(list.currentPath(), root());
    QCOMPARE(int(ListResult::PathMissing), 1);
}

void TestFPVItemList::anEmptyFolderEmptiesTheList()
{
    make(QStringLiteral("a.jpg"));
    FPVItemList list(root(), root());
    QVERIFY(QFile::remove(m_folder->filePath(QStringLiteral("a.jpg"))));
    QCOMPARE(list.load(list.currentPath(), QString()), ListResult::Listed);
    QCOMPARE(list.count(), 0);
}

void TestFPVItemList::aMissingRootIsToldOnce()
{
    make(QStringLiteral("a.jpg"));
    QVERIFY(QDir(root()).mkdir(QStringLiteral("top")));
    FPVItemList list(root(), m_folder->filePath(QStringLiteral("top")));
    QCOMPARE(list.count(), 2);
    QVERIFY(QDir(root()).rmdir(QStringLiteral("top")));

    const BoxCloser closer;
    ListResult result = ListResult::Listed;
    QTimer::singleShot(0, this, [&] {
        result = list.load(root(), QString());
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(result, ListResult::RootMissing);
    QCOMPARE(int(result), 4);
    QCOMPARE(closer.boxes.size(), 1);
    QCOMPARE(closer.boxes[0].title, QStringLiteral("Error"));
    QCOMPARE(closer.boxes[0].text,
             QStringLiteral("Cannot recognize the \"Photo_Files\" folder.\nApplication will "
                            "exit.\nDo not modify this folder\nwhile starting"));
    QCOMPARE(closer.boxes[0].icon, int(QMessageBox::Critical));
    QCOMPARE(closer.boxes[0].buttons, int(QMessageBox::Ok));
    QVERIFY(!closer.boxes[0].hasParent);
    QCOMPARE(list.count(), 2);

    // Loading stays refused for the rest of the process, for any list, even if the root is back.
    QVERIFY(QDir(root()).mkdir(QStringLiteral("top")));
    QCOMPARE(list.load(root(), QString()), ListResult::RootMissing);
    FPVItemList other;
    QCOMPARE(other.load(root(), root()), ListResult::RootMissing);
    QTest::qWait(20);
    QCOMPARE(closer.boxes.size(), 1);
}

void TestFPVItemList::loadingWhileTheBoxIsOpenIsRefused()
{
    FPVItemList list;
    ListResult outer = ListResult::Listed;
    ListResult inner = ListResult::Listed;
    int boxes = 0;
    QTimer::singleShot(0, this, [&] {
        outer = list.load(root(), m_folder->filePath(QStringLiteral("gone")));
    });
    QTimer::singleShot(0, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        boxes += box != nullptr ? 1 : 0;
        inner = list.load(root(), root());
        if (box != nullptr) {
            box->accept();
        }
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(outer, ListResult::RootMissing);
    QCOMPARE(boxes, 1);
    QCOMPARE(inner, ListResult::RootMissing);
}

void TestFPVItemList::unreadableEntriesAreNotListed()
{
    make(QStringLiteral("a.jpg"));
    make(QStringLiteral("locked.jpg"));
    QVERIFY(QDir(root()).mkdir(QStringLiteral("sub")));
    const QFile::Permissions all = QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner
        | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(root(), all));
    QVERIFY(QFile::setPermissions(m_folder->filePath(QStringLiteral("a.jpg")), all));
    QVERIFY(QFile::setPermissions(m_folder->filePath(QStringLiteral("sub")), all));
    QVERIFY(
        QFile::setPermissions(m_folder->filePath(QStringLiteral("locked.jpg")), QFile::WriteOwner));
    const lumi::test::OrdinaryUser user;
    const FPVItemList list(root(), root());
    QCOMPARE(namesOf(list), lumi::test::words("sub a.jpg"));
}

/// The files are not photos, and their content is not read.
void TestFPVItemList::listingOpensNoFile()
{
    make(QStringLiteral("a.jpg"));
    const QString path = m_folder->filePath(QStringLiteral("a.jpg"));
    const lumi::test::OpenWatch watch(path);
    QVERIFY(watch.works());
    const FPVItemList list(root(), root());
    QCOMPARE(list.count(), 1);
    QVERIFY(!watch.wasOpened());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(watch.wasOpened());
}

void TestFPVItemList::itemsAreSmall()
{
    constexpr int kItems = 2000;
    constexpr std::size_t kMostBytes = 1024;
    for (int i = 0; i < kItems; ++i) {
        make(QString::asprintf("DSC%05d.JPG", i));
    }
    QVERIFY(sizeof(FPVItemJpeg) <= 512);
    const std::size_t before = ::mallinfo2().uordblks;
    const FPVItemList list(root(), root());
    const std::size_t after = ::mallinfo2().uordblks;
    QCOMPARE(list.count(), kItems);
    for (const FPVItemObject *item : list) {
        QVERIFY(item->children().isEmpty());
    }
    QVERIFY(after > before || !lumi::test::countsMemory());
    QVERIFY2((after - before) / kItems <= kMostBytes,
             qPrintable(QString::number((after - before) / kItems)));
}

LUMI_TEST(TestFPVItemList)
#include "TestFPVItemList.moc"

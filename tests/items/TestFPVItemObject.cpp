// SPDX-License-Identifier: MIT
#include "items/FPVItemFolder.h"
#include "items/FPVItemJpeg.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMetaMethod>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Properties of all item classes.
class TestFPVItemObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kinds();
    void names_data();
    void names();
    void fieldsOfANewItem();
    void fieldsAreStored();
    void foldersHaveNoThumbnail();
    void infoOfAFolder();
    void signalsAndSlots();
};

void TestFPVItemObject::kinds()
{
    const FPVItemFolder folder;
    const FPVItemImage image;
    const FPVItemJpeg jpeg(QString(), QString(), false);
    QCOMPARE(folder.itemKind(), 2);
    QCOMPARE(image.itemKind(), 1);
    QCOMPARE(jpeg.itemKind(), 257);
    QCOMPARE(folder.kindFlag1(), 1);
    QCOMPARE(image.kindFlag1(), 1);
    QCOMPARE(jpeg.kindFlag1(), 1);
    QCOMPARE(folder.kindFlag2(), 0);
    QCOMPARE(image.kindFlag2(), 1);
    QCOMPARE(jpeg.kindFlag2(), 1);
    QVERIFY(folder.isFolder() && !folder.isPicture());
    QVERIFY(image.isPicture() && !image.isFolder());
    QVERIFY(jpeg.isPicture() && !jpeg.isFolder());
}

void TestFPVItemObject::names_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("display");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("baseName");
    QTest::addColumn<QString>("displayName");
    QTest::newRow("the file name is shown") << "/p/a.jpg"
                                            << ""
                                            << "a.jpg"
                                            << "a"
                                            << "a.jpg";
    QTest::newRow("a display name is shown") << "/p/a.jpg"
                                             << "Holiday"
                                             << "a.jpg"
                                             << "a"
                                             << "Holiday";
    QTest::newRow("the base name ends at the first dot") << "/p/a.b.JPG"
                                                         << ""
                                                         << "a.b.JPG"
                                                         << "a"
                                                         << "a.b.JPG";
    QTest::newRow("a folder with a dot") << "/p.q/sub"
                                         << ""
                                         << "sub"
                                         << "sub"
                                         << "sub";
    QTest::newRow("nothing") << ""
                             << ""
                             << ""
                             << ""
                             << "";
}

void TestFPVItemObject::names()
{
    QFETCH(QString, path);
    QFETCH(QString, display);
    const FPVItemFolder item(path, display, false);
    QCOMPARE(item.path(), path);
    QTEST(item.fileName(), "fileName");
    QTEST(item.baseName(), "baseName");
    QTEST(item.displayName(), "displayName");
}

void TestFPVItemObject::fieldsOfANewItem()
{
    const FPVItemImage item;
    QVERIFY(item.path().isEmpty());
    QVERIFY(!item.isChecked());
    QVERIFY(item.ownerList() == nullptr);
    QVERIFY(item.thumbnailItem() == nullptr);
    QCOMPARE(item.thumbnailKind(), 'l');
    QVERIFY(FPVItemJpeg(QString(), QString(), true).isChecked());
}

void TestFPVItemObject::fieldsAreStored()
{
    FPVItemImage item;
    item.setPath(QStringLiteral("/p/b.jpg"));
    item.setDisplayName(QStringLiteral("x"));
    item.setChecked(true);
    item.setThumbnailKind('d');
    QCOMPARE(item.fileName(), QStringLiteral("b.jpg"));
    QCOMPARE(item.displayName(), QStringLiteral("x"));
    QVERIFY(item.isChecked());
    QCOMPARE(item.thumbnailKind(), 'd');
    item.setDisplayName(QString());
    QCOMPARE(item.displayName(), QStringLiteral("b.jpg"));
}

void TestFPVItemObject::foldersHaveNoThumbnail()
{
    FPVItemFolder folder(QDir::tempPath(), QString(), false);
    QVERIFY(folder.thumbnail(174, 123) == nullptr);
}

void TestFPVItemObject::infoOfAFolder()
{
    const QTemporaryDir place;
    FPVItemFolder folder(place.path(), QString(), false);
    const QFileInfo info(place.path());
    const std::unique_ptr<QList<lumi::InfoRecord>> records(folder.infoList());
    QCOMPARE(records->size(), 1);
    QCOMPARE(records->at(0).title, QStringLiteral("Basic Information"));
    QCOMPARE(records->at(0).text,
             QString(QStringLiteral("Modified : ") + info.lastModified().toString()
                     + QStringLiteral("\nOwner : ") + info.owner() + QStringLiteral("\nGroup : ")
                     + info.group() + QStringLiteral("\n")));
}

/// A signal declared twice would be two signals, and a connection through the base pointer
/// would never fire.
void TestFPVItemObject::signalsAndSlots()
{
    const QMetaObject &image = FPVItemImage::staticMetaObject;
    const QMetaObject &jpeg = FPVItemJpeg::staticMetaObject;
    for (const char *signal : {"decodeUpdate()", "decodeComplete()"}) {
        const int index = image.indexOfSignal(signal);
        QVERIFY2(index >= image.methodOffset(), signal);
        QCOMPARE(jpeg.indexOfSignal(signal), index);
    }
    const int slot = jpeg.indexOfSlot("decodeScreenImage()");
    QVERIFY(slot >= jpeg.methodOffset());
    QCOMPARE(jpeg.method(slot).access(), QMetaMethod::Public);
}

LUMI_TEST(TestFPVItemObject)
#include "TestFPVItemObject.moc"

// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifInfo.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <memory>

using lumi::test::ExifBuilder;
using enum ExifListKind;

class TestFPVExifInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anObjectWithAPathReadsNothing();
    void loadingWithoutAPathFails();
    void unloadedObjectReadsTheFile();
    void unloadedObjectOfNoPhotoFails();
    void withoutThumbnailItStaysUnloaded();
    void firstTagOfANumberIsFound();
    void thumbnailIsACopyForTheCaller();
    void thumbnailIsReadAnew();
    void thumbnailIsNull_data();
    void thumbnailIsNull();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifInfo::anObjectWithAPathReadsNothing()
{
    FPVExifInfo info(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    QVERIFY(!info.findTag(0x010F));
    QCOMPARE(info.load(false), 0);
    QCOMPARE(info.load(true), 0);
    QVERIFY(!info.findTag(0x010F));
    QVERIFY(!info.readThumbnail());
    QVERIFY(!std::unique_ptr<QPixmap>(info.thumbnailPixmap()));
    FPVExifInfo missing(m_folder.path(QStringLiteral("missing.jpg")));
    QCOMPARE(missing.load(true), 0);
}

void TestFPVExifInfo::loadingWithoutAPathFails()
{
    FPVExifInfo info((QString()));
    QVERIFY(!info.findTag(0x010F));
    QCOMPARE(info.load(false), -1);
    QCOMPARE(info.load(true), -1);
    QVERIFY(!info.readThumbnail());
    QVERIFY(!std::unique_ptr<QPixmap>(info.thumbnailPixmap()));
}

void TestFPVExifInfo::unloadedObjectReadsTheFile()
{
    FPVExifInfo info(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Big)));
    info.m_loaded = false;
    QCOMPARE(info.load(true), 26);
    QVERIFY(info.m_loaded);
    QCOMPARE(info.findTag(0x010F)->text(), QStringLiteral("Anvil Works"));
    QVERIFY(info.m_thumbnail);
    QCOMPARE(info.m_thumbnail->size(), QSize(40, 30));
    QCOMPARE(info.load(true), 26);
}

void TestFPVExifInfo::unloadedObjectOfNoPhotoFails()
{
    const QString path = m_folder.put(QByteArray("a text"));
    const QByteArray warning = "FPVExifFile::open() no SOI marker " + path.toLatin1();
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    FPVExifInfo info(path);
    info.m_loaded = false;
    QCOMPARE(info.load(true), -1);
    QVERIFY(!info.m_loaded);
}

void TestFPVExifInfo::withoutThumbnailItStaysUnloaded()
{
    FPVExifInfo info(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    info.m_loaded = false;
    QCOMPARE(info.load(false), 26);
    QVERIFY(!info.m_loaded);
    QVERIFY(!info.m_thumbnail);
    QCOMPARE(info.load(false), 26); // the tags are not there twice
}

void TestFPVExifInfo::firstTagOfANumberIsFound()
{
    FPVExifInfo info(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    info.m_loaded = false;
    QCOMPARE(info.load(false), 26);
    // Tag 1 of the GPS directory comes before tag 1 of interoperability.
    QCOMPARE(info.findTag(0x0001)->text(), QStringLiteral("N"));
    QVERIFY(!info.findTag(0xEEEE));
}

void TestFPVExifInfo::thumbnailIsACopyForTheCaller()
{
    FPVExifInfo info(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    info.m_loaded = false;
    const std::unique_ptr<QPixmap> one(info.thumbnailPixmap());
    const std::unique_ptr<QPixmap> two(info.thumbnailPixmap());
    QVERIFY(one && two);
    QVERIFY(one.get() != two.get() && one.get() != info.m_thumbnail.get());
    QCOMPARE(one->size(), QSize(40, 30));
}

void TestFPVExifInfo::thumbnailIsReadAnew()
{
    const QString path = m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little));
    FPVExifInfo info(path);
    info.m_loaded = false;
    QVERIFY(info.readThumbnail());
    QVERIFY(QFile::remove(path));
    const std::unique_ptr<QPixmap> kept(info.thumbnailPixmap());
    QVERIFY(kept);
    QVERIFY(!info.readThumbnail());
    QVERIFY(!info.m_thumbnail);
}

void TestFPVExifInfo::thumbnailIsNull_data()
{
    lumi::test::columns<quint32, quint32>();
    QTest::newRow("bytes that are no picture") << 8U << 30U;
    QTest::newRow("no bytes") << 8U << 0U;
    QTest::newRow("a negative length") << 8U << 0xFFFFFFFFU;
    QTest::newRow("more bytes than the file") << 8U << 0x7FFFFFFFU;
    QTest::newRow("behind the file") << 0x00100000U << 10U;
    QTest::newRow("a negative place") << 0x80000000U << 10U;
    QTest::newRow("the last int") << 0x7FFFFFFFU << 10U;
}

void TestFPVExifInfo::thumbnailIsNull()
{
    const auto [offset, length] = lumi::test::row<quint32, quint32>();
    FPVExifInfo info(m_folder.put(ExifBuilder()
                                      .shorts(Ifd0, 0x0112, {6})
                                      .longs(Ifd1, 0x0201, {offset})
                                      .longs(Ifd1, 0x0202, {length})));
    info.m_loaded = false;
    QCOMPARE(info.load(true), 3);
    QVERIFY(!info.m_thumbnail);
    FPVExifInfo half(m_folder.put(ExifBuilder().shorts(Ifd0, 1, {1}).longs(Ifd1, 0x0201, {8})));
    half.m_loaded = false;
    QVERIFY(!half.readThumbnail());
}

LUMI_TEST(TestFPVExifInfo)
#include "TestFPVExifInfo.moc"

// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "items/photoScale.h"
#include "swap/swapStore.h"
#include "tests/items/LibraryFaults.h"
#include "tests/items/OpenWatch.h"
#include "tests/items/ThumbnailTest.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QTest>

#include <memory>

using lumi::test::MessageLog;
using lumi::test::SwapFixture;

/// The thumbnails of photos: their sources and where they are stored.
class TestThumbnails : public lumi::test::ThumbnailTest
{
    Q_OBJECT

private Q_SLOTS:
    void aStoredThumbnailNeedsNoFile();
    void anEmbeddedThumbnailIsNotStored();
    void aSecondVisitDecodesNothing_data();
    void aSecondVisitDecodesNothing();
    void aChangeOfViewDecodesOnceMoreAtMost();
    void aFullDecodeIsStoredUnderItsOwnWidth();
    void aFailedDecodeRecordsItsSizeToo();
    void theFittedSizeIsRecorded();
    void aReplacedPhotoIsNotSquashed_data();
    void aReplacedPhotoIsNotSquashed();
    void aReplacedPhotoInAnotherPlace();
    void eachKindIsStoredForItself();
    void damagedPhotosHaveNoThumbnail_data();
    void damagedPhotosHaveNoThumbnail();
    void infoOfAPhoto();

private:
    /// A photo with an embedded thumbnail of 120 x 160.
    QString photoWithThumbnail() const;
};

namespace {

std::unique_ptr<QPixmap> thumbnailOf(const QString &path, int w = 174, int h = 123)
{
    FPVItemJpeg item(path, QString(), false);
    return std::unique_ptr<QPixmap>(item.thumbnail(w, h));
}

bool isStored(const QString &path, int width, char kind)
{
    QImage image;
    return SwapLoad(path, &image, width, kind);
}

/// Makes the photo undecodable without changing its time.
void spoil(const QString &path)
{
    const qint64 time = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    lumi::test::writeFile(path, QByteArray("damaged"));
    lumi::test::setFileTime(path, time);
}

const QString kError3 = QStringLiteral("FPVItemJpeg Error (3)");

} // namespace

QString TestThumbnails::photoWithThumbnail() const
{
    QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker");
    builder.thumbnail(lumi::test::ExifBuilder::jpeg(120, 160, 0x0000FF));
    return builder.write(path) ? path : QString();
}

void TestThumbnails::aStoredThumbnailNeedsNoFile()
{
    const QString path = photoWithThumbnail();
    QImage picture = lumi::test::picture(174, 100);
    QVERIFY(SwapAppend(path, &picture, 174, 's'));
    FPVItemJpeg item(path, QString(), false);
    item.setThumbnailKind('s');
    const lumi::test::OpenWatch watch(path);
    QVERIFY(watch.works());
    std::unique_ptr<QPixmap> pixmap(item.thumbnail(174, 123));
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(174, 100));
    QVERIFY(!watch.wasOpened());
    item.setThumbnailKind('l'); // stored for another layout
    pixmap.reset(item.thumbnail(174, 123));
    QVERIFY(pixmap);
    QVERIFY(watch.wasOpened());
}

void TestThumbnails::anEmbeddedThumbnailIsNotStored()
{
    const std::unique_ptr<QPixmap> pixmap = thumbnailOf(photoWithThumbnail());
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(92, 123));
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QCOMPARE(lumi::test::blockCount(*m_fixture->store), 0);
}

void TestThumbnails::aSecondVisitDecodesNothing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("landscape") << QSize(640, 480);
    QTest::newRow("panorama") << QSize(900, 200);
}

void TestThumbnails::aSecondVisitDecodesNothing()
{
    QFETCH(QSize, size);
    const QString path = photo({.size = size});
    const std::unique_ptr<QPixmap> first = thumbnailOf(path);
    QVERIFY(first);
    spoil(path);
    const int opened = lumi::test::photosOpened();
    QVERIFY(opened > 0);
    for (int visit = 0; visit < 3; ++visit) {
        const std::unique_ptr<QPixmap> again = thumbnailOf(path);
        QVERIFY(again);
        QCOMPARE(again->size(), first->size());
    }
    QCOMPARE(lumi::test::photosOpened(), opened);
}

/// The size recorded for one display mode is rounded, so another mode may request a width that
/// differs by one from the stored one. This happens once at most.
void TestThumbnails::aChangeOfViewDecodesOnceMoreAtMost()
{
    const QString path = photo({.size = QSize(640, 480)});
    const auto visit = [&path](char kind, int w, int h) {
        FPVItemJpeg item(path, QString(), false);
        item.setThumbnailKind(kind);
        return std::unique_ptr<QPixmap>(item.thumbnail(w, h)) != nullptr;
    };
    for (int i = 0; i < 2; ++i) {
        QVERIFY(visit('l', 160, 119));
        QVERIFY(visit('s', 69, 53));
    }
    spoil(path);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(visit('l', 160, 119));
        QVERIFY(visit('s', 69, 53));
    }
}

void TestThumbnails::aFullDecodeIsStoredUnderItsOwnWidth()
{
    const QString path = photo({.size = QSize(640, 480)});
    const std::unique_ptr<QPixmap> pixmap = thumbnailOf(path);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(164, 123));
    QVERIFY(isStored(path, 164, 'l'));
    QVERIFY(!isStored(path, 174, 'l'));
    QVERIFY(!isStored(path, 164, 's'));

    spoil(path);
    const std::unique_ptr<QPixmap> again = thumbnailOf(path);
    QVERIFY(again);
    QCOMPARE(again->size(), QSize(164, 123));
}

/// Even if there is no thumbnail.
void TestThumbnails::aFailedDecodeRecordsItsSizeToo()
{
    const QString path = photo({.size = QSize(640, 480)});
    QImage other = lumi::test::picture(80, 60);
    QVERIFY(SwapAppend(path, &other, 80, 's'));
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.fitSize(QSize(80, 60)), QSize(80, 60));
    spoil(path);
    const MessageLog log;
    QVERIFY(item.thumbnail(174, 123) == nullptr);
    QVERIFY(log.warnings.contains(kError3));
    QSize recorded;
    QVERIFY(SwapGetSize(path, &recorded));
    QCOMPARE(recorded, QSize(164, 123));
}

void TestThumbnails::theFittedSizeIsRecorded()
{
    const QString path = photo({.size = QSize(480, 640)});
    QVERIFY(thumbnailOf(path));
    QSize recorded;
    QVERIFY(SwapGetSize(path, &recorded));
    QCOMPARE(recorded, QSize(92, 123));
    FPVItemJpeg item(path, QString(), false);
    QVERIFY(QFile::remove(path));
    QCOMPARE(item.fitSize(QSize(80, 60)), QSize(45, 60));
    QCOMPARE(item.imageSize(), QSize(-1, -1));
}

void TestThumbnails::aReplacedPhotoIsNotSquashed_data()
{
    lumi::test::columns<QSize, QSize, bool>();
    const QSize landscape(640, 480);
    QTest::newRow("by a portrait, a new item") << landscape << QSize(480, 640) << false;
    QTest::newRow("by a panorama, the same item") << landscape << QSize(900, 200) << true;
    QTest::newRow("a portrait by a landscape, the same item")
        << QSize(50, 900) << landscape << true;
}

/// The thumbnail is that of the new photo, and is recorded and stored at its size.
void TestThumbnails::aReplacedPhotoIsNotSquashed()
{
    const auto [before, after, isSameItem] = lumi::test::row<QSize, QSize, bool>();
    const QString path = photo({.size = before});
    FPVItemJpeg old(path, QString(), false);
    QVERIFY(std::unique_ptr<QPixmap>(old.thumbnail(174, 123)));
    photo({.size = after});
    lumi::test::setFileTime(path, (SwapFixture::kTime + 60) * 1000);

    const QSize fitted = lumi::fittedSize(after, QSize(174, 123));
    FPVItemJpeg item(path, QString(), false);
    const std::unique_ptr<QPixmap> pixmap((isSameItem ? old : item).thumbnail(174, 123));
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), fitted);
    QSize recorded;
    QVERIFY(SwapGetSize(path, &recorded));
    QCOMPARE(recorded, fitted);
    QVERIFY(isStored(path, fitted.width(), 'l'));
    spoil(path);
    const std::unique_ptr<QPixmap> again = thumbnailOf(path);
    QVERIFY(again);
    QCOMPARE(again->size(), fitted);
}

/// A caller that fitted by the old size gets the right proportions within the requested size.
void TestThumbnails::aReplacedPhotoInAnotherPlace()
{
    const QString path = photo({.size = QSize(640, 480)});
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.fitSize(QSize(320, 240)), QSize(320, 240));
    photo({.size = QSize(480, 640)});
    const std::unique_ptr<QPixmap> pixmap(item.decodedPixmap(320, 240));
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(180, 240));
    QVERIFY(isStored(path, 180, 'l'));
    QCOMPARE(item.fitSize(QSize(320, 240)), QSize(180, 240));
    QCOMPARE(item.imageSize(), QSize(480, 640));
}

void TestThumbnails::eachKindIsStoredForItself()
{
    const QString path = photo({.size = QSize(400, 300)});
    for (const char kind : {'l', 's', 'd'}) {
        FPVItemJpeg item(path, QString(), false);
        item.setThumbnailKind(kind);
        const std::unique_ptr<QPixmap> pixmap(item.thumbnail(80, 60));
        QVERIFY(pixmap);
        QVERIFY(isStored(path, 80, kind));
    }
    QCOMPARE(lumi::test::blockCount(*m_fixture->store), 3);
}

void TestThumbnails::damagedPhotosHaveNoThumbnail_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text") << QByteArray("not a photo");
    QTest::newRow("two samples a pixel") << lumi::test::makeJpeg({.components = 2});
}

void TestThumbnails::damagedPhotosHaveNoThumbnail()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, bytes);
    const MessageLog log;
    QVERIFY(!thumbnailOf(path));
    QCOMPARE(log.warnings.count(kError3), 1);
    QCOMPARE(log.warnings.last(), kError3);
    QCOMPARE(lumi::test::blockCount(*m_fixture->store), 0);
}

/// The Exif reader of the item has read nothing, so there are no tags.
void TestThumbnails::infoOfAPhoto()
{
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker")
        .ascii(ExifListKind::Exif, 0x9003, "2026:01:02 03:04:05")
        .rationals(ExifListKind::Exif, 0x829A, {{1, 60}})
        .photo(lumi::test::makeJpeg({.size = QSize(83, 61)}));
    QVERIFY(builder.write(path));
    FPVItemJpeg item(path, QString(), false);
    const std::unique_ptr<QList<lumi::InfoRecord>> records(item.infoList());
    QCOMPARE(records->size(), 1);
    QCOMPARE(records->at(0).title, QStringLiteral("Basic Information"));
    QCOMPARE(records->at(0).text,
             QStringLiteral("File Size : %1KB\nImage Size : 83x61\nDate Time : \n")
                 .arg(QFileInfo(path).size() / 1024));
}

LUMI_TEST(TestThumbnails)
#include "TestThumbnails.moc"

// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifDocument.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

#include <memory>

using lumi::test::ExifBuilder;
using enum ExifListKind;

class TestFPVExifDocumentThumbnail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thumbnailIsRead();
    void thumbnailMayLieBehindTheSegment();
    void thumbnailIsNull_data();
    void thumbnailIsNull();
    void tooLargePicturesAreRefused_data();
    void tooLargePicturesAreRefused();
    void aThumbnailNeedsMemory();
    void hasThumbnailReadsOnlyTheTags_data();
    void hasThumbnailReadsOnlyTheTags();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifDocumentThumbnail::thumbnailIsRead()
{
    const QString path = m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Big));
    FPVExifDocument document(path);
    const std::unique_ptr<QImage> first(document.thumbnail());
    const std::unique_ptr<QImage> second(document.thumbnail());
    const std::unique_ptr<QImage> third(FPVExifDocument::thumbnail(path));
    for (const auto *image : {first.get(), second.get(), third.get()}) {
        QVERIFY(image);
        QCOMPARE(image->size(), QSize(40, 30));
        QVERIFY(qAbs(qRed(image->pixel(20, 15)) - 0xC0) < 8);
        QVERIFY(qAbs(qBlue(image->pixel(20, 15)) - 0x40) < 8);
    }
}

void TestFPVExifDocumentThumbnail::thumbnailMayLieBehindTheSegment()
{
    const QByteArray jpeg = ExifBuilder::jpeg(24, 18, 0x204060);
    ExifBuilder sketch;
    sketch.shorts(Ifd0, 0x0112, {6}).longs(Ifd1, 0x0201, {0}).longs(Ifd1, 0x0202, {0});
    const auto place = quint32(sketch.file().size() - 12);
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x0112, {6})
        .longs(Ifd1, 0x0201, {place})
        .longs(Ifd1, 0x0202, {quint32(jpeg.size())});
    const std::unique_ptr<QImage> image(
        FPVExifDocument::thumbnail(m_folder.put(photo.file() + jpeg)));
    QVERIFY(image);
    QCOMPARE(image->size(), QSize(24, 18));
}

void TestFPVExifDocumentThumbnail::thumbnailIsNull_data()
{
    lumi::test::columns<quint32, quint32>();
    QTest::newRow("at the start of the block") << 0U << 100U;
    QTest::newRow("no bytes") << 60U << 0U;
    QTest::newRow("bytes that are no picture") << 8U << 40U;
    QTest::newRow("behind the file") << 0x00100000U << 100U;
    QTest::newRow("behind the largest int") << 0x80000000U << 100U;
    QTest::newRow("the largest offset") << 0xFFFFFFFFU << 1U;
    QTest::newRow("one byte more than the file") << 8U << 0U; // set below
    QTest::newRow("two gigabytes") << 8U << 0x80000000U;
    QTest::newRow("the largest length") << 8U << 0xFFFFFFFFU;
}

void TestFPVExifDocumentThumbnail::thumbnailIsNull()
{
    auto [offset, length] = lumi::test::row<quint32, quint32>();
    // The picture ends with the file, so one byte more is behind the end of the file.
    ExifBuilder photo;
    const QByteArray jpeg = ExifBuilder::jpeg(24, 18, 0x204060);
    photo.shorts(Ifd0, 0x0112, {6});
    if (QByteArray(QTest::currentDataTag()) == "one byte more than the file") {
        ExifBuilder sketch = photo;
        sketch.longs(Ifd1, 0x0201, {0}).longs(Ifd1, 0x0202, {0});
        offset = quint32(sketch.file().size() - 12);
        length = quint32(jpeg.size()) + 1;
    }
    photo.longs(Ifd1, 0x0201, {offset}).longs(Ifd1, 0x0202, {length});
    FPVExifDocument document(m_folder.put(photo.file() + jpeg));
    QVERIFY(document.isValid());
    QCOMPARE(document.thumbnailOffset(), offset);
    QCOMPARE(document.thumbnailLength(), length);
    QVERIFY(!document.thumbnail());
}

void TestFPVExifDocumentThumbnail::tooLargePicturesAreRefused_data()
{
    QTest::addColumn<QByteArray>("picture");
    QTest::addColumn<bool>("taken");
    const QByteArray small = ExifBuilder::jpeg(24, 18, 0x204060);
    QTest::newRow("two megapixels") << ExifBuilder::jpeg(2048, 1024, 0x204060) << true;
    QTest::newRow("a line more") << ExifBuilder::jpeg(2048, 1025, 0x204060) << false;
    QTest::newRow("a megabyte") << small + QByteArray(qsizetype(1024) * 1024 - small.size(), '\0')
                                << true;
    QTest::newRow("a byte more") << small
            + QByteArray(qsizetype(1024) * 1024 + 1 - small.size(), '\0')
                                 << false;
    const QByteArray scans = QByteArray("\xFF\xDA").repeated(99); // beside its own one
    QTest::newRow("marks of as many scans as a photo may have") << small + scans << true;
    QTest::newRow("marks of one scan more") << small + scans + "\xFF\xDA" << false;
    QImage image(24, 18, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer png;
    QVERIFY(image.save(&png, "PNG"));
    QTest::newRow("another format") << png.data() << false;
}

void TestFPVExifDocumentThumbnail::tooLargePicturesAreRefused()
{
    QFETCH(QByteArray, picture);
    QFETCH(bool, taken);
    const auto document = [&](quint32 offset) {
        ExifBuilder photo;
        photo.shorts(Ifd0, 0x0112, {6})
            .longs(Ifd1, 0x0201, {offset})
            .longs(Ifd1, 0x0202, {quint32(picture.size())});
        return photo.file();
    };
    const auto behind = quint32(document(0).size()) - 12;
    FPVExifDocument photo(m_folder.put(document(behind) + picture));
    const std::unique_ptr<QImage> image(photo.thumbnail());
    QCOMPARE(image != nullptr, taken);
}

void TestFPVExifDocumentThumbnail::aThumbnailNeedsMemory()
{
    auto *machine = lumi::test::FakeMachine::install();
    const QString path = m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Big));
    constexpr int kKeptBackKB = 2048;
    constexpr int kNeedKB = 40 * 30 * 4 / 1024 + 1024;
    machine->setMemoryKB(kKeptBackKB + kNeedKB);
    QVERIFY(std::unique_ptr<QImage>(FPVExifDocument::thumbnail(path)));
    machine->setMemoryKB(kKeptBackKB + kNeedKB - 1);
    QVERIFY(!std::unique_ptr<QImage>(FPVExifDocument::thumbnail(path)));
    Machine::install(nullptr);
}

void TestFPVExifDocumentThumbnail::hasThumbnailReadsOnlyTheTags_data()
{
    lumi::test::columns<quint32, quint32, bool>();
    QTest::newRow("both") << 1U << 1U << true;
    QTest::newRow("an offset of zero") << 0U << 1U << false;
    QTest::newRow("a length of zero") << 1U << 0U << false;
    QTest::newRow("both beyond any file") << 0xFFFFFFFFU << 0xFFFFFFFFU << true;
}

void TestFPVExifDocumentThumbnail::hasThumbnailReadsOnlyTheTags()
{
    const auto [offset, length, has] = lumi::test::row<quint32, quint32, bool>();
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x0112, {6}).longs(Ifd1, 0x0201, {offset}).longs(Ifd1, 0x0202, {length});
    const FPVExifDocument document(m_folder.put(photo));
    QCOMPARE(document.hasThumbnail(), has);
}

LUMI_TEST(TestFPVExifDocumentThumbnail)
#include "TestFPVExifDocumentThumbnail.moc"

// SPDX-License-Identifier: MIT
// The contents of a rewritten photo as our reader finds them.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>
#include <QtEndian>

using namespace lumi::test;
using enum ExifListKind;

class TestRewrittenBlock : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void imageDataStayByteForByte_data();
    void imageDataStayByteForByte();
    void thumbnailOutsideTheFileIsNotCopied_data();
    void thumbnailOutsideTheFileIsNotCopied();
    void thumbnailWithoutItsTagIsDropped();
    void thumbnailOutsideTheSegmentMovesIntoIt();
    void unknownTypesAndLinksAreDropped();
    void makerNoteKeepsItsBytes();
    void lengthIsKnownBeforeItIsWritten_data();
    void lengthIsKnownBeforeItIsWritten();
    void cutPhotoKeepsItsImageData();
};

void TestRewrittenBlock::imageDataStayByteForByte_data()
{
    QTest::addColumn<int>("behind"); // bytes behind the end of the image
    for (const int behind : {0, 1, 10239, 10240, 10241, 100000}) {
        QTest::addRow("%d bytes behind the image", behind) << behind;
    }
}

void TestRewrittenBlock::imageDataStayByteForByte()
{
    QFETCH(int, behind);
    QByteArray more(behind, '\0');
    for (qsizetype i = 0; i < more.size(); ++i) {
        more[i] = char(i * 7 + i / 251);
    }
    const QByteArray image = ExifBuilder::jpeg(200, 150, 0x123456) + more;
    const QString path
        = put(fullPhoto(ExifBuilder::Order::Big).photo(image).makerNote(QByteArray(501, 'm')));
    FPVExifWriter writer(path);
    writer.setTag(0x010E, 2, 6, "Title", Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    QVERIFY(restOf(contentOf(path)) == image.mid(2));
}

void TestRewrittenBlock::thumbnailOutsideTheFileIsNotCopied_data()
{
    lumi::test::columns<quint32, quint32>();
    QTest::newRow("begins behind the file") << 0x7FFFFFFFU << 10U;
    QTest::newRow("ends behind the file") << 8U << 0x7FFFFFFFU;
    QTest::newRow("has the largest length") << 8U << 0xFFFFFFFFU;
    QTest::newRow("has the largest offset") << 0xFFFFFFFFU << 0xFFFFFFFFU;
    QTest::newRow("has no length") << 8U << 0U;
    QTest::newRow("has no place") << 0U << 10U;
}

void TestRewrittenBlock::thumbnailOutsideTheFileIsNotCopied()
{
    const auto [offset, length] = lumi::test::row<quint32, quint32>();
    ExifBuilder photo = plainPhoto(ExifBuilder::Order::Little);
    const QString path = put(photo.longs(Ifd1, 0x0201, {offset}).longs(Ifd1, 0x0202, {length}));
    const QByteArray before = contentOf(path);
    QCOMPARE(rewritten(path), kDone);
    const FPVExifDocument document(path);
    QCOMPARE(document.thumbnailOffset(), offset);
    QCOMPARE(document.thumbnailLength(), length);
    QCOMPARE(contentOf(path).size(), before.size());
    QVERIFY(restOf(contentOf(path)) == restOf(before));
}

void TestRewrittenBlock::thumbnailWithoutItsTagIsDropped()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Little));
    FPVExifWriter writer(path);
    writer.removeTag(0x0201, Ifd1);
    QCOMPARE(writer.rewrite(), kDone);
    const FPVExifDocument document(path);
    QVERIFY(!document.hasThumbnail());
    QVERIFY(document.thumbnailLength() > 0);
    // The block ends with the last value of the second directory.
    const QByteArray file = contentOf(path);
    QCOMPARE(file.mid(file.size() - restOf(file).size() - 8, 8),
             QByteArray::fromHex("fbffffff07000000"));
}

void TestRewrittenBlock::thumbnailOutsideTheSegmentMovesIntoIt()
{
    ExifBuilder photo = plainPhoto(ExifBuilder::Order::Big);
    const QByteArray thumbnail = ExifBuilder::jpeg(40, 30, 0x224466);
    const QByteArray image = ExifBuilder::jpeg(16, 12, 0);
    photo.photo(image + thumbnail);
    photo.longs(Ifd1, 0x0201, {0}).longs(Ifd1, 0x0202, {quint32(thumbnail.size())});
    const auto offset = quint32(photo.block().size() + image.size() - 2);
    photo = plainPhoto(ExifBuilder::Order::Big);
    photo.photo(image + thumbnail)
        .longs(Ifd1, 0x0201, {offset})
        .longs(Ifd1, 0x0202, {quint32(thumbnail.size())});
    const QString path = put(photo);
    QCOMPARE(rewritten(path), kDone);
    FPVExifDocument document(path);
    QVERIFY(12 + document.thumbnailOffset() < quint32(document.app1Length()));
    QCOMPARE(thumbnailBytes(document), thumbnail);
    QVERIFY(restOf(contentOf(path)) == image.mid(2) + thumbnail);
}

void TestRewrittenBlock::unknownTypesAndLinksAreDropped()
{
    ExifBuilder photo = fullPhoto(ExifBuilder::Order::Little);
    photo
        .word(Exif, 0x9999, 12, 1, 0x41414141) // an unknown type
        .link(Ifd1, 8);
    const QString path = put(photo);
    QCOMPARE(FPVExifDocument(path).nextIfdOffset(), 8U);
    QCOMPARE(rewritten(path), kDone);
    const FPVExifDocument document(path);
    QCOMPARE(document.nextIfdOffset(), 0U);
    QVERIFY(!document.find(0x9999, Exif));
}

void TestRewrittenBlock::makerNoteKeepsItsBytes()
{
    // The maker note has offsets and a byte order of its own. It is not changed.
    const QByteArray note
        = QByteArray::fromHex("4d4d002a0000000800010001000400000001000001f4") + "x";
    ExifBuilder photo(ExifBuilder::Order::Big);
    const QString path = put(photo.ascii(Ifd0, 0x010F, "Anvil").makerNote(note));
    FPVExifWriter writer(path);
    writer.setTag(0x010E, 2, 20, "A title of some size", Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    QCOMPARE(bytesOf(FPVExifDocument(path).find(0x927C, Exif)), note);
}

void TestRewrittenBlock::lengthIsKnownBeforeItIsWritten_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("without a thumbnail") << 0 << 0;
    QTest::newRow("an even thumbnail") << 1000 << 0;
    QTest::newRow("an odd thumbnail") << 1001 << 0;
    QTest::newRow("a directory that had no pointer") << 1000 << 11;
    QTest::newRow("more than a segment holds") << 1001 << 65000;
}

void TestRewrittenBlock::lengthIsKnownBeforeItIsWritten()
{
    const auto [thumbnail, comment] = lumi::test::row<int, int>();
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x010F, "Anvil Works");
    if (thumbnail > 0) {
        photo.thumbnail(QByteArray(thumbnail, 't'));
    }
    const QString path = put(photo);
    const qint64 rest = restOf(contentOf(path)).size();
    FPVExifWriter writer(path);
    if (comment > 0) {
        writer.setTag(0x9286, 7, quint32(comment), QByteArray(comment, 'c').constData(), Exif);
    }
    const qint64 length = writer.segmentLength();
    QCOMPARE(writer.rewrite(), kDone);
    const QByteArray after = contentOf(path);
    QCOMPARE(after.size(), 4 + length + rest);
    QCOMPARE(qFromBigEndian<quint16>(after.constData() + 4), quint16(length));
    QCOMPARE(length > 65535, comment > 60000);
}

void TestRewrittenBlock::cutPhotoKeepsItsImageData()
{
    constexpr qsizetype kImageData = 40; // more of it makes no difference
    QByteArray whole = fullPhoto(ExifBuilder::Order::Big).file();
    const qsizetype rest = whole.size() - restOf(whole).size();
    whole.truncate(rest + kImageData);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QString path = m_folder->put(whole.left(length));
        const int result = rewritten(path);
        const QByteArray after = contentOf(path);
        // A photo without image data is not rewritten.
        QCOMPARE(result, length > rest ? kDone : kFailed);
        QVERIFY(length > rest ? restOf(after) == whole.mid(rest, length - rest)
                              : after == whole.left(length));
    }
}

LUMI_TEST(TestRewrittenBlock)
#include "TestRewrittenBlock.moc"

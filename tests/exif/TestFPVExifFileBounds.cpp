// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifFile.h"
#include "exif/tag/FPVExifTagBytes.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/walkedTags.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>

using lumi::test::ExifBuilder;
using lumi::test::walk;
using lumi::test::WalkedTags;
using enum ExifListKind;

class TestFPVExifFileBounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesBehindTheFileAreZero_data();
    void valuesBehindTheFileAreZero();
    void directoriesBehindTheFileAreEmpty_data();
    void directoriesBehindTheFileAreEmpty();
    void stringWithoutAnEndStopsWithTheWindow();
    void bytesStopWithTheWindow();
    void hugeCountsAreBounded_data();
    void hugeCountsAreBounded();
    void allValuesTogetherAreBounded();
    void cutDirectoryEnds();
    void firstDirectoryInsideTheHeaderEnds();
    void segmentLengthOfZero();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifFileBounds::valuesBehindTheFileAreZero_data()
{
    QTest::addColumn<quint32>("offset");
    QTest::newRow("behind the file") << 0x00100000U;
    QTest::newRow("the last int") << 0x7FFFFFF3U;
    QTest::newRow("behind the largest int") << 0x80000000U;
    QTest::newRow("the largest offset") << 0xFFFFFFFFU;
}

void TestFPVExifFileBounds::valuesBehindTheFileAreZero()
{
    QFETCH(quint32, offset);
    const WalkedTags tags = walk(m_folder.put(ExifBuilder()
                                                  .word(Ifd0, 1, 5, 1, offset)
                                                  .word(Ifd0, 2, 2, 20, offset)
                                                  .word(Ifd0, 3, 7, 20, offset)
                                                  .shorts(Ifd0, 4, {9})));
    QCOMPARE(tags.size(), std::size_t(4));
    QCOMPARE(tags[0]->description(), QStringLiteral("0/0"));
    QCOMPARE(tags[1]->text(), QString());
    const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tags[2].get());
    QVERIFY(bytes);
    QCOMPARE(QByteArray(bytes->data(), bytes->size()), QByteArray(20, '\0'));
    QCOMPARE(tags[3]->intValue(), 9); // the next entry is read
}

void TestFPVExifFileBounds::directoriesBehindTheFileAreEmpty_data()
{
    valuesBehindTheFileAreZero_data();
}

void TestFPVExifFileBounds::directoriesBehindTheFileAreEmpty()
{
    QFETCH(quint32, offset);
    ExifBuilder photo;
    photo.longs(Ifd0, 0x8769, {offset}).shorts(Ifd0, 0x0112, {6}).withoutPointers();
    // The empty directory yields one entry of type 0, which ends the walk.
    QCOMPARE(walk(m_folder.put(photo)).size(), std::size_t(2));
    QCOMPARE(walk(m_folder.put(photo.ifd0Offset(offset))).size(), std::size_t(0));
}

void TestFPVExifFileBounds::stringWithoutAnEndStopsWithTheWindow()
{
    ExifBuilder photo;
    photo.value(Ifd0, 0x010F, 2, 10, QByteArray(10, 'x'));
    const QByteArray segment = photo.file().left(12 + int(photo.block().size()));
    const WalkedTags tags = walk(m_folder.put(segment));
    QCOMPARE(tags.size(), std::size_t(1));
    QCOMPARE(tags[0]->text(), QString(10, QLatin1Char('x')));
}

void TestFPVExifFileBounds::bytesStopWithTheWindow()
{
    ExifBuilder photo;
    photo.value(Ifd0, 0x927C, 7, 1000, QByteArray(10, 'x'));
    const QByteArray segment = photo.file().left(12 + int(photo.block().size()));
    const WalkedTags tags = walk(m_folder.put(segment));
    QCOMPARE(tags.size(), std::size_t(1));
    const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tags[0].get());
    QVERIFY(bytes);
    QCOMPARE(QByteArray(bytes->data(), bytes->size()), QByteArray(10, 'x') + QByteArray(990, '\0'));
}

void TestFPVExifFileBounds::hugeCountsAreBounded_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {1, 2, 3, 4, 5, 7, 9, 10}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestFPVExifFileBounds::hugeCountsAreBounded()
{
    QFETCH(int, type);
    const WalkedTags tags = walk(m_folder.put(
        ExifBuilder().word(Ifd0, 1, quint16(type), 0xFFFFFFFF, 8).shorts(Ifd0, 2, {9})));
    QCOMPARE(tags.size(), std::size_t(2));
    QCOMPARE(tags[0]->count(), 0xFFFFFFFFU);
    if (const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tags[0].get())) {
        QCOMPARE(bytes->size(), 65535);
    }
    QCOMPARE(tags[1]->intValue(), 9);
}

void TestFPVExifFileBounds::allValuesTogetherAreBounded()
{
    ExifBuilder photo;
    for (quint16 number = 1; number <= 40; ++number) {
        photo.word(Ifd0, number, 7, 65535, 8);
    }
    photo.word(Ifd0, 41, 2, 65535, 8).shorts(Ifd0, 42, {9});
    const WalkedTags tags = walk(m_folder.put(photo));
    QCOMPARE(tags.size(), std::size_t(42));
    qint64 sum = 0;
    for (const auto &tag : tags) {
        const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tag.get());
        sum += bytes ? bytes->size() : 0;
    }
    QCOMPARE(sum, 1024 * 1024);
    QCOMPARE(tags[40]->text(), QString());
    QCOMPARE(tags[41]->intValue(), 9);
}

void TestFPVExifFileBounds::cutDirectoryEnds()
{
    ExifBuilder photo;
    photo.shorts(Ifd0, 1, {1}).shorts(Ifd0, 2, {2}).entryCount(Ifd0, 65535);
    const QByteArray cut = photo.file().left(12 + 8 + 2 + 24);
    QCOMPARE(walk(m_folder.put(cut)).size(), std::size_t(2));
}

void TestFPVExifFileBounds::firstDirectoryInsideTheHeaderEnds()
{
    // Offset 0 is no directory. The bytes behind the header yield at most one entry.
    ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Little);
    FPVExifFile file(m_folder.put(photo.ifd0Offset(0)));
    QVERIFY(file.isOpen());
    const std::unique_ptr<FPVExifTag> tag(file.nextTag());
    QVERIFY(!file.isOpen());
}

void TestFPVExifFileBounds::segmentLengthOfZero()
{
    // The length is only the size of the first window. The directories are read anyway.
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x0112, {6}).ascii(Ifd0, 0x010F, "Anvil Works");
    const WalkedTags tags = walk(m_folder.put(photo.app1Length(0)));
    QCOMPARE(tags.size(), std::size_t(2));
    QCOMPARE(tags[1]->text(), QStringLiteral("Anvil Works"));
}

LUMI_TEST(TestFPVExifFileBounds)
#include "TestFPVExifFileBounds.moc"

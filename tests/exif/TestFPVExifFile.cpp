// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifFile.h"
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/FPVExifTagNumber.h"
#include "exif/tag/FPVExifTagRational.h"
#include "exif/tag/FPVExifTagString.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/walkedTags.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <memory>

using lumi::test::ExifBuilder;
using lumi::test::walk;
using lumi::test::WalkedTags;
using enum ExifListKind;

namespace {

QList<int> numbers(const WalkedTags &tags)
{
    QList<int> list;
    for (const auto &tag : tags) {
        list.append(tag->tag());
    }
    return list;
}

/// The only tag of a photo that has one entry.
std::unique_ptr<FPVExifTag> onlyTag(const QString &path)
{
    WalkedTags tags = walk(path);
    return tags.size() == 1 ? std::move(tags.front()) : nullptr;
}

QByteArray replaced(QByteArray bytes, int place, const QByteArray &with)
{
    return bytes.replace(place, with.size(), with);
}

} // namespace

class TestFPVExifFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindsHaveTheirOwnNumbers();
    void walksDirectoriesInOrderOfTheirPointers_data();
    void walksDirectoriesInOrderOfTheirPointers();
    void closesItselfAtTheEnd();
    void sixthDirectoryIsNotWalked();
    void furtherLinksAreWalked();
    void sameNumbersStandSideBySide();
    void numbersKeepTheirFirstValue_data();
    void numbersKeepTheirFirstValue();
    void arraysOfNumbersAreNotFollowed_data();
    void arraysOfNumbersAreNotFollowed();
    void rationalIsReversed_data();
    void rationalIsReversed();
    void rationalFollowsItsOffsetWhateverItsCount();
    void stringsRunToTheFirstNul();
    void stringIsLatin1();
    void stringAtTheOffsetMayBeEmpty();
    void bytesAreKept();
    void unknownTypeEndsTheWalk_data();
    void unknownTypeEndsTheWalk();
    void directoryWithoutEntriesGivesOne();
    void opensAgain();
    void openFails_data();
    void openFails();
    void openWithAnEmptyPathDoesNothing();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifFile::kindsHaveTheirOwnNumbers()
{
    QCOMPARE(int(ExifIfdKind::Primary), 0);
    QCOMPARE(int(ExifIfdKind::Thumbnail), 1);
    QCOMPARE(int(ExifIfdKind::Exif), 2);
    QCOMPARE(int(ExifIfdKind::Gps), 3);
    QCOMPARE(int(ExifIfdKind::Interoperability), 4);
    QCOMPARE(int(ExifIfdKind::Further), 5);
    QCOMPARE(int(Ifd0), 0);
    QCOMPARE(int(Exif), 1);
    QCOMPARE(int(Interoperability), 2);
    QCOMPARE(int(Gps), 3);
    QCOMPARE(int(Ifd1), 4);
}

void TestFPVExifFile::walksDirectoriesInOrderOfTheirPointers_data()
{
    lumi::test::addOrders();
}

void TestFPVExifFile::walksDirectoriesInOrderOfTheirPointers()
{
    QFETCH(ExifBuilder::Order, order);
    const WalkedTags tags = walk(m_folder.put(lumi::test::fullPhoto(order)));
    const QList<int> expected = {
        0x010F, 0x0110, 0x0112, 0x011A, 0x0132, 0x0102, 0x8769, 0x8825,         // the first
        0x829A, 0x829D, 0x8827, 0x9000, 0x9101, 0x9204, 0xA002, 0x927C, 0xA005, // Exif
        0x0000, 0x0001, 0x0002,                                                 // the position
        0x0103, 0xC001, 0x0201, 0x0202, // the thumbnail, linked when the first had ended
        0x0001, 0x0002,                 // interoperability, named in the second
    };
    QCOMPARE(numbers(tags), expected);
    QCOMPARE(tags[0]->text(), QStringLiteral("Anvil Works"));
    QCOMPARE(tags[1]->text(), QStringLiteral("A1"));
    QCOMPARE(tags[2]->intValue(), 6);
    QCOMPARE(tags[14]->intValue(), 70000);
    QCOMPARE(tags[24]->text(), QStringLiteral("R98"));
}

void TestFPVExifFile::closesItselfAtTheEnd()
{
    FPVExifFile file(m_folder.put(ExifBuilder().shorts(Ifd0, 0x0112, {6})));
    QVERIFY(file.isOpen());
    const std::unique_ptr<FPVExifTag> tag(file.nextTag());
    QVERIFY(tag);
    QVERIFY(!file.isOpen());
    QVERIFY(!file.nextTag());
}

void TestFPVExifFile::sixthDirectoryIsNotWalked()
{
    ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Little);
    const QList<int> five = numbers(walk(m_folder.put(photo)));
    photo.link(Ifd1, photo.offsetOf(Gps));
    // The link of the second directory would lead to a sixth directory.
    QCOMPARE(numbers(walk(m_folder.put(photo))), five);
}

void TestFPVExifFile::furtherLinksAreWalked()
{
    ExifBuilder sketch;
    sketch.shorts(Ifd0, 1, {1}).shorts(Exif, 2, {2}).shorts(Gps, 3, {3}).withoutPointers();
    ExifBuilder photo = sketch;
    photo.link(Ifd0, sketch.offsetOf(Exif)).link(Exif, sketch.offsetOf(Gps));
    QCOMPARE(numbers(walk(m_folder.put(photo))), (QList<int>{1, 2, 3}));
    // In a loop the walk ends after five directories.
    photo.link(Gps, 8);
    QCOMPARE(numbers(walk(m_folder.put(photo))), (QList<int>{1, 2, 3, 1, 2}));
}

void TestFPVExifFile::sameNumbersStandSideBySide()
{
    const WalkedTags tags
        = walk(m_folder.put(ExifBuilder().shorts(Ifd0, 0x0112, {1}).shorts(Ifd0, 0x0112, {2})));
    QCOMPARE(numbers(tags), (QList<int>{0x0112, 0x0112}));
    QCOMPARE(tags[0]->intValue(), 1);
    QCOMPARE(tags[1]->intValue(), 2);
}

void TestFPVExifFile::numbersKeepTheirFirstValue_data()
{
    QTest::addColumn<bool>("big");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<quint32>("count");
    QTest::addColumn<int>("value");
    const auto hex = [](const char *digits) {
        return QByteArray::fromHex(digits);
    };
    QTest::newRow("a byte") << false << 1 << hex("c8") << 1U << 200;
    QTest::newRow("the first of four bytes") << true << 1 << hex("01020304") << 4U << 1;
    QTest::newRow("a short") << false << 3 << hex("feff") << 1U << 0xFFFE;
    QTest::newRow("a big-endian short") << true << 3 << hex("fffe") << 1U << 0xFFFE;
    QTest::newRow("the first of two shorts") << true << 3 << hex("00010002") << 2U << 1;
    QTest::newRow("a long") << false << 4 << hex("78563412") << 1U << 0x12345678;
    QTest::newRow("a long of all bits") << false << 4 << hex("ffffffff") << 1U << -1;
    QTest::newRow("a signed long") << true << 9 << hex("fffffffb") << 1U << -5;
    QTest::newRow("a count of 0 is ignored") << false << 3 << hex("0700") << 0U << 7;
}

void TestFPVExifFile::numbersKeepTheirFirstValue()
{
    QFETCH(bool, big);
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(quint32, count);
    ExifBuilder photo(big ? ExifBuilder::Order::Big : ExifBuilder::Order::Little);
    const auto tag = onlyTag(m_folder.put(photo.value(Ifd0, 0x0112, quint16(type), count, bytes)));
    QVERIFY(dynamic_cast<const FPVExifTagNumber *>(tag.get()));
    QTEST(tag->intValue(), "value");
    QCOMPARE(tag->description(), QString::number(tag->intValue()));
    QCOMPARE(tag->type(), quint16(type));
    QCOMPARE(tag->count(), count);
}

void TestFPVExifFile::arraysOfNumbersAreNotFollowed_data()
{
    lumi::test::columns<int, int>();
    // The value word is an offset, but it is read as the value.
    QTest::newRow("bytes") << 1 << 0x44;
    QTest::newRow("shorts") << 3 << 0x3344;
    QTest::newRow("longs") << 4 << 0x11223344;
    QTest::newRow("signed longs") << 9 << 0x11223344;
}

void TestFPVExifFile::arraysOfNumbersAreNotFollowed()
{
    const auto [type, value] = lumi::test::row<int, int>();
    const auto tag
        = onlyTag(m_folder.put(ExifBuilder().word(Ifd0, 0x0112, quint16(type), 1000, 0x11223344)));
    QVERIFY(tag);
    QCOMPARE(tag->intValue(), value);
}

void TestFPVExifFile::rationalIsReversed_data()
{
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<quint32>("numerator");
    QTest::addColumn<quint32>("denominator");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("description");
    QTest::newRow("a sixtieth reads sixty")
        << false << 1U << 60U << 60 << QStringLiteral("60") << QStringLiteral("60/1");
    QTest::newRow("nothing is reduced")
        << false << 28U << 10U << 10 << QStringLiteral("0.357143") << QStringLiteral("10/28");
    QTest::newRow("signed words") << true << quint32(-1) << 3U << 3 << QStringLiteral("-3")
                                  << QStringLiteral("3/-1");
    QTest::newRow("over zero in the file")
        << false << 1U << 0U << 0 << QStringLiteral("0") << QStringLiteral("0/1");
    QTest::newRow("zero in the file")
        << false << 0U << 5U << 5 << QStringLiteral("inf") << QStringLiteral("5/0");
}

void TestFPVExifFile::rationalIsReversed()
{
    QFETCH(bool, isSigned);
    QFETCH(quint32, numerator);
    QFETCH(quint32, denominator);
    for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
        ExifBuilder photo(order);
        if (isSigned) {
            photo.srationals(Ifd0, 0x829A, {{numerator, denominator}});
        } else {
            photo.rationals(Ifd0, 0x829A, {{numerator, denominator}});
        }
        const auto tag = onlyTag(m_folder.put(photo));
        const auto *rational = dynamic_cast<const FPVExifTagRational *>(tag.get());
        QVERIFY(rational);
        QCOMPARE(rational->first(), qint32(denominator));
        QCOMPARE(rational->second(), qint32(numerator));
        QTEST(tag->intValue(), "value");
        QTEST(tag->text(), "text");
        QTEST(tag->description(), "description");
    }
}

void TestFPVExifFile::rationalFollowsItsOffsetWhateverItsCount()
{
    for (const quint32 count : {0U, 1U, 3U, 0xFFFFFFFFU}) {
        ExifBuilder photo;
        photo.word(Ifd0, 0x829A, 5, count, 8 + 2 + 24 + 4).rationals(Ifd0, 0x829D, {{1, 60}});
        const WalkedTags tags = walk(m_folder.put(photo));
        QCOMPARE(tags.size(), std::size_t(2));
        QCOMPARE(tags[0]->description(), QStringLiteral("60/1"));
        QCOMPARE(tags[0]->count(), count);
    }
}

void TestFPVExifFile::stringsRunToTheFirstNul()
{
    ExifBuilder photo;
    photo
        .ascii(Ifd0, 1, "abc")                               // in the entry
        .ascii(Ifd0, 2, "Anvil Works")                       // behind the directory
        .value(Ifd0, 3, 2, 100, QByteArray("one\0two\0", 8)) // ends before its count
        .value(Ifd0, 4, 2, 3, "end\x05") // continues into the next entry, whose number is 5
        .shorts(Ifd0, 5, {9});
    const WalkedTags tags = walk(m_folder.put(photo));
    QCOMPARE(tags.size(), std::size_t(5));
    QCOMPARE(tags[0]->text(), QStringLiteral("abc"));
    QVERIFY(dynamic_cast<const FPVExifTagString *>(tags[0].get()));
    QCOMPARE(tags[0]->description(), QStringLiteral("abc"));
    QCOMPARE(tags[1]->text(), QStringLiteral("Anvil Works"));
    QCOMPARE(tags[2]->text(), QStringLiteral("one"));
    QCOMPARE(tags[2]->count(), 100U);
    QCOMPARE(tags[3]->text(), QStringLiteral("end\x05\x05"));
    QCOMPARE(tags[4]->intValue(), 9);
}

void TestFPVExifFile::stringIsLatin1()
{
    const auto tag = onlyTag(m_folder.put(ExifBuilder().ascii(Ifd0, 0x010F, "caf\xE9 17")));
    QCOMPARE(tag->text(), QString::fromLatin1("caf\xE9 17"));
    QCOMPARE(QByteArray(tag->data()), QByteArray("caf\xE9 17"));
}

void TestFPVExifFile::stringAtTheOffsetMayBeEmpty()
{
    const WalkedTags tags = walk(m_folder.put(
        ExifBuilder().ascii(Ifd0, 0x010F, "").value(Ifd0, 0x0110, 2, 6, QByteArray(6, '\0'))));
    QCOMPARE(tags.size(), std::size_t(2));
    QCOMPARE(tags[0]->text(), QString());
    QCOMPARE(tags[1]->text(), QString());
}

void TestFPVExifFile::bytesAreKept()
{
    const WalkedTags tags = walk(m_folder.put(ExifBuilder(ExifBuilder::Order::Big)
                                                  .undefined(Ifd0, 0x9000, "0220")
                                                  .undefined(Ifd0, 0x9101, QByteArray("a\0b\0c", 5))
                                                  .undefined(Ifd0, 0x9102, "")));
    QCOMPARE(tags.size(), std::size_t(3));
    const auto *first = dynamic_cast<const FPVExifTagBytes *>(tags[0].get());
    const auto *second = dynamic_cast<const FPVExifTagBytes *>(tags[1].get());
    const auto *third = dynamic_cast<const FPVExifTagBytes *>(tags[2].get());
    QVERIFY(first && second && third);
    QCOMPARE(first->text(), QStringLiteral("0220"));
    QVERIFY(first->description().isEmpty());
    QCOMPARE(QByteArray(second->data(), second->size()), QByteArray("a\0b\0c", 5));
    QCOMPARE(third->size(), 0);
}

void TestFPVExifFile::unknownTypeEndsTheWalk_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 6, 8, 11, 12, 13, 255, 65535}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestFPVExifFile::unknownTypeEndsTheWalk()
{
    QFETCH(int, type);
    ExifBuilder photo;
    photo.shorts(Ifd0, 1, {10}).word(Ifd0, 2, quint16(type), 1, 8).shorts(Ifd0, 3, {30});
    QCOMPARE(numbers(walk(m_folder.put(photo))), (QList<int>{1}));

    FPVExifFile file(m_folder.put(photo));
    const std::unique_ptr<FPVExifTag> first(file.nextTag());
    const std::unique_ptr<FPVExifTag> second(file.nextTag());
    QVERIFY(first && !second);
    QVERIFY(file.isOpen()); // the next call reads the third entry
    const std::unique_ptr<FPVExifTag> third(file.nextTag());
    QCOMPARE(third->intValue(), 30);
}

void TestFPVExifFile::directoryWithoutEntriesGivesOne()
{
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x0112, {6}).shorts(Ifd0, 0x0113, {7}).entryCount(Ifd0, 0);
    const WalkedTags tags = walk(m_folder.put(photo.withoutPointers()));
    QCOMPARE(numbers(tags), (QList<int>{0x0112}));
    QCOMPARE(tags[0]->intValue(), 6);
}

void TestFPVExifFile::opensAgain()
{
    const QString full
        = m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Big), QStringLiteral("full.jpg"));
    const QString small
        = m_folder.put(ExifBuilder().shorts(Ifd0, 0x0112, {6}), QStringLiteral("small.jpg"));
    FPVExifFile file(full);
    for (int i = 0; i < 10; ++i) {
        QVERIFY(std::unique_ptr<FPVExifTag>(file.nextTag()));
    }
    QVERIFY(file.open(small));
    const std::unique_ptr<FPVExifTag> tag(file.nextTag());
    QCOMPARE(tag->tag(), quint16(0x0112));
    QVERIFY(!file.nextTag());
}

void TestFPVExifFile::openFails_data()
{
    lumi::test::columns<QByteArray, QByteArray>();
    const QByteArray good = lumi::test::fullPhoto(ExifBuilder::Order::Little).file();
    const QByteArray app0 = QByteArray::fromHex("ffe000104a46494600010101004800480000");
    QTest::newRow("an APP0 segment stands before it")
        << lumi::test::fullPhoto(ExifBuilder::Order::Little).segmentsBefore(app0).file()
        << QByteArray("not APP1 marker");
    QTest::newRow("no start of image") << replaced(good, 1, "\xD9") << QByteArray();
    QTest::newRow("an empty file") << QByteArray() << QByteArray();
    QTest::newRow("a start of image alone") << good.left(2) << QByteArray("not APP1 marker");
    QTest::newRow("another header")
        << replaced(good, 6, "exif") << QByteArray("not \"Exif\" header");
    QTest::newRow("cut behind the marker") << good.left(4) << QByteArray("not \"Exif\" header");
    QTest::newRow("an unknown byte order")
        << replaced(good, 12, "IM") << QByteArray("not Intel/Motorola endian");
    QTest::newRow("another check number")
        << replaced(good, 14, "+") << QByteArray("endian check digit error");
    QTest::newRow("the check number in the wrong order")
        << replaced(good, 12, "MM") << QByteArray("endian check digit error");
}

void TestFPVExifFile::openFails()
{
    const auto [bytes, reason] = lumi::test::row<QByteArray, QByteArray>();
    const QString path = m_folder.put(bytes);
    const QByteArray start = "FPVExifFile::open() ";
    const QByteArray end = " " + path.toLatin1();
    const QByteArray noStart = start + "no SOI marker" + end;
    const QByteArray why = start + reason + end;
    const QByteArray notFound = start + "not found Exif header" + end;
    if (reason.isEmpty()) {
        QTest::ignoreMessage(QtWarningMsg, noStart.constData());
    } else {
        QTest::ignoreMessage(QtDebugMsg, why.constData());
        QTest::ignoreMessage(QtDebugMsg, notFound.constData());
    }
    FPVExifFile file(path);
    QVERIFY(!file.isOpen());
    QVERIFY(!file.nextTag());
}

void TestFPVExifFile::openWithAnEmptyPathDoesNothing()
{
    FPVExifFile file((QString()));
    QVERIFY(!file.isOpen());
    QVERIFY(!file.nextTag());
}

LUMI_TEST(TestFPVExifFile)
#include "TestFPVExifFile.moc"

// SPDX-License-Identifier: MIT
// Setting and removing tags, and replacing the file: its name, permissions and identity.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

using namespace lumi::test;
using enum ExifListKind;

namespace {

/// A file in which one seek fails.
class UnevenFile : public QFile
{
public:
    UnevenFile(const QString &path, int failingSeek)
        : QFile(path)
        , m_seeks(failingSeek)
    { }

    bool seek(qint64 place) override { return m_seeks-- != 0 && QFile::seek(place); }

private:
    int m_seeks; // left until one fails
};

} // namespace

class TestFPVExifWriter : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void setTagCopiesAsManyBytesAsTypeAndCountSay_data();
    void setTagCopiesAsManyBytesAsTypeAndCountSay();
    void setTagWithoutDataRemoves();
    void removeTagRemovesOnlyThere();
    void listsAreChosenByKind_data();
    void listsAreChosenByKind();
    void unreadablePhotoTakesNoTags();
    void temporaryNames_data();
    void temporaryNames();
    void temporaryNameIsTheFirstFree();
    void takenNamesAreNotTouched();
    void noFreeNameIsAFailure();
    void permissionsAreKept_data();
    void permissionsAreKept();
    void linkIsReplacedByThePhoto();
    void unreadablePhotoIsNotTouched_data();
    void unreadablePhotoIsNotTouched();
    void photoWithoutImageDataIsNotTouched_data();
    void photoWithoutImageDataIsNotTouched();
    void missingPhotoIsAFailure();
    void photoThatCannotBeReadFromAPlaceIsNotTouched_data();
    void photoThatCannotBeReadFromAPlaceIsNotTouched();
    void photoChangedSinceItWasReadIsNotTouched_data();
    void photoChangedSinceItWasReadIsNotTouched();
    void rewriteWorksOnce();
    void relativePathIsFound();
};

void TestFPVExifWriter::setTagCopiesAsManyBytesAsTypeAndCountSay_data()
{
    lumi::test::columns<quint16, quint32, QByteArray>();
    QTest::newRow("one byte") << quint16(1) << 1U << QByteArray("0");
    QTest::newRow("a text of five") << quint16(2) << 5U << QByteArray("01234");
    QTest::newRow("three shorts") << quint16(3) << 3U << QByteArray("012345");
    QTest::newRow("two longs") << quint16(4) << 2U << QByteArray("01234567");
    QTest::newRow("two fractions") << quint16(5) << 2U << QByteArray("0123456789abcdef");
    QTest::newRow("seven untyped bytes") << quint16(7) << 7U << QByteArray("0123456");
    QTest::newRow("no value") << quint16(2) << 0U << QByteArray();
    QTest::newRow("a type without a size") << quint16(6) << 3U << QByteArray();
}

void TestFPVExifWriter::setTagCopiesAsManyBytesAsTypeAndCountSay()
{
    const auto [type, count, expected] = lumi::test::row<quint16, quint32, QByteArray>();
    QByteArray data = "0123456789abcdefghij";
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    writer.setTag(0x9286, type, count, data.constData(), Exif);
    data.fill('x');
    const FPVExifTag *tag = writer.find(0x9286, Exif);
    QCOMPARE(tag->type(), type);
    QCOMPARE(tag->count(), count);
    QCOMPARE(bytesOf(tag), expected);
}

void TestFPVExifWriter::setTagWithoutDataRemoves()
{
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    QList<int> expected = numbersOf(writer.ifd0List());
    expected.removeOne(0x0110);
    writer.setTag(0x0110, 2, 1000, nullptr, Ifd0);
    writer.setTag(0x013B, 2, 1000, nullptr, Ifd0);
    QCOMPARE(numbersOf(writer.ifd0List()), expected);
}

void TestFPVExifWriter::removeTagRemovesOnlyThere()
{
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    // Both lists have a tag of this number.
    writer.removeTag(0x0001, Interoperability);
    QVERIFY(!writer.find(0x0001, Interoperability));
    QCOMPARE(bytesOf(writer.find(0x0001, Gps)), QByteArray("N\0", 2));
    const QList<int> before = numbersOf(writer.gpsList());
    writer.removeTag(0x7777, Gps);
    QCOMPARE(numbersOf(writer.gpsList()), before);
}

void TestFPVExifWriter::listsAreChosenByKind_data()
{
    lumi::test::columns<int, int>();
    for (int kind = 0; kind < 5; ++kind) {
        QTest::addRow("list %d", kind) << kind << kind;
    }
    QTest::newRow("a number behind the last") << 5 << 0;
    QTest::newRow("a negative number") << -1 << 0;
}

void TestFPVExifWriter::listsAreChosenByKind()
{
    const auto [kind, list] = lumi::test::row<int, int>();
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    writer.setTag(0x7777, 2, 2, "x", ExifListKind(kind));
    for (const ExifListKind each : kAllLists) {
        QCOMPARE(writer.find(0x7777, each) != nullptr, each == ExifListKind(list));
    }
    writer.removeTag(0x7777, ExifListKind(kind));
    QVERIFY(!writer.find(0x7777, ExifListKind(list)));
}

void TestFPVExifWriter::unreadablePhotoTakesNoTags()
{
    FPVExifWriter writer(m_folder->put(ExifBuilder::jpeg(16, 16, 0)));
    QVERIFY(!writer.isValid());
    writer.setTag(0x010F, 2, 2, "x", Ifd0);
    writer.removeTag(0x010F, Ifd0);
    QVERIFY(writer.ifd0List().isEmpty());
}

void TestFPVExifWriter::temporaryNames_data()
{
    lumi::test::columns<QString, QString>();
    const auto row = [](const char *name, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8(expected);
    };
    row("photo.jpg", "photo_tmp_0.jpg");
    row("PHOTO.JPG", "PHOTO_tmp_0.JPG");
    row("one.two.jpg", "one_tmp_0.jpg");
    row("photo", "photo_tmp_0.");
    row(".jpg", "_tmp_0.jpg");
    row("a photo_tmp_0.jpeg", "a photo_tmp_0_tmp_0.jpeg");
    row("\xE5\x86\x99\xE7\x9C\x9F.jpg", "\xE5\x86\x99\xE7\x9C\x9F_tmp_0.jpg");
}

void TestFPVExifWriter::temporaryNames()
{
    const auto [name, expected] = lumi::test::row<QString, QString>();
    QCOMPARE(lumi::freeTemporaryPath(m_folder->path(name)), m_folder->path(expected));
    const QString path = m_folder->put(fullPhoto(ExifBuilder::Order::Big), name);
    QCOMPARE(rewritten(path), kDone);
    QVERIFY(FPVExifDocument(path).littleEndian());
    QVERIFY(!QFile::exists(m_folder->path(expected)));
}

void TestFPVExifWriter::temporaryNameIsTheFirstFree()
{
    const QString path = m_folder->path(QStringLiteral("photo.jpg"));
    for (int number = 0; number < 3; ++number) {
        const QString expected = QStringLiteral("photo_tmp_%1.jpg").arg(number);
        QCOMPARE(lumi::freeTemporaryPath(path), m_folder->path(expected));
        m_folder->put("taken", expected);
    }
    QVERIFY(QFile::remove(m_folder->path(QStringLiteral("photo_tmp_1.jpg"))));
    QCOMPARE(lumi::freeTemporaryPath(path), m_folder->path(QStringLiteral("photo_tmp_1.jpg")));
    // A dangling link and a folder also take a name.
    QVERIFY(QFile::link(m_folder->path(QStringLiteral("nowhere")),
                        m_folder->path(QStringLiteral("photo_tmp_1.jpg"))));
    QVERIFY(QDir().mkdir(m_folder->path(QStringLiteral("photo_tmp_3.jpg"))));
    QCOMPARE(lumi::freeTemporaryPath(path), m_folder->path(QStringLiteral("photo_tmp_4.jpg")));
}

void TestFPVExifWriter::takenNamesAreNotTouched()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QString taken = m_folder->put("taken", QStringLiteral("photo_tmp_0.jpg"));
    QCOMPARE(rewritten(path), kDone);
    QCOMPARE(contentOf(taken), QByteArray("taken"));
    QVERIFY(FPVExifDocument(path).littleEndian());
}

void TestFPVExifWriter::noFreeNameIsAFailure()
{
    constexpr int kNames = 65535;
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QByteArray before = contentOf(path);
    const QByteArray prefix = QFile::encodeName(m_folder->path(QStringLiteral("photo_tmp_")));
    for (int number = 0; number < kNames; ++number) {
        const QByteArray name = prefix + QByteArray::number(number) + ".jpg";
        QCOMPARE(::mknod(name.constData(), S_IFREG | S_IRUSR, 0), 0);
    }
    QCOMPARE(rewritten(path), kFailed);
    QVERIFY(contentOf(path) == before);
    // The last name can be used again.
    const QString last = m_folder->path(QStringLiteral("photo_tmp_65534.jpg"));
    QVERIFY(QFile::remove(last));
    QCOMPARE(lumi::freeTemporaryPath(path), last);
}

void TestFPVExifWriter::permissionsAreKept_data()
{
    QTest::addColumn<uint>("mode");
    QTest::newRow("private") << 0600U;
    QTest::newRow("for everybody") << 0666U;
    QTest::newRow("read-only") << 0444U;
    QTest::newRow("with an odd bit") << 0751U;
}

void TestFPVExifWriter::permissionsAreKept()
{
    QFETCH(uint, mode);
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QByteArray name = QFile::encodeName(path);
    QCOMPARE(::chmod(name.constData(), mode), 0);
    QCOMPARE(rewritten(path), kDone);
    struct stat now = {};
    QCOMPARE(::stat(name.constData(), &now), 0);
    QCOMPARE(now.st_mode & 07777U, mode);
}

void TestFPVExifWriter::linkIsReplacedByThePhoto()
{
    const QString target = m_folder->put(fullPhoto(ExifBuilder::Order::Big), QStringLiteral("a"));
    const QByteArray before = contentOf(target);
    const QString path = m_folder->path(QStringLiteral("photo.jpg"));
    QVERIFY(QFile::link(target, path));
    QCOMPARE(rewritten(path), kDone);
    QVERIFY(!QFileInfo(path).isSymLink());
    QVERIFY(FPVExifDocument(path).littleEndian());
    QVERIFY(contentOf(target) == before);
}

void TestFPVExifWriter::unreadablePhotoIsNotTouched_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = fullPhoto(ExifBuilder::Order::Little).file();
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("a photo without a block") << ExifBuilder::jpeg(16, 16, 0);
    QTest::newRow("a photo cut in its header") << whole.left(19);
    QTest::newRow("a text") << QByteArray("This is no photo, but it is the only copy of a text.");
}

void TestFPVExifWriter::unreadablePhotoIsNotTouched()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_folder->put(bytes);
    QCOMPARE(rewritten(path), kFailed);
    QCOMPARE(contentOf(path), bytes);
    QVERIFY(!QFile::exists(m_folder->path(QStringLiteral("photo_tmp_0.jpg"))));
}

void TestFPVExifWriter::photoWithoutImageDataIsNotTouched_data()
{
    QTest::addColumn<int>("missing"); // bytes of the segment behind the end of the file
    QTest::newRow("ends with the segment") << 0;
    QTest::newRow("ends a byte before the segment") << 1;
    QTest::newRow("ends in the first directory") << 400;
}

void TestFPVExifWriter::photoWithoutImageDataIsNotTouched()
{
    QFETCH(int, missing);
    const QByteArray whole = fullPhoto(ExifBuilder::Order::Little).file();
    const QByteArray bytes = whole.chopped(restOf(whole).size() + missing);
    const QString path = m_folder->put(bytes);
    FPVExifWriter writer(path);
    QVERIFY(writer.isValid());
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(contentOf(path) == bytes);
    // One byte of image data is enough.
    const QString enough = m_folder->put(whole.chopped(restOf(whole).size() - 1));
    QCOMPARE(rewritten(enough), kDone);
}

void TestFPVExifWriter::missingPhotoIsAFailure()
{
    QCOMPARE(rewritten(QString()), kFailed);
    QCOMPARE(rewritten(m_folder->path(QStringLiteral("missing.jpg"))), kFailed);
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    FPVExifWriter writer(path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(!QFile::exists(path));
}

void TestFPVExifWriter::photoThatCannotBeReadFromAPlaceIsNotTouched_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("where the thumbnail is") << 0 << kFailed;
    QTest::newRow("where the image data begin") << 1 << kFailed;
    QTest::newRow("where nothing is read") << 2 << kDone;
}

void TestFPVExifWriter::photoThatCannotBeReadFromAPlaceIsNotTouched()
{
    const auto [seek, result] = lumi::test::row<int, int>();
    const QByteArray before = fullPhoto(ExifBuilder::Order::Big).file();
    const QString path = m_folder->put(before);
    UnevenFile photo(path, seek);
    QVERIFY(photo.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    lumi::PhotoReplacement replacement(photo, lumi::stateOf(path));
    QCOMPARE(int(replacement.run("start", {100, 50}, 200)), result);
    QCOMPARE(contentOf(path),
             result == kDone ? "start" + before.mid(100, 50) + '\0' + before.mid(200) : before);
    QVERIFY(!QFile::exists(m_folder->path(QStringLiteral("photo_tmp_0.jpg"))));
}

void TestFPVExifWriter::photoChangedSinceItWasReadIsNotTouched_data()
{
    QTest::addColumn<QByteArray>("other");
    const QByteArray photo = fullPhoto(ExifBuilder::Order::Big).file();
    QByteArray differing = photo;
    differing[photo.size() - 3] = 'x';
    QTest::newRow("another program changed a byte of it") << differing;
    QTest::newRow("another program made it longer") << photo + "more";
    QTest::newRow("another program made it shorter") << photo.chopped(3);
    QTest::newRow("another photo was written into it")
        << fullPhoto(ExifBuilder::Order::Little).photo(ExifBuilder::jpeg(9, 9, 0)).file();
}

void TestFPVExifWriter::photoChangedSinceItWasReadIsNotTouched()
{
    QFETCH(QByteArray, other);
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    // Two changes within a tick of the clock have the same time.
    QFile photo(path);
    QVERIFY(photo.open(QIODevice::ReadWrite)
            && photo.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                                 QFileDevice::FileModificationTime));
    photo.close();
    FPVExifWriter writer(path);
    QVERIFY(writer.isValid());
    m_folder->put(other);
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(contentOf(path) == other);
    QVERIFY(!QFile::exists(m_folder->path(QStringLiteral("photo_tmp_0.jpg"))));
    // A new writer reads the changed photo.
    QCOMPARE(rewritten(path), kDone);
}

void TestFPVExifWriter::rewriteWorksOnce()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    FPVExifWriter writer(path);
    QCOMPARE(writer.rewrite(), kDone);
    const QByteArray once = contentOf(path);
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(contentOf(path) == once);
    FPVExifWriter closed(path);
    closed.close();
    QCOMPARE(closed.rewrite(), kFailed);
    QVERIFY(contentOf(path) == once);
}

void TestFPVExifWriter::relativePathIsFound()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QFileInfo(path).absolutePath()));
    const int result = rewritten(QStringLiteral("photo.jpg"));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(result, kDone);
    QVERIFY(FPVExifDocument(path).littleEndian());
}

LUMI_TEST(TestFPVExifWriter)
#include "TestFPVExifWriter.moc"

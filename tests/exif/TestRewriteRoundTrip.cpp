// SPDX-License-Identifier: MIT
// Photos of all kinds are read, changed, written and read again, by our reader and by other
// programs.
#include "exif/tag/exifFormat.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/ForeignReaders.h"
#include "tests/exif/RandomPhotos.h"
#include "tests/exif/RewriteFolder.h"
#include "tests/support/TestMain.h"

#include <QDirIterator>
#include <QTest>

using namespace lumi::test;
using enum ExifListKind;

namespace {

struct Edit
{
    ExifListKind list;
    TagCopy tag; // empty bytes: the tag is removed
    ForeignTag exiv2;
    QVariant exiftool;
};

/// The sample photos of the source tree, damaged ones among them.
QStringList samples()
{
    QDirIterator files(QStringLiteral(LUMI_SOURCE_DIR "/fuzz/corpus"), {QStringLiteral("*.jpg")},
                       QDir::Files, QDirIterator::Subdirectories);
    QStringList paths;
    while (files.hasNext()) {
        paths.append(files.next());
    }
    return paths;
}

/// The samples with a block that other programs accept. Damaged pointers are read differently by
/// every program.
QStringList soundSamples()
{
    QStringList sound = soundPhotos(samples());
    sound.removeIf([](const QString &path) {
        return !FPVExifDocument(path).isValid();
    });
    return sound;
}

/// Tags that are added, removed, made longer and made shorter.
const std::vector<Edit> &edits()
{
    static const QByteArray kArtist("An artist of some renown\0", 25);
    static const std::vector<Edit> kEdits = {
        {Ifd0,
         {0x013B, 2, 25, kArtist},
         {QStringLiteral("Ascii"), 25, QStringLiteral("An artist of some renown")},
         QStringLiteral("An artist of some renown")},
        {Ifd0,
         {0x010E, 2, 4, QByteArray("Sun\0", 4)},
         {QStringLiteral("Ascii"), 4, QStringLiteral("Sun")},
         QStringLiteral("Sun")},
        {Ifd0, {0x0112, 3, 1, {}}, {}, {}},
        {Exif,
         {0x829A, 5, 1, hostBytes<quint32>({1, 250})},
         {QStringLiteral("Rational"), 1, QStringLiteral("1/250")},
         0.004},
        {Exif,
         {0xA004, 2, 13, QByteArray("SOUND001.WAV\0", 13)},
         {QStringLiteral("Ascii"), 13, QStringLiteral("SOUND001.WAV")},
         QStringLiteral("SOUND001.WAV")},
        {Gps,
         {0x0002, 5, 3, hostBytes<quint32>({35, 1, 40, 1, 3000, 100})},
         {QStringLiteral("Rational"), 3, QStringLiteral("35/1 40/1 3000/100")},
         35.675},
        {Gps,
         {0x0001, 2, 2, QByteArray("N\0", 2)},
         {QStringLiteral("Ascii"), 2, QStringLiteral("N")},
         QStringLiteral("N")},
        {Gps, {0x0006, 5, 1, {}}, {}, {}},
    };
    return kEdits;
}

void apply(const Edit &edit, FPVExifWriter *writer)
{
    const TagCopy &tag = edit.tag;
    writer->setTag(quint16(tag.tag), quint16(tag.type), tag.count,
                   tag.bytes.isEmpty() ? nullptr : tag.bytes.constData(), edit.list);
}

/// The expected list after the edit.
void apply(const Edit &edit, ListCopy *list)
{
    const auto found = std::find_if(list->begin(), list->end(), [&edit](const TagCopy &tag) {
        return tag.tag == edit.tag.tag;
    });
    if (found == list->end() && !edit.tag.bytes.isEmpty()) {
        list->append(edit.tag);
    } else if (found != list->end() && !edit.tag.bytes.isEmpty()) {
        *found = edit.tag;
    } else if (found != list->end()) {
        list->erase(found);
    }
}

/// A list that got its first tag also gets a pointer, the last tag of the first directory.
void addPointer(QList<ListCopy> *lists, ExifListKind list, int pointer)
{
    ListCopy &first = lists->first();
    const bool isThere = std::any_of(first.begin(), first.end(), [pointer](const TagCopy &tag) {
        return tag.tag == pointer;
    });
    if (!isThere && !lists->at(int(list)).isEmpty()) {
        first.append({pointer, 4, 1, QByteArray(4, '\0')});
    }
}

QList<ListCopy> edited(QList<ListCopy> lists)
{
    for (const Edit &edit : edits()) {
        apply(edit, &lists[int(edit.list)]);
    }
    addPointer(&lists, Exif, 0x8769);
    addPointer(&lists, Gps, 0x8825);
    return lists;
}

/// Saves as the editor does, which refuses a segment that is too long.
int saveEdits(const QString &path)
{
    FPVExifWriter writer(path);
    for (const Edit &edit : edits()) {
        apply(edit, &writer);
    }
    return writer.segmentLength() <= lumi::kLongestSegment ? writer.rewrite() : kFailed;
}

/// Without the tags that hold an offset: they change with every save.
template <class Tags> Tags withoutPlaces(Tags tags)
{
    for (const TagPlace &place : {TagPlace(Ifd0, 0x8769), TagPlace(Ifd0, 0x8825),
                                  TagPlace(Exif, 0xA005), TagPlace(Ifd1, 0x0201)}) {
        tags.erase(place);
    }
    return tags;
}

/// What another program must read after the edits if it read these tags before.
template <class Tags, class Value> Tags editedForeign(Tags tags, Value(Edit::*value))
{
    for (const Edit &edit : edits()) {
        if (edit.tag.bytes.isEmpty()) {
            tags.erase({edit.list, edit.tag.tag});
        } else {
            tags[{edit.list, edit.tag.tag}] = edit.*value;
        }
    }
    return withoutPlaces(tags);
}

} // namespace

class TestRewriteRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void valuesSurviveARewrite_data();
    void valuesSurviveARewrite();
    void editsSurviveARewrite_data();
    void editsSurviveARewrite();
    void otherProgramsAgree();
    void samplesSurviveEdits();

private:
    /// Writes a choice of all photos into the folder.
    [[nodiscard]] QStringList putAll();

    std::unique_ptr<RewriteFolder> m_folder;
};

void TestRewriteRoundTrip::initTestCase()
{
    m_folder = std::make_unique<RewriteFolder>();
}

void TestRewriteRoundTrip::cleanupTestCase()
{
    m_folder.reset();
}

QStringList TestRewriteRoundTrip::putAll()
{
    QStringList paths = {exiftoolPhoto(*m_folder, QStringLiteral("II")),
                         exiftoolPhoto(*m_folder, QStringLiteral("MM"))};
    for (unsigned number = 0; number < kRandomPhotos; number += 5) {
        paths.append(
            m_folder->put(randomPhoto(number).builder, QStringLiteral("photo%1.jpg").arg(number)));
    }
    for (unsigned number = 4; number < kRandomPhotos; number += 21) {
        paths.append(m_folder->put(ExifBuilder(randomPhoto(number).builder).packed(),
                                   QStringLiteral("packed%1.jpg").arg(number)));
    }
    for (const QString &sample : soundSamples()) {
        paths.append(
            m_folder->put(contentOf(sample), QStringLiteral("sample%1.jpg").arg(paths.size())));
    }
    return paths;
}

void TestRewriteRoundTrip::valuesSurviveARewrite_data()
{
    QTest::addColumn<unsigned>("number");
    for (unsigned number = 0; number < kRandomPhotos; ++number) {
        QTest::newRow(randomPhoto(number).name.constData()) << number;
    }
}

void TestRewriteRoundTrip::valuesSurviveARewrite()
{
    QFETCH(unsigned, number);
    const QString path = m_folder->put(randomPhoto(number).builder);
    const QByteArray before = contentOf(path);
    FPVExifDocument old(path);
    QVERIFY(old.isValid());
    QCOMPARE(FPVExifWriter(path).rewrite(), kDone);
    const QByteArray after = contentOf(path);
    FPVExifDocument document(path);
    QVERIFY(document.isValid());
    QVERIFY(document.littleEndian());
    QVERIFY(valuesOf(document) == valuesOf(old));
    QVERIFY(restOf(after) == restOf(before));
    QCOMPARE(thumbnailBytes(document), thumbnailBytes(old));
    QCOMPARE((after.size() - restOf(after).size()) % 2, 0);
    QCOMPARE(FPVExifWriter(path).rewrite(), kDone);
    QVERIFY(contentOf(path) == after);
}

void TestRewriteRoundTrip::editsSurviveARewrite_data()
{
    valuesSurviveARewrite_data();
}

void TestRewriteRoundTrip::editsSurviveARewrite()
{
    QFETCH(unsigned, number);
    const QString path = m_folder->put(randomPhoto(number).builder);
    const QByteArray before = contentOf(path);
    FPVExifDocument old(path);
    QCOMPARE(saveEdits(path), kDone);
    FPVExifDocument document(path);
    QVERIFY(valuesOf(document) == edited(valuesOf(old)));
    QVERIFY(valuesOf(document) != valuesOf(old));
    QVERIFY(restOf(contentOf(path)) == restOf(before));
    QCOMPARE(thumbnailBytes(document), thumbnailBytes(old));
    QCOMPARE(QImage::fromData(contentOf(path)), QImage::fromData(before));
}

void TestRewriteRoundTrip::otherProgramsAgree()
{
    const QStringList paths = putAll();
    QVERIFY(paths.last().contains(QLatin1String("sample")));
    const auto exiv2Before = exiv2Tags(paths);
    const auto exiftoolBefore = exiftoolTags(paths);
    for (const QString &path : paths) {
        const QImage decoded = QImage::fromData(contentOf(path));
        QVERIFY2(!decoded.isNull(), qPrintable(path));
        QCOMPARE(saveEdits(path), kDone);
        QVERIFY2(QImage::fromData(contentOf(path)) == decoded, qPrintable(path));
    }
    const auto exiv2After = exiv2Tags(paths);
    const auto exiftoolAfter = exiftoolTags(paths);
    auto thumbnails = exiftoolThumbnails(paths);
    QCOMPARE(exiftoolAfter.size(), std::size_t(paths.size()));
    QVERIFY(thumbnails.size() >= 4);
    std::size_t compared = 0;
    for (const QString &path : paths) {
        QVERIFY2(exiv2Before.at(path).size() >= 4, qPrintable(path));
        const auto expected = editedForeign(exiv2Before.at(path), &Edit::exiv2);
        QVERIFY2(withoutPlaces(exiv2After.at(path)) == expected, qPrintable(path));
        QVERIFY2(withoutPlaces(exiftoolAfter.at(path))
                     == editedForeign(exiftoolBefore.at(path), &Edit::exiftool),
                 qPrintable(path));
        FPVExifDocument document(path);
        QCOMPARE(thumbnails[path], thumbnailBytes(document));
        compared += expected.size();
    }
    QVERIFY2(compared > 1000, qPrintable(QString::number(compared)));
}

void TestRewriteRoundTrip::samplesSurviveEdits()
{
    int saved = 0;
    int withoutBlock = 0;
    int tooLong = 0;
    for (const QString &sample : samples()) {
        const QByteArray before = contentOf(sample);
        const QString path = m_folder->put(before);
        FPVExifDocument old(path);
        if (saveEdits(path) != kDone) {
            QCOMPARE(contentOf(path), before);
            ++(old.isValid() ? tooLong : withoutBlock);
            continue;
        }
        FPVExifDocument document(path);
        QVERIFY(valuesOf(document) == edited(valuesOf(old)));
        QCOMPARE(thumbnailBytes(document), thumbnailBytes(old));
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(QImage::fromData(contentOf(path)), QImage::fromData(before));
        ++saved;
    }
    QVERIFY(saved >= 5);
    QVERIFY(withoutBlock >= 10);
    QVERIFY(tooLong <= 2);
}

LUMI_TEST(TestRewriteRoundTrip)
#include "TestRewriteRoundTrip.moc"

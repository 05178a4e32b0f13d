// SPDX-License-Identifier: MIT
#include "exif/tag/exifFormat.h"
#include "exif/text/FPVExifFields.h"
#include "exif/ui/exifWriteBack.h"
#include "exif/write/FPVExifWriter.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/ui/CallCounter.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QImage>
#include <QTest>

using namespace lumi;
using lumi::test::Filling;

namespace {

/// "TAG LIST TYPE COUNT BYTES", or "TAG LIST -" for a removal.
QStringList described(const TagOperations &operations)
{
    QStringList result;
    for (const TagOperation &operation : operations) {
        QString line = QString::asprintf("%04x %d ", operation.tag, int(operation.list));
        if (operation.value) {
            const qsizetype size = qsizetype(operation.count) * typeSize(operation.type);
            const QByteArray bytes(reinterpret_cast<const char *>(operation.value.get()), size);
            line += QString::asprintf("%d %u ", operation.type, operation.count)
                + QString::fromLatin1(bytes.toHex());
        } else {
            line += QLatin1Char('-');
        }
        result.append(line);
    }
    return result;
}

EditTexts textsOf(std::initializer_list<std::pair<EditField, QString>> filled)
{
    EditTexts texts;
    for (const auto &[field, text] : filled) {
        texts.at(std::size_t(field)) = text;
    }
    return texts;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The numbers in host order, in hexadecimal.
QString hex32(std::initializer_list<quint32> numbers)
{
    QByteArray bytes;
    for (const quint32 number : numbers) {
        bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
    }
    return QString::fromLatin1(bytes.toHex());
}

const QString kNoLatitude = QStringLiteral("0001 3 -|0002 3 -|");
const QString kNoLongitude = QStringLiteral("0003 3 -|0004 3 -|");
const QString kVersion = QStringLiteral("0000 3 1 4 02020000");

/// An owner, and the bytes that its entry and its value take.
const QString kOwner(49, QLatin1Char('o'));
constexpr int kOwnerSize = 62;
/// The longest even length.
constexpr int kMost = 65534;
constexpr int kMakerNote = 0x927C;

QByteArray thumbnail()
{
    return test::ExifBuilder::jpeg(40, 30, 0xC08040);
}

} // namespace

Q_DECLARE_METATYPE(lumi::EditTexts)
Q_DECLARE_METATYPE(lumi::SaveResult)
Q_DECLARE_METATYPE(lumi::test::Filling)

class TestExifWriteBack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rulesAreThoseOfTheFields();
    void basic_data();
    void basic();
    void userData_data();
    void userData();
    void position_data();
    void position();
    void checks_data();
    void checks();
    void aTextThatFitsIsSaved_data();
    void aTextThatFitsIsSaved();
    void aTooLongBlockTouchesNothing_data();
    void aTooLongBlockTouchesNothing();
    void withoutMemoryNothingIsWritten_data();
    void withoutMemoryNothingIsWritten();
};

void TestExifWriteBack::rulesAreThoseOfTheFields()
{
    std::size_t next = 0;
    for (const EditPage &page : kEditPages) {
        const ExifFieldGroup &group = exifFieldGroups()[std::size_t(page.group)];
        for (int row = 0; row < group.rowCount; ++row) {
            if (group.rows[row].readOnly) {
                continue;
            }
            const EditRule &rule = kEditRules.at(next);
            QCOMPARE(int(rule.field), int(next));
            QCOMPARE(int(rule.tag), group.rows[row].tag);
            QCOMPARE(rule.list, group.rows[row].list);
            ++next;
        }
    }
    QCOMPARE(next, kEditRules.size());
    QList<int> lengths;
    QList<int> masks;
    for (const EditRule &rule : kEditRules) {
        lengths.append(rule.maxLength);
        masks.append(rule.charMask);
    }
    QCOMPARE(lengths, (QList<int>{50, 50, 50, 50, 12, 256, 13, 14, 9}));
    QCOMPARE(masks, (QList<int>{0xE2, 0xE2, 0xE2, 0xE2, 0xE2, 0xFF, 0xE2, 0xE2, 0xE2}));
}

void TestExifWriteBack::basic_data()
{
    lumi::test::columns<QString, QString, QString>();
    const QString ann = QStringLiteral("Ann");
    const QString trip = QStringLiteral("Trip");
    QTest::newRow("no text removes the tag")
        << QString() << QString() << QStringLiteral("8298 0 -");
    QTest::newRow("blanks count as no text")
        << QStringLiteral("  ") << QStringLiteral(" \t") << QStringLiteral("8298 0 -");
    QTest::newRow("an author alone") << ann << QString() << QStringLiteral("8298 0 2 4 416e6e00");
    QTest::newRow("a compilation alone has a blank before it")
        << QString() << trip << QStringLiteral("8298 0 2 7 20005472697000");
    QTest::newRow("both") << ann << trip << QStringLiteral("8298 0 2 9 416e6e005472697000");
    QTest::newRow("blanks around them don't count")
        << QStringLiteral(" Ann ") << QStringLiteral("Trip  ")
        << QStringLiteral("8298 0 2 9 416e6e005472697000");
    QTest::newRow("Latin-1, with a question mark for other characters")
        << QStringLiteral("é写") << QString() << QStringLiteral("8298 0 2 3 e93f00");
}

void TestExifWriteBack::basic()
{
    const auto [author, compilation, operation] = lumi::test::row<QString, QString, QString>();
    TagOperations operations;
    QVERIFY(appendBasic(textsOf({{AuthorField, author}, {CompilationField, compilation}}),
                        &operations));
    QCOMPARE(described(operations), QStringList{operation});
}

void TestExifWriteBack::userData_data()
{
    lumi::test::columns<int, QString, QString>();
    const QString noOwner = QStringLiteral("013b 0 -");
    QTest::newRow("no owner") << int(OwnerField) << QString() << noOwner;
    QTest::newRow("an owner of 50 blanks")
        << int(OwnerField) << QString(50, QLatin1Char(' ')) << noOwner;
    QTest::newRow("an owner") << int(OwnerField) << QStringLiteral("Jo")
                              << QStringLiteral("013b 0 2 3 4a6f00");
    QTest::newRow("no title") << int(TitleField) << QString() << QStringLiteral("010e 0 -");
    QTest::newRow("a title") << int(TitleField) << QStringLiteral(" Sea ")
                             << QStringLiteral("010e 0 2 4 53656100");
    QTest::newRow("no audio") << int(RelatedAudioField) << QString() << QStringLiteral("a004 1 -");
    QTest::newRow("a short audio name takes 13 bytes")
        << int(RelatedAudioField) << QStringLiteral("A.WAV")
        << QStringLiteral("a004 1 2 13 412e5741560000000000000000");
    QTest::newRow("a long one is cut to 12")
        << int(RelatedAudioField) << QStringLiteral("ABCDEFGHIJKLMN")
        << QStringLiteral("a004 1 2 13 4142434445464748494a4b4c00");
    QTest::newRow("no comment") << int(CommentField) << QString() << QStringLiteral("9286 1 -");
    QTest::newRow("a comment has no closing NUL")
        << int(CommentField) << QStringLiteral("hi")
        << QStringLiteral("9286 1 7 10 554e49434f4445006869");
    QTest::newRow("a comment in kanji is UTF-8")
        << int(CommentField) << QStringLiteral("写真")
        << QStringLiteral("9286 1 7 14 554e49434f444500e58699e79c9f");
}

void TestExifWriteBack::userData()
{
    const auto [field, text, operation] = lumi::test::row<int, QString, QString>();
    TagOperations operations;
    QVERIFY(appendUserData(textsOf({{EditField(field), text}}), &operations));
    QStringList expected{QStringLiteral("013b 0 -"), QStringLiteral("010e 0 -"),
                         QStringLiteral("a004 1 -"), QStringLiteral("9286 1 -")};
    expected[field - OwnerField] = operation;
    QCOMPARE(described(operations), expected);
}

void TestExifWriteBack::position_data()
{
    QTest::addColumn<QString>("latitude");
    QTest::addColumn<QString>("longitude");
    QTest::addColumn<QString>("altitude");
    QTest::addColumn<QString>("operations");
    const QString north = QStringLiteral("0001 3 2 2 4e00|0002 3 5 3 ");
    const QString east = QStringLiteral("0003 3 2 2 4500|0004 3 5 3 ");
    const QString above = QStringLiteral("0005 3 1 1 00|0006 3 5 1 ");
    QTest::newRow("no texts remove the version too, but not the altitude")
        << QString() << QStringLiteral("  ") << QString()
        << QString(kNoLatitude + kNoLongitude + QStringLiteral("0000 3 -"));
    QTest::newRow("north and east")
        << QStringLiteral("N35.40.20.000") << QStringLiteral(" E139.45.30.005 ") << QString()
        << QString(north + hex32({35, 1, 40, 1, 20, 1}) + QLatin1Char('|') + east
                   + hex32({139, 1, 45, 1, 305, 10}) + QLatin1Char('|') + kVersion);
    QTest::newRow("south and west")
        << QStringLiteral("S12.34.56.789") << QStringLiteral("W077.02.03.050") << QString()
        << QString(QStringLiteral("0001 3 2 2 5300|0002 3 5 3 ")
                   + hex32({12, 1, 34, 1, 56789, 1000})
                   + QStringLiteral("|0003 3 2 2 5700|0004 3 5 3 ") + hex32({77, 1, 2, 1, 350, 100})
                   + QLatin1Char('|') + kVersion);
    QTest::newRow("a latitude alone removes the longitude")
        << QStringLiteral("N35.40.20.000") << QString() << QString()
        << QString(north + hex32({35, 1, 40, 1, 20, 1}) + QLatin1Char('|') + kNoLongitude
                   + kVersion);
    QTest::newRow("a longitude alone removes the latitude")
        << QString() << QStringLiteral("E001.02.03.000") << QString()
        << QString(kNoLatitude + east + hex32({1, 1, 2, 1, 3, 1}) + QLatin1Char('|') + kVersion);
    QTest::newRow("an altitude above the sea")
        << QString() << QString() << QStringLiteral("10.5")
        << QString(kNoLatitude + kNoLongitude + above + hex32({105, 10}) + QLatin1Char('|')
                   + kVersion);
    QTest::newRow("an altitude below the sea")
        << QString() << QString() << QStringLiteral("-12")
        << QString(kNoLatitude + kNoLongitude + QStringLiteral("0005 3 1 1 01|0006 3 5 1 ")
                   + hex32({12, 1}) + QLatin1Char('|') + kVersion);
}

void TestExifWriteBack::position()
{
    QFETCH(QString, latitude);
    QFETCH(QString, longitude);
    QFETCH(QString, altitude);
    TagOperations operations;
    QVERIFY(appendPosition(
        textsOf(
            {{LatitudeField, latitude}, {LongitudeField, longitude}, {AltitudeField, altitude}}),
        &operations));
    QTEST(described(operations).join(QLatin1Char('|')), "operations");
}

void TestExifWriteBack::checks_data()
{
    lumi::test::columns<EditTexts, SaveResult>();
    const QString bad = QStringLiteral("x");
    QTest::newRow("no texts are valid") << EditTexts() << SaveResult::Saved;
    QTest::newRow("blanks count as no text")
        << textsOf({{LatitudeField, QStringLiteral("  ")}}) << SaveResult::Saved;
    QTest::newRow("blanks around a text don't count")
        << textsOf({{LatitudeField, QStringLiteral(" N35.40.20.000 ")},
                    {AltitudeField, QStringLiteral(" 12 ")}})
        << SaveResult::Saved;
    QTest::newRow("latitude") << textsOf({{LatitudeField, bad}}) << SaveResult::BadLatitude;
    QTest::newRow("longitude") << textsOf({{LongitudeField, bad}}) << SaveResult::BadLongitude;
    QTest::newRow("altitude") << textsOf({{AltitudeField, QStringLiteral("0")}})
                              << SaveResult::BadAltitude;
    QTest::newRow("the first bad one is named")
        << textsOf({{LatitudeField, QStringLiteral("N35.40.20.000")},
                    {LongitudeField, bad},
                    {AltitudeField, bad}})
        << SaveResult::BadLongitude;
    QTest::newRow("a latitude in lower case")
        << textsOf({{LatitudeField, QStringLiteral("n35.00.00.000")}}) << SaveResult::BadLatitude;
}

void TestExifWriteBack::checks()
{
    const auto [texts, result] = lumi::test::row<EditTexts, SaveResult>();
    QCOMPARE(checkPosition(texts), result);
}

void TestExifWriteBack::aTextThatFitsIsSaved_data()
{
    QTest::addColumn<Filling>("filling");
    QTest::newRow("beside a large thumbnail") << Filling::Thumbnail;
    QTest::newRow("beside a large maker note") << Filling::MakerNote;
}

void TestExifWriteBack::aTextThatFitsIsSaved()
{
    QFETCH(Filling, filling);
    test::PhotoFolder folder;
    const QString path = folder.put(test::crampedPhoto(kMost - kOwnerSize, filling, thumbnail()));
    const QImage picture(path);
    QVERIFY(!picture.isNull());
    FPVExifWriter writer(path);
    QCOMPARE(writer.app1Length(), kMost - kOwnerSize);
    QCOMPARE(saveTexts(textsOf({{OwnerField, kOwner}}), &writer), SaveResult::Saved);
    QCOMPARE(QImage(path), picture);
    FPVExifFields fields(path);
    fields.setGroup(1);
    QCOMPARE(fields.valueText(0, false), kOwner);
    QCOMPARE(fields.app1Length(), kMost);
    QVERIFY(std::unique_ptr<QImage>(fields.thumbnail()));
    QCOMPARE(fields.find(kMakerNote, ExifListKind::Exif) != nullptr, filling == Filling::MakerNote);
}

void TestExifWriteBack::aTooLongBlockTouchesNothing_data()
{
    QTest::addColumn<Filling>("filling");
    QTest::addColumn<int>("missing"); // bytes of room
    QTest::addColumn<QByteArray>("thumbnail");
    QTest::newRow("a thumbnail leaves too little") << Filling::Thumbnail << 2 << thumbnail();
    QTest::newRow("a thumbnail leaves nothing") << Filling::Thumbnail << kOwnerSize << thumbnail();
    QTest::newRow("a maker note leaves too little") << Filling::MakerNote << 2 << QByteArray();
    QTest::newRow("a maker note and a thumbnail leave too little")
        << Filling::MakerNote << 2 << thumbnail();
}

void TestExifWriteBack::aTooLongBlockTouchesNothing()
{
    QFETCH(Filling, filling);
    QFETCH(int, missing);
    QFETCH(QByteArray, thumbnail);
    test::PhotoFolder folder;
    const QString path
        = folder.put(test::crampedPhoto(kMost - kOwnerSize + missing, filling, thumbnail));
    const QByteArray before = contentOf(path);
    FPVExifWriter writer(path);
    QCOMPARE(saveTexts(textsOf({{OwnerField, kOwner}}), &writer), SaveResult::Failed);
    QVERIFY(contentOf(path) == before);
}

void TestExifWriteBack::withoutMemoryNothingIsWritten_data()
{
    lumi::test::columns<int, QString, int>();
    QTest::newRow("for the author") << int(AuthorField) << QStringLiteral("Ann") << 4;
    QTest::newRow("for the audio file's name")
        << int(RelatedAudioField) << QStringLiteral("A.WAV") << 13;
    QTest::newRow("for the latitude's hemisphere")
        << int(LatitudeField) << QStringLiteral("N35.40.20.000") << 2;
    QTest::newRow("for the side of the sea level")
        << int(AltitudeField) << QStringLiteral("12") << 1;
}

void TestExifWriteBack::withoutMemoryNothingIsWritten()
{
    const auto [field, text, size] = lumi::test::row<int, QString, int>();
    test::PhotoFolder folder;
    const QString path = folder.put(test::editablePhoto());
    const QByteArray before = contentOf(path);
    FPVExifWriter writer(path);
    SaveResult result = SaveResult::Saved;
    const auto warning
        = QStringLiteral("new uchar[%1] memory arrocate err").arg(size).toLatin1(); // sic
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    {
        const test::NoMemory none;
        result = saveTexts(textsOf({{EditField(field), text}}), &writer);
    }
    QCOMPARE(result, SaveResult::Failed);
    QVERIFY(contentOf(path) == before);
}

LUMI_TEST(TestExifWriteBack)
#include "TestExifWriteBack.moc"

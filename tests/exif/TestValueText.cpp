// SPDX-License-Identifier: MIT
// The text of every row for every stored type.
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/text/valueText.h"
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::test::ExifBuilder;
using enum ExifListKind;

namespace {

/// The expected texts of a row by type. number: BYTE, SHORT and LONG. A null pointer is a null
/// text.
struct RowTexts
{
    const char *number;
    const char *ascii;
    const char *rational;
    const char *undefined;
    const char *signedRational;
};

constexpr const char *kPlain = "2004:05:06 07:08:09";
constexpr const char *kDate = "2004/05/06 07:08:09";
constexpr const char *kOne = "\1"; // the first byte of the number as a text
constexpr const char *kNone = nullptr;

/// The expected texts if all tags have the same value: 1, kPlain, 35/2 40/1 20/1, an ASCII comment
/// "abc", -7/2.
const QList<QList<RowTexts>> kTexts = {
    {
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kDate, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kNone, kNone, kNone, kNone},
        {"sRGB", kPlain, kNone, kNone, kNone},
        {kOne, kPlain, "35/2 bit/pel", kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, "ASCII", kNone},
    },
    {
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kDate, kNone, kNone, kNone},
        {kOne, kDate, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, "abc", kNone},
    },
    {
        {kOne, kPlain, "35/2 sec", kNone, kNone},
        {kOne, kPlain, "17.5", kNone, kNone},
        {"Manual", kPlain, kNone, kNone, kNone},
        {"1", kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, "11sec"},
        {kOne, kPlain, "F17.5", kNone, kNone},
        {kOne, kPlain, kNone, kNone, "-3.5(BV)"},
        {kOne, kPlain, kNone, kNone, "-3.5(EV)"},
        {kOne, kPlain, "F17.5", kNone, kNone},
        {kOne, kPlain, "17.5m", kNone, kNone},
    },
    {
        {"Average", kPlain, kNone, kNone, kNone},
        {"Day", kPlain, kNone, kNone, kNone},
        {"Flash", kPlain, kNone, kNone, kNone},
        {kOne, kPlain, "17.5mm", kNone, kNone},
        {kOne, kPlain, "17.5", kNone, kNone},
        {kOne, kPlain, "17.5", kNone, kNone},
        {kOne, kPlain, "17.5", kNone, kNone},
        {"1", kPlain, kNone, kNone, kNone},
        {"(unknown)", kPlain, kNone, kNone, kNone},
        {"Manual", kPlain, kNone, kNone, kNone},
    },
    {
        {"White balance manual", kPlain, kNone, kNone, kNone},
        {kOne, kPlain, "35/2", kNone, kNone},
        {"1mm", kPlain, kNone, kNone, kNone},
        {"Scenery", kPlain, kNone, kNone, kNone},
        {"Weak sens.", kPlain, kNone, kNone, kNone},
        {"Weak", kPlain, kNone, kNone, kNone},
        {"Low chroma", kPlain, kNone, kNone, kNone},
        {"Weak", kPlain, kNone, kNone, kNone},
        {"Macro", kPlain, kNone, kNone, kNone},
    },
    {
        {kNone, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, "N35.40.20.000", kNone, kNone},
        {kOne, kPlain, "W035.40.20.000", kNone, kNone},
        {kOne, kPlain, "17.1m", kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
        {kOne, kPlain, kNone, kNone, kNone},
    },
};

/// Adds a tag with the value for that type.
void add(ExifBuilder &photo, ExifListKind list, int number, int type)
{
    const auto tag = static_cast<quint16>(number);
    switch (type) {
    case 2:
        photo.ascii(list, tag, kPlain);
        return;
    case 3:
        photo.shorts(list, tag, {1});
        return;
    case 4:
        photo.longs(list, tag, {1});
        return;
    case 5:
        photo.rationals(list, tag, {{35, 2}, {40, 1}, {20, 1}});
        return;
    case 7:
        photo.undefined(list, tag, QByteArray("ASCII\0\0\0abc", 11));
        return;
    case 9:
        photo.slongs(list, tag, {1});
        return;
    case 10:
        photo.srationals(list, tag, {{quint32(-7), 2}});
        return;
    default:
        photo.value(list, tag, static_cast<quint16>(type), 1, QByteArray(1, '\1'));
    }
}

const char *textOf(const RowTexts &texts, int type)
{
    switch (type) {
    case 1:
    case 3:
    case 4:
        return texts.number;
    case 2:
        return texts.ascii;
    case 5:
        return texts.rational;
    case 7:
        return texts.undefined;
    case 10:
        return texts.signedRational;
    default:
        return nullptr;
    }
}

} // namespace

class TestValueText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowHasItsTexts();
    void everyRowByType_data();
    void everyRowByType();
    void missingTagsHaveNoText();
    void otherTypesHaveNoText_data();
    void otherTypesHaveNoText();
    void onlyGpsHasAVersionText();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestValueText::everyRowHasItsTexts()
{
    const auto groups = lumi::exifFieldGroups();
    QCOMPARE(kTexts.size(), qsizetype(groups.size()));
    for (std::size_t i = 0; i < groups.size(); ++i) {
        QCOMPARE(kTexts[qsizetype(i)].size(), qsizetype(groups[i].rowCount));
    }
}

void TestValueText::everyRowByType_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<int>("type");
    for (const int type : {1, 2, 3, 4, 5, 7, 9, 10}) {
        QTest::addRow("type %d, little-endian", type) << 0 << type;
        QTest::addRow("type %d, big-endian", type) << 1 << type;
    }
}

void TestValueText::everyRowByType()
{
    QFETCH(int, order);
    QFETCH(int, type);
    ExifBuilder photo(lumi::test::kBothOrders[std::size_t(order)]);
    photo.ascii(Gps, 0x0001, "N").ascii(Gps, 0x0003, "W");
    photo.value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'));
    for (const ExifFieldGroup &group : lumi::exifFieldGroups()) {
        for (int row = 0; row < group.rowCount; ++row) {
            // Two rows share a tag.
            if (row == 0 || group.rows[row].tag != group.rows[row - 1].tag) {
                add(photo, group.rows[row].list, group.rows[row].tag, type);
            }
        }
    }
    FPVExifFields fields(m_folder.put(photo));
    QVERIFY(fields.isValid());
    for (int group = 0; group < kTexts.size(); ++group) {
        fields.setGroup(group);
        for (int row = 0; row < kTexts[group].size(); ++row) {
            const char *expected = textOf(kTexts[group][row], type);
            const bool isHalfAnArea = type == 1 && group == 3 && row == 7; // needs two bytes
            const QString wanted = isHalfAnArea ? QString() : QString::fromLatin1(expected);
            const QString text = fields.valueText(row, true);
            QVERIFY2(
                text == wanted,
                qPrintable(QStringLiteral("group %1, row %2: %3 instead of %4")
                               .arg(QString::number(group), QString::number(row), text, wanted)));
        }
    }
}

void TestValueText::missingTagsHaveNoText()
{
    FPVExifFields fields(m_folder.put(ExifBuilder().shorts(Ifd0, 0x0112, {1})));
    QVERIFY(fields.isValid());
    for (int group = 0; group < kTexts.size(); ++group) {
        fields.setGroup(group);
        for (int row = 0; row < fields.rowCount(); ++row) {
            QVERIFY(fields.valueText(row, true).isNull());
            QVERIFY(fields.valueText(row, false).isNull());
        }
    }
}

/// No reader returns such a tag, so valueText() is called directly.
void TestValueText::otherTypesHaveNoText_data()
{
    QTest::addColumn<quint16>("type");
    for (const int type : {0, 6, 8, 9, 11, 12, 65535}) {
        QTest::addRow("type %d", type) << quint16(type);
    }
}

void TestValueText::otherTypesHaveNoText()
{
    QFETCH(quint16, type);
    const FPVExifDocument document(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    const QByteArray value(kPlain, 20);
    for (const ExifFieldGroup &group : lumi::exifFieldGroups()) {
        for (int i = 0; i < group.rowCount; ++i) {
            const ExifFieldRow &row = group.rows[i];
            const FPVExifTagBytes tag(quint16(row.tag), type, 4, value);
            QVERIFY2(lumi::valueText({tag, row, document, true}).isNull(), qPrintable(row.label));
        }
    }
}

void TestValueText::onlyGpsHasAVersionText()
{
    const FPVExifDocument document(m_folder.put(ExifBuilder()));
    const FPVExifTagBytes tag(0x0000, 1, 4, QByteArray("\2\2\0\0", 4));
    for (const ExifListKind list : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
        const ExifFieldRow row{QString(), 0x0000, true, list};
        QCOMPARE(lumi::valueText({tag, row, document, true}),
                 list == Gps ? QStringLiteral("Ver 2.2.0.0") : QString());
    }
}

LUMI_TEST(TestValueText)
#include "TestValueText.moc"

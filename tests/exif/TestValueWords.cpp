// SPDX-License-Identifier: MIT
// Numbers that are a choice out of a list, each list in full and beyond both of its ends.
#include "exif/text/valueWords.h"
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::test::ExifBuilder;
using enum ExifListKind;

namespace {

/// A row with the words of its values from first on; "-" is a value without a word.
struct List
{
    const char *name;
    int group;
    int row;
    quint16 tag;
    int first;
    const char *words;
    const char *rows; // of the catalogue; "-" for a word that is in none
    bool hasOther;
};

constexpr List kLists[] = {
    {"exposure program", 2, 2, 0x8822, 0,
     "(unknown)|Manual|Normal|Aperture Pri.|Shutter Pri.|creative|action|Portrait Mode"
     "|Landscape Mode",
     "203|204|205|206|207|-|-|208|209", false},
    {"metering mode", 3, 0, 0x9207, 0,
     "(unknown)|Average|Center|Spot|Multi-spot|Multi-segment|Partial",
     "210|211|212|213|214|215|216", true},
    {"light source", 3, 1, 0x9208, 0,
     "(unknown)|Day|Fluorescent|Tungsten|Flash|-|-|-|-|Fair|Cloudy|Shade|Daylight Fl.|Noon Fl."
     "|White Fl.|Warm white Fl.|-|Standard A|Standard B|Standard C|D55|D65|D75|D50"
     "|ISO studio tungsten",
     "203|218|219|220|232|-|-|-|-|221|222|223|224|225|226|227|-|228|229|230|-|-|-|-|-", true},
    {"sensing method", 3, 8, 0xA217, 1,
     "(unknown)|Veneer color sensor|2-board color sensors|3-board color sensors"
     "|Color consecutive sensor|3-line linear sensors|Color consecutive linear",
     "203|240|241|242|243|244|245", false},
    {"exposure mode", 3, 9, 0xA402, 0, "Automatic|Manual|Automatic bracket", "246|247|248", false},
    {"white balance", 4, 0, 0xA403, 0, "White balance automatic|White balance manual", "249|250",
     false},
    {"scene type", 4, 3, 0xA406, 0, "Normal|Scenery|Person|Night", "251|252|253|254", false},
    {"gain control", 4, 4, 0xA407, 0, "None|Weak sens.|Strong sens.|Weak desens.|Strong desens.",
     "150|255|256|257|258", false},
    {"contrast", 4, 5, 0xA408, 0, "Normal|Weak|Cntrst", "259|260|261", false},
    {"saturation", 4, 6, 0xA409, 0, "Normal|Low chroma|High chroma", "262|263|264", false},
    {"sharpness", 4, 7, 0xA40A, 0, "Normal|Weak|Strong", "265|266|267", false},
    {"subject distance range", 4, 8, 0xA40C, 0, "(unknown)|Macro|Foregd|Distant", "203|268|269|270",
     false},
};

QString wordOf(const List &list, qint64 value)
{
    if (list.hasOther && value == 255) {
        return QStringLiteral("Other");
    }
    const QStringList words = QString::fromLatin1(list.words).split(QLatin1Char('|'));
    const QString word = value < list.first ? QString() : words.value(value - list.first);
    return word == QLatin1String("-") ? QString() : word;
}

} // namespace

class TestValueWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shorts_data();
    void shorts();
    void longs_data();
    void longs();
    void bytes_data();
    void bytes();
    void noValueCountsAsZero_data();
    void noValueCountsAsZero();
    void lengths_data();
    void lengths();
    void rows_data();
    void rows();
    void otherTagsAreNoChoice();
    void wordsBelongToTheirTag();

private:
    static void addLists();

    lumi::test::PhotoFolder m_folder;
};

void TestValueWords::addLists()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(kLists)); ++i) {
        QTest::newRow(kLists[i].name) << i;
    }
}

void TestValueWords::shorts_data()
{
    addLists();
}

void TestValueWords::shorts()
{
    QFETCH(int, index);
    const List &list = kLists[index];
    for (const auto order : lumi::test::kBothOrders) {
        for (const int value : {0,  1,   2,   3,   4,   5,   6,   7,    8,     9,     10,   11, 12,
                                13, 14,  15,  16,  17,  18,  19,  20,   21,    22,    23,   24, 25,
                                26, 100, 253, 254, 255, 256, 257, 1000, 32767, 32768, 65535}) {
            ExifBuilder photo(order);
            photo.shorts(Exif, list.tag, {quint16(value)});
            QCOMPARE(lumi::test::rowText(m_folder, photo, list.group, list.row),
                     wordOf(list, value));
        }
    }
}

void TestValueWords::longs_data()
{
    addLists();
}

void TestValueWords::longs()
{
    QFETCH(int, index);
    const List &list = kLists[index];
    for (const quint32 value :
         {0U, 1U, 2U, 255U, 256U, 65536U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (const auto order : lumi::test::kBothOrders) {
            ExifBuilder photo(order);
            photo.longs(Exif, list.tag, {value});
            QCOMPARE(lumi::test::rowText(m_folder, photo, list.group, list.row),
                     wordOf(list, qint32(value)));
        }
    }
}

void TestValueWords::bytes_data()
{
    addLists();
}

void TestValueWords::bytes()
{
    QFETCH(int, index);
    const List &list = kLists[index];
    for (const int value : {0, 1, 2, 127, 128, 254, 255}) {
        ExifBuilder photo;
        photo.value(Exif, list.tag, 1, 1, QByteArray(1, char(value)));
        QCOMPARE(lumi::test::rowText(m_folder, photo, list.group, list.row), wordOf(list, value));
    }
}

void TestValueWords::noValueCountsAsZero_data()
{
    addLists();
}

void TestValueWords::noValueCountsAsZero()
{
    QFETCH(int, index);
    const List &list = kLists[index];
    ExifBuilder photo;
    photo.word(Exif, list.tag, 3, 0, 1);
    QCOMPARE(lumi::test::rowText(m_folder, photo, list.group, list.row), wordOf(list, 0));
}

void TestValueWords::lengths_data()
{
    addLists();
}

void TestValueWords::lengths()
{
    QFETCH(int, index);
    const List &list = kLists[index];
    const int lengths[] = {9, 7, 25, 7, 3, 2, 4, 5, 3, 3, 3, 4};
    const int words = int(QByteArray(list.words).count('|')) + 1;
    QCOMPARE(words, lengths[index]);
    const int last = list.first + words - 1;
    QVERIFY(!lumi::valueWord(list.tag, last)->isEmpty());
    QVERIFY(lumi::valueWord(list.tag, last + 1)->isEmpty());
    QVERIFY(lumi::valueWord(list.tag, list.first - 1)->isEmpty());
    QVERIFY(lumi::valueWord(list.tag, -1)->isEmpty());
    QVERIFY(lumi::valueWord(list.tag, INT_MIN)->isEmpty());
    QVERIFY(lumi::valueWord(list.tag, INT_MAX)->isEmpty());
    QCOMPARE(lumi::valueWord(list.tag, 255).value(),
             list.hasOther ? QStringLiteral("Other") : QString());
}

void TestValueWords::rows_data()
{
    addLists();
}

void TestValueWords::rows()
{
    // Many words look the same; which is meant only the row of the catalogue tells.
    QFETCH(int, index);
    const List &list = kLists[index];
    const QStringList words = QString::fromLatin1(list.words).split(QLatin1Char('|'));
    const QStringList rows = QString::fromLatin1(list.rows).split(QLatin1Char('|'));
    QCOMPARE(rows.size(), words.size());
    for (int i = 0; i < rows.size(); ++i) {
        const auto word = lumi::wordForValue(list.tag, list.first + i);
        QVERIFY(word);
        const bool isRow = rows[i] != QLatin1String("-");
        QCOMPARE(word->message, isRow ? rows[i].toInt() : -1);
        QCOMPARE(word->text != nullptr, !isRow && words[i] != QLatin1String("-"));
    }
    const auto other = lumi::wordForValue(list.tag, 255);
    QVERIFY(other);
    QCOMPARE(other->message, list.hasOther ? 217 : -1);
}

void TestValueWords::otherTagsAreNoChoice()
{
    int choices = 0;
    for (int tag = 0; tag <= 0xFFFF; ++tag) {
        choices += lumi::valueWord(tag, 1) ? 1 : 0;
        QCOMPARE(lumi::wordForValue(tag, 1).has_value(), lumi::valueWord(tag, 1).has_value());
    }
    QCOMPARE(choices, int(std::size(kLists)));
    QVERIFY(!lumi::valueWord(-1, 1));
}

void TestValueWords::wordsBelongToTheirTag()
{
    // The labels of these rows name other tags; the words go by the tag.
    FPVExifFields fields(
        m_folder.put(ExifBuilder().shorts(Exif, 0xA402, {2}).shorts(Exif, 0x9214, {1, 2})));
    fields.setGroup(3);
    QCOMPARE(fields.rowLabel(9), QStringLiteral("Exposure Index"));
    QCOMPARE(fields.valueText(9, true), QStringLiteral("Automatic bracket"));
    QCOMPARE(fields.rowLabel(7), QStringLiteral("Focal Pl. Unit"));
    QCOMPARE(fields.valueText(7, true), QStringLiteral("1,2"));
}

LUMI_TEST(TestValueWords)
#include "TestValueWords.moc"

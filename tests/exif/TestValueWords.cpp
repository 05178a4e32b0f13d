// SPDX-License-Identifier: MIT
// Tags whose values are choices from a list: each list in full and beyond both ends.
#include "exif/text/valueWords.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <climits>

namespace {

/// A tag with the words of its values from first on; "-" is a value without a word.
struct List
{
    const char *name;
    quint16 tag;
    int first;
    const char *words;
    const char *rows; // message ids; "-" for a word that is no message
    bool hasOther;
};

constexpr List kLists[] = {
    {"exposure program", 0x8822, 0,
     "(unknown)|Manual|Normal|Aperture Pri.|Shutter Pri.|creative|action|Portrait Mode"
     "|Landscape Mode",
     "203|204|205|206|207|-|-|208|209", false},
    {"metering mode", 0x9207, 0, "(unknown)|Average|Center|Spot|Multi-spot|Multi-segment|Partial",
     "210|211|212|213|214|215|216", true},
    {"light source", 0x9208, 0,
     "(unknown)|Day|Fluorescent|Tungsten|Flash|-|-|-|-|Fair|Cloudy|Shade|Daylight Fl.|Noon Fl."
     "|White Fl.|Warm white Fl.|-|Standard A|Standard B|Standard C|D55|D65|D75|D50"
     "|ISO studio tungsten",
     "203|218|219|220|232|-|-|-|-|221|222|223|224|225|226|227|-|228|229|230|-|-|-|-|-", true},
    {"sensing method", 0xA217, 1,
     "(unknown)|Veneer color sensor|2-board color sensors|3-board color sensors"
     "|Color consecutive sensor|3-line linear sensors|Color consecutive linear",
     "203|240|241|242|243|244|245", false},
    {"exposure mode", 0xA402, 0, "Automatic|Manual|Automatic bracket", "246|247|248", false},
    {"white balance", 0xA403, 0, "White balance automatic|White balance manual", "249|250", false},
    {"scene type", 0xA406, 0, "Normal|Scenery|Person|Night", "251|252|253|254", false},
    {"gain control", 0xA407, 0, "None|Weak sens.|Strong sens.|Weak desens.|Strong desens.",
     "150|255|256|257|258", false},
    {"contrast", 0xA408, 0, "Normal|Weak|Cntrst", "259|260|261", false},
    {"saturation", 0xA409, 0, "Normal|Low chroma|High chroma", "262|263|264", false},
    {"sharpness", 0xA40A, 0, "Normal|Weak|Strong", "265|266|267", false},
    {"subject distance range", 0xA40C, 0, "(unknown)|Macro|Foregd|Distant", "203|268|269|270",
     false},
};

QString wordOf(const List &list, qint64 value)
{
    if (list.hasOther && value == 255) {
        return QStringLiteral("Other");
    }
    const QStringList words = QString::fromLatin1(list.words).split(QLatin1Char('|'));
    const auto place = static_cast<qsizetype>(value - list.first);
    const QString word = place < 0 ? QString() : words.value(place);
    return word == QLatin1String("-") ? QString() : word;
}

} // namespace

class TestValueWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void words_data();
    void words();
    void rows_data();
    void rows();
    void otherTagsAreNoChoice();

private:
    static void addLists();
};

void TestValueWords::addLists()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(kLists)); ++i) {
        QTest::newRow(kLists[i].name) << i;
    }
}

void TestValueWords::words_data()
{
    addLists();
}

void TestValueWords::words()
{
    QFETCH(int, index);
    const List &list = kLists[index];
    for (int value = -1; value <= 256; ++value) {
        const auto word = lumi::valueWord(list.tag, value);
        QVERIFY(word);
        QCOMPARE(*word, wordOf(list, value));
    }
    for (const int value : {INT_MIN, INT_MAX}) {
        QVERIFY(lumi::valueWord(list.tag, value)->isEmpty());
    }
}

void TestValueWords::rows_data()
{
    addLists();
}

void TestValueWords::rows()
{
    // Many words look the same. Only their message ids differ.
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

LUMI_TEST(TestValueWords)
#include "TestValueWords.moc"

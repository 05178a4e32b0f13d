// SPDX-License-Identifier: MIT
#include "tests/exif/coordinateChecks.h"

#include "tests/support/rows.h"

namespace lumi::test {

namespace {

constexpr quint32 kLargest = 0xFFFFFFFF;

QString tail(const char *text)
{
    return QString::fromUtf8(text);
}

/// A valid text, but with this character as the first digit of its degrees.
QString withFirstDigit(const CoordinateKind &kind, QChar character)
{
    QString text = kind.at(kind.degrees);
    text[1] = character;
    return text + tail(".00.00.000");
}

} // namespace

QString CoordinateKind::at(quint32 degreesOf) const
{
    return at(letter, degreesOf);
}

QString CoordinateKind::at(const QString &letterOf, quint32 degreesOf) const
{
    const int digits = int(QString::number(most).size());
    return letterOf + QStringLiteral("%1").arg(degreesOf, digits, 10, QLatin1Char('0'));
}

void addCoordinateTexts(const CoordinateKind &kind)
{
    lumi::test::columns<QString, bool>();
    const auto row = [](const char *name, const QString &text, bool isValid = false) {
        QTest::newRow(name) << text << isValid;
    };
    const QString place = kind.at(kind.degrees);
    const QString longer = kind.letter + tail("0") + place.mid(1);
    const QString most = kind.at(kind.most);
    row("an ordinary place", place + tail(".40.20.123"), true);
    row("the other hemisphere", kind.at(kind.other, kind.degrees) + tail(".40.20.123"), true);
    row("nothing but zeros", kind.at(0) + tail(".00.00.000"), true);
    row("zeros in the other hemisphere", kind.at(kind.other, 0) + tail(".00.00.000"), true);
    row("the largest value", most + tail(".00.00.000"), true);
    row("the largest there", kind.at(kind.other, kind.most) + tail(".00.00.000"), true);
    row("just below the largest", kind.at(kind.most - 1) + tail(".59.59.999"), true);
    row("a thousandth beyond", most + tail(".00.00.001"));
    row("a second beyond", most + tail(".00.01.000"));
    row("a minute beyond", most + tail(".01.00.000"));
    row("a degree beyond", kind.at(kind.most + 1) + tail(".00.00.000"));
    row("60 minutes", place + tail(".60.00.000"));
    row("60 seconds", place + tail(".00.60.000"));
    row("a lower-case letter", kind.at(kind.letter.toLower(), kind.degrees) + tail(".00.00.000"));
    row("a foreign letter", kind.at(kind.foreign, kind.degrees) + tail(".00.00.000"));
    row("no letter", kind.at(tail("0"), kind.degrees) + tail(".00.00.000"));
    row("a negative number", withFirstDigit(kind, QLatin1Char('-')));
    row("a signed number", withFirstDigit(kind, QLatin1Char('+')));
    row("a blank for a digit", withFirstDigit(kind, QLatin1Char(' ')));
    row("a digit of degrees too few", place.chopped(1) + tail(".00.00.000"));
    row("the same in the right length", place.chopped(1) + tail("..00.00.000"));
    row("a digit of degrees too many", longer + tail(".00.00.000"));
    row("the same, the right length", longer + tail(".00.00.00"));
    row("too short a fraction", place + tail(".00.00.00"));
    row("too long a fraction", place + tail(".00.00.0000"));
    row("five groups", place + tail(".0.0.0.000"));
    row("three groups", place + tail(".00.000000"));
    row("commas", place + tail(",00,00,000"));
    row("letters among the digits", place + tail(".00.0x.000"));
    row("digits of another script", place + tail(".00.00.00\xD9\xA3"));
    row("a line feed behind", place + tail(".00.00.000\n"));
    row("a line feed for the last digit", place + tail(".00.00.00\n"));
    row("nothing", QString());
    row("a letter alone", kind.letter);
}

void addCoordinateValues(const CoordinateKind &kind)
{
    using Numbers = QList<quint32>;
    lumi::test::columns<quint32, Numbers, QString>();
    const auto row = [](const char *name, Hemisphere hemisphere, const Numbers &numbers,
                        const QString &text = QString()) {
        QTest::newRow(name) << quint32(hemisphere) << numbers << text;
    };
    const Hemisphere here = kind.hemisphere;
    const quint32 most = kind.most;
    row("an ordinary place", here, {1, 2, 3, 4}, kind.at(1) + tail(".02.03.004"));
    row("the other hemisphere", kind.opposite, {kind.degrees, 40, 20, 0},
        kind.at(kind.other, kind.degrees) + tail(".40.20.000"));
    row("the largest value", here, {most, 0, 0, 0}, kind.at(most) + tail(".00.00.000"));
    row("just below the largest", here, {most - 1, 59, 59, 999},
        kind.at(most - 1) + tail(".59.59.999"));
    row("a foreign hemisphere", kind.alien, {1, 2, 3, 4});
    row("the other foreign one", Hemisphere(3 - quint32(kind.alien)), {1, 2, 3, 4});
    row("no hemisphere", Hemisphere(4), {1, 2, 3, 4});
    row("beyond by a degree", here, {most + 1, 0, 0, 0});
    row("beyond by a minute", here, {most, 1, 0, 0});
    row("beyond by a second", here, {most, 0, 1, 0});
    row("beyond by a fraction", here, {most, 0, 0, 1});
    row("60 minutes", here, {1, 60, 0, 0});
    row("60 seconds", here, {1, 0, 60, 0});
    row("1000 thousandths", here, {1, 0, 0, 1000});
    row("a negative number of degrees", here, {kLargest, 0, 0, 0});
}

void addStoredCoordinates(const CoordinateKind &kind)
{
    lumi::test::columns<QString, QList<quint32>, QString>();
    const auto row = [](const char *name, const QString &reference, const QList<quint32> &words,
                        const QString &text = QString()) {
        QTest::newRow(name) << reference << words << text;
    };
    const quint32 place = kind.degrees;
    const QString here = kind.at(place);
    const QString &letter = kind.letter;
    row("whole seconds", letter, {place, 1, 40, 1, 20, 1}, here + tail(".40.20.000"));
    row("tenths", kind.other, {place, 1, 40, 1, 205, 10},
        kind.at(kind.other, place) + tail(".40.20.005"));
    row("hundredths", letter, {place, 1, 40, 1, 3012, 100}, here + tail(".40.30.012"));
    row("thousandths", letter, {place, 1, 40, 1, 30123, 1000}, here + tail(".40.30.123"));
    row("the denominators of degrees and minutes are not read", letter, {place, 0, 40, 0, 20, 1},
        here + tail(".40.20.000"));
    row("a small remainder of a large denominator", letter, {place, 1, 40, 1, 200123, 10000},
        here + tail(".40.20.123"));
    row("the largest value", letter, {kind.most, 1, 0, 1, 0, 1},
        kind.at(kind.most) + tail(".00.00.000"));
    row("beyond the largest", letter, {kind.most, 1, 0, 1, 1, 1});
    row("degrees in hundredths", letter, {place * 100 + 67, 100, 0, 1, 0, 1});
    row("minutes in hundredths", letter, {place, 1, 4033, 100, 0, 1});
    row("seconds in ten-thousandths", letter, {place, 1, 40, 1, 201234, 10000});
    row("seconds over zero", letter, {place, 1, 40, 1, 20, 0});
    row("60 seconds", letter, {place, 1, 40, 1, 60, 1});
    row("a foreign reference", kind.foreign, {place, 1, 40, 1, 20, 1});
    row("a lower-case reference", letter.toLower(), {place, 1, 40, 1, 20, 1});
    row("no reference", QString(), {place, 1, 40, 1, 20, 1});
    row("a word for a reference", letter + tail("ord"), {place, 1, 40, 1, 20, 1});
    row("the largest words", letter, {kLargest, 1, kLargest, 1, kLargest, 1});
}

void addLastingCoordinates(const CoordinateKind &kind)
{
    QTest::addColumn<QString>("text");
    const QStringList texts = {kind.at(kind.degrees) + tail(".40.20.000"),
                               kind.at(kind.other, kind.degrees) + tail(".40.20.005"),
                               kind.at(kind.degrees) + tail(".40.20.050"),
                               kind.at(kind.other, kind.most - 1) + tail(".59.59.999"),
                               kind.at(0) + tail(".00.00.100"),
                               kind.at(kind.other, kind.most) + tail(".00.00.000")};
    for (const QString &text : texts) {
        QTest::newRow(qPrintable(text)) << text;
    }
}

} // namespace lumi::test

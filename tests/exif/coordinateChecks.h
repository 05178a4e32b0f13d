// SPDX-License-Identifier: MIT
// Shared parts of the tests of latitude and longitude. The rows are made of a CoordinateKind, which
// holds the differences: letters, digits of the degrees and range.
#pragma once

#include "exif/gps/LatLong.h"
#include "tests/support/rows.h"

#include <QTest>

namespace lumi::test {

struct CoordinateKind
{
    QString letter;  // of hemisphere
    QString other;   // of opposite
    QString foreign; // of alien
    Hemisphere hemisphere;
    Hemisphere opposite;
    Hemisphere alien; // of the other kind of coordinate
    quint32 degrees;  // a value within the range
    quint32 most;

    /// A letter and the degrees, with the digits of this kind.
    [[nodiscard]] QString at(quint32 degreesOf) const;
    [[nodiscard]] QString at(const QString &letterOf, quint32 degreesOf) const;
};

/// Columns: text, isValid.
void addCoordinateTexts(const CoordinateKind &kind);
/// Columns: hemisphere, numbers, text. The text is empty if the numbers are refused.
void addCoordinateValues(const CoordinateKind &kind);
/// Columns: reference, words, text. The first two are the stored tags.
void addStoredCoordinates(const CoordinateKind &kind);
/// Column "text" with texts that are unchanged after storing and reading them.
void addLastingCoordinates(const CoordinateKind &kind);

template <class Value> QList<quint32> numbersOf(const Value &value)
{
    return {value.degrees(), value.minutes(), value.seconds(), value.fraction()};
}

template <class Value> void checkCoordinateText(bool (*isValidText)(const QString &))
{
    const auto [text, isValid] = row<QString, bool>();
    QCOMPARE(isValidText(text), isValid);
    Value value;
    QCOMPARE(value.setText(text), isValid);
    QCOMPARE(value.text(), isValid ? text : QString());
    QCOMPARE(value.rationals() != nullptr, isValid);
}

template <class Value> void checkCoordinateValues(bool (*isValidText)(const QString &))
{
    const auto [hemisphere, numbers, text] = row<quint32, QList<quint32>, QString>();
    Value value;
    QCOMPARE(
        value.setValues(Hemisphere(hemisphere), numbers[0], numbers[1], numbers[2], numbers[3]),
        !text.isEmpty());
    QCOMPARE(value.text(), text);
    if (!text.isEmpty()) {
        QCOMPARE(quint32(value.hemisphere()), hemisphere);
        QCOMPARE(numbersOf(value), numbers);
        QVERIFY(isValidText(text));
    }
}

template <class Value> void checkRefusedValues(const CoordinateKind &kind)
{
    Value value;
    QVERIFY(value.setValues(kind.opposite, 1, 2, 3, 4));
    QVERIFY(!value.setValues(kind.hemisphere, kind.most + 1, 0, 0, 0));
    QCOMPARE(value.text(), kind.at(kind.other, 1) + QStringLiteral(".02.03.004"));
    QCOMPARE(value.hemisphere(), kind.opposite);
    QCOMPARE(value.degrees(), 1U);
}

template <class Value> void checkStoredCoordinate(const CoordinateKind &kind)
{
    const auto [reference, words, text] = row<QString, QList<quint32>, QString>();
    const Rational data[] = {{words[0], words[1]}, {words[2], words[3]}, {words[4], words[5]}};
    Value value;
    QVERIFY(value.setText(kind.at(1) + QStringLiteral(".02.03.004")));
    value.fromRationals(reference, data);
    QCOMPARE(value.text(), text);
}

template <class Value> void checkLastingCoordinate()
{
    QFETCH(QString, text);
    Value value;
    QVERIFY(value.setText(text));
    const std::span<const Rational, 3> data(value.rationals(), 3);
    Value other;
    other.fromRationals(text.left(1), data);
    QCOMPARE(other.text(), text);
    QCOMPARE(other.hemisphere(), value.hemisphere());
}

} // namespace lumi::test

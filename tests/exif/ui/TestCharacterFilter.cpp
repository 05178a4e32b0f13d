// SPDX-License-Identifier: MIT
#include "exif/ui/characterFilter.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <algorithm>
#include <utility>
#include <vector>

using lumi::filterCharacters;

namespace {

using Ranges = std::vector<std::pair<int, int>>;

struct MaskRow
{
    int bit;
    Ranges removed;
};

const MaskRow kMaskRows[] = {
    {0x01, {{0, 31}, {127, 65376}, {65440, 65535}}},
    {0x02, {{32, 126}, {65377, 65439}}},
    {0x04, {{19968, 40959}}},
    {0x08, {{12353, 12446}}},
    {0x10, {{65382, 65439}, {12449, 12542}, {65377, 65381}}},
    {0x20, {{48, 57}, {65296, 65305}}},
    {0x40, {{65, 90}, {97, 122}, {65313, 65338}, {65345, 65370}}},
    {0x80, {}},
};

bool isIn(const Ranges &ranges, int code)
{
    return std::any_of(ranges.begin(), ranges.end(), [code](const auto &range) {
        return code >= range.first && code <= range.second;
    });
}

QString allCharacters()
{
    QString all;
    for (int code = 0; code <= 0xFFFF; ++code) {
        all.append(QChar(static_cast<char16_t>(code)));
    }
    return all;
}

} // namespace

class TestCharacterFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachBitAllowsItsClass_data();
    void eachBitAllowsItsClass();
    void theMaskOfPlainFieldsLeavesBlankToTilde();
    void theFullMaskRemovesNothing();
    void theTopBitHasNoClass();
    void theOrderIsKept();
};

void TestCharacterFilter::eachBitAllowsItsClass_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("0x01: all but single bytes") << 0;
    QTest::newRow("0x02: single bytes") << 1;
    QTest::newRow("0x04: kanji") << 2;
    QTest::newRow("0x08: hiragana") << 3;
    QTest::newRow("0x10: katakana and half-width signs") << 4;
    QTest::newRow("0x20: digits") << 5;
    QTest::newRow("0x40: letters") << 6;
    QTest::newRow("0x80: nothing") << 7;
}

void TestCharacterFilter::eachBitAllowsItsClass()
{
    QFETCH(int, row);
    QString expected;
    const QString all = allCharacters();
    for (const QChar character : all) {
        if (!isIn(kMaskRows[row].removed, character.unicode())) {
            expected.append(character);
        }
    }
    QCOMPARE(filterCharacters(all, 0xFF & ~kMaskRows[row].bit), expected);
}

void TestCharacterFilter::theMaskOfPlainFieldsLeavesBlankToTilde()
{
    QString expected;
    for (int code = 32; code <= 126; ++code) {
        expected.append(QChar(static_cast<char16_t>(code)));
    }
    QCOMPARE(lumi::kPlainCharacters, 0xE2);
    QCOMPARE(filterCharacters(allCharacters(), lumi::kPlainCharacters), expected);
}

void TestCharacterFilter::theFullMaskRemovesNothing()
{
    QCOMPARE(lumi::kAnyCharacters, 0xFF);
    QCOMPARE(filterCharacters(allCharacters(), lumi::kAnyCharacters), allCharacters());
}

void TestCharacterFilter::theTopBitHasNoClass()
{
    QCOMPARE(filterCharacters(allCharacters(), 0x62), filterCharacters(allCharacters(), 0xE2));
}

void TestCharacterFilter::theOrderIsKept()
{
    QCOMPARE(filterCharacters(QStringLiteral("a写b真1\n2"), 0xE2), QStringLiteral("ab12"));
    QCOMPARE(filterCharacters(QString(), 0xE2), QString());
}

LUMI_TEST(TestCharacterFilter)
#include "TestCharacterFilter.moc"

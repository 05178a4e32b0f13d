// SPDX-License-Identifier: MIT
#include "platform/toolkit/QTextCodec.h"
#include "tests/platform/japanesePhrases.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <array>
#include <vector>

namespace {

constexpr std::array<const char *, 4> kNames = {"SJIS", "eucJP", "JIS", "UTF-8"};

int match(const char *name, const QByteArray &bytes)
{
    return QTextCodec::codecForName(name)->heuristicContentMatch(bytes.constData(),
                                                                 static_cast<int>(bytes.size()));
}

QString decode(const char *name, const QByteArray &bytes)
{
    return QTextCodec::codecForName(name)->toUnicode(bytes.constData(),
                                                     static_cast<int>(bytes.size()));
}

/// Asks all four codecs in order. A later one must have a higher score. Empty if none is likely.
QByteArray likeliest(const QByteArray &bytes)
{
    QByteArray best;
    int bestMatch = 0;
    for (const char *name : kNames) {
        const int now = match(name, bytes);
        if (now > bestMatch) {
            bestMatch = now;
            best = name;
        }
    }
    return best;
}

QByteArray fromHex(const char *hex)
{
    return QByteArray::fromHex(hex);
}

} // namespace

class TestQTextCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names();
    void phrases_data();
    void phrases();
    void asciiTies_data();
    void asciiTies();
    void impossible_data();
    void impossible();
    void nulIsNeverText();
    void jisIsOfSevenBits();
    void cutAtEveryLength();
    void emptyText();
    void controlCharactersLowerTheScore();
    void backslashAndTildeStay();
    void halfWidthKana();
    void everyWeight_data();
    void everyWeight();
    void otherScripts();
    void unreadableBytesAreReplaced_data();
    void unreadableBytesAreReplaced();
    void longText();
    void combinedCharacter();
};

void TestQTextCodec::names()
{
    for (const char *name : kNames) {
        QVERIFY(QTextCodec::codecForName(name) != nullptr);
        QCOMPARE(QTextCodec::codecForName(name)->name(), QByteArray(name));
        QCOMPARE(QTextCodec::codecForName(name), QTextCodec::codecForName(name));
    }
    QCOMPARE(QTextCodec::codecForName("latin1"), nullptr);
    QCOMPARE(QTextCodec::codecForName(QByteArray()), nullptr);
}

void TestQTextCodec::phrases_data()
{
    lumi::test::columns<QByteArray, QByteArray, QString>();
    for (const JapanesePhrase &phrase : kJapanesePhrases) {
        const QString text = QString::fromUtf8(phrase.utf8);
        const std::array<QByteArray, 4> bytes
            = {fromHex(phrase.sjis), fromHex(phrase.euc), fromHex(phrase.jis), phrase.utf8};
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            QTest::addRow("%s as %s", phrase.utf8, kNames[i])
                << bytes[i] << QByteArray(kNames[i]) << text;
        }
    }
}

void TestQTextCodec::phrases()
{
    const auto [bytes, codec, text] = lumi::test::row<QByteArray, QByteArray, QString>();
    QCOMPARE(likeliest(bytes), codec);
    QCOMPARE(decode(codec.constData(), bytes), text);
}

void TestQTextCodec::asciiTies_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("one letter") << QByteArray("a");
    QTest::newRow("a sentence") << QByteArray("Summer 2004, with the kids!");
    QTest::newRow("several lines") << QByteArray("first\r\nsecond\tcolumn\n");
    QTest::newRow("all printable characters") << [] {
        QByteArray all;
        for (char c = ' '; c <= '~'; ++c) {
            all.append(c);
        }
        return all;
    }();
}

void TestQTextCodec::asciiTies()
{
    QFETCH(QByteArray, bytes);
    const int sjis = match("SJIS", bytes);
    QVERIFY(sjis > 0);
    for (const char *name : kNames) {
        QCOMPARE(match(name, bytes), sjis);
        QCOMPARE(decode(name, bytes), QString::fromLatin1(bytes));
    }
    QCOMPARE(likeliest(bytes), QByteArray("SJIS"));
}

void TestQTextCodec::impossible_data()
{
    lumi::test::columns<QByteArray, QByteArray>();
    const auto row = [](const char *title, const char *codec, const char *hex) {
        QTest::newRow(title) << QByteArray(codec) << fromHex(hex);
    };
    row("SJIS: lead byte at the end", "SJIS", "8ca982");
    row("SJIS: bad second byte", "SJIS", "8220");
    row("eucJP: lead byte at the end", "eucJP", "a4a2a4");
    row("eucJP: second byte of 7 bits", "eucJP", "a441");
    row("JIS: a byte of 8 bits", "JIS", "41e9");
    row("JIS: half a character before the end", "JIS", "1b24422422241b2842");
    row("UTF-8: continuation without lead", "UTF-8", "4180");
    row("UTF-8: cut character", "UTF-8", "e38182e381");
    row("UTF-8: overlong", "UTF-8", "c0af");
    row("UTF-8: surrogate", "UTF-8", "eda080");
    row("UTF-8: beyond the last character", "UTF-8", "f4908080");
}

void TestQTextCodec::impossible()
{
    const auto [codec, bytes] = lumi::test::row<QByteArray, QByteArray>();
    QCOMPARE(match(codec.constData(), bytes), -1);
}

void TestQTextCodec::nulIsNeverText()
{
    const std::array<QByteArray, 4> texts
        = {QByteArray(1, '\0'), QByteArray("a\0", 2), QByteArray("\0a", 2), QByteArray("a\0b", 3)};
    for (const QByteArray &text : texts) {
        for (const char *name : kNames) {
            QCOMPARE(match(name, text), -1);
        }
    }
}

void TestQTextCodec::jisIsOfSevenBits()
{
    for (int high = 0x80; high <= 0xFF; ++high) {
        const char byte = static_cast<char>(high);
        const QByteArray inAscii = QByteArray("a") + byte + "b";
        const QByteArray asLead = fromHex("1b24422422") + byte + fromHex("221b2842");
        const QByteArray asTrail = fromHex("1b2442242224") + byte + fromHex("1b2842");
        const QByteArray inHalfWidth = fromHex("1b284936") + byte + fromHex("1b2842");
        for (const QByteArray &text : {inAscii, asLead, asTrail, inHalfWidth}) {
            QCOMPARE(match("JIS", text), -1);
        }
    }
}

// A longer text in each encoding, cut at every length: a cut inside a character makes the text
// impossible, any other cut leaves it possible. Bytes behind the end are never read.
void TestQTextCodec::cutAtEveryLength()
{
    const JapanesePhrase &phrase = kJapanesePhrases[16];
    const QString text = QString::fromUtf8(phrase.utf8);
    const QByteArray utf8 = phrase.utf8;
    const QByteArray sjis = fromHex(phrase.sjis);
    QCOMPARE(utf8.size(), text.size() * 3);
    QCOMPARE(sjis.size(), text.size() * 2);
    for (qsizetype length = 0; length <= utf8.size(); ++length) {
        // The copy has exactly this size, so a sanitizer notices every read behind it.
        const std::vector<char> bytes(utf8.cbegin(), utf8.cbegin() + length);
        QCOMPARE(QTextCodec::codecForName("UTF-8")->heuristicContentMatch(bytes.data(),
                                                                          static_cast<int>(length))
                     >= 0,
                 length % 3 == 0);
    }
    for (qsizetype length = 0; length <= sjis.size(); ++length) {
        const std::vector<char> bytes(sjis.cbegin(), sjis.cbegin() + length);
        QCOMPARE(QTextCodec::codecForName("SJIS")->heuristicContentMatch(bytes.data(),
                                                                         static_cast<int>(length))
                     >= 0,
                 length % 2 == 0);
    }
}

void TestQTextCodec::emptyText()
{
    for (const char *name : kNames) {
        QCOMPARE(match(name, QByteArray()), 0);
        QVERIFY(decode(name, QByteArray()).isEmpty());
        QCOMPARE(QTextCodec::codecForName(name)->heuristicContentMatch("a", -1), 0);
        QVERIFY(QTextCodec::codecForName(name)->toUnicode("a", -1).isEmpty());
    }
    QVERIFY(likeliest(QByteArray()).isEmpty());
}

void TestQTextCodec::controlCharactersLowerTheScore()
{
    QVERIFY(likeliest("\x01\x02\x03\x04").isEmpty());
    QVERIFY(likeliest("a\x01").isEmpty());
    QVERIFY(match("SJIS", "abc\x01") < match("SJIS", "abc"));
    QVERIFY(match("SJIS", "abc\x7f") < match("SJIS", "abc"));
    for (const char *name : kNames) {
        QVERIFY(match(name, "\x01") >= 0);
    }
}

void TestQTextCodec::backslashAndTildeStay()
{
    QCOMPARE(decode("SJIS", "C:\\~\\a"), QStringLiteral("C:\\~\\a"));
    QCOMPARE(decode("SJIS", fromHex("5c8ca98160")), QString::fromUtf8("\\見～"));
}

void TestQTextCodec::halfWidthKana()
{
    const QString text = QString::fromUtf8("ｶﾒﾗ");
    QCOMPARE(decode("SJIS", fromHex("b6d2d7")), text);
    QCOMPARE(decode("eucJP", fromHex("8eb68ed28ed7")), text);
    QCOMPARE(decode("JIS", fromHex("1b28493652571b2842")), text);
    QCOMPARE(likeliest(fromHex("b6d2d7")), QByteArray("SJIS"));
    QCOMPARE(likeliest(QString::fromUtf8("ｶﾒﾗ").toUtf8()), QByteArray("UTF-8"));
}

void TestQTextCodec::everyWeight_data()
{
    lumi::test::columns<QByteArray, QByteArray, int>();
    const auto row = [](const char *title, const char *codec, const char *hex, int expected) {
        QTest::newRow(title) << QByteArray(codec) << fromHex(hex) << expected;
    };
    row("ASCII: 2 a byte", "eucJP", "4142", 4);
    row("line feed and tab as ASCII", "eucJP", "0a09", 4);
    row("hiragana: 5 a byte", "eucJP", "a4a2", 10);
    row("katakana: 5 a byte", "eucJP", "a5a2", 10);
    row("signs between kanji: 4 a byte", "eucJP", "a1a2", 8);
    row("frequent kanji: 4 a byte", "eucJP", "b0a1", 8);
    row("last frequent kanji: 4 a byte", "eucJP", "cfd3", 8);
    row("first rare kanji: 1 a byte", "eucJP", "d0a1", 2);
    row("kanji outside both levels: 1 a byte", "SJIS", "fa5c", 2);
    row("full-width letter: 3 a byte", "eucJP", "a3c1", 6);
    row("half-width kana: 1 a byte", "SJIS", "b1", 1);
    row("place for private use speaks against", "SJIS", "4141f040", 0);
    row("letter of another script: 3 a byte", "eucJP", "a6a1", 6);
    row("UTF-8 letters of several bytes count half as much again", "UTF-8", "e38182", 22);
    row("UTF-8 keeps ASCII as it is", "UTF-8", "4142", 4);
    row("JIS: the escape sequences count with the kana between them", "JIS", "1b244224221b2842",
        40);
    row("JIS: ASCII after kana", "JIS", "1b244224221b284241", 33);
    row("further controls speak against", "eucJP", "4141 4181", 2);
    row("never below nothing", "eucJP", "01020304", 0);
}

void TestQTextCodec::everyWeight()
{
    const auto [codec, bytes, expected] = lumi::test::row<QByteArray, QByteArray, int>();
    QCOMPARE(match(codec.constData(), bytes), expected);
}

void TestQTextCodec::otherScripts()
{
    QCOMPARE(likeliest(QString::fromUtf8("Café au lait").toUtf8()), QByteArray("UTF-8"));
    QCOMPARE(likeliest(QString::fromUtf8("Grüße aus Köln").toUtf8()), QByteArray("UTF-8"));
    QCOMPARE(likeliest(QString::fromUtf8("Отпуск").toUtf8()), QByteArray("UTF-8"));
    QVERIFY(likeliest(QString::fromUtf8("Café").toLatin1()).isEmpty());
    QVERIFY(likeliest(fromHex("ffd8ffe1")).isEmpty());
    QVERIFY(likeliest(fromHex("fffefdfc80")).isEmpty());
}

void TestQTextCodec::unreadableBytesAreReplaced_data()
{
    lumi::test::columns<QByteArray, QByteArray, QString>();
    const auto row = [](const char *title, const char *codec, const char *hex, const char *text) {
        QTest::newRow(title) << QByteArray(codec) << fromHex(hex) << QString::fromUtf8(text);
    };
    row("in the middle", "UTF-8", "41ff42",
        "A\xEF\xBF\xBD"
        "B");
    row("at the start", "UTF-8", "8041",
        "\xEF\xBF\xBD"
        "A");
    row("a cut character at the end", "UTF-8", "41e381", "A\xEF\xBF\xBD\xEF\xBF\xBD");
    row("every byte", "UTF-8", "fffefffe", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    row("SJIS: half a character", "SJIS", "8ca982", "\xE8\xA6\x8B\xEF\xBF\xBD");
    row("JIS: a byte of 8 bits", "JIS", "41e942",
        "A\xEF\xBF\xBD"
        "B");
    row("a character of two units", "UTF-8", "f09f93b7", "\xF0\x9F\x93\xB7");
}

void TestQTextCodec::unreadableBytesAreReplaced()
{
    const auto [codec, bytes, text] = lumi::test::row<QByteArray, QByteArray, QString>();
    QCOMPARE(decode(codec.constData(), bytes), text);
}

// Longer than any buffer inside the converter, and with an odd start so that characters lie
// across every boundary.
void TestQTextCodec::longText()
{
    const QString text
        = QLatin1Char('x') + QString::fromUtf8("思い出の写真、二〇〇四年").repeated(3000);
    const QByteArray bytes = text.toUtf8();
    QCOMPARE(likeliest(bytes), QByteArray("UTF-8"));
    QCOMPARE(decode("UTF-8", bytes), text);
}

// One character of the newer JIS table stands for a kana and a mark that follows it.
void TestQTextCodec::combinedCharacter()
{
    QCOMPARE(decode("JIS", fromHex("1b242851 2477 1b2842")), QString::fromUtf8("か゚"));
    QVERIFY(match("JIS", fromHex("1b242851 2477 1b2842")) > 0);
}

LUMI_TEST(TestQTextCodec)
#include "TestQTextCodec.moc"

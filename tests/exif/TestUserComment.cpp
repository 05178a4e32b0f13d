// SPDX-License-Identifier: MIT
#include "exif/text/userComment.h"
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::ExifBuilder;
using lumi::test::rowText;
using enum ExifListKind;

class TestUserComment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comments_data();
    void comments();
    void version_data();
    void version();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestUserComment::comments_data()
{
    lumi::test::columns<QByteArray, QByteArray, QString>();
    const QByteArray unicode("UNICODE\0", 8);
    const QByteArray ascii("ASCII\0\0\0", 8);
    const QByteArray jis("JIS\0\0\0\0\0", 8);
    const QByteArray undefined(8, '\0');
    const QByteArray inUtf8
        = QByteArray::fromHex("e58699e79c9fe381aee382b3e383a1e383b3e38388e381a7e38199");
    const QByteArray inSjis = QByteArray::fromHex("8eca905e82cc835283818393836782c582b7");
    const QByteArray inEuc = QByteArray::fromHex("bcccbfbfa4cea5b3a5e1a5f3a5c8a4c7a4b9");
    const QByteArray inJis
        = QByteArray::fromHex("1b24423c4c3f3f244e2533256125732548244724391b2842");
    const QString japanese = QStringLiteral("写真のコメントです");
    QTest::newRow("UTF-8 behind UNICODE") << unicode << inUtf8 << japanese;
    QTest::newRow("ASCII behind UNICODE") << unicode << QByteArray("abc") << QStringLiteral("abc");
    QTest::newRow("UCS-2 behind UNICODE ends at its first NUL")
        << unicode << QByteArray("a\0b\0c\0", 6) << QStringLiteral("a");
    QTest::newRow("Shift JIS behind UNICODE is not guessed")
        << unicode << QByteArray::fromHex("8eca") << QString(2, QChar(0xFFFD));
    QTest::newRow("ASCII") << ascii << QByteArray("a comment") << QStringLiteral("a comment");
    QTest::newRow("ASCII with a closing NUL")
        << ascii << QByteArray("abc\0def", 7) << QStringLiteral("abc");
    QTest::newRow("Latin-1 behind ASCII")
        << ascii << QByteArray("caf\xE9") << QString::fromLatin1("caf\xE9");
    QTest::newRow("UTF-8 behind ASCII is taken byte by byte")
        << ascii << QByteArray("\xC3\xA9") << QString::fromLatin1("\xC3\xA9");
    QTest::newRow("Shift JIS behind JIS") << jis << inSjis << japanese;
    QTest::newRow("EUC behind JIS") << jis << inEuc << japanese;
    QTest::newRow("JIS behind JIS") << jis << inJis << japanese;
    QTest::newRow("UTF-8 behind JIS") << jis << inUtf8 << japanese;
    QTest::newRow("Shift JIS without a mark") << undefined << inSjis << japanese;
    QTest::newRow("EUC without a mark") << undefined << inEuc << japanese;
    QTest::newRow("JIS without a mark") << undefined << inJis << japanese;
    QTest::newRow("UTF-8 without a mark") << undefined << inUtf8 << japanese;
    QTest::newRow("ASCII without a mark")
        << undefined << QByteArray("a comment") << QStringLiteral("a comment");
    QTest::newRow("a guess ends at the first NUL")
        << undefined << QByteArray("abc\0\xFF", 5) << QStringLiteral("abc");
    QTest::newRow("no encoding fits") << undefined << QByteArray("\xFF\xFE\xFD\xFC") << QString();
    QTest::newRow("a cut character") << undefined << inEuc.left(17) + '\xFF' << QString();
    QTest::newRow("blanks of a camera without a comment")
        << undefined << QByteArray(4, ' ') << QStringLiteral("    ");
    QTest::newRow("a mark in lower case is not known")
        << QByteArray("unicode\0", 8) << inSjis << japanese;
    QTest::newRow("a mark with more behind it is not known")
        << QByteArray("UNICODEX", 8) << inSjis << japanese;
    QTest::newRow("a mark with blanks is not known")
        << QByteArray("ASCII   ", 8) << inSjis << japanese;
    for (const QByteArray &mark : {unicode, ascii, jis, undefined}) {
        QTest::addRow("%s and no text", mark.constData()) << mark << QByteArray() << QString();
    }
    QTest::newRow("NULs alone") << undefined << QByteArray(56, '\0') << QString();
    QTest::newRow("nothing") << QByteArray() << QByteArray() << QString();
    QTest::newRow("too short for a mark") << QByteArray("abcdefg") << QByteArray() << QString();
    QTest::newRow("bytes behind the NUL of a mark do not count")
        << QByteArray("ASCII\0xy", 8) << QByteArray("caf\xE9") << QString::fromLatin1("caf\xE9");
}

void TestUserComment::comments()
{
    const auto [mark, bytes, text] = lumi::test::row<QByteArray, QByteArray, QString>();
    QCOMPARE(lumi::userCommentText(mark + bytes), text);
}

void TestUserComment::version_data()
{
    lumi::test::columns<QByteArray, QString>();
    QTest::newRow("2.2") << QByteArray("0220") << QStringLiteral("0220");
    QTest::newRow("2.31") << QByteArray("0231") << QStringLiteral("0231");
    QTest::newRow("up to a NUL") << QByteArray("02\0"
                                               "0",
                                               4)
                                 << QStringLiteral("02");
    QTest::newRow("longer than usual") << QByteArray("0220 plus") << QStringLiteral("0220 plus");
    QTest::newRow("bytes beyond ASCII") << QByteArray("\xE9") << QString::fromLatin1("\xE9");
    QTest::newRow("nothing") << QByteArray() << QString();
}

void TestUserComment::version()
{
    const auto [bytes, text] = lumi::test::row<QByteArray, QString>();
    ExifBuilder photo;
    photo.undefined(Exif, 0x9000, bytes);
    QCOMPARE(rowText(m_folder, photo, 0, 9), text);
}

LUMI_TEST(TestUserComment)
#include "TestUserComment.moc"

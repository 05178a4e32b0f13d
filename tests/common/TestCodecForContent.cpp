// SPDX-License-Identifier: MIT
#include "app/common/codecForContent.h"
#include "platform/toolkit/QTextCodec.h"
#include "tests/support/TestMain.h"

#include <QTest>

class TestCodecForContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choice_data();
    void choice();
    void onlyTheGivenLengthCounts();
};

void TestCodecForContent::choice_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("codec"); // empty: none suits
    QTest::addColumn<QString>("text");
    const QString photo = QString::fromUtf8("写真です");
    QTest::newRow("all suit plain ASCII, so the first one is chosen")
        << QByteArray("Kyoto, 2004") << QByteArray("SJIS") << QStringLiteral("Kyoto, 2004");
    QTest::newRow("Shift JIS") << QByteArray("\x8e\xca\x90\x5e\x82\xc5\x82\xb7")
                               << QByteArray("SJIS") << photo;
    QTest::newRow("EUC") << QByteArray("\xbc\xcc\xbf\xbf\xa4\xc7\xa4\xb9") << QByteArray("eucJP")
                         << photo;
    QTest::newRow("JIS") << QByteArray("\x1b$B<L??$G$9\x1b(B") << QByteArray("JIS") << photo;
    QTest::newRow("UTF-8") << photo.toUtf8() << QByteArray("UTF-8") << photo;
    QTest::newRow("an empty text suits none") << QByteArray("") << QByteArray() << QString();
    QTest::newRow("bytes that are no text suit none")
        << QByteArray("\xff\xfe\x00\x01", 4) << QByteArray() << QString();
}

void TestCodecForContent::choice()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, codec);
    QFETCH(QString, text);
    const int length = static_cast<int>(bytes.size());
    const QTextCodec *chosen = codecForContent(bytes.constData(), length);
    QCOMPARE(chosen == nullptr, codec.isEmpty());
    if (chosen != nullptr) {
        QCOMPARE(chosen, QTextCodec::codecForName(codec));
        QCOMPARE(chosen->toUnicode(bytes.constData(), length), text);
    }
}

void TestCodecForContent::onlyTheGivenLengthCounts()
{
    const QByteArray bytes("ab\xff\xff");
    QVERIFY(codecForContent(bytes.constData(), 2) != nullptr);
    QVERIFY(codecForContent(bytes.constData(), 4) == nullptr);
}

LUMI_TEST(TestCodecForContent)
#include "TestCodecForContent.moc"

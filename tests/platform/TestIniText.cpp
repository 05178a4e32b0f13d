// SPDX-License-Identifier: MIT
#include "platform/files/IniText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::IniText;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

class TestIniText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void missingValues_data();
    void missingValues();
    void writes_data();
    void writes();
    void everyCutOfATextCanBeReadAndWritten();
};

void TestIniText::reads_data()
{
    lumi::test::columns<QByteArray, QString>();
    const auto row = [](const char *name, const QByteArray &ini, const QString &value) {
        QTest::newRow(name) << ini << value;
    };
    row("a plain key", "[g]\nk=v\n", text("v"));
    row("without a last line feed", "[g]\nk=v", text("v"));
    row("blanks around everything are not part of it", "  [ g ]\n  k  =  v w  \n", text("v w"));
    row("carriage returns are blanks", "[g]\r\nk=v\r\n", text("v"));
    row("an empty value", "[g]\nk=\n", QString());
    row("a value may hold an equals sign", "[g]\nk=+ = Ctrl+=\n", text("+ = Ctrl+="));
    row("of equal keys the first counts", "[g]\nk=v\nk=w\n", text("v"));
    row("a group may come twice", "[g]\na=1\n[h]\nk=no\n[g]\nk=v\n", text("v"));
    row("other groups don't count", "k=no\n[h]\nk=no\n[g]\nk=v\n", text("v"));
    row("comments don't count", "[g]\n;k=no\n#k=no\nk=v\n", text("v"));
    row("damaged lines don't count", "[g\n[g]\n=no\n]\nkk\nk=v\n", text("v"));
    row("a byte order mark is passed over", "\xEF\xBB\xBF[g]\nk=v\n", text("v"));
    row("a NUL byte ends nothing", QByteArray("[g]\nx\0y=1\nk=v\n", 14), text("v"));
    row("values are UTF-8", "[g]\nk=\xC3\xA9\n", QString(QChar(0xE9)));
}

void TestIniText::reads()
{
    const auto [ini, value] = lumi::test::row<QByteArray, QString>();
    const std::optional<QString> found = IniText(ini).value(text("g"), text("k"));
    QVERIFY(found.has_value());
    QCOMPARE(*found, value);
}

void TestIniText::missingValues_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::newRow("nothing at all") << QByteArray();
    QTest::newRow("only a line feed") << QByteArray("\n");
    QTest::newRow("key before its group") << QByteArray("k=v\n[g]\n");
    QTest::newRow("key in another case") << QByteArray("[g]\nK=v\n");
    QTest::newRow("group in another case") << QByteArray("[G]\nk=v\n");
    QTest::newRow("key without an equals sign") << QByteArray("[g]\nk\n");
}

void TestIniText::missingValues()
{
    QFETCH(QByteArray, ini);
    QVERIFY(!IniText(ini).value(text("g"), text("k")).has_value());
}

void TestIniText::writes_data()
{
    lumi::test::columns<QByteArray, QByteArray>();
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &after) {
        QTest::newRow(name) << before << after;
    };
    row("into an empty text", "", "[g]\nk=7\n");
    row("behind other groups", "[h]\na=1\n", "[h]\na=1\n[g]\nk=7\n");
    row("into the place of the old value", "[g]\na=1\nk=5\nb=2\n", "[g]\na=1\nk=7\nb=2\n");
    row("only the key that is read", "[h]\nk=5\n[g]\nk=5\nk=6\n", "[h]\nk=5\n[g]\nk=7\nk=6\n");
    row("at the end of the group, before blank lines", "[g]\na=1\n\n[h]\nb=2\n",
        "[g]\na=1\nk=7\n\n[h]\nb=2\n");
    row("damaged lines and comments stay", "zzz\n[g]\n; note\n=?\nk=5\n[oops\n",
        "zzz\n[g]\n; note\n=?\nk=7\n[oops\n");
    row("carriage returns stay", "[g]\r\nk=5\r\n", "[g]\r\nk=7\r\n");
    row("bytes that are no UTF-8 stay", "[g]\nx=\xFF\xFE\nk=5\n", "[g]\nx=\xFF\xFE\nk=7\n");
}

void TestIniText::writes()
{
    const auto [before, after] = lumi::test::row<QByteArray, QByteArray>();
    IniText ini(before);
    ini.setValue(text("g"), text("k"), text("7"));
    QCOMPARE(ini.toText(), after);
    QCOMPARE(ini.value(text("g"), text("k")).value_or(QString()), text("7"));
}

void TestIniText::everyCutOfATextCanBeReadAndWritten()
{
    const QByteArray whole("\xEF\xBB\xBF; note\r\n[g]\r\nk=5\r\n[h]\nk=6\n");
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        IniText ini(whole.left(length));
        ini.setValue(text("g"), text("k"), text("7"));
        const IniText again(ini.toText());
        QCOMPARE(again.value(text("g"), text("k")).value_or(QString()), text("7"));
    }
}

LUMI_TEST(TestIniText)
#include "TestIniText.moc"

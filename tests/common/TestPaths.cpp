// SPDX-License-Identifier: MIT
#include "app/common/paths.h"
#include "platform/files/fileCalls.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/stat.h>

class TestPaths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void fileIsRemoved();
    void missingPathIsAFailure();
    void folderNeedsRecursion();
    void folderGoesWithAllItHolds();
    void linksAreNotFollowed();
    void linkToAFolderIsItselfRemoved();
    void danglingLinkKeepsItsFolder();
    void failureInsideDoesNotStopTheWalk();
    void thingsThatAreNotListedStay();
    void freeName_data();
    void freeName();
    void nullSeparatorIsNotLookedFor();
    void numbersEndAt65535();
    void takenNames();
    void protection_data();
    void protection();

private:
    QString at(const QString &name) const { return m_folder->filePath(name); }

    void make(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestPaths::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestPaths::cleanup()
{
    m_folder.reset();
}

/// Makes a file, or a folder for a path with a trailing "/".
void TestPaths::make(const QString &name) const
{
    if (name.endsWith(QLatin1Char('/'))) {
        QVERIFY(QDir().mkpath(at(name)));
        return;
    }
    QVERIFY(QDir().mkpath(QFileInfo(at(name)).path()));
    QFile file(at(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void TestPaths::fileIsRemoved()
{
    for (const bool recursive : {false, true}) {
        make(QStringLiteral("a.jpg"));
        QVERIFY(removePath(at(QStringLiteral("a.jpg")), recursive));
        QVERIFY(!QFile::exists(at(QStringLiteral("a.jpg"))));
    }
}

void TestPaths::missingPathIsAFailure()
{
    QVERIFY(!removePath(at(QStringLiteral("nothing")), false));
    QVERIFY(!removePath(at(QStringLiteral("nothing")), true));
    QVERIFY(!removePath(QString(), true));
}

void TestPaths::folderNeedsRecursion()
{
    make(QStringLiteral("empty/"));
    QVERIFY(!removePath(at(QStringLiteral("empty")), false));
    QVERIFY(QFile::exists(at(QStringLiteral("empty"))));
    QVERIFY(removePath(at(QStringLiteral("empty")), true));
    QVERIFY(!QFile::exists(at(QStringLiteral("empty"))));
}

void TestPaths::folderGoesWithAllItHolds()
{
    for (const char *name : {"f/a.jpg", "f/.hidden", "f/sub/b.jpg", "f/sub/deeper/c", "f/.h/d",
                             "f/empty/", "beside"}) {
        make(QString::fromLatin1(name));
    }
    QVERIFY(removePath(at(QStringLiteral("f")), true));
    QVERIFY(!QFile::exists(at(QStringLiteral("f"))));
    QVERIFY(QFile::exists(at(QStringLiteral("beside"))));
}

void TestPaths::linksAreNotFollowed()
{
    make(QStringLiteral("outside/photo.jpg"));
    make(QStringLiteral("f/"));
    QVERIFY(QFile::link(at(QStringLiteral("outside")), at(QStringLiteral("f/toFolder"))));
    QVERIFY(QFile::link(at(QStringLiteral("outside/photo.jpg")), at(QStringLiteral("f/toFile"))));
    QVERIFY(removePath(at(QStringLiteral("f")), true));
    QVERIFY(!QFile::exists(at(QStringLiteral("f"))));
    QVERIFY(QFile::exists(at(QStringLiteral("outside/photo.jpg"))));
}

void TestPaths::linkToAFolderIsItselfRemoved()
{
    make(QStringLiteral("outside/photo.jpg"));
    const QString link = at(QStringLiteral("link"));
    QVERIFY(QFile::link(at(QStringLiteral("outside")), link));
    QVERIFY(!removePath(link, false));
    QVERIFY(removePath(link, true));
    QVERIFY(!QFileInfo(link).isSymLink());
    QVERIFY(QFile::exists(at(QStringLiteral("outside/photo.jpg"))));
}

void TestPaths::danglingLinkKeepsItsFolder()
{
    make(QStringLiteral("f/a.jpg"));
    QVERIFY(QFile::link(at(QStringLiteral("gone")), at(QStringLiteral("f/link"))));
    QVERIFY(!removePath(at(QStringLiteral("f")), true));
    QVERIFY(QFileInfo(at(QStringLiteral("f/link"))).isSymLink());
    QVERIFY(!QFile::exists(at(QStringLiteral("f/a.jpg"))));
}

void TestPaths::failureInsideDoesNotStopTheWalk()
{
    make(QStringLiteral("f/a/x.jpg"));
    make(QStringLiteral("f/z/y.jpg"));
    QVERIFY(QFile::link(at(QStringLiteral("gone")), at(QStringLiteral("f/a/link"))));
    QVERIFY(!removePath(at(QStringLiteral("f")), true));
    QVERIFY(QFile::exists(at(QStringLiteral("f/a"))));
    QVERIFY(!QFile::exists(at(QStringLiteral("f/a/x.jpg"))));
    QVERIFY(!QFile::exists(at(QStringLiteral("f/z"))));
}

void TestPaths::thingsThatAreNotListedStay()
{
    make(QStringLiteral("f/"));
    const QByteArray pipe = QFile::encodeName(at(QStringLiteral("f/pipe")));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(!removePath(at(QStringLiteral("f")), true));
    QVERIFY(QFile::exists(at(QStringLiteral("f/pipe"))));
}

void TestPaths::freeName_data()
{
    lumi::test::columns<QStringList, QString, QByteArray, QChar, QString>();
    const QChar dot = QLatin1Char('.');
    const QChar none;
    const auto list = [](const char *names) {
        return QString::fromLatin1(names).split(QLatin1Char(' '));
    };
    QTest::newRow("a free path comes back as it is")
        << list("other") << QStringLiteral("a.jpg") << QByteArray("-%d") << dot
        << QStringLiteral("a.jpg");
    QTest::newRow("a taken photo gets its number before the extension")
        << list("a.jpg") << QStringLiteral("a.jpg") << QByteArray("-%d") << dot
        << QStringLiteral("a-1.jpg");
    QTest::newRow("taken numbers are passed over")
        << list("a.jpg a-1.jpg a-2.jpg") << QStringLiteral("a.jpg") << QByteArray("-%d") << dot
        << QStringLiteral("a-3.jpg");
    QTest::newRow("a gap in the numbers is used")
        << list("a.jpg a-2.jpg") << QStringLiteral("a.jpg") << QByteArray("-%d") << dot
        << QStringLiteral("a-1.jpg");
    QTest::newRow("the last of several dots counts")
        << list("a.b.jpg") << QStringLiteral("a.b.jpg") << QByteArray("-%d") << dot
        << QStringLiteral("a.b-1.jpg");
    QTest::newRow("a taken folder gets three digits at its end")
        << list("pics/") << QStringLiteral("pics") << QByteArray("%03d") << none
        << QStringLiteral("pics001");
    QTest::newRow("a dot in a folder's name is nothing special")
        << list("pics.old/ pics.old001") << QStringLiteral("pics.old") << QByteArray("%03d") << none
        << QStringLiteral("pics.old002");
    QTest::newRow("the separator is found in a folder above too")
        << list("x.d/pics") << QStringLiteral("x.d/pics") << QByteArray("-%d") << dot
        << QStringLiteral("x-1.d/pics");
    QTest::newRow("a path that looks like a format is no format")
        << list("100%d%s") << QStringLiteral("100%d%s") << QByteArray("%03d") << none
        << QStringLiteral("100%d%s001");
}

void TestPaths::freeName()
{
    const auto [taken, name, format, separator, expected]
        = lumi::test::row<QStringList, QString, QByteArray, QChar, QString>();
    for (const QString &one : taken) {
        make(one);
    }
    QCOMPARE(uniquePath(at(name), format.constData(), separator), at(expected));
}

void TestPaths::nullSeparatorIsNotLookedFor()
{
    make(QStringLiteral("plain"));
    // A separator that doesn't occur: the whole path is the stem.
    QCOMPARE(uniquePath(at(QStringLiteral("plain")), "-%d", QLatin1Char('#')),
             at(QStringLiteral("plain-1")));
    QCOMPARE(uniquePath(at(QStringLiteral("plain")), "-%d", QChar()),
             at(QStringLiteral("plain-1")));
}

void TestPaths::numbersEndAt65535()
{
    make(QStringLiteral("f"));
    for (int n = 1; n <= 65534; ++n) {
        QFile file(at(QStringLiteral("f%1").arg(n)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const QString last = at(QStringLiteral("f65535"));
    QCOMPARE(uniquePath(at(QStringLiteral("f")), "%d", QChar()), last);
    QVERIFY(!QFile::exists(last));
    make(QStringLiteral("f65535"));
    QCOMPARE(uniquePath(at(QStringLiteral("f")), "%d", QChar()), last);
}

void TestPaths::takenNames()
{
    make(QStringLiteral("file"));
    make(QStringLiteral("folder/"));
    QVERIFY(QFile::link(QStringLiteral("nowhere"), at(QStringLiteral("dangling"))));
    QVERIFY(QFile::link(QStringLiteral("folder"), at(QStringLiteral("link"))));
    QCOMPARE(::mkfifo(QFile::encodeName(at(QStringLiteral("pipe"))).constData(), 0600), 0);
    for (const char *name : {"file", "folder", "dangling", "link", "pipe"}) {
        QVERIFY2(lumi::isTaken(at(QString::fromLatin1(name))), name);
    }
    for (const char *name : {"nowhere", "folder/file", "fil"}) {
        QVERIFY2(!lumi::isTaken(at(QString::fromLatin1(name))), name);
    }
}

void TestPaths::protection_data()
{
    QTest::addColumn<uint>("mode");
    QTest::addColumn<bool>("isProtected");
    QTest::newRow("everybody may read") << 0444U << true;
    QTest::newRow("everybody may read and run") << 0555U << true;
    QTest::newRow("nobody may do anything") << 0U << true;
    QTest::newRow("the owner may write") << 0644U << false;
    QTest::newRow("only the group may write") << 0464U << false;
    QTest::newRow("only the others may write") << 0446U << false;
}

/// Also for root, who runs the tests on some machines.
void TestPaths::protection()
{
    QFETCH(uint, mode);
    make(QStringLiteral("a.jpg"));
    QCOMPARE(::chmod(QFile::encodeName(at(QStringLiteral("a.jpg"))).constData(), mode), 0);
    QTEST(lumi::isProtected(at(QStringLiteral("a.jpg"))), "isProtected");
    QVERIFY(lumi::isProtected(at(QStringLiteral("none"))));
}

LUMI_TEST(TestPaths)
#include "TestPaths.moc"

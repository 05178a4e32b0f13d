// SPDX-License-Identifier: MIT
#include "items/FPVDirectory.h"
#include "items/FPVItemFolder.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using lumi::test::MessageLog;

class TestFPVDirectory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void hasPictures_data();
    void hasPictures();
    void filterBits_data();
    void filterBits();
    void agreesWithAWholeListing_data();
    void agreesWithAWholeListing();
    void aMissingFolderIsReported();
    void aFailingCloseIsReported();

private:
    QString make(const QString &name) const;
    [[nodiscard]] bool has(const QString &filter, int bits) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

constexpr int kFiles = QDir::Files;
constexpr int kPhotoBits = QDir::Files | QDir::Readable | QDir::Hidden;

} // namespace

void TestFPVDirectory::initTestCase()
{
    QCOMPARE(kPhotoBits, 0x112);
}

void TestFPVDirectory::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

QString TestFPVDirectory::make(const QString &name) const
{
    QString path = m_folder->filePath(name);
    lumi::test::writeFile(path, QByteArray());
    return path;
}

bool TestFPVDirectory::has(const QString &filter, int bits) const
{
    return FPVDirectory(m_folder->path()).hasEntries(filter, bits);
}

void TestFPVDirectory::hasPictures_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("a photo") << "a.jpg" << true;
    QTest::newRow("capital letters") << "A.JPEG" << true;
    QTest::newRow("a hidden photo") << ".a.jpg" << true;
    QTest::newRow("nothing before the dot") << ".jpg" << true;
    QTest::newRow("another extension") << "a.jpe" << false;
    QTest::newRow("the extension in the middle") << "a.jpg.txt" << false;
    QTest::newRow("a line feed at the end") << "a.jpg\n" << false;
    QTest::newRow("no extension") << "jpg" << false;
}

void TestFPVDirectory::hasPictures()
{
    const auto [name, counts] = lumi::test::row<QString, bool>();
    const FPVItemFolder folder(m_folder->path(), QString(), false);
    QVERIFY(!folder.hasPictures());
    make(name);
    QCOMPARE(folder.hasPictures(), counts);
}

void TestFPVDirectory::filterBits_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("found");
    QTest::newRow("the folder itself") << "." << int(QDir::Dirs | QDir::Hidden) << false;
    QTest::newRow("the parent") << ".." << int(QDir::Dirs | QDir::Hidden) << false;
    QTest::newRow("the second of two patterns") << "*.png;F.*" << kFiles << true;
    QTest::newRow("a question mark") << "?.jpg" << kFiles << true;
    QTest::newRow("none of the patterns") << "*.png;*.gif" << kFiles << false;
}

void TestFPVDirectory::filterBits()
{
    make(QStringLiteral("f.jpg"));
    QFETCH(QString, filter);
    QFETCH(int, bits);
    QTEST(has(filter, bits), "found");
}

void TestFPVDirectory::agreesWithAWholeListing_data()
{
    QTest::addColumn<QString>("filter");
    for (const char *filter :
         {"f.jpg", "d.jpg", "link.jpg", "gone.jpg", "pipe.jpg", ".h.jpg", "*.sh", "none"}) {
        QTest::newRow(filter) << QString::fromUtf8(filter);
    }
}

/// Every combination of the bits that select entries.
void TestFPVDirectory::agreesWithAWholeListing()
{
    make(QStringLiteral("f.jpg"));
    make(QStringLiteral(".h.jpg"));
    QVERIFY(QFile::setPermissions(make(QStringLiteral("run.sh")),
                                  QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("d.jpg")));
    QVERIFY(QFile::link(QStringLiteral("f.jpg"), m_folder->filePath(QStringLiteral("link.jpg"))));
    QVERIFY(QFile::link(QStringLiteral("no"), m_folder->filePath(QStringLiteral("gone.jpg"))));
    QCOMPARE(::mkfifo(QFile::encodeName(m_folder->filePath(QStringLiteral("pipe.jpg"))), 0600), 0);
    QFETCH(QString, filter);
    for (int bits = 1; bits < 0x400; ++bits) {
        // QDir handles these bits in another way.
        const bool kindAsked = (bits & (QDir::Dirs | QDir::Files)) != 0;
        if (!kindAsked || (bits & (QDir::Drives | QDir::Modified)) != 0) {
            continue;
        }
        const bool listed = !QDir(m_folder->path())
                                 .entryList({filter}, QDir::Filters(bits | QDir::NoDotAndDotDot))
                                 .isEmpty();
        QVERIFY2(has(filter, bits) == listed, qPrintable(QString::number(bits, 16)));
    }
}

void TestFPVDirectory::aMissingFolderIsReported()
{
    const MessageLog log;
    const QString path = m_folder->filePath(QStringLiteral("gone"));
    QVERIFY(!FPVDirectory(path).hasEntries(QStringLiteral("*"), kFiles));
    QCOMPARE(
        log.warnings,
        QStringList{QString(QStringLiteral("readDirEntries: Cannot read the directory: ") + path)});
}

void TestFPVDirectory::aFailingCloseIsReported()
{
    make(QStringLiteral("f.jpg"));
    const MessageLog log;
    lumi::test::LibraryFaults faults;
    faults.failClosedir();
    QVERIFY(has(QStringLiteral("*.jpg"), kFiles));
    QCOMPARE(
        log.warnings,
        QStringList{QString(QStringLiteral("QDir::readDirEntries: Cannot close the directory: ")
                            + m_folder->path())});
}

LUMI_TEST(TestFPVDirectory)
#include "TestFPVDirectory.moc"

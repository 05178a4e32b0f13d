// SPDX-License-Identifier: MIT
#include "files/engine/copyFile.h"
#include "tests/files/engine/CopyTest.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTest>

/// The copy of a file that is larger than 2 GB, such as a movie. The test writes 3 GB. Therefore ctest
/// runs it only in 32-bit builds, where such a size may not fit into an integer.
class TestHugeCopy : public CopyTest
{
    Q_OBJECT

private Q_SLOTS:
    void threeGigabytes();
};

void TestHugeCopy::threeGigabytes()
{
    constexpr qint64 kSize = qint64{3} << 30;
    m_files->make(QStringLiteral("a"), "first");
    QFile source(m_files->path(QStringLiteral("a")));
    QVERIFY(source.open(QIODevice::ReadWrite));
    QVERIFY(source.seek(kSize - 1));
    QCOMPARE(source.write("z"), 1);
    source.close();

    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), 0);
    QFile target(m_files->path(QStringLiteral("b")));
    QCOMPARE(target.size(), kSize);
    QVERIFY(target.open(QIODevice::ReadOnly));
    QCOMPARE(target.read(6), QByteArray("first\0", 6));
    QVERIFY(target.seek(kSize - 1));
    QCOMPARE(target.readAll(), QByteArray("z"));
}

LUMI_TEST(TestHugeCopy)
#include "TestHugeCopy.moc"

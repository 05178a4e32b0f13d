// SPDX-License-Identifier: MIT
#include "files/engine/copyFile.h"
#include "tests/files/engine/CopyTest.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTest>

/// A file whose size does not fit into 32 bits with a sign, such as a movie. It writes 3 GB, so ctest
/// runs it in 32-bit builds only.
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

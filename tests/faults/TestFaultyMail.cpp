// SPDX-License-Identifier: MIT
// The writing of a mail copy with each call disturbed. Under its name there is a whole picture or
// nothing. Existing copies are unchanged.
#include "files/mailCopy.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/TestMain.h"

#include <QBuffer>
#include <QDate>
#include <QDir>
#include <QImage>
#include <QTest>

using lumi::test::Ending;
using lumi::test::Tree;

class TestFaultyMail : public FaultTest
{
    Q_OBJECT

protected:
    void prepare() override;

    QStringList watched() const override { return {lumi::mailFolderPath()}; }

    int job() override;
    QString judge(const Ending &ending) override;

    bool comparesSizes() const override { return false; }

    int leastCalls() const override { return 5; }

private:
    QImage m_image;
    Tree m_whole; ///< the folder after it
};

void TestFaultyMail::prepare()
{
    const QDate day(2004, 5, 6);
    if (m_image.isNull()) {
        m_image = QImage(640, 480, QImage::Format_RGB32);
        m_image.fill(Qt::darkCyan);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QVERIFY(m_image.save(&buffer, "JPEG"));
        m_whole = {{lumi::mailFileName(day, 1), "fileolder"},
                   {lumi::mailFileName(day, 2), "file" + bytes}};
    }
    QDir(lumi::mailFolderPath()).removeRecursively();
    QVERIFY(QDir().mkpath(lumi::mailFolderPath()));
    QFile older(lumi::mailFolderPath() + u'/' + lumi::mailFileName(day, 1));
    QVERIFY(older.open(QIODevice::WriteOnly) && older.write("older") > 0);
}

int TestFaultyMail::job()
{
    return lumi::saveMailImage(m_image, lumi::freeMailPath(QDate(2004, 5, 6))) ? 0 : 1;
}

QString TestFaultyMail::judge(const Ending &ending)
{
    const Tree made = newTree(lumi::mailFolderPath());
    for (auto it = made.begin(); it != made.end(); ++it) {
        if (it.value() != m_whole.value(it.key())) {
            return it.key() + QStringLiteral(" is not whole");
        }
    }
    if (!made.contains(m_whole.firstKey())) {
        return QStringLiteral("the older copy is gone");
    }
    const bool isDone = !ending.isKilled && ending.result == 0;
    return isDone && made != m_whole ? QStringLiteral("reported as written, but was not")
                                     : QString();
}

LUMI_TEST(TestFaultyMail)
#include "TestFaultyMail.moc"

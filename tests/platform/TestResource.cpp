// SPDX-License-Identifier: MIT
#include "platform/Resource.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QImage>
#include <QTest>

#include <sys/stat.h>

class TestResource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { Machine::install(nullptr); }

    void findsAPictureByItsName();
    void aMissingPictureIsNull();
    void aDamagedPictureIsNull();
    void aPipeIsNoPicture();

private:
    QString m_pixmaps;
};

void TestResource::init()
{
    auto *machine = lumi::test::FakeMachine::install();
    machine->resources = machine->folder.filePath(QStringLiteral("share"));
    m_pixmaps = machine->resources + QStringLiteral("/pixmaps/");
    QVERIFY(QDir().mkpath(m_pixmaps + QStringLiteral("lumivault")));
}

void TestResource::findsAPictureByItsName()
{
    QImage picture(5, 7, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString path = m_pixmaps + QStringLiteral("lumivault/look_a.png");
    QVERIFY(picture.save(path));
    QVERIFY(picture.scaled(10, 14).save(m_pixmaps + QStringLiteral("lumivault/look_a@2x.png")));
    const QPixmap found = Resource::loadPixmap(QStringLiteral("lumivault/look_a"));
    QCOMPARE(found.deviceIndependentSize(), QSizeF(5, 7));
    const bool isDense = qGuiApp->devicePixelRatio() > 1;
    QCOMPARE(found.size(), isDense ? QSize(10, 14) : QSize(5, 7));
    QCOMPARE(found.toImage().pixelColor(2, 3), QColor(Qt::red));
    QCOMPARE(Resource::findPixmap(QStringLiteral("lumivault/look_a")), path);
}

void TestResource::aMissingPictureIsNull()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QVERIFY(Resource::loadPixmap(QStringLiteral("lumivault/none")).isNull());
    QVERIFY(Resource::loadPixmap(QString()).isNull());
    QVERIFY(Resource::findPixmap(QStringLiteral("lumivault/none")).isEmpty());
}

void TestResource::aDamagedPictureIsNull()
{
    const QString path = m_pixmaps + QStringLiteral("bad.png");
    QVERIFY(lumi::test::writeFile(path, "\x89PNG\r\n\x1a\nnothing"));
    QVERIFY(Resource::loadPixmap(QStringLiteral("bad")).isNull());
}

/// Reading it would wait for a writer.
void TestResource::aPipeIsNoPicture()
{
    for (const char *name : {"pipe.png", "pipe@2x.png"}) {
        const QString path = m_pixmaps + QLatin1String(name);
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    }
    QVERIFY(Resource::loadPixmap(QStringLiteral("pipe")).isNull());
    QVERIFY(Resource::findPixmap(QStringLiteral("pipe")).isEmpty());
}

LUMI_TEST(TestResource)
#include "TestResource.moc"

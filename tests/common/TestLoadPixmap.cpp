// SPDX-License-Identifier: MIT
#include "app/common/loadPixmap.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QImage>
#include <QTest>

class TestLoadPixmap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { Machine::install(nullptr); }

    void aMissingPictureShowsItsText();
    void aPictureIsNotReplaced();

private:
    QString m_pixmaps;
};

namespace {

constexpr QSize kSize(80, 60);

QImage pictureWith(const char *text)
{
    return lumi::loadPixmap("look_a", kSize, QLatin1String(text)).toImage();
}

} // namespace

void TestLoadPixmap::init()
{
    m_pixmaps
        = lumi::test::FakeMachine::install()->resources + QStringLiteral("/pixmaps/lumivault/");
    QVERIFY(QDir().mkpath(m_pixmaps));
}

void TestLoadPixmap::aMissingPictureShowsItsText()
{
    const QImage empty = pictureWith("");
    QCOMPARE(empty.size(), kSize);
    QCOMPARE(empty.pixelColor(0, 0), QColor(Qt::black));
    QCOMPARE(empty.pixelColor(1, 1), QColor(Qt::white));
    QVERIFY(pictureWith("View") != empty);
    QVERIFY(pictureWith("View") != pictureWith("Import"));
}

void TestLoadPixmap::aPictureIsNotReplaced()
{
    QImage picture(5, 7, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(m_pixmaps + QStringLiteral("look_a.png")));
    QCOMPARE(pictureWith("View").size(), QSize(5, 7));
}

LUMI_TEST(TestLoadPixmap)
#include "TestLoadPixmap.moc"

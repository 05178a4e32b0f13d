// SPDX-License-Identifier: MIT
// A show of real photos, down to the pixels on the screen.
#include "items/FPVItemJpeg.h"
#include "platform/screen/FrameBuffer.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/Leftovers.h"
#include "tests/viewer/ShowFixture.h"

#include <QFile>
#include <QTest>

using lumi::test::Decoded;
using lumi::test::JpegKind;
using lumi::test::kLong;
using lumi::test::ShowFixture;

namespace {

constexpr QSize kScreen(640, 480);

/// A pixel of the screen as a raster of the depth holds it.
std::uint32_t rasterPixel(QRgb shown, int depth)
{
    return depth == 16 ? std::uint32_t(qRed(shown)) >> 3 << 11
            | std::uint32_t(qGreen(shown)) >> 2 << 5 | std::uint32_t(qBlue(shown)) >> 3
                       : 0xFF000000U | shown;
}

} // namespace

class TestSlideShowPixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show.reset(new ShowFixture); }

    void cleanup() { m_show.reset(); }

    void thePhotoIsOnTheScreen_data();
    void thePhotoIsOnTheScreen();
    void aLargePhotoIsDecodedSmaller();
    void aPhotoCutShortIsShownAsFarAsItGoes();
    void noPhotoAtAllEndsIt();
    void theScreenMemoryGoesWithTheShow();
    void atRandomToTheLastRound();
    void leavesNothingBehind();

private:
    QByteArray addPhoto(const QString &name, const JpegKind &kind)
    {
        const QByteArray jpeg = lumi::test::makeJpeg(kind);
        addFile(name, jpeg);
        return jpeg;
    }

    void addFile(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_show->path(qPrintable(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        m_show->source.append(new FPVItemJpeg(file.fileName(), QString(), false));
    }

    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowPixels::thePhotoIsOnTheScreen_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("depth");
    for (const int depth : {16, 32}) {
        QTest::addRow("of the screen's size, %d bits", depth) << kScreen << depth;
        QTest::addRow("half as large, %d bits", depth) << QSize(320, 240) << depth;
        QTest::addRow("wide, with bars above and below, %d bits", depth)
            << QSize(640, 200) << depth;
        QTest::addRow("upright, with bars at the sides, %d bits", depth)
            << QSize(120, 480) << depth;
    }
}

void TestSlideShowPixels::thePhotoIsOnTheScreen()
{
    QFETCH(QSize, size);
    QFETCH(int, depth);
    JpegKind kind;
    kind.size = size;
    m_show->machine->depth = depth;
    const Decoded photo = lumi::test::referenceDecode(addPhoto(QStringLiteral("a"), kind));
    m_show->make({false, true, 100, 0, 0});
    QImage screen;
    m_show->run([&] {
        screen = m_show->screen();
    });
    QCOMPARE(screen.size(), kScreen);
    const QSize shown = size.scaled(kScreen, Qt::KeepAspectRatio);
    const QPoint corner((kScreen.width() - shown.width()) / 2,
                        (kScreen.height() - shown.height()) / 2);
    const int scale = shown.width() / size.width();
    for (int y = 0; y < kScreen.height(); ++y) {
        for (int x = 0; x < kScreen.width(); ++x) {
            const QRgb pixel = screen.pixel(x, y);
            if (!QRect(corner, shown).contains(x, y)) {
                QCOMPARE(pixel, 0xFF000000U);
                continue;
            }
            // The rows of the memory count from the bottom.
            const int row = size.height() - 1 - (shown.height() - 1 - (y - corner.y())) / scale;
            const std::uint32_t wanted
                = lumi::test::expectedPixel(photo, (x - corner.x()) / scale, row, depth);
            QCOMPARE(rasterPixel(pixel, depth), wanted);
        }
    }
}

void TestSlideShowPixels::aLargePhotoIsDecodedSmaller()
{
    JpegKind kind;
    kind.size = QSize(1600, 1200);
    addPhoto(QStringLiteral("a"), kind);
    m_show->make({false, true, 100, 0, 0});
    QSize decoded;
    QSize request = kScreen;
    auto *item = dynamic_cast<FPVItemJpeg *>(m_show->source.first());
    m_show->run([] {});
    m_show->show.reset();
    // The show has taken the pixels with it.
    QVERIFY(item->rasterBits() == nullptr);
    QVERIFY(item->startDecode(32, &decoded, &request));
    QCOMPARE(decoded, QSize(800, 600));
}

void TestSlideShowPixels::aPhotoCutShortIsShownAsFarAsItGoes()
{
    JpegKind kind;
    kind.size = kScreen;
    const QByteArray jpeg = lumi::test::makeJpeg(kind);
    addFile(QStringLiteral("a"), jpeg.left(jpeg.size() / 2));
    m_show->make({false, true, 100, 0, 0});
    m_show->run([this] {
        QVERIFY(m_show->screen().pixel(320, 20) != 0xFF000000U);
        QVERIFY(m_show->show->isVisible());
    });
}

void TestSlideShowPixels::noPhotoAtAllEndsIt()
{
    addPhoto(QStringLiteral("a"), JpegKind());
    addFile(QStringLiteral("b"), "this is no photo");
    m_show->make({false, true, 100, 0, 0});
    QString text;
    QTest::ignoreMessage(QtWarningMsg, "FPVItemJpeg Error (3)");
    m_show->run([&] {
        ShowFixture::inBox(
            [this] {
                m_show->key(Qt::Key_Right);
            },
            [&text] {
                text = ShowFixture::box()->text();
                QTest::keyClick(ShowFixture::box(), Qt::Key_Return);
            });
    });
    QCOMPARE(text, QStringLiteral("You did not open this file"));
    QCOMPARE(m_show->shown(), QStringLiteral("b"));
}

void TestSlideShowPixels::theScreenMemoryGoesWithTheShow()
{
    addPhoto(QStringLiteral("a"), JpegKind());
    m_show->make({false, true, 100, 0, 0});
    bool isThere = false;
    m_show->run([&isThere] {
        isThere = FrameBuffer::instance().isAllocated();
    });
    QVERIFY(isThere);
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestSlideShowPixels::atRandomToTheLastRound()
{
    for (const char *name : {"a", "b", "c", "d", "e"}) {
        addPhoto(QLatin1String(name), JpegKind());
    }
    m_show->make({true, false, kLong, 2, 0});
    QCOMPARE(m_show->run([this] {
        QVERIFY(m_show->playsToItsEnd());
    }),
             0);
    // The second round is played in the order of the first.
    QStringList round = m_show->seen().mid(0, 5);
    QCOMPARE(m_show->seen(), round + round);
    round.sort();
    QCOMPARE(round.join(QString()), QStringLiteral("abcde"));
}

void TestSlideShowPixels::leavesNothingBehind()
{
    constexpr int kOpenings = 500;
    // Odd numbers: of shows of both kinds.
    constexpr int kShown = 5;
    constexpr int kStories = 25;
    for (const char *name : {"a", "b", "c"}) {
        addPhoto(QLatin1String(name), JpegKind());
    }
    int told = 0;
    lumi::test::leavesNothing(kOpenings, [&](int number) {
        m_show->make({number % 2 == 0, true, kLong, 0, 0});
        if (number % kStories == 0) {
            m_show->run([this, &told] {
                m_show->key(Qt::Key_Right);
                QVERIFY(m_show->sees("b"));
                m_show->key(Qt::Key_Left);
                QVERIFY(m_show->sees("a"));
                ++told;
            });
        } else if (number % kShown == 0) {
            m_show->run([] {}); // left while the next one is being decoded
        } else {
            QTimer::singleShot(0, m_show->show.get(), &QWidget::close);
            m_show->show->exec();
        }
        m_show->show.reset();
    });
    QCOMPARE(told, kOpenings / kStories);
    for (FPVItemObject *item : m_show->source) {
        QVERIFY(dynamic_cast<FPVItemJpeg *>(item)->rasterBits() == nullptr);
    }
}

LUMI_TEST(TestSlideShowPixels)
#include "TestSlideShowPixels.moc"

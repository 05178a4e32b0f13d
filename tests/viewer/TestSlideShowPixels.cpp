// SPDX-License-Identifier: MIT
// A show of real photos: the pixels on the screen.
#include "items/FPVItemJpeg.h"
#include "platform/screen/FrameBuffer.h"
#include "platform/session/QCopChannel.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/Leftovers.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

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

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void thePhotoIsOnTheScreen_data();
    void thePhotoIsOnTheScreen();
    void aLargePhotoIsDecodedSmaller();
    void aTruncatedPhotoIsShown();
    void aFileThatIsNoPhotoEndsTheShow();
    void leavesNothingBehind();

private:
    QByteArray addPhoto(const QString &name, const JpegKind &kind)
    {
        QByteArray jpeg = lumi::test::makeJpeg(kind);
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
    QTest::newRow("bars above and below, 16 bits") << QSize(640, 200) << 16;
    QTest::newRow("bars at the sides, scaled, 32 bits") << QSize(60, 240) << 32;
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
    // The show has taken the raster.
    QVERIFY(item->rasterBits() == nullptr);
    QVERIFY(item->startDecode(32, &decoded, &request));
    QCOMPARE(decoded, QSize(800, 600));
}

void TestSlideShowPixels::aTruncatedPhotoIsShown()
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

void TestSlideShowPixels::aFileThatIsNoPhotoEndsTheShow()
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

void TestSlideShowPixels::leavesNothingBehind()
{
    constexpr int kOpenings = 500;
    // Odd numbers, so that both automatic and manual shows are among them.
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
                m_show->choose(lumi::SlideMenu::Continue);
                ++told;
            });
        } else if (number % kShown == 0) {
            m_show->run([] {}); // left while the next one is being decoded
        } else {
            QTimer::singleShot(0, m_show->show.get(), &QWidget::close);
            m_show->show->exec();
        }
        QVERIFY(QCopChannel::isRegistered("QPE/System"));
        m_show->show.reset();
        QVERIFY(!QCopChannel::isRegistered("QPE/System"));
        QVERIFY(!FrameBuffer::instance().isAllocated());
    });
    QVERIFY(m_show->parent.children().isEmpty());
    QCOMPARE(told, kOpenings / kStories);
    for (FPVItemObject *item : m_show->source) {
        QVERIFY(dynamic_cast<FPVItemJpeg *>(item)->rasterBits() == nullptr);
    }
}

LUMI_TEST(TestSlideShowPixels)
#include "TestSlideShowPixels.moc"

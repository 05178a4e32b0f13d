// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifDocument.h"
#include "exif/read/FPVExifFile.h"
#include "exif/tag/FPVExifTag.h"
#include "items/FPVItemJpeg.h"
#include "items/FPVItemList.h"
#include "tests/items/DecodeTest.h"
#include "tests/items/HostileFiles.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using lumi::DecodeError;
using lumi::test::decodeOn;

/// Each broken photo in each reader and decoder. Each must end soon and take no more memory than is
/// free.
class TestHostileFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void thereAreMany();
    void allAreListed();
    void thumbnails();
    void embeddedThumbnails();
    void walkingReader();
    void documentReader();
    void screenDecodes_data();
    void screenDecodes();
    void slices();
    void scansAreLimitedWithMuchMemoryToo();

private:
    template <class Job> void forEachFile(Job job);

    std::vector<lumi::test::HostileFile> m_files;
    std::unique_ptr<lumi::test::SwapFixture> m_fixture;
    QStringList m_paths;
};

namespace {

constexpr qint64 kMostMs = 5000;
constexpr qint64 kMemoryKB = 65536;

} // namespace

void TestHostileFiles::initTestCase()
{
    m_files = lumi::test::hostileFiles();
    m_fixture = std::make_unique<lumi::test::SwapFixture>();
    m_fixture->machine->setMemoryKB(kMemoryKB);
    m_fixture->start();
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        m_paths.append(m_fixture->addPhoto(QString::asprintf("p/%04zu.jpg", i)));
        lumi::test::writeFile(m_paths.last(), m_files[i].bytes);
    }
}

void TestHostileFiles::cleanup()
{
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

void TestHostileFiles::cleanupTestCase()
{
    m_fixture.reset();
}

template <class Job> void TestHostileFiles::forEachFile(Job job)
{
    const lumi::test::MessageLog log;
    const lumi::test::PeakMemory memory;
    for (int i = 0; i < m_paths.size(); ++i) {
        QElapsedTimer clock;
        clock.start();
        job(m_paths[i]);
        QVERIFY2(clock.elapsed() < kMostMs, m_files[static_cast<std::size_t>(i)].name.constData());
        QVERIFY2(!QTest::currentTestFailed(),
                 m_files[static_cast<std::size_t>(i)].name.constData());
    }
    QVERIFY(memory.growthKB() < kMemoryKB);
}

void TestHostileFiles::thereAreMany()
{
    QVERIFY2(m_files.size() >= 300, qPrintable(QString::number(m_files.size())));
}

void TestHostileFiles::allAreListed()
{
    const QString folder = m_fixture->path(QStringLiteral("p"));
    QElapsedTimer clock;
    clock.start();
    const FPVItemList list(folder, folder);
    QVERIFY(clock.elapsed() < kMostMs);
    QCOMPARE(list.count(), static_cast<int>(m_paths.size()));
    QCOMPARE(lumi::test::photosOpened(), 0);
}

void TestHostileFiles::thumbnails()
{
    forEachFile([](const QString &path) {
        FPVItemJpeg item(path, QString(), false);
        const std::unique_ptr<QPixmap> pixmap(item.thumbnail(174, 123));
        if (pixmap) {
            QVERIFY(!pixmap->isNull());
            QVERIFY(pixmap->width() <= 174 && pixmap->height() <= 123);
        }
    });
}

void TestHostileFiles::embeddedThumbnails()
{
    forEachFile([](const QString &path) {
        const std::unique_ptr<QImage> image(FPVExifDocument::thumbnail(path));
        QVERIFY(!image || !image->isNull());
    });
}

void TestHostileFiles::walkingReader()
{
    forEachFile([](const QString &path) {
        FPVExifFile file(path);
        qint64 tags = 0;
        while (const std::unique_ptr<FPVExifTag> tag{file.nextTag()}) {
            tags += tag->text().isNull() || tag->description().isNull() ? 0 : 1;
            (void)tag->intValue();
        }
        // No directory is read twice, and a tag takes 12 bytes of the file.
        QVERIFY(tags <= 5 * QFileInfo(path).size() / 12);
    });
}

void TestHostileFiles::documentReader()
{
    forEachFile([](const QString &path) {
        const FPVExifDocument document(path);
        for (const ExifListKind kind : {ExifListKind::Ifd0, ExifListKind::Exif, ExifListKind::Gps,
                                        ExifListKind::Interoperability, ExifListKind::Ifd1}) {
            for (const FPVExifTag *tag : document.list(kind)) {
                QVERIFY(document.find(tag->tag(), kind) != nullptr);
                (void)tag->intValue();
                (void)tag->text();
            }
        }
    });
}

void TestHostileFiles::screenDecodes_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("fitted");
    QTest::newRow("fitted, 32 bits") << 32 << true;
    QTest::newRow("whole, 16 bits") << 16 << false;
}

void TestHostileFiles::screenDecodes()
{
    QFETCH(int, depth);
    QFETCH(bool, fitted);
    forEachFile([depth, fitted](const QString &path) {
        FPVItemJpeg item(path, QString(), false);
        item.setIncremental(false);
        QSize screen(640, 480);
        QSize size;
        const bool ok = item.startDecode(depth, &size, fitted ? &screen : nullptr);
        QCOMPARE(item.errorCode() == DecodeError::None, ok);
        QCOMPARE(item.rasterBits() != nullptr, ok);
        QVERIFY(!ok || !size.isEmpty());
    });
}

void TestHostileFiles::slices()
{
    forEachFile([](const QString &path) {
        FPVItemJpeg item(path, QString(), false);
        const QSignalSpy completes(&item, &FPVItemImage::decodeComplete);
        QSize screen(64, 48);
        if (item.startDecode(16, nullptr, &screen)) {
            decodeOn(&item);
            QCOMPARE(completes.count() == 1, item.errorCode() == DecodeError::None);
        }
    });
}

/// With much memory, large pictures of many scans are not refused for memory.
void TestHostileFiles::scansAreLimitedWithMuchMemoryToo()
{
    constexpr int kMuchKB = 2 * 1024 * 1024;
    m_fixture->machine->setMemoryKB(kMuchKB);
    const auto restore = qScopeGuard([this] {
        m_fixture->machine->setMemoryKB(kMemoryKB);
    });
    const lumi::test::MessageLog log;
    int bombs = 0;
    for (int i = 0; i < m_paths.size(); ++i) {
        const QByteArray &name = m_files[static_cast<std::size_t>(i)].name;
        if (!name.contains("scan")) {
            continue;
        }
        ++bombs;
        QElapsedTimer clock;
        clock.start();
        FPVItemJpeg item(m_paths[i], QString(), false);
        item.setIncremental(false);
        QSize screen(640, 480);
        (void)item.startDecode(32, nullptr, &screen);
        const std::unique_ptr<QPixmap> thumbnail(item.thumbnail(174, 123));
        QVERIFY2(clock.elapsed() < kMostMs, name.constData());
        item.setIncremental(true);
        clock.start();
        (void)item.startDecode(32, nullptr, &screen);
        decodeOn(&item);
        QVERIFY2(lumi::test::liveDecompressors() == 0, name.constData());
        QVERIFY2(clock.elapsed() < kMostMs, name.constData());
    }
    QVERIFY(bombs >= 3);
}

LUMI_TEST(TestHostileFiles)
#include "TestHostileFiles.moc"

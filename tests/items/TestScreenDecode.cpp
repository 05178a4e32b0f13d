// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "items/jpegSource.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

#include <sys/stat.h>

using lumi::DecodeError;
using lumi::test::Decoded;
using lumi::test::JpegKind;
using lumi::test::MessageLog;
using lumi::test::rasterFault;

/// The decode of a photo into the turned raster, in slices or in one piece.
class TestScreenDecode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void pixels_data();
    void pixels();
    void scaledPixels_data();
    void scaledPixels();
    void sizes_data();
    void sizes();
    void largePhotosAreHalved_data();
    void largePhotosAreHalved();
    void updates_data();
    void updates();
    void linesAppearSliceBySlice();
    void theEventLoopLivesBetweenSlices();
    void inOnePiece();
    void theDecoderIsNotFinished();
    void aThumbnailThatFailsAtTheEndSpoilsNothing();
    void inDecodeCompleteIsTrueOnlyThen();
    void aReceiverMayClearTheFlag();
    void abortIsSilent();
    void abortBeforeTheFirstSlice();
    void releaseInsideAnUpdate_data();
    void releaseInsideAnUpdate();
    void releaseInsideTheEnd();
    void restartInsideAnUpdate();
    void restartInsideTheEnd();
    void restartWhileDecoding();
    void theItemMayDieInsideASignal_data();
    void theItemMayDieInsideASignal();
    void theItemMayDieWhileDecoding();
    void aRasterIsAnsweredAtOnce();
    void aRasterIsMadeOnDemand();
    void aTakenRasterOutlivesTheItem();
    void takingEndsARunningDecode();
    void wrongRequests_data();
    void wrongRequests();
    void theFirstErrorStays();
    void filesThatCannotBeDecoded_data();
    void filesThatCannotBeDecoded();
    void aFailedStartLeavesNothing();
    void memoryForTheRaster_data();
    void memoryForTheRaster();
    void errorsInAnyLine_data();
    void errorsInAnyLine();
    void errorsInOnePiece();
    void thumbnailsWhileDecoding();
    void errorsOfThumbnailsWhileDecoding();
    void cutAtEveryLength_data();
    void cutAtEveryLength();
    void damagedAnywhere();
    void lyingHeaders();
    void scanLimit_data();
    void scanLimit();
    void extremeShapes_data();
    void extremeShapes();

private:
    QString photo(const JpegKind &kind) const;
    [[nodiscard]] QString file(const QByteArray &bytes) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    lumi::test::FakeMachine *m_machine = nullptr;
};

namespace {

static_assert(sizeof(my_jpeg_source_mgr::buffer) == 8132, "as small as the device needs it");

constexpr int kKeptBackKB = 2048; // never counted as free
const QString kError2 = QStringLiteral("FPVItemJpeg Error (2)");
const QString kError3 = QStringLiteral("FPVItemJpeg Error (3)");

/// An item with its signals watched.
struct Watched
{
    explicit Watched(const QString &path)
        : item(std::make_unique<FPVItemJpeg>(path, QString(), false))
        , updates(item.get(), &FPVItemImage::decodeUpdate)
        , completes(item.get(), &FPVItemImage::decodeComplete)
    { }

    [[nodiscard]] bool waitForTheEnd()
    {
        return QTest::qWaitFor([this] {
            return completes.count() == 1;
        });
    }

    std::unique_ptr<FPVItemJpeg> item;
    QSignalSpy updates;
    QSignalSpy completes;
};

bool start(FPVItemJpeg *item, QSize *request = nullptr, int depth = 32)
{
    return item->startDecode(depth, nullptr, request);
}

/// Long enough for several slices.
void waitForSlices()
{
    QTest::qWait(120);
}

} // namespace

void TestScreenDecode::initTestCase()
{
    QCOMPARE(int(DecodeError::WrongDepth), 0);
    QCOMPARE(int(DecodeError::OutOfMemory), 2);
    QCOMPARE(int(DecodeError::Undecodable), 3);
    QCOMPARE(int(DecodeError::None), 4);
}

void TestScreenDecode::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_machine = lumi::test::FakeMachine::install();
}

void TestScreenDecode::cleanup()
{
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    Machine::install(nullptr);
}

QString TestScreenDecode::photo(const JpegKind &kind) const
{
    return lumi::test::writeJpeg(m_folder->filePath(QStringLiteral("a.jpg")), kind);
}

QString TestScreenDecode::file(const QByteArray &bytes) const
{
    const QString path = m_folder->filePath(QStringLiteral("a.jpg"));
    QFile::remove(path); // much faster than overwriting it
    lumi::test::writeFile(path, bytes);
    return path;
}

namespace {

struct NamedKind
{
    const char *name;
    JpegKind kind;
};

const std::vector<NamedKind> &kinds()
{
    static const std::vector<NamedKind> kAll = {
        {"colour", {.components = 3}},
        {"gray", {.components = 1}},
        {"CMYK", {.components = 4}},
        {"YCCK", {.components = 4, .ycck = true}},
        {"progressive", {.progressive = true}},
        {"progressive gray", {.components = 1, .progressive = true}},
        {"arithmetic-coded", {.arithmetic = true}},
        {"arithmetic-coded progressive", {.progressive = true, .arithmetic = true}},
        {"a scan for each component", {.separateScans = true}},
        {"with restart markers", {.restartInterval = 1}},
        {"coarse", {.quality = 5}},
    };
    return kAll;
}

} // namespace

void TestScreenDecode::pixels_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("depth");
    for (std::size_t i = 0; i < kinds().size(); ++i) {
        for (const int depth : {16, 32}) {
            QTest::addRow("%s at %d bits", kinds()[i].name, depth) << int(i) << depth;
        }
    }
}

void TestScreenDecode::pixels()
{
    QFETCH(int, index);
    QFETCH(int, depth);
    JpegKind kind = kinds()[static_cast<std::size_t>(index)].kind;
    for (const QSize size : {QSize(83, 61), QSize(61, 131), QSize(16, 64), QSize(1, 1)}) {
        kind.size = size;
        Watched watched(photo(kind));
        watched.item->setIncremental(false);
        QSize decodedSize;
        QVERIFY(watched.item->startDecode(depth, &decodedSize, nullptr));
        QCOMPARE(decodedSize, size);
        const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
        QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, depth, size.height()), QString());
    }
}

void TestScreenDecode::scaledPixels_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("components");
    QTest::addColumn<QSize>("request");
    QTest::addColumn<int>("denominator");
    for (const int depth : {16, 32}) {
        for (const int components : {1, 3, 4}) {
            QTest::addRow("half, %d bits from %d samples", depth, components)
                << depth << components << QSize(150, 100) << 2;
            QTest::addRow("quarter, %d bits from %d samples", depth, components)
                << depth << components << QSize(75, 50) << 4;
            QTest::addRow("eighth, %d bits from %d samples", depth, components)
                << depth << components << QSize(1, 1) << 8;
        }
    }
}

void TestScreenDecode::scaledPixels()
{
    QFETCH(int, depth);
    QFETCH(int, components);
    QFETCH(QSize, request);
    QFETCH(int, denominator);
    const JpegKind kind{.size = QSize(303, 201), .components = components};
    FPVItemJpeg item(photo(kind), QString(), false);
    item.setIncremental(false);
    QSize size;
    QVERIFY(item.startDecode(depth, &size, &request));
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind), denominator);
    QCOMPARE(size, decoded.size);
    QCOMPARE(rasterFault(item.rasterBits(), decoded, depth, size.height()), QString());
}

void TestScreenDecode::sizes_data()
{
    QTest::addColumn<QSize>("photoSize");
    QTest::addColumn<QSize>("request");
    QTest::addColumn<QSize>("decoded");
    QTest::newRow("covered by a quarter")
        << QSize(1600, 1200) << QSize(320, 240) << QSize(400, 300);
    QTest::newRow("the smaller denominator of both axes")
        << QSize(1600, 1200) << QSize(800, 10) << QSize(800, 600);
    QTest::newRow("a request larger than the photo")
        << QSize(100, 80) << QSize(640, 480) << QSize(100, 80);
    QTest::newRow("sides that divide with a remainder")
        << QSize(1003, 1001) << QSize(250, 250) << QSize(251, 251);
}

void TestScreenDecode::sizes()
{
    QFETCH(QSize, photoSize);
    QFETCH(QSize, request);
    FPVItemJpeg item(photo({.size = photoSize, .components = 1, .plain = true}), QString(), false);
    item.setIncremental(false);
    QSize size;
    QVERIFY(item.startDecode(16, &size, &request));
    QTEST(size, "decoded");
    QCOMPARE(item.imageSize(), photoSize);
}

void TestScreenDecode::largePhotosAreHalved_data()
{
    QTest::addColumn<QSize>("photoSize");
    QTest::addColumn<QSize>("decoded");
    QTest::newRow("12 megapixels") << QSize(4000, 3000) << QSize(2000, 1500);
    QTest::newRow("8388608 pixels") << QSize(4096, 2048) << QSize(2048, 1024);
    QTest::newRow("just below") << QSize(4095, 2048) << QSize(4095, 2048);
    QTest::newRow("a half that rounds up") << QSize(8003, 6000) << QSize(2001, 1500);
}

void TestScreenDecode::largePhotosAreHalved()
{
    QFETCH(QSize, photoSize);
    FPVItemJpeg item(photo({.size = photoSize, .components = 1, .plain = true}), QString(), false);
    item.setIncremental(false);
    QSize size;
    QVERIFY(item.startDecode(16, &size, nullptr));
    QTEST(size, "decoded");
}

void TestScreenDecode::updates_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("count");
    QTest::newRow("less than a slice") << 63 << 1;
    QTest::newRow("one slice, whose end is an update too") << 64 << 2;
    QTest::newRow("a slice and a line") << 65 << 2;
    QTest::newRow("the last partial slice has none") << 200 << 4;
    QTest::newRow("three whole slices") << 192 << 4;
}

void TestScreenDecode::updates()
{
    QFETCH(int, height);
    Watched watched(photo({.size = QSize(20, height)}));
    QVERIFY(start(watched.item.get()));
    QCOMPARE(watched.updates.count(), 1);
    QVERIFY(watched.waitForTheEnd());
    QTEST(int(watched.updates.count()), "count");
    waitForSlices();
    QTEST(int(watched.updates.count()), "count");
    QCOMPARE(watched.completes.count(), 1);
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
}

void TestScreenDecode::linesAppearSliceBySlice()
{
    const JpegKind kind{.size = QSize(50, 200)};
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    for (const int depth : {16, 32}) {
        Watched watched(photo(kind));
        QStringList faults;
        int lines = 0;
        connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
            faults.append(rasterFault(watched.item->rasterBits(), decoded, depth, lines));
            lines += 64;
        });
        connect(watched.item.get(), &FPVItemImage::decodeComplete, this, [&] {
            faults.append(rasterFault(watched.item->rasterBits(), decoded, depth, 200));
        });
        QVERIFY(start(watched.item.get(), nullptr, depth));
        QVERIFY(watched.waitForTheEnd());
        QCOMPARE(faults.size(), 5);
        QCOMPARE(faults.join(QLatin1Char(';')), QStringLiteral(";;;;"));
    }
}

void TestScreenDecode::theEventLoopLivesBetweenSlices()
{
    Watched watched(photo({.size = QSize(400, 640)}));
    std::vector<qint64> times;
    QElapsedTimer clock;
    int events = 0;
    int unanswered = 0;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        times.push_back(clock.elapsed());
        unanswered = std::max(unanswered, int(times.size()) - 1 - events);
        QTimer::singleShot(0, this, [&] {
            ++events;
        });
    });
    clock.start();
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(times.size(), std::size_t(11));
    QCOMPARE(events, 11);
    QCOMPARE(unanswered, 0); // each was answered before the next slice
    for (std::size_t i = 1; i < times.size(); ++i) {
        QVERIFY2(times[i] - times[i - 1] >= 19, qPrintable(QString::number(times[i])));
    }
}

void TestScreenDecode::inOnePiece()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    watched.item->setIncremental(false);
    QVERIFY(start(watched.item.get()));
    QCOMPARE(watched.completes.count(), 1);
    QCOMPARE(watched.updates.count(), 0);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 200), QString());
    waitForSlices();
    QCOMPARE(watched.completes.count(), 1);
}

/// A decoder that has given its last line is thrown away; nothing it could still read matters.
void TestScreenDecode::theDecoderIsNotFinished()
{
    const QString path = photo({.size = QSize(50, 200)});
    FPVItemJpeg item(path, QString(), false);
    const int before = lumi::test::finishedDecodes();
    item.setIncremental(false);
    QVERIFY(start(&item));
    QCOMPARE(lumi::test::finishedDecodes(), before);
    const std::unique_ptr<QImage> image(item.scaledImage(20, 80));
    QVERIFY(image);
    QCOMPARE(lumi::test::finishedDecodes(), before + 1);
}

/// The file may have gone by then.
void TestScreenDecode::aThumbnailThatFailsAtTheEndSpoilsNothing()
{
    FPVItemJpeg item(photo({.size = QSize(50, 200)}), QString(), false);
    item.setIncremental(false);
    QStringList warnings;
    connect(&item, &FPVItemImage::decodeComplete, this, [&] {
        const lumi::test::MessageLog log;
        item.setPath(QStringLiteral("/nowhere/a.jpg"));
        QVERIFY(item.scaledImage(20, 80) == nullptr);
        warnings = log.warnings;
    });
    QVERIFY(start(&item));
    QVERIFY(!warnings.isEmpty());
    QVERIFY(item.rasterBits() != nullptr);
}

void TestScreenDecode::inDecodeCompleteIsTrueOnlyThen()
{
    Watched watched(photo({.size = QSize(20, 100)}));
    QVERIFY(!watched.item->inDecodeComplete());
    std::vector<bool> seen;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        seen.push_back(watched.item->inDecodeComplete());
    });
    connect(watched.item.get(), &FPVItemImage::decodeComplete, this, [&] {
        seen.push_back(watched.item->inDecodeComplete());
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(seen, std::vector<bool>({false, false, true}));
    QVERIFY(!watched.item->inDecodeComplete());
}

void TestScreenDecode::aReceiverMayClearTheFlag()
{
    FPVItemJpeg item(photo({}), QString(), false);
    item.setIncremental(false);
    bool after = true;
    connect(&item, &FPVItemImage::decodeComplete, this, [&] {
        item.setInDecodeComplete(false);
        after = item.inDecodeComplete();
    });
    QVERIFY(start(&item));
    QVERIFY(!after);
}

void TestScreenDecode::abortIsSilent()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.updates.count() == 2;
    }));
    watched.item->abortDecode();
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    waitForSlices();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QCOMPARE(watched.updates.count(), 2);
    QCOMPARE(watched.completes.count(), 0);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QVERIFY(watched.item->rasterBits() != nullptr);
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 64), QString());

    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 200), QString());
}

void TestScreenDecode::abortBeforeTheFirstSlice()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, watched.item.get(),
            &FPVItemImage::abortDecode);
    QVERIFY(start(watched.item.get()));
    waitForSlices();
    QCOMPARE(watched.updates.count(), 1);
    QCOMPARE(watched.completes.count(), 0);
    watched.item->releaseDecode();
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestScreenDecode::releaseInsideAnUpdate_data()
{
    QTest::addColumn<int>("update");
    QTest::newRow("inside the start") << 1;
    QTest::newRow("after the first slice") << 2;
    QTest::newRow("after the last whole slice") << 4;
}

void TestScreenDecode::releaseInsideAnUpdate()
{
    QFETCH(int, update);
    Watched watched(photo({.size = QSize(50, 192)}));
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        if (watched.updates.count() == update) {
            watched.item->releaseDecode();
        }
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.updates.count() == update;
    }));
    QVERIFY(watched.item->rasterBits() == nullptr);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    waitForSlices();
    QCOMPARE(watched.updates.count(), update);
    QCOMPARE(watched.completes.count(), 0);
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
}

void TestScreenDecode::releaseInsideTheEnd()
{
    for (const bool incremental : {true, false}) {
        Watched watched(photo({.size = QSize(50, 100)}));
        watched.item->setIncremental(incremental);
        connect(watched.item.get(), &FPVItemImage::decodeComplete, watched.item.get(),
                &FPVItemImage::releaseDecode);
        QVERIFY(start(watched.item.get()));
        QVERIFY(watched.waitForTheEnd());
        QVERIFY(watched.item->rasterBits() == nullptr);
        QVERIFY(!watched.item->inDecodeComplete());
    }
}

void TestScreenDecode::restartInsideAnUpdate()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    bool restarted = false;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        if (watched.updates.count() == 2 && !restarted) {
            restarted = true;
            QVERIFY(start(watched.item.get(), nullptr, 16));
        }
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QVERIFY(restarted);
    QCOMPARE(watched.updates.count(), 2 + 4);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 16, 200), QString());
    waitForSlices();
    QCOMPARE(watched.completes.count(), 1);
}

void TestScreenDecode::restartInsideTheEnd()
{
    const JpegKind kind{.size = QSize(50, 100)};
    Watched watched(photo(kind));
    connect(watched.item.get(), &FPVItemImage::decodeComplete, this, [&] {
        if (watched.completes.count() == 1) {
            QVERIFY(start(watched.item.get(), nullptr, 16));
        }
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.completes.count() == 2;
    }));
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 16, 100), QString());
}

void TestScreenDecode::restartWhileDecoding()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    QSize request(12, 50);
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.updates.count() == 2;
    }));
    QVERIFY(start(watched.item.get(), &request, 16));
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    QVERIFY(watched.waitForTheEnd());
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind), 4);
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 16, 50), QString());
}

void TestScreenDecode::theItemMayDieInsideASignal_data()
{
    QTest::addColumn<bool>("incremental");
    QTest::addColumn<int>("update"); // 0: inside decodeComplete()
    QTest::newRow("inside the start") << true << 1;
    QTest::newRow("after a slice") << true << 2;
    QTest::newRow("at the end") << true << 0;
    QTest::newRow("at the end, in one piece") << false << 0;
}

void TestScreenDecode::theItemMayDieInsideASignal()
{
    QFETCH(bool, incremental);
    QFETCH(int, update);
    auto *item = new FPVItemJpeg(photo({.size = QSize(50, 100)}), QString(), false);
    const QPointer<FPVItemJpeg> alive(item);
    item->setIncremental(incremental);
    int updates = 0;
    connect(item, &FPVItemImage::decodeUpdate, this, [&] {
        if (++updates == update) {
            delete item;
        }
    });
    connect(item, &FPVItemImage::decodeComplete, this, [&] {
        delete item;
    });
    QVERIFY(start(item));
    QVERIFY(QTest::qWaitFor([&] {
        return alive.isNull();
    }));
    waitForSlices();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

void TestScreenDecode::theItemMayDieWhileDecoding()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    QVERIFY(start(watched.item.get()));
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    watched.item.reset();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    waitForSlices();
    QCOMPARE(watched.completes.count(), 0);
}

void TestScreenDecode::aRasterIsAnsweredAtOnce()
{
    FPVItemJpeg item(photo({.size = QSize(50, 40)}), QString(), false);
    item.setIncremental(false);
    QVERIFY(start(&item));
    uchar *raster = item.rasterBits();
    QVERIFY(raster != nullptr);
    QVERIFY(QFile::remove(item.path()));
    QSize size;
    QSize request(10, 8);
    QCOMPARE(item.decodedRaster(16, &size, &request), raster);
    QCOMPARE(size, QSize(50, 40));
    QCOMPARE(item.decodedRaster(32, nullptr), raster);
}

void TestScreenDecode::aRasterIsMadeOnDemand()
{
    FPVItemJpeg item(photo({.size = QSize(50, 40)}), QString(), false);
    QSize size;
    QSize request(10, 8);
    uchar *raster = item.decodedRaster(16, &size, &request);
    QVERIFY(raster != nullptr);
    QCOMPARE(raster, item.rasterBits());
    QCOMPARE(size, QSize(13, 10));
    item.releaseDecode();
    const MessageLog log;
    QVERIFY(QFile::remove(item.path()));
    QVERIFY(item.decodedRaster(16, &size, &request) == nullptr);
}

void TestScreenDecode::aTakenRasterOutlivesTheItem()
{
    const JpegKind kind{.size = QSize(50, 40)};
    auto item = std::make_unique<FPVItemJpeg>(photo(kind), QString(), false);
    item->setIncremental(false);
    std::unique_ptr<uchar[]> raster;
    connect(item.get(), &FPVItemImage::decodeComplete, this, [&] {
        raster = item->takeRaster();
    });
    QVERIFY(start(item.get()));
    QVERIFY(raster);
    QVERIFY(item->rasterBits() == nullptr);
    QVERIFY(item->takeRaster() == nullptr);
    item->releaseDecode();
    item.reset();
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(raster.get(), decoded, 32, 40), QString());
}

void TestScreenDecode::takingEndsARunningDecode()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    QVERIFY(start(watched.item.get()));
    const std::unique_ptr<uchar[]> raster = watched.item->takeRaster();
    QVERIFY(raster);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    waitForSlices();
    QCOMPARE(watched.updates.count(), 1);
    QCOMPARE(watched.completes.count(), 0);
}

void TestScreenDecode::wrongRequests_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QSize>("request");
    QTest::addColumn<int>("code");
    QTest::newRow("24 bits") << 24 << QSize(10, 10) << 0;
    QTest::newRow("no bits") << 0 << QSize(10, 10) << 0;
    QTest::newRow("no width") << 16 << QSize(0, 10) << 2;
    QTest::newRow("no height") << 32 << QSize(10, 0) << 2;
    QTest::newRow("a negative side") << 32 << QSize(-1, 10) << 2;
}

void TestScreenDecode::wrongRequests()
{
    QFETCH(int, depth);
    QFETCH(QSize, request);
    QFETCH(int, code);
    Watched watched(photo({}));
    const MessageLog log;
    QSize size(7, 7);
    QVERIFY(!watched.item->startDecode(depth, &size, &request));
    QCOMPARE(int(watched.item->errorCode()), code);
    QCOMPARE(log.warnings, QStringList{QString::asprintf("FPVItemJpeg Error (%d)", code)});
    QCOMPARE(watched.updates.count(), 0);
    QCOMPARE(size, QSize(7, 7));
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestScreenDecode::theFirstErrorStays()
{
    FPVItemJpeg item(file("no photo"), QString(), false);
    const MessageLog log;
    QVERIFY(!start(&item));
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QVERIFY(!start(&item, nullptr, 24));
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings.last(), kError3);
    photo({});
    QVERIFY(start(&item));
    QCOMPARE(item.errorCode(), DecodeError::None);
    QVERIFY(!start(&item, nullptr, 24));
    QCOMPARE(item.errorCode(), DecodeError::WrongDepth);
    QVERIFY(item.rasterBits() == nullptr);
}

void TestScreenDecode::filesThatCannotBeDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("not a photo");
    QTest::newRow("a header that never ends") << lumi::test::makeJpeg({}).first(200);
    QTest::newRow("two samples a pixel") << lumi::test::makeJpeg({.components = 2});
    QTest::newRow("no height") << lumi::test::withSize(lumi::test::makeJpeg({}), 83, 0);
    QTest::newRow("twelve bits a sample") << [] {
        QByteArray bytes = lumi::test::makeJpeg({});
        bytes[bytes.indexOf("\xff\xc0") + 4] = 12;
        return bytes;
    }();
    QTest::newRow("lossless") << [] {
        QByteArray bytes = lumi::test::makeJpeg({});
        bytes[bytes.indexOf("\xff\xc0") + 1] = '\xc3';
        return bytes;
    }();
}

void TestScreenDecode::filesThatCannotBeDecoded()
{
    QFETCH(QByteArray, bytes);
    Watched watched(file(bytes));
    const MessageLog log;
    QVERIFY(!start(watched.item.get()));
    QCOMPARE(watched.item->errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings.last(), kError3);
    QCOMPARE(watched.updates.count(), 0);
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestScreenDecode::aFailedStartLeavesNothing()
{
    const QString path = photo({});
    FPVItemJpeg item(path, QString(), false);
    item.setIncremental(false);
    QVERIFY(start(&item));
    QVERIFY(item.rasterBits() != nullptr);
    QVERIFY(QFile::remove(path));
    const MessageLog log;
    QVERIFY(!start(&item));
    QVERIFY(item.rasterBits() == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings, QStringList{kError3});

    // A folder or a pipe exists and cannot be read to an end.
    QVERIFY(QDir().mkdir(path));
    QVERIFY(!start(&item));
    QCOMPARE(log.warnings[1],
             QString(QStringLiteral("my_jpeg_source_mgr cannot read file ") + path));
    QVERIFY(QDir().rmdir(path));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QVERIFY(!start(&item));
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
}

void TestScreenDecode::memoryForTheRaster_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QSize>("request");
    QTest::addColumn<int>("needKB");
    QTest::newRow("16 bits") << 16 << QSize(1600, 1200)
                             << ((1600 * 1200 * 2 + 1600 * 4 + 1048576) >> 10);
    QTest::newRow("32 bits") << 32 << QSize(1600, 1200)
                             << ((1600 * 1200 * 4 + 1600 * 4 + 1048576) >> 10);
    QTest::newRow("a quarter, but a line of the whole photo")
        << 32 << QSize(400, 300) << ((400 * 300 * 4 + 1600 * 4 + 1048576) >> 10);
}

void TestScreenDecode::memoryForTheRaster()
{
    QFETCH(int, depth);
    QFETCH(QSize, request);
    QFETCH(int, needKB);
    FPVItemJpeg item(photo({.size = QSize(1600, 1200), .components = 1, .plain = true}), QString(),
                     false);
    item.setIncremental(false);
    m_machine->setMemoryKB(needKB + kKeptBackKB - 1);
    QSize size;
    {
        const MessageLog log;
        QVERIFY(!item.startDecode(depth, &size, &request));
        QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
        QCOMPARE(log.warnings, QStringList{kError2});
        QCOMPARE(size, request);
        QVERIFY(item.rasterBits() == nullptr);
        QCOMPARE(lumi::test::liveDecompressors(), 0);
    }
    m_machine->setMemoryKB(needKB + kKeptBackKB);
    QVERIFY(item.startDecode(depth, &size, &request));
    QCOMPARE(item.errorCode(), DecodeError::None);
}

void TestScreenDecode::errorsInAnyLine_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("updates");
    QTest::newRow("the first line") << 0 << 2;
    QTest::newRow("within the first slice") << 33 << 2;
    QTest::newRow("the first line of the second slice") << 64 << 3;
    QTest::newRow("the last line") << 199 << 5;
}

/// A receiver learns of it by one more update, on which it finds the code.
void TestScreenDecode::errorsInAnyLine()
{
    QFETCH(int, line);
    Watched watched(photo({.size = QSize(50, 200)}));
    DecodeError last = DecodeError::None;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        last = watched.item->errorCode();
    });
    lumi::test::LibraryFaults faults;
    faults.failJpegFromLine(line);
    const MessageLog log;
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return last != DecodeError::None;
    }));
    QCOMPARE(last, DecodeError::Undecodable);
    QVERIFY(watched.item->rasterBits() == nullptr);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QCOMPARE(log.warnings.last(), kError3);
    waitForSlices();
    QTEST(int(watched.updates.count()), "updates");
    QCOMPARE(watched.completes.count(), 0);
}

void TestScreenDecode::errorsInOnePiece()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    watched.item->setIncremental(false);
    lumi::test::LibraryFaults faults;
    faults.failJpegFromLine(100);
    const MessageLog log;
    QVERIFY(!start(watched.item.get()));
    QCOMPARE(watched.item->errorCode(), DecodeError::Undecodable);
    QCOMPARE(watched.updates.count(), 1);
    QCOMPARE(watched.completes.count(), 0);
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestScreenDecode::thumbnailsWhileDecoding()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    int images = 0;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        QCOMPARE(watched.item->imageSize(), QSize(50, 200));
        const std::unique_ptr<QImage> image(watched.item->scaledImage(10, 40));
        images += image != nullptr ? 1 : 0;
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(images, 4);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 200), QString());
}

void TestScreenDecode::errorsOfThumbnailsWhileDecoding()
{
    const QString path = photo({.size = QSize(50, 200)});
    Watched watched(path);
    QVERIFY(start(watched.item.get()));
    QVERIFY(QFile::remove(path));
    const MessageLog log;
    QCOMPARE(watched.item->imageSize(), QSize(-1, -1));
    QVERIFY(watched.item->scaledImage(10, 40) == nullptr);
    QCOMPARE(log.warnings, QStringList{kError3});
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
}

void TestScreenDecode::cutAtEveryLength_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QSize size(24, 20);
    QTest::newRow("baseline") << lumi::test::makeJpeg({.size = size});
    QTest::newRow("progressive") << lumi::test::makeJpeg({.size = size, .progressive = true});
    QTest::newRow("gray with restart markers")
        << lumi::test::makeJpeg({.size = size, .components = 1, .restartInterval = 1});
    QTest::newRow("four samples") << lumi::test::makeJpeg({.size = size, .components = 4});
    QTest::newRow("arithmetic-coded") << lumi::test::makeJpeg({.size = size, .arithmetic = true});
}

/// From the first byte of the picture on a cut photo is a short picture and no error.
void TestScreenDecode::cutAtEveryLength()
{
    QFETCH(QByteArray, bytes);
    const qsizetype picture = bytes.indexOf("\xff\xda");
    const MessageLog log;
    int reached = 0;
    for (qsizetype length = 0; length <= bytes.size(); ++length) {
        Watched watched(file(bytes.first(length)));
        watched.item->setIncremental(false);
        const bool ok = start(watched.item.get());
        // In a segment, the made-up end marker is read as a part of it, which may or may not do.
        const bool expected = lumi::test::cutsASegment(bytes, length) ? ok : length > picture;
        QVERIFY2(ok == expected, qPrintable(QString::number(length)));
        reached += ok ? 1 : 0;
        QCOMPARE(watched.item->errorCode(), ok ? DecodeError::None : DecodeError::Undecodable);
        QCOMPARE(watched.completes.count(), ok ? 1 : 0);
        QVERIFY(!ok || watched.item->imageSize() == QSize(24, 20));
        const std::unique_ptr<QImage> image(watched.item->scaledImage(12, 10));
        QCOMPARE(image != nullptr, ok);
    }
    QVERIFY(reached > 50);
}

/// Whatever the bytes, it ends: as a picture or with code 3.
void TestScreenDecode::damagedAnywhere()
{
    const MessageLog log;
    for (const JpegKind &kind :
         {JpegKind{.size = QSize(40, 72)}, JpegKind{.size = QSize(40, 72), .progressive = true}}) {
        const QByteArray bytes = lumi::test::makeJpeg(kind);
        for (qsizetype at = 0; at < bytes.size(); at += 3) {
            QByteArray damaged = bytes;
            damaged[at] = static_cast<char>(~damaged[at]);
            Watched watched(file(damaged));
            watched.item->setIncremental(false);
            m_machine->setMemoryKB(65536);
            const bool ok = start(watched.item.get());
            QCOMPARE(watched.completes.count(), ok ? 1 : 0);
            QCOMPARE(watched.item->errorCode() == DecodeError::None, ok);
            QCOMPARE(watched.item->rasterBits() != nullptr, ok);
        }
    }
}

void TestScreenDecode::lyingHeaders()
{
    m_machine->setMemoryKB(65536);
    const QString path = file(lumi::test::withSize(lumi::test::makeJpeg({}), 65500, 65500));
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!start(&item));
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QSize request(640, 480);
    QVERIFY(!start(&item, &request, 16));
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QVERIFY(item.scaledImage(174, 123) == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QVERIFY(clock.elapsed() < 2000);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

void TestScreenDecode::scanLimit_data()
{
    QTest::addColumn<int>("scans");
    QTest::addColumn<bool>("decoded");
    QTest::newRow("500 scans") << 500 << true;
    QTest::newRow("501 scans") << 501 << false;
    QTest::newRow("600 scans") << 600 << false;
}

void TestScreenDecode::scanLimit()
{
    QFETCH(int, scans);
    QFETCH(bool, decoded);
    FPVItemJpeg item(photo({.size = QSize(32, 24), .progressiveScans = scans}), QString(), false);
    item.setIncremental(false);
    const MessageLog log;
    QCOMPARE(start(&item), decoded);
    QCOMPARE(item.errorCode(), decoded ? DecodeError::None : DecodeError::Undecodable);
    item.releaseDecode();
    const std::unique_ptr<QImage> image(item.scaledImage(16, 12));
    QCOMPARE(image != nullptr, decoded);
    QCOMPARE(item.errorCode(), decoded ? DecodeError::None : DecodeError::Undecodable);
}

void TestScreenDecode::extremeShapes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("a line") << QSize(20000, 1);
    QTest::newRow("a column") << QSize(1, 20000);
    QTest::newRow("the widest") << QSize(65500, 2);
    QTest::newRow("the highest") << QSize(2, 65500);
}

void TestScreenDecode::extremeShapes()
{
    QFETCH(QSize, size);
    const JpegKind kind{.size = size};
    FPVItemJpeg item(photo(kind), QString(), false);
    item.setIncremental(false);
    QVERIFY(start(&item));
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(item.rasterBits(), decoded, 32, size.height()), QString());
    const std::unique_ptr<QImage> image(item.scaledImage(174, 123));
    QVERIFY(image);
    QCOMPARE(image->size(), QSize(174, 123));
}

LUMI_TEST(TestScreenDecode)
#include "TestScreenDecode.moc"

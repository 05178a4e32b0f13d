// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "items/jpegSource.h"
#include "tests/items/DecodeTest.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/processFigures.h"
#include "tests/swap/SwapFixture.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using lumi::DecodeError;
using lumi::test::bytesRead;
using lumi::test::Decoded;
using lumi::test::decodeOn;
using lumi::test::JpegKind;
using lumi::test::kKeptBackKB;
using lumi::test::MessageLog;
using lumi::test::rasterFault;

/// Photos of several scans, which are read in pieces before their first line, and truncated photos.
class TestReadAhead : public lumi::test::DecodeTest
{
    Q_OBJECT

private Q_SLOTS:
    void pixels_data();
    void pixels();
    void updatesAndCompletion();
    void theEventLoopRunsWhileScansAreRead();
    void memoryIsCheckedBeforeTheDecode();
    void tooManyScans();
    void aBrokenScan();
    void callsThatEndTheReading_data();
    void callsThatEndTheReading();
    void aRestartWhileReading();
    void cutAfterEachKilobyte_data();
    void cutAfterEachKilobyte();
};

Q_DECLARE_METATYPE(lumi::test::JpegKind)

namespace {

/// Is read in about thirty pieces.
const QByteArray &largePhoto()
{
    static const QByteArray kBytes
        = lumi::test::makeJpeg({.size = QSize(3000, 2000), .progressive = true});
    return kBytes;
}

/// After each kilobyte of a file, and near each end of the reader's window.
std::vector<qsizetype> cutsOf(const QByteArray &bytes)
{
    constexpr auto kWindow = static_cast<qsizetype>(kJpegWindowBytes);
    std::vector<qsizetype> cuts;
    for (qsizetype cut = 1024; cut < bytes.size(); ++cut) {
        const qsizetype pastWindow = (cut + 1) % kWindow;
        if ((cut % 1024 == 0 || pastWindow < 3) && !lumi::test::cutsASegment(bytes, cut)) {
            cuts.push_back(cut);
        }
    }
    return cuts;
}

} // namespace

void TestReadAhead::pixels_data()
{
    QTest::addColumn<JpegKind>("kind");
    QTest::newRow("progressive") << JpegKind{.progressive = true};
    QTest::newRow("progressive gray") << JpegKind{.components = 1, .progressive = true};
    QTest::newRow("progressive of four samples") << JpegKind{.components = 4, .progressive = true};
    QTest::newRow("arithmetic-coded progressive")
        << JpegKind{.progressive = true, .arithmetic = true};
    QTest::newRow("with restart markers") << JpegKind{.progressive = true, .restartInterval = 1};
    QTest::newRow("a scan for each component") << JpegKind{.separateScans = true};
    QTest::newRow("scans that leave out the finest bits") << JpegKind{.progressiveScans = 150};
    QTest::newRow("only the coarsest scans") << JpegKind{.progressiveScans = 4};
}

/// The same bits as libjpeg's own decode in one piece.
void TestReadAhead::pixels()
{
    QFETCH(JpegKind, kind);
    for (const QSize size : {QSize(83, 61), QSize(301, 200), QSize(1, 1)}) {
        kind.size = size;
        const QByteArray bytes = lumi::test::makeJpeg(kind);
        for (const int denominator : {1, 2, 4, 8}) {
            for (const int depth : {16, 32}) {
                FPVItemJpeg item(file(bytes), QString(), false);
                QSize request(qMax(1, size.width() / denominator),
                              qMax(1, size.height() / denominator));
                QSize decodedSize;
                QVERIFY(item.startDecode(depth, &decodedSize, &request));
                decodeOn(&item);
                const int chosen = size.width() < denominator ? 1 : denominator;
                const Decoded decoded = lumi::test::referenceDecode(bytes, chosen);
                QCOMPARE(decodedSize, decoded.size);
                QCOMPARE(rasterFault(item.rasterBits(), decoded, depth, decodedSize.height()),
                         QString());
            }
        }
    }
}

/// One update at the start and one at each slice, none while scans are read.
void TestReadAhead::updatesAndCompletion()
{
    const JpegKind kind{.size = QSize(1000, 600), .progressive = true};
    const QByteArray bytes = lumi::test::makeJpeg(kind);
    const Decoded decoded = lumi::test::referenceDecode(bytes);
    FPVItemJpeg item(file(bytes), QString(), false);
    QStringList faults;
    QStringList names;
    connect(&item, &FPVItemImage::decodeUpdate, this, [&] {
        faults.append(rasterFault(item.rasterBits(), decoded, 32, 64 * int(names.size())));
        names.append(QStringLiteral("update"));
    });
    connect(&item, &FPVItemImage::decodeComplete, this, [&] {
        faults.append(rasterFault(item.rasterBits(), decoded, 32, 600));
        names.append(QStringLiteral("complete"));
    });
    QVERIFY(item.startDecode(32, nullptr, nullptr));
    QCOMPARE(names.size(), 1);
    QVERIFY(QTest::qWaitFor([&names] {
        return names.contains(QStringLiteral("complete"));
    }));
    QCOMPARE(names.size(), 11);
    QCOMPARE(names.last(), QStringLiteral("complete"));
    QCOMPARE(faults.join(QString()), QString());
}

void TestReadAhead::theEventLoopRunsWhileScansAreRead()
{
    FPVItemJpeg item(file(largePhoto()), QString(), false);
    const qint64 size = largePhoto().size();
    qint64 read = 0;
    qint64 mostAtOnce = 0;
    QTimer turns;
    connect(&turns, &QTimer::timeout, this, [&] {
        const qint64 now = bytesRead(item.path());
        mostAtOnce = std::max(mostAtOnce, now - read);
        read = std::max(read, now);
    });
    const QSignalSpy updates(&item, &FPVItemImage::decodeUpdate);
    turns.start(0);
    QSize request(640, 480);
    QVERIFY(item.startDecode(32, nullptr, &request));
    QVERIFY(QTest::qWaitFor([&updates] {
        return updates.count() > 1;
    }));
    QCOMPARE(read, size);
    QVERIFY2(mostAtOnce * 2 < size, qPrintable(QString::number(mostAtOnce)));
}

/// Memory for scans that are read later counts when the raster is allocated.
void TestReadAhead::memoryIsCheckedBeforeTheDecode()
{
    constexpr int kCoefficientsKB = 250 * 125 * 4 * 128 / 1024;
    constexpr int kNeedKB = kCoefficientsKB + ((2000 * 1000 * 4 + 2000 * 4 + 1048576) >> 10);
    const QString path = file(lumi::test::makeJpeg(
        {.size = QSize(2000, 1000), .components = 4, .progressive = true, .plain = true}));
    FPVItemJpeg item(path, QString(), false);
    machine()->setMemoryKB(kNeedKB + kKeptBackKB - 1);
    {
        const MessageLog log;
        QVERIFY(!item.startDecode(32, nullptr, nullptr));
        QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
        QCOMPARE(log.warnings, QStringList(QStringLiteral("FPVItemJpeg Error (2)")));
        QVERIFY(item.rasterBits() == nullptr);
    }
    machine()->setMemoryKB(kNeedKB + kKeptBackKB);
    QVERIFY(item.startDecode(32, nullptr, nullptr));
    decodeOn(&item);
    QCOMPARE(item.errorCode(), DecodeError::None);
}

/// The decode starts, because the number of scans is not known before, and fails later.
void TestReadAhead::tooManyScans()
{
    for (const int scans : {500, 501}) {
        FPVItemJpeg item(
            file(lumi::test::makeJpeg({.size = QSize(32, 24), .progressiveScans = scans})),
            QString(), false);
        const QSignalSpy updates(&item, &FPVItemImage::decodeUpdate);
        const QSignalSpy completes(&item, &FPVItemImage::decodeComplete);
        const MessageLog log;
        QVERIFY(item.startDecode(32, nullptr, nullptr));
        QVERIFY(QTest::qWaitFor([] {
            return lumi::test::liveDecompressors() == 0;
        }));
        const bool fails = scans > 500;
        QCOMPARE(item.errorCode(), fails ? DecodeError::Undecodable : DecodeError::None);
        QCOMPARE(updates.count(), fails ? 2 : 1);
        QCOMPARE(completes.count(), fails ? 0 : 1);
        QCOMPARE(item.rasterBits() == nullptr, fails);
        QCOMPARE(log.warnings.contains(QStringLiteral("JPEG file with too many scans")), fails);
    }
}

void TestReadAhead::aBrokenScan()
{
    QByteArray bytes = lumi::test::makeJpeg({.size = QSize(64, 64), .progressive = true});
    // The last scan is of a component that doesn't exist.
    bytes[bytes.lastIndexOf("\xff\xda") + 5] = 77;
    FPVItemJpeg item(file(bytes), QString(), false);
    const QSignalSpy updates(&item, &FPVItemImage::decodeUpdate);
    const MessageLog log;
    QVERIFY(item.startDecode(32, nullptr, nullptr));
    QTRY_COMPARE(updates.count(), 2);
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings.last(), QStringLiteral("FPVItemJpeg Error (3)"));
    QVERIFY(item.rasterBits() == nullptr);
}

void TestReadAhead::callsThatEndTheReading_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"abort", "release", "delete"}) {
        QTest::newRow(how) << QString::fromLatin1(how);
    }
}

void TestReadAhead::callsThatEndTheReading()
{
    QFETCH(QString, how);
    auto item = std::make_unique<FPVItemJpeg>(file(largePhoto()), QString(), false);
    const QSignalSpy updates(item.get(), &FPVItemImage::decodeUpdate);
    const QSignalSpy completes(item.get(), &FPVItemImage::decodeComplete);
    QVERIFY(item->startDecode(32, nullptr, nullptr));
    item->decodeScreenImage(); // a piece
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    if (how == QLatin1String("abort")) {
        item->abortDecode();
    } else if (how == QLatin1String("release")) {
        item->releaseDecode();
    } else {
        item.reset();
    }
    QTest::qWait(60);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QCOMPARE(updates.count(), 1);
    QCOMPARE(completes.count(), 0);
}

void TestReadAhead::aRestartWhileReading()
{
    FPVItemJpeg item(file(largePhoto()), QString(), false);
    QVERIFY(item.startDecode(32, nullptr, nullptr));
    item.decodeScreenImage();
    const QByteArray small = lumi::test::makeJpeg({.size = QSize(50, 100), .progressive = true});
    QVERIFY(!file(small).isEmpty());
    const QSignalSpy completes(&item, &FPVItemImage::decodeComplete);
    QVERIFY(item.startDecode(32, nullptr, nullptr));
    QTRY_COMPARE(completes.count(), 1);
    QCOMPARE(rasterFault(item.rasterBits(), lumi::test::referenceDecode(small), 32, 100),
             QString());
    // In one piece.
    item.setIncremental(false);
    QVERIFY(item.startDecode(32, nullptr, nullptr));
    QCOMPARE(completes.count(), 2);
}

void TestReadAhead::cutAfterEachKilobyte_data()
{
    QTest::addColumn<JpegKind>("kind");
    const QSize size(500, 400);
    QTest::newRow("baseline") << JpegKind{.size = size};
    QTest::newRow("progressive") << JpegKind{.size = size, .progressive = true};
}

/// A truncated photo with a whole header is decoded as libjpeg decodes the same bytes. Up to the
/// cut these are the pixels of the whole file.
void TestReadAhead::cutAfterEachKilobyte()
{
    QFETCH(JpegKind, kind);
    const QByteArray bytes = lumi::test::makeJpeg(kind);
    const Decoded whole = lumi::test::referenceDecode(bytes);
    QVERIFY(bytes.size() > 90000);
    const MessageLog log;
    const std::vector<qsizetype> cuts = cutsOf(bytes);
    QVERIFY(cuts.size() > 100);
    for (const qsizetype cut : cuts) {
        const QByteArray part = bytes.first(cut);
        FPVItemJpeg item(file(part), QString(), false);
        const QSignalSpy completes(&item, &FPVItemImage::decodeComplete);
        QSize size;
        const QByteArray name = QByteArray::number(cut);
        QVERIFY2(item.startDecode(32, &size, nullptr), name.constData());
        QCOMPARE(size, kind.size);
        decodeOn(&item);
        QVERIFY2(completes.count() == 1, name.constData());
        QCOMPARE(item.errorCode(), DecodeError::None);
        const Decoded reference = lumi::test::referenceDecode(part);
        QCOMPARE(rasterFault(item.rasterBits(), reference, 32, size.height()), QString());
        if (!kind.progressive) {
            // A row of blocks is lost at the cut, and the one before it is blended with it.
            const qsizetype sound = size.height() * (cut - 1024) / bytes.size() - 40;
            for (int y = 0; y < sound; ++y) {
                QVERIFY2(std::equal(whole.at(0, y), whole.at(0, y) + size.width() * 3,
                                    reference.at(0, y)),
                         name.constData());
            }
        }
    }
}

LUMI_TEST(TestReadAhead)
#include "TestReadAhead.moc"

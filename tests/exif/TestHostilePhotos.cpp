// SPDX-License-Identifier: MIT
// Both readers read photos that are cut at every length, changed in every byte, and changed at
// random. All texts are formatted. Memory and time must stay bounded.
#include "exif/read/FPVExifFile.h"
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/exifFormat.h"
#include "exif/text/FPVExifFields.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

using lumi::test::ExifBuilder;

namespace {

constexpr int kMostEntries = 5 * 65535;

void dropMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/,
                 const QString & /*text*/)
{ }

/// Suppresses the warnings about thousands of damaged photos.
class Silence
{
public:
    Silence()
        : m_previous(qInstallMessageHandler(dropMessage))
    { }

    ~Silence() { qInstallMessageHandler(m_previous); }

    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

private:
    QtMessageHandler m_previous;
};

struct Findings
{
    bool valid = false;
    int tags = 0;
    int walked = 0;
    bool bounded = true;
};

/// Whether no text is longer than the largest value allows.
bool textsAreBounded(FPVExifFields &fields)
{
    constexpr qsizetype kLongestText = qsizetype(65535) / 2 * 7; // "-32768," for two bytes
    bool bounded = true;
    for (int group = 0; group < 6; ++group) {
        fields.setGroup(group);
        for (int row = 0; row < fields.rowCount(); ++row) {
            const QString text = fields.valueText(row, true);
            bounded &= text.size() <= kLongestText && !text.contains(QChar(0));
        }
    }
    return bounded;
}

/// Reads a photo with both readers.
Findings examine(const QString &path)
{
    Findings findings;
    FPVExifFields document(path);
    findings.valid = document.isValid();
    qint64 sum = 0;
    for (int kind = 0; kind < 5; ++kind) {
        for (const FPVExifTag *tag : document.list(ExifListKind(kind))) {
            const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tag);
            findings.bounded &= bytes
                && bytes->size() == qint64(tag->count()) * typeSize(tag->type())
                && bytes->size() <= 65535 && tag->text().size() <= bytes->size();
            sum += bytes ? bytes->size() : 0;
            ++findings.tags;
        }
    }
    findings.bounded &= sum <= lumi::kLargestValueSum && textsAreBounded(document);
    const std::unique_ptr<QImage> image(document.thumbnail());
    findings.bounded &= !image || (document.hasThumbnail() && !image->isNull());
    FPVExifFile file(path);
    while (const auto tag = std::unique_ptr<FPVExifTag>(file.nextTag())) {
        findings.bounded &= tag->description().size() <= 65535 && tag->text().size() <= 65535;
        ++findings.walked;
    }
    findings.bounded &= findings.walked <= kMostEntries;
    return findings;
}

/// The length up to the picture data of the thumbnail, which the readers do not interpret.
int interestingLength(const ExifBuilder &photo)
{
    return 12 + int(photo.thumbnailOffset()) + 20;
}

} // namespace

class TestHostilePhotos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutAtEveryLength_data();
    void cutAtEveryLength();
    void everyByteChanged();
    void everyFieldAtItsLimits();
    void changedAtRandom_data();
    void changedAtRandom();
    void fullDirectoryIsQuick();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestHostilePhotos::cutAtEveryLength_data()
{
    lumi::test::addOrders();
}

void TestHostilePhotos::cutAtEveryLength()
{
    QFETCH(ExifBuilder::Order, order);
    const Silence silence;
    const QString path = m_folder.put(lumi::test::fullPhoto(order));
    const FPVExifDocument whole(path);
    QCOMPARE(examine(path).tags, 26);
    QCOMPARE(examine(path).walked, 26);
    for (auto length = QFile(path).size() - 1; length >= 0; --length) {
        QVERIFY(QFile::resize(path, length));
        const Findings cut = examine(path);
        QVERIFY(cut.bounded);
        QCOMPARE(cut.valid, length >= 20);
        QVERIFY(length >= 20 || cut.walked == 0);
        // The entries before the cut are unchanged.
        const FPVExifDocument document(path);
        const auto entries = std::clamp<qint64>((length - 22) / 12, 0, 8);
        for (int i = 0; i < entries; ++i) {
            const FPVExifTag *expected = whole.ifd0List().begin()[i];
            const FPVExifTag *found = document.ifd0List().begin()[i];
            QCOMPARE(found->tag(), expected->tag());
            QCOMPARE(found->count(), expected->count());
        }
    }
}

void TestHostilePhotos::everyByteChanged()
{
    const Silence silence;
    const ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Big);
    const int length = interestingLength(photo);
    const QByteArray whole = photo.file();
    for (int place = 0; place < length; ++place) {
        for (const int value : {0x00, 0x01, 0x7F, 0xFF}) {
            QByteArray bytes = whole;
            bytes[place] = char(value);
            QVERIFY2(examine(m_folder.put(bytes)).bounded,
                     qPrintable(QStringLiteral("byte %1 set to %2").arg(place).arg(value)));
        }
    }
}

void TestHostilePhotos::everyFieldAtItsLimits()
{
    const Silence silence;
    const ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Big);
    const int length = interestingLength(photo);
    const QByteArray whole = photo.file();
    const std::array<QByteArray, 4> fields = {
        QByteArray::fromHex("ffffffff"),
        QByteArray::fromHex("7fffffff"),
        QByteArray::fromHex("80000000"),
        QByteArray::fromHex("20000000"),
    };
    for (int place = 0; place < length; place += 2) {
        for (const QByteArray &field : fields) {
            QByteArray bytes = whole;
            bytes.replace(place, field.size(), field);
            QVERIFY2(examine(m_folder.put(bytes)).bounded,
                     qPrintable(QStringLiteral("field at %1").arg(place)));
        }
    }
}

void TestHostilePhotos::changedAtRandom_data()
{
    cutAtEveryLength_data();
}

void TestHostilePhotos::changedAtRandom()
{
    QFETCH(ExifBuilder::Order, order);
    const Silence silence;
    const ExifBuilder photo = lumi::test::fullPhoto(order);
    const QByteArray whole = photo.file();
    std::mt19937 random(20040506); // NOLINT(cert-msc51-cpp): the same photos in every run
    std::uniform_int_distribution<int> places(12, interestingLength(photo));
    std::uniform_int_distribution<int> values(0, 255);
    for (int round = 0; round < 500; ++round) {
        QByteArray bytes = whole;
        for (int change = 0; change <= round % 12; ++change) {
            bytes[places(random)] = char(values(random));
        }
        QVERIFY2(examine(m_folder.put(bytes)).bounded, qPrintable(QString::number(round)));
    }
}

void TestHostilePhotos::fullDirectoryIsQuick()
{
    // A segment full of entries with different numbers. The link points to the first value, which
    // reads as a count, so all other entries are read again.
    using enum ExifListKind;
    constexpr int kEntries = 5400;
    constexpr quint32 kCount = kEntries - 2;
    ExifBuilder photo;
    for (int i = 0; i < kEntries; ++i) {
        photo.word(Ifd0, quint16(0x1000 + i), 7, 4, kCount << 16);
    }
    photo.link(Ifd0, 8 + 2 + 8 + 2);
    const QString path = m_folder.put(photo);
    QElapsedTimer timer;
    timer.start();
    const Findings findings = examine(path);
    QCOMPARE(findings.tags, kEntries + int(kCount));
    QVERIFY(findings.bounded);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

LUMI_TEST(TestHostilePhotos)
#include "TestHostilePhotos.moc"

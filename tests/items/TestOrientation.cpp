// SPDX-License-Identifier: MIT
#include "items/Orientation.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/support/testFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using lumi::Orientation;
using lumi::test::ExifBuilder;

/// The value of the Exif tag: where it is read from, and what it does to a picture.
class TestOrientation : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_machine = lumi::test::FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void whereThePixelsGo_data();
    void whereThePixelsGo();
    void scaledPictures();
    void readFromAFile_data();
    void readFromAFile();
    void cutFiles();
    void otherFiles();
    void asStoredIfTheMachineSaysSo();

private:
    /// The value that the orientation of the file stands for.
    [[nodiscard]] int valueOf(const QByteArray &bytes) const;

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("a.jpg")); }

    QTemporaryDir m_folder;
    lumi::test::FakeMachine *m_machine = nullptr;
};

namespace {

constexpr quint16 kOrientation = 0x0112;
constexpr int kDoesNotMatch = -1;

/// The lines of a picture, a letter a pixel.
using Lines = QStringList;

Lines stored()
{
    return {QStringLiteral("abc"), QStringLiteral("def")};
}

QSize sizeOf(const Lines &lines)
{
    return {static_cast<int>(lines.first().size()), static_cast<int>(lines.size())};
}

QImage pictureOf(const Lines &lines, QImage::Format format)
{
    QImage image(sizeOf(lines), format);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int gray = lines.at(y).at(x).unicode();
            image.setPixelColor(x, y, QColor(gray, gray, gray));
        }
    }
    return image;
}

Lines linesOf(const QImage &image)
{
    Lines lines;
    for (int y = 0; y < image.height(); ++y) {
        lines.append(QString());
        for (int x = 0; x < image.width(); ++x) {
            lines.last().append(QChar(image.pixelColor(x, y).red()));
        }
    }
    return lines;
}

Lines uprightLines(const Orientation &orientation)
{
    const Lines from = stored();
    const QSize size = orientation.turned(sizeOf(from));
    Lines lines(size.height(), QString(size.width(), QLatin1Char('.')));
    for (int y = 0; y < sizeOf(from).height(); ++y) {
        for (int x = 0; x < sizeOf(from).width(); ++x) {
            const QPoint at = orientation.upright({x, y}, sizeOf(from));
            lines[at.y()][at.x()] = from.at(y).at(x);
        }
    }
    return lines;
}

ExifBuilder withValue(quint16 value, ExifBuilder::Order order = ExifBuilder::Order::Little)
{
    ExifBuilder builder(order);
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker")
        .shorts(ExifListKind::Ifd0, kOrientation, {value});
    return builder;
}

/// A whole segment.
QByteArray segment(char marker, const QByteArray &content)
{
    const qsizetype length = content.size() + 2;
    return QByteArray("\xFF") + marker + static_cast<char>(length >> 8) + static_cast<char>(length)
        + content;
}

const QByteArray kJfif("JFIF\0\1\1\0\0\1\0\1\0\0", 14);

} // namespace

void TestOrientation::whereThePixelsGo_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("as stored") << 1 << "abc def";
    QTest::newRow("left and right exchanged") << 2 << "cba fed";
    QTest::newRow("upside down") << 3 << "fed cba";
    QTest::newRow("top and bottom exchanged") << 4 << "def abc";
    QTest::newRow("lines and columns exchanged") << 5 << "ad be cf";
    QTest::newRow("to be turned right") << 6 << "da eb fc";
    QTest::newRow("lines and columns exchanged, upside down") << 7 << "fc eb da";
    QTest::newRow("to be turned left") << 8 << "cf be ad";
    for (const int value : {0, 9, -1, 65535, 256 + 6}) {
        QTest::addRow("%d means as stored", value) << value << "abc def";
    }
}

void TestOrientation::whereThePixelsGo()
{
    const auto [value, lines] = lumi::test::row<int, QString>();
    const Lines wanted = lines.split(QLatin1Char(' '));
    const Orientation orientation(value);
    QCOMPARE(orientation.turned(sizeOf(stored())), sizeOf(wanted));
    QCOMPARE(orientation.turned(sizeOf(wanted)), sizeOf(stored()));
    QCOMPARE(uprightLines(orientation), wanted);
    for (const QImage::Format format : {QImage::Format_Grayscale8, QImage::Format_RGB32}) {
        const QImage image = orientation.scaled(pictureOf(stored(), format), sizeOf(wanted));
        QCOMPARE(linesOf(image), wanted);
        QCOMPARE(image.format(), format);
    }
}

void TestOrientation::scaledPictures()
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::black);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 20; ++x) {
            image.setPixelColor(x, y, Qt::red); // top left
        }
    }
    const QImage small = Orientation(6).scaled(image, QSize(10, 30));
    QCOMPARE(small.size(), QSize(10, 30));
    QVERIFY(small.pixelColor(8, 2).red() > 240); // top right
    QVERIFY(small.pixelColor(2, 2).red() < 16);
    QVERIFY(small.pixelColor(8, 28).red() < 16);
}

int TestOrientation::valueOf(const QByteArray &bytes) const
{
    lumi::test::writeFile(path(), bytes);
    const Lines found = uprightLines(Orientation::of(path()));
    for (int value = 1; value <= 8; ++value) {
        if (uprightLines(Orientation(value)) == found) {
            return value;
        }
    }
    return kDoesNotMatch;
}

void TestOrientation::readFromAFile_data()
{
    using Order = ExifBuilder::Order;
    lumi::test::columns<QByteArray, int>();
    for (quint16 value = 1; value <= 8; ++value) {
        QTest::addRow("%d, little-endian", value) << withValue(value).file() << int(value);
        QTest::addRow("%d, big-endian", value) << withValue(value, Order::Big).file() << int(value);
    }
    QTest::newRow("tightly packed") << withValue(6).packed().file() << 6;
    QTest::newRow("behind a JFIF segment")
        << withValue(6).segmentsBefore(segment('\xE0', kJfif)).file() << 6;
    QTest::newRow("behind a segment of the greatest length")
        << withValue(6).segmentsBefore(segment('\xE2', QByteArray(65533, 'x'))).file() << 6;
    QTest::newRow("behind another segment of the same marker")
        << withValue(6).segmentsBefore(segment('\xE1', "http://ns.adobe.com/xap/1.0/")).file() << 6;
    QTest::newRow("the first of two blocks counts")
        << withValue(6).segmentsBefore(withValue(8).file().sliced(2).chopped(2)).file() << 8;
    QTest::newRow("too far away")
        << withValue(6).segmentsBefore(segment('\xE2', QByteArray(65533, 'x')).repeated(2)).file()
        << 1;
    QTest::newRow("no tag") << ExifBuilder().ascii(ExifListKind::Ifd0, 0x010F, "Maker").file() << 1;
    QTest::newRow("no block") << lumi::test::makeJpeg({}) << 1;
    QTest::newRow("0") << withValue(0).file() << 1;
    QTest::newRow("9") << withValue(9).file() << 1;
    QTest::newRow("two values")
        << ExifBuilder().shorts(ExifListKind::Ifd0, kOrientation, {6, 6}).file() << 1;
    QTest::newRow("no value") << ExifBuilder().shorts(ExifListKind::Ifd0, kOrientation, {}).file()
                              << 1;
    QTest::newRow("of a wrong type")
        << ExifBuilder().ascii(ExifListKind::Ifd0, kOrientation, "\6").file() << 1;
    QTest::newRow("a tag of the thumbnail only")
        << ExifBuilder()
               .ascii(ExifListKind::Ifd0, 0x010F, "Maker")
               .shorts(ExifListKind::Ifd1, kOrientation, {6})
               .file()
        << 1;
    QTest::newRow("a directory that is not there")
        << withValue(6).ifd0Offset(0x7FFFFFF0).file() << 1;
    QTest::newRow("a directory that claims to be endless")
        << withValue(6).entryCount(ExifListKind::Ifd0, 0xFFFF).file() << 6;
    QTest::newRow("a segment without a length") << withValue(6).app1Length(0).file() << 1;
    QTest::newRow("no start of image") << withValue(6).file().sliced(2) << 1;
    QTest::newRow("behind the start of the scan")
        << QByteArray("\xFF\xD8") + segment('\xDA', "x") + withValue(6).file().sliced(2) << 1;
    QTest::newRow("nothing") << QByteArray() << 1;
}

void TestOrientation::readFromAFile()
{
    const auto [bytes, value] = lumi::test::row<QByteArray, int>();
    QCOMPARE(valueOf(bytes), value);
}

/// The bytes of a directory behind the end of the file count as 0.
void TestOrientation::cutFiles()
{
    const QByteArray whole = withValue(6).segmentsBefore(segment('\xE0', kJfif)).file();
    const QByteArray number("\x12\x01\x03\x00\x01\x00\x00\x00\x06", 9);
    const qsizetype end = whole.indexOf(number) + number.size();
    QVERIFY(end > number.size());
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        QCOMPARE(valueOf(whole.first(length)), length < end ? 1 : 6);
    }
}

/// Opening a pipe would block.
void TestOrientation::otherFiles()
{
    QCOMPARE(Orientation::of(QStringLiteral("/nowhere/a.jpg")).turned({3, 2}), QSize(3, 2));
    QCOMPARE(Orientation::of(m_folder.path()).turned({3, 2}), QSize(3, 2));
    const QString pipe = m_folder.filePath(QStringLiteral("pipe.jpg"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(Orientation::of(pipe).turned({3, 2}), QSize(3, 2));
}

void TestOrientation::asStoredIfTheMachineSaysSo()
{
    QCOMPARE(valueOf(withValue(6).file()), 6);
    m_machine->upright = false;
    QCOMPARE(valueOf(withValue(6).file()), 1);
}

LUMI_TEST(TestOrientation)
#include "TestOrientation.moc"

// SPDX-License-Identifier: MIT
#include "exif/read/FPVFile.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTest>

#include <cstring>
#include <limits>

#include <sys/stat.h>

namespace {

class CountingFile : public FPVFile
{
public:
    CountingFile()
        : FPVFile(QString())
    { }

    void close() override
    {
        ++m_closes;
        FPVFile::close();
    }

    [[nodiscard]] int closes() const { return m_closes; }

    using FPVFile::rest;

private:
    int m_closes = 0;
};

/// Byte i is i modulo 251, so that places in a window differ.
QByteArray pattern(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i) {
        bytes[i] = char(i % 251);
    }
    return bytes;
}

} // namespace

class TestFPVFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsNumbersInBothOrders();
    void littleEndianIsTheDefault();
    void readsAcrossWindows();
    void readsZeroBehindTheEnd();
    void readBytesStaysInTheWindow();
    void readBytesTakesANewWindow();
    void readBytesBehindTheEndIsZero();
    void readBytesRefusesNonsense();
    void seekGivesThePlaceBefore();
    void seekBehindTheLargestInt_data();
    void seekBehindTheLargestInt();
    void fillTakesAWindow();
    void atEndNeedsTheEndAndAnEmptyWindow();
    void closeResetsThePosition();
    void openClosesTheOldFile();
    void openFails_data();
    void openFails();
    void openRefusesAPipe();
    void restIsTheUnreadWindow();
    void closedFileReadsZero();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVFile::readsNumbersInBothOrders()
{
    FPVFile file(m_folder.put(QByteArray::fromHex("0102030405060708090a0b0c0d0e")));
    QVERIFY(file.isOpen());
    QCOMPARE(file.readByte(), quint8(0x01));
    file.setLittleEndian(true);
    QCOMPARE(file.read16(), quint16(0x0302));
    QCOMPARE(file.read32(), 0x07060504U);
    file.setLittleEndian(false);
    QCOMPARE(file.read16(), quint16(0x0809));
    QCOMPARE(file.read32(), 0x0A0B0C0DU);
    QCOMPARE(file.tell(), 13);
}

void TestFPVFile::littleEndianIsTheDefault()
{
    FPVFile file(m_folder.put(QByteArray::fromHex("0102")));
    QCOMPARE(file.read16(), quint16(0x0201));
}

void TestFPVFile::readsAcrossWindows()
{
    const QByteArray bytes = pattern(5000);
    FPVFile file(m_folder.put(bytes));
    for (int i = 0; i < bytes.size(); ++i) {
        QCOMPARE(file.tell(), i);
        QCOMPARE(char(file.readByte()), bytes[i]);
    }
    file.seek(1022);
    file.setLittleEndian(false);
    QCOMPARE(file.read32(),
             quint32(1022 % 251) << 24 | (1023 % 251) << 16 | (1024 % 251) << 8 | (1025 % 251));
}

void TestFPVFile::readsZeroBehindTheEnd()
{
    FPVFile file(m_folder.put(QByteArray::fromHex("ffff")));
    QCOMPARE(file.read32(), 0x0000FFFFU);
    QCOMPARE(file.read32(), 0U);
    file.seek(100000);
    QCOMPARE(file.tell(), 100000);
    QCOMPARE(file.read32(), 0U);
    file.seek(0);
    QCOMPARE(file.readByte(), quint8(0xFF));
}

void TestFPVFile::readBytesStaysInTheWindow()
{
    const QByteArray bytes = pattern(3000);
    FPVFile file(m_folder.put(bytes));
    QCOMPARE(file.fill(100, 0), 100);
    QCOMPARE(std::memcmp(file.readBytes(60), bytes.constData(), 60), 0);
    QCOMPARE(file.tell(), 60);
    QCOMPARE(std::memcmp(file.readBytes(40), bytes.constData() + 60, 40), 0);
    QCOMPARE(file.tell(), 100);
}

void TestFPVFile::readBytesTakesANewWindow()
{
    const QByteArray bytes = pattern(3000);
    FPVFile file(m_folder.put(bytes));
    QCOMPARE(file.fill(100, 0), 100);
    file.seek(90);
    QCOMPARE(std::memcmp(file.readBytes(2000), bytes.constData() + 90, 2000), 0);
    QCOMPARE(file.tell(), 2090);
    QCOMPARE(char(file.readByte()), bytes[2090]);
}

void TestFPVFile::readBytesBehindTheEndIsZero()
{
    FPVFile file(m_folder.put(QByteArray::fromHex("aabb")));
    const uchar *bytes = file.readBytes(6);
    QVERIFY(bytes);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(bytes), 6),
             QByteArray::fromHex("aabb00000000"));
    QCOMPARE(file.readByte(), quint8(0));
}

void TestFPVFile::readBytesRefusesNonsense()
{
    FPVFile file(m_folder.put(QByteArray("x")));
    QVERIFY(!file.readBytes(0));
    QVERIFY(!file.readBytes(-1));
    QCOMPARE(file.readByte(), quint8('x'));
    file.close();
    QVERIFY(!file.readBytes(1));
}

void TestFPVFile::seekGivesThePlaceBefore()
{
    const QByteArray bytes = pattern(4000);
    FPVFile file(m_folder.put(bytes));
    file.readByte();
    QCOMPARE(file.seek(1024), 1); // the end of the window is inside
    QCOMPARE(file.tell(), 1024);
    QCOMPARE(char(file.readByte()), bytes[1024]);
    QCOMPARE(file.seek(10), 1025);
    QCOMPARE(char(file.readByte()), bytes[10]);
    QCOMPARE(file.seek(3000), 11);
    QCOMPARE(char(file.readByte()), bytes[3000]);
}

void TestFPVFile::seekBehindTheLargestInt_data()
{
    QTest::addColumn<qint64>("place");
    QTest::newRow("the last int") << qint64(std::numeric_limits<int>::max());
    QTest::newRow("one more") << qint64(std::numeric_limits<int>::max()) + 1;
    QTest::newRow("the largest offset of a block") << qint64(12) + 0xFFFFFFFF;
    QTest::newRow("a negative place") << qint64(-1);
}

void TestFPVFile::seekBehindTheLargestInt()
{
    QFETCH(qint64, place);
    FPVFile file(m_folder.put(pattern(5000)));
    file.readByte();
    QCOMPARE(file.seek(place), 1);
    QCOMPARE(file.readByte(), quint8(0));
    QCOMPARE(file.read32(), 0U);
    file.seek(7);
    QCOMPARE(file.readByte(), quint8(7));
}

void TestFPVFile::fillTakesAWindow()
{
    FPVFile file(m_folder.put(pattern(100)));
    QCOMPARE(file.fill(0, 5), -1);
    QCOMPARE(file.fill(-4, 5), -1);
    QCOMPARE(file.tell(), 0);
    QCOMPARE(file.fill(10, 20), 10);
    QCOMPARE(file.tell(), 20);
    QCOMPARE(file.fill(10, -1), 10); // from the current position
    QCOMPARE(file.tell(), 30);
    QCOMPARE(file.fill(500, 90), 10);
    QCOMPARE(file.fill(500, 200), 0);
}

void TestFPVFile::atEndNeedsTheEndAndAnEmptyWindow()
{
    FPVFile file(m_folder.put(QByteArray("ab")));
    QVERIFY(!file.atEnd());
    file.readByte();
    QVERIFY(!file.atEnd());
    file.readByte();
    QVERIFY(file.atEnd());
    file.seek(0);
    QVERIFY(!file.atEnd());
    file.seek(2);
    QVERIFY(file.atEnd());
    file.close();
    QVERIFY(!file.atEnd());
}

void TestFPVFile::closeResetsThePosition()
{
    FPVFile file(m_folder.put(pattern(2000)));
    file.seek(1500);
    file.readByte();
    file.close();
    QVERIFY(!file.isOpen());
    QCOMPARE(file.tell(), 0);
    file.close();
    QVERIFY(!file.isOpen());
}

void TestFPVFile::openClosesTheOldFile()
{
    const QString first = m_folder.put(QByteArray("first"), QStringLiteral("first"));
    const QString second = m_folder.put(QByteArray("second"), QStringLiteral("s\u00e9cond"));
    CountingFile file;
    QVERIFY(!file.isOpen());
    QVERIFY(file.open(first));
    QCOMPARE(file.closes(), 1);
    QCOMPARE(file.readByte(), quint8('f'));
    QVERIFY(file.open(second));
    QCOMPARE(file.closes(), 2);
    QCOMPARE(file.tell(), 0);
    QCOMPARE(file.readByte(), quint8('s'));
}

void TestFPVFile::openFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a missing file") << QStringLiteral("missing");
    QTest::newRow("a folder") << QStringLiteral(".");
}

void TestFPVFile::openFails()
{
    QFETCH(QString, name);
    const QString path = m_folder.path(name);
    const QByteArray warning = "FPVFile::open() cannot open " + path.toLatin1();
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    CountingFile file;
    QVERIFY(!file.open(path));
    QVERIFY(!file.isOpen());
}

void TestFPVFile::openRefusesAPipe()
{
    const QString path = m_folder.path(QStringLiteral("pipe.jpg"));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const QByteArray warning = "FPVFile::open() cannot open " + path.toLatin1();
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    const FPVFile file(path); // would block until something writes to it
    QVERIFY(!file.isOpen());
}

void TestFPVFile::restIsTheUnreadWindow()
{
    CountingFile file;
    QVERIFY(file.rest().empty());
    QVERIFY(file.open(m_folder.put(pattern(100))));
    QVERIFY(file.rest().empty());
    QCOMPARE(file.fill(50, 10), 50);
    file.readBytes(20);
    QCOMPARE(file.rest().size(), std::size_t(30));
    QCOMPARE(file.rest().front(), char(30));
    file.seek(60);
    QVERIFY(file.rest().empty());
}

void TestFPVFile::closedFileReadsZero()
{
    FPVFile file((QString()));
    QVERIFY(!file.isOpen());
    QCOMPARE(file.readByte(), quint8(0));
    QCOMPARE(file.read32(), 0U);
    QCOMPARE(file.fill(10, 0), -1);
    QCOMPARE(file.seek(5), 0);
    QVERIFY(!file.atEnd());
}

LUMI_TEST(TestFPVFile)
#include "TestFPVFile.moc"

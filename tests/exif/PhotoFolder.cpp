// SPDX-License-Identifier: MIT
#include "tests/exif/PhotoFolder.h"

#include <QFile>
#include <QProcess>
#include <QTest>

namespace lumi::test {

QString PhotoFolder::put(const QByteArray &bytes, const QString &name)
{
    QString target = path(name);
    QFile file(target);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    if (!written) {
        QTest::qFail("a test file cannot be written", __FILE__, __LINE__);
    }
    return target;
}

QString PhotoFolder::put(const ExifBuilder &photo, const QString &name)
{
    return put(photo.file(), name);
}

QByteArray PhotoFolder::output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        const QString what = program + QLatin1Char(' ') + arguments.join(QLatin1Char(' '))
            + QLatin1String(": ") + process.errorString() + QLatin1Char(' ')
            + QString::fromLocal8Bit(process.readAllStandardError());
        QTest::qFail(qPrintable(what), __FILE__, __LINE__);
        return {};
    }
    return process.readAllStandardOutput();
}

QList<QStringList> tableLines(const QString &name)
{
    QFile file(QLatin1String(":/") + name);
    QList<QStringList> lines;
    if (file.open(QIODevice::ReadOnly)) {
        const QString text = QString::fromUtf8(file.readAll());
        for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            lines.append(line.split(QLatin1Char('\t')));
        }
    }
    return lines;
}

ExifBuilder fullPhoto(ExifBuilder::Order order)
{
    using enum ExifListKind;
    ExifBuilder photo(order);
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .ascii(Ifd0, 0x0110, "A1")
        .shorts(Ifd0, 0x0112, {6})
        .rationals(Ifd0, 0x011A, {{72, 1}})
        .ascii(Ifd0, 0x0132, "2004:05:06 07:08:09")
        .shorts(Ifd0, 0x0102, {8, 9, 10})
        .rationals(Exif, 0x829A, {{1, 60}})
        .rationals(Exif, 0x829D, {{28, 10}})
        .shorts(Exif, 0x8827, {100, 200})
        .undefined(Exif, 0x9000, "0220")
        .undefined(Exif, 0x9101, QByteArray("\1\2\3\0", 4))
        .srationals(Exif, 0x9204, {{static_cast<quint32>(-1), 3}})
        .longs(Exif, 0xA002, {70000})
        .makerNote(QByteArray::fromHex("00ff10204a00b3c5d7"))
        .ascii(Interoperability, 0x0001, "R98")
        .undefined(Interoperability, 0x0002, "0100")
        .value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .ascii(Gps, 0x0001, "N")
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {3012, 100}})
        .shorts(Ifd1, 0x0103, {6})
        .slongs(Ifd1, 0xC001, {-5, 7})
        .thumbnail(ExifBuilder::jpeg(40, 30, 0xC08040));
    return photo;
}

ExifBuilder plainPhoto(ExifBuilder::Order order)
{
    using enum ExifListKind;
    ExifBuilder photo(order);
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .shorts(Ifd0, 0x0112, {6})
        .rationals(Exif, 0x829A, {{1, 60}})
        .value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {3012, 100}});
    return photo;
}

void addOrders()
{
    QTest::addColumn<ExifBuilder::Order>("order");
    QTest::newRow("a little-endian photo") << ExifBuilder::Order::Little;
    QTest::newRow("a big-endian photo") << ExifBuilder::Order::Big;
}

} // namespace lumi::test

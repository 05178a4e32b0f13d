// SPDX-License-Identifier: MIT
#include "bench/jobs.h"
#include "exif/text/FPVExifFields.h"
#include "tests/support/ExifBuilder.h"

#include <QFile>

#include <libexif/exif-data.h>

namespace {

constexpr int kRounds = 25;
constexpr int kPhotosARound = 100;
constexpr int kGroups = 6;

void addPosition(lumi::test::ExifBuilder &photo)
{
    using enum ExifListKind;
    photo.value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .ascii(Gps, 0x0001, "N")
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {30123, 1000}})
        .ascii(Gps, 0x0003, "E")
        .rationals(Gps, 0x0004, {{139, 1}, {45, 1}, {7250, 1000}})
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'))
        .rationals(Gps, 0x0006, {{3825, 100}});
}

/// A typical block of a camera: all tags that are shown, a maker's note and a thumbnail.
lumi::test::ExifBuilder fullBlock()
{
    using enum ExifListKind;
    constexpr int kMakerNoteBytes = 4096;
    lumi::test::ExifBuilder photo;
    photo.ascii(Ifd0, 0x010E, "Harbour in the evening")
        .ascii(Ifd0, 0x010F, "Anvil Works")
        .ascii(Ifd0, 0x0110, "A1")
        .shorts(Ifd0, 0x0112, {1})
        .rationals(Ifd0, 0x011A, {{72, 1}})
        .rationals(Ifd0, 0x011B, {{72, 1}})
        .ascii(Ifd0, 0x0131, "Ver 1.20")
        .ascii(Ifd0, 0x0132, "2004:05:06 07:08:09")
        .ascii(Ifd0, 0x013B, "Ann")
        .ascii(Ifd0, 0x8298, QByteArray("Ann\0Bob", 7))
        .rationals(Exif, 0x829A, {{10, 600}})
        .rationals(Exif, 0x829D, {{28, 10}})
        .shorts(Exif, 0x8822, {2})
        .shorts(Exif, 0x8827, {400})
        .undefined(Exif, 0x9000, "0220")
        .ascii(Exif, 0x9003, "2004:05:06 07:08:09")
        .ascii(Exif, 0x9004, "2004:05:06 07:08:09")
        .rationals(Exif, 0x9102, {{4, 1}})
        .srationals(Exif, 0x9201, {{6, 1}})
        .rationals(Exif, 0x9202, {{30, 10}})
        .srationals(Exif, 0x9203, {{25, 10}})
        .srationals(Exif, 0x9204, {{1, 3}})
        .rationals(Exif, 0x9205, {{30, 10}})
        .rationals(Exif, 0x9206, {{12, 10}})
        .shorts(Exif, 0x9207, {5})
        .shorts(Exif, 0x9208, {10})
        .shorts(Exif, 0x9209, {0x19})
        .rationals(Exif, 0x920A, {{58, 10}})
        .shorts(Exif, 0x9214, {320, 240})
        .makerNote(QByteArray(kMakerNoteBytes, 'x'))
        .undefined(Exif, 0x9286, QByteArray("ASCII\0\0\0the last ferry", 22))
        .shorts(Exif, 0xA001, {1})
        .ascii(Exif, 0xA004, "DSC00001.WAV")
        .rationals(Exif, 0xA20E, {{2272000, 224}})
        .rationals(Exif, 0xA20F, {{1704000, 168}})
        .shorts(Exif, 0xA217, {2});
    for (const quint16 tag : {quint16(0xA402), quint16(0xA403), quint16(0xA406), quint16(0xA407),
                              quint16(0xA408), quint16(0xA409), quint16(0xA40A), quint16(0xA40C)}) {
        photo.shorts(Exif, tag, {1});
    }
    photo.rationals(Exif, 0xA404, {{100, 100}})
        .shorts(Exif, 0xA405, {35})
        .ascii(Exif, 0xA420, "0123456789abcdef0123456789abcdef");
    addPosition(photo);
    photo.thumbnail(lumi::test::ExifBuilder::jpeg(160, 120, 0x607080));
    return photo;
}

/// Every row of every group. \return the characters of all texts together
qsizetype showRows(const QString &path)
{
    FPVExifFields fields(path);
    qsizetype characters = 0;
    for (int group = 0; group < kGroups; ++group) {
        fields.setGroup(group);
        for (int row = 0; row < fields.rowCount(); ++row) {
            characters += fields.valueText(row, true).size();
        }
    }
    return characters;
}

void addLength(ExifEntry *entry, void *characters)
{
    char text[256];
    exif_entry_get_value(entry, text, sizeof text);
    *static_cast<qsizetype *>(characters) += static_cast<qsizetype>(qstrlen(text));
}

void showContent(ExifContent *content, void *characters)
{
    exif_content_foreach_entry(content, addLength, characters);
}

/// Every entry of every directory. \return the characters of all texts together
qsizetype showEntries(const QByteArray &path)
{
    ExifData *data = exif_data_new_from_file(path.constData());
    qsizetype characters = 0;
    if (data != nullptr) {
        exif_data_foreach_content(data, showContent, &characters);
        exif_data_unref(data);
    }
    return characters;
}

template <class Show> void showAll(const Show &show)
{
    for (int i = 0; i < kPhotosARound; ++i) {
        if (show() == 0) {
            std::abort();
        }
    }
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::exifTextRows(const QString &folder)
{
    const QString path = folder + QStringLiteral("/fields.jpg");
    if (!fullBlock().write(path)) {
        return {};
    }
    const QByteArray name = QFile::encodeName(path);
    return {compare(
        {"Exif block of a photo, all six groups as text, 100 times",
         "libexif, every entry of the same photo as text", 1.0, kRounds},
        [&path] {
            showAll([&path] {
                return showRows(path);
            });
        },
        [&name] {
            showAll([&name] {
                return showEntries(name);
            });
        })};
}

// SPDX-License-Identifier: MIT
// Makes JPEG files of many kinds for tests, and decodes them with libjpeg as a reference. Adjacent
// pixels differ, so a pixel in a wrong place is detected.
#pragma once

#include <QByteArray>
#include <QSize>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace lumi::test {

/// The words of a text.
[[nodiscard]] QStringList words(const char *text);

struct JpegKind
{
    QSize size{83, 61};
    int components = 3;
    QSize sampling{2, 2}; ///< of the first of three components; that of the others is 1 x 1
    bool ycck = false;    ///< of four components: YCCK in the file instead of CMYK
    bool progressive = false;
    bool arithmetic = false;
    bool separateScans = false; ///< sequential, one scan a component
    int progressiveScans = 0;   ///< this many scans instead of the usual ten, at most 757
    int restartInterval = 0;    ///< in rows of blocks
    int quality = 90;
    bool plain = false; ///< one colour: for large pictures
};

[[nodiscard]] QByteArray makeJpeg(const JpegKind &kind);
/// A gray arithmetic-coded picture with this many scans, at least three. The last one is repeated
/// in the file: it visits each coefficient of each block and takes one bit for each block.
[[nodiscard]] QByteArray makeArithmeticBomb(QSize size, int scans);
/// Writes a file. Returns its path.
QString writeJpeg(const QString &path, const JpegKind &kind);

/// The same file with another size in its frame header.
[[nodiscard]] QByteArray withSize(QByteArray jpeg, int width, int height);

/// Whether a file of this length ends within a segment, including the headers of scans. The added
/// end marker is then read as a part of the segment.
[[nodiscard]] bool cutsASegment(const QByteArray &jpeg, qsizetype length);

/// Lines as libjpeg gives them with the fast transform.
struct Decoded
{
    QSize size;
    int components = 0;
    std::vector<std::uint8_t> samples;

    [[nodiscard]] const std::uint8_t *at(int x, int y) const;
};

[[nodiscard]] Decoded referenceDecode(const QByteArray &jpeg, int denominator = 1);

/// The pixel of the turned raster that these samples must become.
[[nodiscard]] std::uint32_t expectedPixel(const Decoded &decoded, int x, int y, int depth);

/// The place of the first wrong pixel of a raster as text, empty if all of the first lines
/// photo lines are right and the rest is black.
[[nodiscard]] QString rasterFault(const uchar *raster, const Decoded &decoded, int depth,
                                  int lines);

} // namespace lumi::test

// SPDX-License-Identifier: MIT
#include "tests/items/JpegMaker.h"

#include <QFile>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

namespace lumi::test {

namespace {

/// On an error libjpeg's own handler ends the process.
struct Compressor
{
    Compressor()
    {
        info.err = jpeg_std_error(&errors);
        jpeg_create_compress(&info);
        jpeg_mem_dest(&info, &bytes, &length);
    }

    ~Compressor()
    {
        jpeg_destroy_compress(&info);
        std::free(bytes); // NOLINT(cppcoreguidelines-no-malloc): libjpeg's allocation
    }

    Compressor(const Compressor &) = delete;
    Compressor &operator=(const Compressor &) = delete;

    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    unsigned char *bytes = nullptr;
    unsigned long length = 0;
};

void setColours(jpeg_compress_struct *info, const JpegKind &kind)
{
    info->input_components = kind.components;
    switch (kind.components) {
    case 1:
        info->in_color_space = JCS_GRAYSCALE;
        break;
    case 3:
        info->in_color_space = JCS_RGB;
        break;
    case 4:
        info->in_color_space = JCS_CMYK;
        break;
    default:
        info->in_color_space = JCS_UNKNOWN;
    }
    jpeg_set_defaults(info);
    if (kind.ycck) {
        jpeg_set_colorspace(info, JCS_YCCK);
    }
    if (kind.components == 3) {
        info->comp_info[0].h_samp_factor = kind.sampling.width();
        info->comp_info[0].v_samp_factor = kind.sampling.height();
    }
}

jpeg_scan_info scan(int component, int from, int to, int high, int low)
{
    return {1, {component, 0, 0, 0}, from, to, high, low};
}

/// All DC values, then each coefficient of each component alone, then one bit more at a time.
std::vector<jpeg_scan_info> manyScans(int components, int count)
{
    constexpr int kFirstBit = 3;
    std::vector<jpeg_scan_info> scans;
    scans.reserve(static_cast<std::size_t>(count));
    for (int component = 0; component < components; ++component) {
        scans.push_back(scan(component, 0, 0, 0, 0));
    }
    for (int low = kFirstBit; low >= 0; --low) {
        for (int component = 0; component < components; ++component) {
            for (int k = 1; k < DCTSIZE2; ++k) {
                scans.push_back(scan(component, k, k, low == kFirstBit ? 0 : low + 1, low));
            }
        }
    }
    scans.resize(static_cast<std::size_t>(count));
    return scans;
}

std::uint8_t sample(int x, int y, int component)
{
    return static_cast<std::uint8_t>(x * 5 + y * 11 + component * 67 + (x * y) % 23);
}

void writeLines(jpeg_compress_struct *info, const JpegKind &kind)
{
    std::vector<JSAMPLE> line(static_cast<std::size_t>(kind.size.width() * kind.components), 93);
    while (info->next_scanline < info->image_height) {
        const int y = static_cast<int>(info->next_scanline);
        for (std::size_t i = 0; !kind.plain && i < line.size(); ++i) {
            const int at = static_cast<int>(i);
            line[i] = sample(at / kind.components, y, at % kind.components);
        }
        JSAMPROW row = line.data();
        jpeg_write_scanlines(info, &row, 1);
    }
}

} // namespace

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QByteArray makeJpeg(const JpegKind &kind)
{
    Compressor compressor;
    jpeg_compress_struct *info = &compressor.info;
    info->image_width = static_cast<JDIMENSION>(kind.size.width());
    info->image_height = static_cast<JDIMENSION>(kind.size.height());
    setColours(info, kind);
    jpeg_set_quality(info, kind.quality, TRUE);
    info->arith_code = kind.arithmetic ? TRUE : FALSE;
    info->restart_in_rows = kind.restartInterval;
    std::vector<jpeg_scan_info> scans;
    if (kind.progressive) {
        jpeg_simple_progression(info);
    } else if (kind.progressiveScans > 0) {
        scans = manyScans(kind.components, kind.progressiveScans);
    } else if (kind.separateScans) {
        for (int component = 0; component < kind.components; ++component) {
            scans.push_back(scan(component, 0, DCTSIZE2 - 1, 0, 0));
        }
    }
    if (!scans.empty()) {
        info->scan_info = scans.data();
        info->num_scans = static_cast<int>(scans.size());
    }
    jpeg_start_compress(info, TRUE);
    writeLines(info, kind);
    jpeg_finish_compress(info);
    return {reinterpret_cast<const char *>(compressor.bytes),
            static_cast<qsizetype>(compressor.length)};
}

QByteArray makeArithmeticBomb(QSize size, int scans)
{
    Compressor compressor;
    jpeg_compress_struct *info = &compressor.info;
    info->image_width = static_cast<JDIMENSION>(size.width());
    info->image_height = static_cast<JDIMENSION>(size.height());
    setColours(info, {.components = 1});
    info->arith_code = TRUE;
    const jpeg_scan_info script[]
        = {scan(0, 0, 0, 0, 0), scan(0, 1, 63, 0, 1), scan(0, 1, 63, 1, 0)};
    info->scan_info = script;
    info->num_scans = 3;
    jpeg_start_compress(info, TRUE);
    const auto wave = [](int at) {
        return std::cos((2 * at + 1) * 7 * M_PI / 16);
    };
    std::vector<JSAMPLE> line(static_cast<std::size_t>(size.width()));
    while (info->next_scanline < info->image_height) {
        // The finest pattern of a block: all coefficients but the last are zero.
        const double y = wave(static_cast<int>(info->next_scanline));
        for (int x = 0; x < size.width(); ++x) {
            line[static_cast<std::size_t>(x)] = static_cast<JSAMPLE>(128 + 120 * wave(x) * y);
        }
        JSAMPROW row = line.data();
        jpeg_write_scanlines(info, &row, 1);
    }
    jpeg_finish_compress(info);
    const QByteArray bytes(reinterpret_cast<const char *>(compressor.bytes),
                           static_cast<qsizetype>(compressor.length));
    const qsizetype last = bytes.lastIndexOf("\xff\xda");
    return bytes.first(last) + bytes.mid(last).chopped(2).repeated(scans - 2) + bytes.last(2);
}

QString writeJpeg(const QString &path, const JpegKind &kind)
{
    const QByteArray bytes = makeJpeg(kind);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("a test photo cannot be written");
    }
    return path;
}

QByteArray withSize(QByteArray jpeg, int width, int height)
{
    for (qsizetype at = 2; at + 9 < jpeg.size();) {
        const auto marker = static_cast<std::uint8_t>(jpeg[at + 1]);
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8
            && marker != 0xCC;
        if (isFrame) {
            jpeg[at + 5] = static_cast<char>(height >> 8);
            jpeg[at + 6] = static_cast<char>(height);
            jpeg[at + 7] = static_cast<char>(width >> 8);
            jpeg[at + 8] = static_cast<char>(width);
            return jpeg;
        }
        at += 2 + (static_cast<std::uint8_t>(jpeg[at + 2]) << 8)
            + static_cast<std::uint8_t>(jpeg[at + 3]);
    }
    qFatal("no frame header");
}

bool cutsASegment(const QByteArray &jpeg, qsizetype length)
{
    for (qsizetype at = 2; at + 4 <= jpeg.size();) {
        const qsizetype end
            = at + 2 + (static_cast<uchar>(jpeg[at + 2]) << 8) + static_cast<uchar>(jpeg[at + 3]);
        if (length > at && length < end) {
            return true;
        }
        const bool isScan = jpeg[at + 1] == '\xda';
        at = end;
        while (isScan && at + 2 < jpeg.size()) {
            const auto next = static_cast<uchar>(jpeg[at + 1]);
            if (jpeg[at] == '\xff' && next != 0 && (next & 0xF8) != 0xD0) {
                break;
            }
            ++at;
        }
    }
    return false;
}

const std::uint8_t *Decoded::at(int x, int y) const
{
    return samples.data()
        + (static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width())
           + static_cast<std::size_t>(x))
        * static_cast<std::size_t>(components);
}

Decoded referenceDecode(const QByteArray &jpeg, int denominator)
{
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    // Warnings about truncated files are not printed.
    errors.output_message = [](j_common_ptr) {};
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char *>(jpeg.constData()),
                 static_cast<unsigned long>(jpeg.size()));
    jpeg_read_header(&info, TRUE);
    info.scale_num = 1;
    info.scale_denom = static_cast<unsigned>(denominator);
    info.dct_method = JDCT_IFAST;
    jpeg_start_decompress(&info);
    Decoded decoded;
    decoded.size = QSize(static_cast<int>(info.output_width), static_cast<int>(info.output_height));
    decoded.components = info.output_components;
    const std::size_t stride
        = std::size_t(info.output_width) * static_cast<std::size_t>(info.output_components);
    decoded.samples.resize(stride * info.output_height);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = decoded.samples.data() + stride * info.output_scanline;
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_destroy_decompress(&info);
    return decoded;
}

std::uint32_t expectedPixel(const Decoded &decoded, int x, int y, int depth)
{
    const std::uint8_t *s = decoded.at(x, y);
    if (depth == 32 && decoded.components == 4) {
        return std::uint32_t(s[0]) | std::uint32_t(s[1]) << 8 | std::uint32_t(s[2]) << 16
            | std::uint32_t(s[3]) << 24;
    }
    const int first = decoded.components == 4 ? 1 : 0;
    const int step = decoded.components == 1 ? 0 : 1;
    const std::uint32_t r = s[first];
    const std::uint32_t g = s[first + step];
    const std::uint32_t b = s[first + 2 * step];
    if (depth == 16) {
        return (r >> 3) << 11 | (g >> 2) << 5 | b >> 3;
    }
    return 0xFF000000U | r << 16 | g << 8 | b;
}

QString rasterFault(const uchar *raster, const Decoded &decoded, int depth, int lines)
{
    const int width = decoded.size.width();
    const int height = decoded.size.height();
    const std::uint32_t black = depth == 16 ? 0 : 0xFF000000U;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const qsizetype index = qsizetype(x) * height + (height - 1 - y);
            const std::uint32_t found = depth == 16
                ? reinterpret_cast<const std::uint16_t *>(raster)[index]
                : reinterpret_cast<const std::uint32_t *>(raster)[index];
            const std::uint32_t wanted = y < lines ? expectedPixel(decoded, x, y, depth) : black;
            if (found != wanted) {
                return QString::asprintf("column %d line %d: %08x instead of %08x", x, y, found,
                                         wanted);
            }
        }
    }
    return {};
}

} // namespace lumi::test

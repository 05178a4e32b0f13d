// SPDX-License-Identifier: MIT
// One libjpeg decompressor on one file, from the opening to the last line. libjpeg reports errors
// by a long jump. Each function that calls it catches the jump, has nothing to unwind and returns
// false. After a false the session can only be destroyed.
// A few hundred bytes can claim hundreds of scans over a huge picture, so the number of scans and
// the blocks that they read are limited.
// Owns: the open file and all memory of libjpeg.
#pragma once

#include "items/jpegSource.h"
#include "platform/files/fileCalls.h"

#include <QSize>
#include <QString>

#include <csetjmp>
#include <memory>

namespace lumi {

/// What a photo is decoded for. ScreenInPieces leaves the reading of several scans to
/// readAhead().
enum class DecodeFor { Thumbnail, Screen, ScreenInPieces };

class JpegSession
{
public:
    /// Null if memory is short. A file that cannot be opened or is not a regular file is reported
    /// to the log and reads as empty.
    [[nodiscard]] static std::unique_ptr<JpegSession> open(const QString &path);
    ~JpegSession();
    JpegSession(const JpegSession &) = delete;
    JpegSession &operator=(const JpegSession &) = delete;

    [[nodiscard]] bool readHeader();
    /// Prepares the first line at 1 / denominator (1, 2, 4 or 8). A photo of several scans is read
    /// to its end for that: here or, in pieces, by readAhead().
    [[nodiscard]] bool start(int denominator, DecodeFor purpose);

    /// Whether readLines() may be called.
    [[nodiscard]] bool isReady() const { return m_isReady; }

    /// Reads for this long or until the first line is ready.
    [[nodiscard]] bool readAhead(int milliseconds);
    /// Memory, in KB, that libjpeg takes to hold a photo of several scans, 0 for any other. Known
    /// from readHeader() on; start() allocates it and the reading of the scans uses it.
    [[nodiscard]] qint64 heldKB();
    /// The next count lines, the first to lines, each further one stride bytes on. count must
    /// not go past the last line.
    [[nodiscard]] bool readLines(uchar *lines, qsizetype stride, int count);
    [[nodiscard]] bool finish();

    /// The photo's size, known from readHeader() on.
    [[nodiscard]] QSize imageSize() const;

    [[nodiscard]] bool isProgressive() const { return m_cinfo.progressive_mode != 0; }

    [[nodiscard]] bool hasSeveralScans();

    /// The decoded size and the samples of a pixel, known from start() on.
    [[nodiscard]] QSize outputSize() const;

    [[nodiscard]] int components() const { return m_cinfo.output_components; }

    [[nodiscard]] std::size_t lineBytes() const;

    /// The line that readLines() would begin with.
    [[nodiscard]] int nextLine() const { return static_cast<int>(m_cinfo.output_scanline); }

    /// Whether the failure was one of memory.
    [[nodiscard]] bool outOfMemory() const { return m_errors.outOfMemory; }

private:
    struct ErrorManager
    {
        jpeg_error_mgr manager; ///< must stay first: libjpeg knows only this
        std::jmp_buf jump;
        bool outOfMemory;
    };

    struct Progress
    {
        jpeg_progress_mgr manager; ///< must stay first: libjpeg knows only this
        int scan;                  ///< the latest one that was counted
        qint64 blocksLeft;         ///< how many more blocks may be read
    };

    JpegSession() = default;
    [[nodiscard]] bool create();
    [[nodiscard]] qint64 mostReads(DecodeFor purpose) const;
    [[nodiscard]] bool readOn();
    [[noreturn]] static void errorExit(j_common_ptr cinfo);
    [[noreturn]] static void leave(j_common_ptr cinfo, const char *message);
    static void outputMessage(j_common_ptr cinfo);
    static void limitScans(j_common_ptr cinfo);

    Descriptor m_file;
    my_jpeg_source_mgr m_source{};
    jpeg_decompress_struct m_cinfo{};
    ErrorManager m_errors{};
    Progress m_progress{};
    bool m_isReady = false;
};

} // namespace lumi

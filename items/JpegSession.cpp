// SPDX-License-Identifier: MIT
#include "items/JpegSession.h"

#include "items/photoScale.h"

#include <QElapsedTimer>
#include <QtGlobal>

#include <new>

#include <jerror.h>

namespace {

/// A photo has about ten scans.
constexpr int kMaxScans = 500;
/// A block of an arithmetic-coded photo can take this many times as long as another.
constexpr qint64 kArithmeticCost = 8;

qint64 roundedUp(JDIMENSION blocks, int factor)
{
    return (qint64{blocks} + factor - 1) / factor * factor;
}

/// The blocks of a component for which libjpeg allocates memory. A narrow photo with large sampling
/// factors uses only some of them. Decoding it takes as long as if it used all, because the used
/// blocks are far apart in memory.
qint64 blocksOf(const jpeg_component_info &component)
{
    return roundedUp(component.width_in_blocks, component.h_samp_factor)
        * roundedUp(component.height_in_blocks, component.v_samp_factor);
}

} // namespace

namespace lumi {

std::unique_ptr<JpegSession> JpegSession::open(const QString &path)
{
    // NOLINTNEXTLINE(modernize-make-unique): the constructor is private, and null is an answer
    std::unique_ptr<JpegSession> session(new (std::nothrow) JpegSession);
    if (!session) {
        return nullptr;
    }
    session->m_file = openRegular(path);
    if (!session->m_file.isOpen()) {
        qWarning("my_jpeg_source_mgr cannot read file %s", path.toUtf8().constData());
    }
    return session->create() ? std::move(session) : nullptr;
}

JpegSession::~JpegSession()
{
    jpeg_destroy_decompress(&m_cinfo);
}

bool JpegSession::create()
{
    m_cinfo.err = jpeg_std_error(&m_errors.manager);
    m_errors.manager.error_exit = errorExit;
    m_errors.manager.output_message = outputMessage;
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    jpeg_create_decompress(&m_cinfo);
    attachJpegSource(&m_cinfo, &m_source, m_file.get());
    m_progress.manager.progress_monitor = limitScans;
    m_cinfo.progress = &m_progress.manager;
    return true;
}

bool JpegSession::readHeader()
{
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    return jpeg_read_header(&m_cinfo, TRUE) == JPEG_HEADER_OK;
}

qint64 JpegSession::mostReads(DecodeFor purpose) const
{
    if (purpose != DecodeFor::Thumbnail) {
        return kScreenReads;
    }
    return m_cinfo.arith_code != 0 ? kThumbnailReads / kArithmeticCost : kThumbnailReads;
}

bool JpegSession::start(int denominator, DecodeFor purpose)
{
    m_progress.blocksLeft = mostReads(purpose);
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    m_cinfo.scale_num = 1;
    m_cinfo.scale_denom = static_cast<unsigned>(denominator);
    m_cinfo.dct_method = JDCT_IFAST;
    if (purpose == DecodeFor::ScreenInPieces) {
        m_cinfo.buffered_image = jpeg_has_multiple_scans(&m_cinfo);
    }
    const bool isStarted = jpeg_start_decompress(&m_cinfo) != 0;
    m_isReady = isStarted && m_cinfo.buffered_image == FALSE;
    return isStarted;
}

bool JpegSession::readAhead(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    bool isGood = true;
    while (isGood && !m_isReady && !clock.hasExpired(milliseconds)) {
        isGood = readOn();
    }
    return isGood;
}

/// Reads one row of blocks of the present scan, or the data between two scans. Lines are made from
/// the last scan only: the others are coarser versions of the same picture.
bool JpegSession::readOn()
{
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    limitScans(reinterpret_cast<j_common_ptr>(&m_cinfo));
    if (jpeg_consume_input(&m_cinfo) != JPEG_REACHED_EOI) {
        return true;
    }
    m_isReady = jpeg_start_output(&m_cinfo, m_cinfo.input_scan_number) != 0;
    return m_isReady;
}

qint64 JpegSession::heldKB()
{
    if (!hasSeveralScans()) {
        return 0;
    }
    qint64 blocks = 0;
    for (int i = 0; i < m_cinfo.num_components; ++i) {
        blocks += blocksOf(m_cinfo.comp_info[i]);
    }
    static_assert(sizeof(JBLOCK) == kBlockBytes);
    return blocks * kBlockBytes >> 10;
}

bool JpegSession::readLines(uchar *lines, qsizetype stride, int count)
{
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        JSAMPROW row = lines + i * stride;
        jpeg_read_scanlines(&m_cinfo, &row, 1);
    }
    return true;
}

bool JpegSession::finish()
{
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    return jpeg_finish_decompress(&m_cinfo) != 0;
}

QSize JpegSession::imageSize() const
{
    return {static_cast<int>(m_cinfo.image_width), static_cast<int>(m_cinfo.image_height)};
}

bool JpegSession::hasSeveralScans()
{
    if (setjmp(m_errors.jump) != 0) {
        return false;
    }
    return jpeg_has_multiple_scans(&m_cinfo) != 0;
}

QSize JpegSession::outputSize() const
{
    return {static_cast<int>(m_cinfo.output_width), static_cast<int>(m_cinfo.output_height)};
}

std::size_t JpegSession::lineBytes() const
{
    return std::size_t(m_cinfo.output_width) * static_cast<std::size_t>(m_cinfo.output_components);
}

void JpegSession::errorExit(j_common_ptr cinfo)
{
    auto *errors = reinterpret_cast<ErrorManager *>(cinfo->err);
    errors->outOfMemory = cinfo->err->msg_code == JERR_OUT_OF_MEMORY;
    char message[JMSG_LENGTH_MAX];
    cinfo->err->format_message(cinfo, message);
    leave(cinfo, message);
}

void JpegSession::leave(j_common_ptr cinfo, const char *message)
{
    qWarning("%s", message);
    std::longjmp(reinterpret_cast<ErrorManager *>(cinfo->err)->jump, 1);
}

void JpegSession::outputMessage(j_common_ptr cinfo)
{
    char message[JMSG_LENGTH_MAX];
    cinfo->err->format_message(cinfo, message);
    qWarning("%s", message);
}

/// Counts the blocks of each scan before they are read.
void JpegSession::limitScans(j_common_ptr cinfo)
{
    const auto *decompressor = reinterpret_cast<j_decompress_ptr>(cinfo);
    auto *progress = reinterpret_cast<Progress *>(cinfo->progress);
    if (decompressor->input_scan_number == progress->scan) {
        return;
    }
    progress->scan = decompressor->input_scan_number;
    for (int i = 0; i < decompressor->comps_in_scan; ++i) {
        progress->blocksLeft -= blocksOf(*decompressor->cur_comp_info[i]);
    }
    if (progress->scan > kMaxScans || progress->blocksLeft < 0) {
        leave(cinfo, "JPEG file with too many scans");
    }
}

} // namespace lumi

// SPDX-License-Identifier: MIT
#include "exif/read/FPVFile.h"

#include <QFileInfo>

#include <limits>
#include <new>

namespace {

constexpr int kWindowSize = 1024;
constexpr qint64 kLargestPlace = std::numeric_limits<int>::max();

} // namespace

FPVFile::FPVFile(const QString &path)
{
    if (!path.isEmpty()) {
        static_cast<void>(openFile(path));
    }
}

FPVFile::~FPVFile()
{
    FPVFile::close();
}

bool FPVFile::open(const QString &path)
{
    close();
    return openFile(path);
}

bool FPVFile::openFile(const QString &path)
{
    // Opening a pipe or a device could block forever.
    if (QFileInfo(path).isFile()) {
        m_file = std::fopen(path.toUtf8().constData(), "rb");
    }
    if (!m_file) {
        qWarning("FPVFile::open() cannot open %s", path.toLatin1().constData());
    }
    return m_file != nullptr;
}

void FPVFile::close()
{
    if (m_file) {
        std::fclose(m_file);
        m_file = nullptr;
    }
    m_buffer.reset();
    m_position = 0;
    m_length = 0;
    m_base = 0;
}

bool FPVFile::atEnd() const
{
    return m_file && std::feof(m_file) != 0 && m_position >= m_length;
}

quint8 FPVFile::readByte()
{
    if (m_position >= m_length && (atEnd() || fill(kWindowSize, -1) <= 0)) {
        return 0;
    }
    return m_buffer[static_cast<std::size_t>(m_position++)];
}

quint16 FPVFile::read16()
{
    const unsigned one = readByte();
    const unsigned two = readByte();
    return static_cast<quint16>(m_littleEndian ? one | two << 8 : one << 8 | two);
}

quint32 FPVFile::read32()
{
    const quint32 one = read16();
    const quint32 two = read16();
    return m_littleEndian ? one | two << 16 : one << 16 | two;
}

const uchar *FPVFile::readBytes(int n)
{
    if (n < 1 || (n > m_length - m_position && fill(n, tell()) < 0)) {
        return nullptr;
    }
    const uchar *bytes = m_buffer.get() + m_position;
    m_position += n;
    return bytes;
}

int FPVFile::seek(qint64 place)
{
    const int before = tell();
    if (place >= m_base && place <= qint64(m_base) + m_length) {
        m_position = static_cast<int>(place - m_base);
    } else {
        fill(kWindowSize, place < 0 ? kLargestPlace : place);
    }
    return before;
}

int FPVFile::fill(int size, qint64 offset)
{
    if (!m_file || size <= 0) {
        return -1;
    }
    const qint64 wanted = offset < 0 ? std::ftell(m_file) : offset;
    const bool reachable = wanted >= 0 && wanted <= kLargestPlace - size;
    if (!reachable || std::fseek(m_file, static_cast<long>(wanted), SEEK_SET) != 0) {
        std::fseek(m_file, 0, SEEK_END);
    }
    m_base = reachable ? static_cast<int>(wanted) : 0;
    m_position = 0;
    m_length = 0;
    m_buffer.reset(new (std::nothrow) uchar[static_cast<std::size_t>(size)]());
    if (!m_buffer) {
        return -1;
    }
    m_length
        = static_cast<int>(std::fread(m_buffer.get(), 1, static_cast<std::size_t>(size), m_file));
    return m_length;
}

std::span<const char> FPVFile::rest() const
{
    if (m_position >= m_length) {
        return {};
    }
    return {reinterpret_cast<const char *>(m_buffer.get()) + m_position,
            static_cast<std::size_t>(m_length - m_position)};
}

// SPDX-License-Identifier: MIT
// Reads bytes and numbers of a set byte order from a file, through a window in memory. Bytes behind
// the end of the file, or behind the largest int, read as 0.
// Owns: the open file and the window.
#pragma once

#include <QString>

#include <cstdio>
#include <memory>
#include <span>

class FPVFile
{
public:
    /// Opens path unless it is empty.
    explicit FPVFile(const QString &path);
    FPVFile(const FPVFile &) = delete;
    FPVFile &operator=(const FPVFile &) = delete;
    virtual ~FPVFile();

    /// Closes the open file and opens path. False, with a warning in the log, if that fails.
    [[nodiscard]] virtual bool open(const QString &path);
    virtual void close();

    [[nodiscard]] bool isOpen() const { return m_file != nullptr; }

    /// True if the end of the file was reached and the whole window was read.
    [[nodiscard]] bool atEnd() const;

    quint8 readByte();
    quint16 read16();
    quint32 read32();

    /// n bytes, valid until the next read. Bytes behind the end of the file are 0. Null if n is
    /// below 1, the file is closed, or there is no memory.
    const uchar *readBytes(int n);

    /// The position of the next byte in the file.
    [[nodiscard]] int tell() const { return m_base + m_position; }

    /// Moves to place and returns the old position. Behind the largest int, all bytes are 0.
    int seek(qint64 place);

    /// Reads a new window of size bytes from offset, or from the current position of the file if
    /// offset is negative. Returns the number of bytes read; -1 if the file is closed, size is
    /// below 1 or there is no memory.
    int fill(int size, qint64 offset);

    void setLittleEndian(bool littleEndian) { m_littleEndian = littleEndian ? 1 : 0; }

protected:
    /// The unread bytes of the window.
    [[nodiscard]] std::span<const char> rest() const;

private:
    [[nodiscard]] bool openFile(const QString &path);

    std::FILE *m_file = nullptr;
    std::unique_ptr<uchar[]> m_buffer;
    int m_position = 0;
    int m_length = 0;
    int m_base = 0;
    int m_littleEndian = 1;
};

// SPDX-License-Identifier: MIT
// A byte reader with a window: the file is taken in pieces and numbers are put together byte
// by byte in the byte order that was set. What lies behind the end of the file, or where no
// int can point, reads as zero.
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

    /// Closes what was open and opens path. False, with a warning, when that fails.
    [[nodiscard]] virtual bool open(const QString &path);
    virtual void close();

    [[nodiscard]] bool isOpen() const { return m_file != nullptr; }

    /// True once the end of the file was met and the window is used up.
    [[nodiscard]] bool atEnd() const;

    quint8 readByte();
    quint16 read16();
    quint32 read32();

    /// n bytes, lent until the next read; a short file leaves zeros at the end. Null for a
    /// count below 1, in a closed file, and when the window cannot be had.
    const uchar *readBytes(int n);

    /// The place of the next byte in the file.
    [[nodiscard]] int tell() const { return m_base + m_position; }

    /// Goes to place and returns the place before. Behind the largest int nothing but zeros
    /// is read.
    int seek(qint64 place);

    /// Reads a new window of size bytes from offset, or from where the file stands for a
    /// negative one. The number of bytes read, or -1 when there is no memory or nothing to do.
    int fill(int size, qint64 offset);

    void setLittleEndian(bool littleEndian) { m_littleEndian = littleEndian ? 1 : 0; }

protected:
    /// What the window still holds from the present place on, without reading further.
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

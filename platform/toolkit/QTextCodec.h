// SPDX-License-Identifier: MIT
// Japanese texts of unknown encoding: decodes Shift JIS, EUC, JIS and UTF-8, and estimates how
// likely each encoding is. Cameras write comments without naming their encoding.
// The C library's converter does the decoding. The likelihood is computed here from the kinds of
// characters, since a text read in the wrong encoding has rare kanji and half-width kana, if it can
// be read at all.
#pragma once

#include <QByteArray>
#include <QString>

class QTextCodec
{
public:
    QTextCodec(const QTextCodec &) = delete;
    QTextCodec &operator=(const QTextCodec &) = delete;
    virtual ~QTextCodec() = default;

    /// name: "SJIS", "eucJP", "JIS" or "UTF-8". Null for any other. The codecs live as long
    /// as the process.
    static QTextCodec *codecForName(const QByteArray &name);

    [[nodiscard]] virtual QByteArray name() const = 0;

    /// -1 when the bytes can't be of this encoding: a NUL, a broken or cut sequence. Otherwise
    /// the higher the likelier, to be compared between codecs only; texts of plain ASCII get
    /// the same from all. 0 for an empty text.
    [[nodiscard]] virtual int heuristicContentMatch(const char *bytes, int length) const = 0;

    /// Each byte that can't be read becomes U+FFFD.
    [[nodiscard]] virtual QString toUnicode(const char *bytes, int length) const = 0;

protected:
    QTextCodec() = default;
};

// SPDX-License-Identifier: MIT
#include "platform/toolkit/QTextCodec.h"

#include <QtEndian>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstring>
#include <iterator>

#include <iconv.h>

namespace {

/// Longer than any character of the four encodings with its escape sequences. The converter reads
/// all of its input, even if there is no room for the output.
constexpr std::size_t kWindow = 16;
constexpr QChar kReplacement(0xFFFD);

class Converter
{
public:
    Converter(const char *to, const char *from)
        : m_handle(iconv_open(to, from))
    { }

    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    ~Converter()
    {
        if (isOpen()) {
            iconv_close(m_handle);
        }
    }

    /// False when the C library was installed without this encoding.
    [[nodiscard]] bool isOpen() const { return m_handle != iconv_t(-1); }

    /// Like iconv(): advances its arguments. After an error some input is left.
    void convert(const char *&in, std::size_t &inLeft, char *&out, std::size_t &outLeft)
    {
        // The interface lacks a const; the input is only read.
        iconv(m_handle, const_cast<char **>(&in), &inLeft, &out, &outLeft);
    }

    void reset() { iconv(m_handle, nullptr, nullptr, nullptr, nullptr); }

private:
    iconv_t m_handle;
};

/// Reads a text character by character.
class Reader
{
public:
    Reader(const char *charset, const char *bytes, int length)
        : m_converter("UTF-32LE", charset)
        , m_at(bytes)
        , m_left(length > 0 && m_converter.isOpen() ? static_cast<std::size_t>(length) : 0)
    { }

    [[nodiscard]] bool atEnd() const { return m_left == 0; }

    /// Reads the next character and its size in bytes, with the escape sequences before it. False
    /// at a byte that can't be read. A text may end with an escape sequence: then the result is
    /// true and the size 0.
    [[nodiscard]] bool next(char32_t &character, int &size)
    {
        std::array<char, sizeof(char32_t)> code = {};
        const std::size_t before = m_left;
        std::size_t outLeft = code.size();
        while (m_left > 0 && outLeft > 0) {
            const std::size_t given = std::min(m_left, kWindow);
            std::size_t inLeft = given;
            char *out = code.data();
            m_converter.convert(m_at, inLeft, out, outLeft);
            m_left -= given - inLeft;
            if (outLeft > 0 && inLeft == given) {
                return false;
            }
        }
        size = outLeft == 0 ? static_cast<int>(before - m_left) : 0;
        character = qFromLittleEndian<char32_t>(code.data());
        return true;
    }

private:
    Converter m_converter;
    const char *m_at;
    std::size_t m_left;
};

struct Weight
{
    char32_t first;
    char32_t last;
    int weight;
};

constexpr int kKanjiLevel1 = 4;
constexpr int kKanjiLevel2 = 1;
constexpr int kJunk = -4;

/// The points that a byte of such a character gives to the encoding. A text that is decoded in a
/// wrong encoding has hardly any frequent characters.
constexpr Weight kWeights[] = {
    {0x0009, 0x000A, 2},     // tab, line feed
    {0x000D, 0x000D, 2},     // carriage return
    {0x0000, 0x001F, kJunk}, // other controls
    {0x0020, 0x007E, 2},     // ASCII
    {0x007F, 0x009F, kJunk}, // delete, further controls
    {0x3000, 0x303F, 4},     // signs between kanji
    {0x3041, 0x30FF, 5},     // kana
    {0xE000, 0xF8FF, kJunk}, // private use: no characters
    {0xFF01, 0xFF60, 3},     // full-width
    {0xFF61, 0xFF9F, 1},     // half-width kana
    {0xFFE0, 0xFFE6, 3},     // full-width signs
};
/// Letters of other scripts, symbols, frames.
constexpr int kOther = 3;

constexpr bool isKanji(char32_t character)
{
    return (character >= 0x3400 && character <= 0x9FFF)
        || (character >= 0xF900 && character <= 0xFAFF) || character >= 0x20000;
}

/// The two levels of kanji are blocks of the Japanese standard's table, and so of the EUC code.
class KanjiLevels
{
public:
    KanjiLevels()
        : m_converter("EUC-JP", "UTF-32LE")
    { }

    [[nodiscard]] int weight(char32_t character)
    {
        std::array<char, sizeof(char32_t)> code = {};
        qToLittleEndian(character, code.data());
        std::array<char, 4> euc = {};
        const char *in = code.data();
        std::size_t inLeft = code.size();
        char *out = euc.data();
        std::size_t outLeft = euc.size();
        m_converter.convert(in, inLeft, out, outLeft);
        if (outLeft != euc.size()) {
            m_converter.reset();
        }
        const int lead = static_cast<unsigned char>(euc[0]);
        return lead >= 0xB0 && lead <= 0xCF ? kKanjiLevel1 : kKanjiLevel2;
    }

private:
    Converter m_converter;
};

int weightOf(char32_t character, KanjiLevels &levels)
{
    if (isKanji(character)) {
        return levels.weight(character);
    }
    const auto *const found
        = std::find_if(std::begin(kWeights), std::end(kWeights), [character](const Weight &row) {
              return character >= row.first && character <= row.last;
          });
    return found == std::end(kWeights) ? kOther : found->weight;
}

class IconvCodec : public QTextCodec
{
public:
    IconvCodec(const char *name, const char *charset, int multiByteHalves)
        : m_name(name)
        , m_charset(charset)
        , m_multiByteHalves(multiByteHalves)
    { }

    [[nodiscard]] QByteArray name() const override { return m_name; }

    [[nodiscard]] int heuristicContentMatch(const char *bytes, int length) const override;
    [[nodiscard]] QString toUnicode(const char *bytes, int length) const override;

private:
    const char *m_name;
    const char *m_charset;
    int m_multiByteHalves; ///< factor of characters of several bytes, in halves
};

int IconvCodec::heuristicContentMatch(const char *bytes, int length) const
{
    if (length > 0 && std::memchr(bytes, '\0', static_cast<std::size_t>(length)) != nullptr) {
        return -1;
    }
    Reader reader(m_charset, bytes, length);
    KanjiLevels levels;
    qint64 halves = 0;
    while (!reader.atEnd()) {
        char32_t character = 0;
        int size = 0;
        if (!reader.next(character, size)) {
            return -1;
        }
        if (size > 0) {
            halves
                += qint64(size) * weightOf(character, levels) * (size > 1 ? m_multiByteHalves : 2);
        }
    }
    return static_cast<int>(std::clamp<qint64>(halves / 2, 0, INT_MAX));
}

QString IconvCodec::toUnicode(const char *bytes, int length) const
{
    constexpr bool kLittle = Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
    Converter converter(kLittle ? "UTF-16LE" : "UTF-16BE", m_charset);
    if (length <= 0 || !converter.isOpen()) {
        return QString();
    }
    // No byte gives more than one unit: characters of two units take two bytes at least.
    QString text(length, kReplacement);
    char *out = reinterpret_cast<char *>(text.data());
    auto inLeft = static_cast<std::size_t>(length);
    std::size_t outLeft = inLeft * sizeof(QChar);
    const char *in = bytes;
    converter.convert(in, inLeft, out, outLeft);
    while (inLeft > 0 && outLeft >= sizeof(QChar)) {
        ++in;
        --inLeft;
        out += sizeof(QChar);
        outLeft -= sizeof(QChar);
        converter.convert(in, inLeft, out, outLeft);
    }
    text.chop(static_cast<qsizetype>(outLeft / sizeof(QChar)));
    return text;
}

} // namespace

QTextCodec *QTextCodec::codecForName(const QByteArray &name)
{
    // The variant of Windows, because the other one reads a backslash as a yen sign and a tilde as
    // an overline. ASCII counts the same everywhere. Characters of more bytes count more.
    static std::array<IconvCodec, 4> codecs = {{
        {"SJIS", "CP932", 2},
        {"eucJP", "EUC-JP", 2},
        {"JIS", "ISO-2022-JP-3", 2},
        {"UTF-8", "UTF-8", 3},
    }};
    auto *const found = std::find_if(codecs.begin(), codecs.end(), [&name](const auto &codec) {
        return codec.name() == name;
    });
    return found == codecs.end() ? nullptr : &*found;
}

// SPDX-License-Identifier: MIT
#include "exif/text/userComment.h"

#include "app/common/codecForContent.h"
#include "platform/toolkit/QTextCodec.h"

namespace {

constexpr qsizetype kMarkLength = 8;

QByteArray untilNul(const QByteArray &bytes)
{
    const qsizetype end = bytes.indexOf('\0');
    return end < 0 ? bytes : bytes.left(end);
}

QString guessedText(const QByteArray &text)
{
    const int length = static_cast<int>(text.size());
    const QTextCodec *codec = codecForContent(text.constData(), length);
    return codec ? codec->toUnicode(text.constData(), length) : QString();
}

} // namespace

QString lumi::userCommentText(const QByteArray &value)
{
    if (value.size() < kMarkLength) {
        return {};
    }
    const QByteArray mark = untilNul(value.left(kMarkLength));
    const QByteArray text = untilNul(value.mid(kMarkLength));
    if (mark == "UNICODE") {
        return QString::fromUtf8(text);
    }
    return mark == "ASCII" ? QString::fromLatin1(text) : guessedText(text);
}

// SPDX-License-Identifier: MIT
#include "app/common/codecForContent.h"

#include "platform/toolkit/QTextCodec.h"

#include <array>

namespace {

// Of equal scores the first one wins.
constexpr std::array<const char *, 4> kCandidates = {"SJIS", "eucJP", "JIS", "UTF-8"};

} // namespace

QTextCodec *codecForContent(const char *bytes, int length)
{
    QTextCodec *best = nullptr;
    int bestScore = 0;
    for (const char *name : kCandidates) {
        QTextCodec *codec = QTextCodec::codecForName(name);
        const int score = codec->heuristicContentMatch(bytes, length);
        if (score > bestScore) {
            best = codec;
            bestScore = score;
        }
    }
    return best;
}

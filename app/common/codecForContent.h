// SPDX-License-Identifier: MIT
// Guesses the encoding of a text.
#pragma once

class QTextCodec;

/// The codec that suits the bytes best among the three Japanese ones and UTF-8, or null if
/// none does. Lent; lives as long as the process.
[[nodiscard]] QTextCodec *codecForContent(const char *bytes, int length);

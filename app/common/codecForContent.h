// SPDX-License-Identifier: MIT
// Guesses the encoding of text that doesn't say its own.
#pragma once

class QTextCodec;

/// The codec that suits the bytes best among the three Japanese ones and UTF-8, or null if
/// none does. Lent; lives as long as the process.
[[nodiscard]] QTextCodec *codecForContent(const char *bytes, int length);

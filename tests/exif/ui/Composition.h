// SPDX-License-Identifier: MIT
// A text that an input method has composed in the focused field but not committed. The test program
// defines QInputMethod::commit() itself, because the test platform has no input method.
#pragma once

#include <QString>

namespace lumi::test {

/// Lasts until the commit or its destruction. Only one at a time.
class Composition
{
public:
    explicit Composition(const QString &text);
    ~Composition();
    Composition(const Composition &) = delete;
    Composition &operator=(const Composition &) = delete;
};

} // namespace lumi::test

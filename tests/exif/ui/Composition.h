// SPDX-License-Identifier: MIT
// A text that an input method has composed in the field with the focus, but not committed yet.
// It does so when it is asked to: this program's own version of that call stands before the
// toolkit's, which has no input method here to ask.
#pragma once

#include <QString>

namespace lumi::test {

/// Goes on from its making to the commit, or to its end. One at a time.
class Composition
{
public:
    explicit Composition(const QString &text);
    ~Composition();
    Composition(const Composition &) = delete;
    Composition &operator=(const Composition &) = delete;
};

} // namespace lumi::test

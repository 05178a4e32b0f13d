// SPDX-License-Identifier: MIT
#include "swap/SwapControl.h"

#include <algorithm>

namespace {

template <class Test> SwapBlock *findBlock(const SwapControl &control, Test test)
{
    const auto found = std::find_if(control.begin(), control.end(), test);
    return found == control.end() ? nullptr : *found;
}

} // namespace

SwapControl::SwapControl(const QString &folder, int id)
    : m_folder(folder)
    , m_id(id)
{
    setAutoDelete(true);
}

QString SwapControl::sourcePath(const QString &name) const
{
    return m_folder + QLatin1Char('/') + name;
}

SwapBlock *SwapControl::findKey(const QString &name, int param, signed char kind) const
{
    return findBlock(*this, [&](const SwapBlock *block) {
        return block->hasKey(name, param, kind);
    });
}

SwapBlock *SwapControl::findName(const QString &name) const
{
    return findBlock(*this, [&](const SwapBlock *block) {
        return block->sourceName() == name;
    });
}

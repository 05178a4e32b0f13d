// SPDX-License-Identifier: MIT
#include "tests/support/OrdinaryUser.h"

#include <QtGlobal>

#include <unistd.h>

namespace lumi::test {

namespace {

constexpr uid_t kNobody = 65534;

} // namespace

OrdinaryUser::OrdinaryUser()
    : m_wasRoot(::geteuid() == 0)
{
    if (m_wasRoot && ::setresuid(kNobody, kNobody, 0) != 0) {
        qFatal("cannot become an ordinary user");
    }
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_wasRoot && ::setresuid(0, 0, 0) != 0) {
        qFatal("cannot become root again");
    }
}

} // namespace lumi::test

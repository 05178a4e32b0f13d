// SPDX-License-Identifier: MIT
// For tests of missing permissions, which root would not notice.
#pragma once

namespace lumi::test {

/// While it lives, a process of root acts as an ordinary user, to whom permissions apply.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool m_wasRoot;
};

} // namespace lumi::test

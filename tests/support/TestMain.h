// SPDX-License-Identifier: MIT
// One executable holds the tests of one folder; its first argument names the class to run.
// Every run has a fresh private home, settings and runtime folder, so that no test can
// reach the photos or settings of the person who runs it, or depends on what is installed.
#pragma once

#include <QObject>

#include <functional>

namespace lumi::test {

using Factory = std::function<QObject *()>;

/// Registers a test class under its name; called before main by LUMI_TEST.
bool registerTest(const char *className, Factory factory);

template <typename Test> bool registerClass(const char *name)
{
    return registerTest(name, [] {
        return static_cast<QObject *>(new Test);
    });
}

} // namespace lumi::test

#define LUMI_TEST(Class)                                                                           \
    static const bool Class##Registered = lumi::test::registerClass<Class>(#Class);

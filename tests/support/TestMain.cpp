// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"

#include "platform/QPEApplication.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace {

std::map<std::string, lumi::test::Factory> &factories()
{
    static std::map<std::string, lumi::test::Factory> all;
    return all;
}

void setPrivateHome(const QString &home)
{
    qputenv("HOME", home.toLocal8Bit());
    for (const char *name :
         {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_RUNTIME_DIR", "XDG_DATA_HOME"}) {
        const QString folder = home + QLatin1Char('/') + QString::fromLatin1(name);
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name, folder.toLocal8Bit());
    }
    qunsetenv("LUMIVAULT_MACHINE");
}

} // namespace

bool lumi::test::registerTest(const char *className, Factory factory)
{
    return factories().emplace(className, std::move(factory)).second;
}

int main(int argc, char **argv)
{
    const auto found = factories().find(argc > 1 ? argv[1] : "");
    if (found == factories().end()) {
        std::fprintf(stderr, "usage: %s Test<Class> [options of the test library]\n", argv[0]);
        for (const auto &entry : factories()) {
            std::fprintf(stderr, "  %s\n", entry.first.c_str());
        }
        return 2;
    }
    const QTemporaryDir home;
    if (!home.isValid()) {
        std::fprintf(stderr, "no private home can be made\n");
        return 2;
    }
    setPrivateHome(home.path());
    QPEApplication app(argc, argv);
    const std::unique_ptr<QObject> test(found->second());
    // The class name is an argument for this function, not for Qt Test.
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeAt(1);
    return QTest::qExec(test.get(), arguments);
}

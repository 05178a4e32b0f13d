// SPDX-License-Identifier: MIT
#include "fuzz/FuzzInput.h"

#include "tests/support/FakeMachine.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr qint64 kMemoryKB = 65536;

QTemporaryDir &folder()
{
    static QTemporaryDir made;
    return made;
}

[[noreturn]] void giveUp(const char *why)
{
    std::fprintf(stderr, "%s\n", why);
    std::abort();
}

void dropMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/,
                 const QString & /*text*/)
{ }

} // namespace

void lumi::fuzz::begin()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!folder().isValid()) {
        giveUp("no private folder can be made");
    }
    qputenv("HOME", folder().path().toLocal8Bit());
    qInstallMessageHandler(dropMessage);
    static const QGuiApplication kApplication(argc, argv);
    lumi::test::FakeMachine::install()->setMemoryKB(kMemoryKB);
}

QString lumi::fuzz::inputFile(const std::uint8_t *data, std::size_t size, const char *name)
{
    QString path = folder().filePath(QString::fromUtf8(name));
    QFile file(path);
    const auto length = static_cast<qint64>(size);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || file.write(reinterpret_cast<const char *>(data), length) != length || !file.flush()) {
        giveUp("the input cannot be written");
    }
    return path;
}

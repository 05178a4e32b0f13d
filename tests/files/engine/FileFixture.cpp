// SPDX-License-Identifier: MIT
#include "tests/files/engine/FileFixture.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <filesystem>
#include <system_error>

#include <sys/stat.h>

namespace {

void mustWork(bool ok, const QString &what)
{
    if (!ok) {
        qFatal("cannot make %s", qPrintable(what));
    }
}

} // namespace

lumi::test::FileFixture::FileFixture()
{
    mustWork(m_folder.isValid(), QStringLiteral("a folder"));
    // Tests may act as another user.
    mustWork(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777)), m_folder.path());
}

lumi::test::FileFixture::~FileFixture()
{
    // The toolkit can't remove files whose names are not text.
    std::error_code error;
    std::filesystem::remove_all(QFile::encodeName(m_folder.path()).toStdString(), error);
}

QString lumi::test::FileFixture::path(const QString &name) const
{
    return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
}

QString lumi::test::FileFixture::make(const QString &name, const QByteArray &content) const
{
    makeFolder(QFileInfo(name).path());
    QFile file(path(name));
    mustWork(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), name);
    return path(name);
}

QString lumi::test::FileFixture::makeFolder(const QString &name) const
{
    mustWork(QDir().mkpath(path(name)), name);
    return path(name);
}

QString lumi::test::FileFixture::makeLink(const QString &name, const QString &target) const
{
    mustWork(QFile::link(target, path(name)), name);
    return path(name);
}

QString lumi::test::FileFixture::makePipe(const QString &name) const
{
    mustWork(::mkfifo(QFile::encodeName(path(name)).constData(), 0600) == 0, name);
    return path(name);
}

QByteArray lumi::test::FileFixture::content(const QString &name) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}

QStringList lumi::test::FileFixture::entries(const QString &folder) const
{
    QStringList found;
    const QString top = path(folder);
    QDirIterator walk(top, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString entry = walk.next();
        const bool isFolder = walk.fileInfo().isDir() && !walk.fileInfo().isSymLink();
        found.append(entry.mid(top.size() + 1) + QLatin1String(isFolder ? "/" : ""));
    }
    found.sort();
    return found;
}

QByteArray lumi::test::FileFixture::noise(int size)
{
    QRandomGenerator generator(7);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        byte = static_cast<char>(generator.generate());
    }
    return bytes;
}

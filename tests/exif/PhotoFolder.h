// SPDX-License-Identifier: MIT
// A folder of files for one test, gone with it.
#pragma once

#include "tests/support/ExifBuilder.h"

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

namespace lumi::test {

class PhotoFolder
{
public:
    /// Writes the bytes under that name and returns the path. A file that cannot be written
    /// fails the test.
    QString put(const QByteArray &bytes, const QString &name = QStringLiteral("photo.jpg"));
    QString put(const ExifBuilder &photo, const QString &name = QStringLiteral("photo.jpg"));

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Runs a program and returns what it printed; a program that is missing or fails makes
    /// the test fail and the answer empty.
    static QByteArray output(const QString &program, const QStringList &arguments);

private:
    QTemporaryDir m_folder;
};

/// The lines of a reference table of the tests, split at tabs.
[[nodiscard]] QList<QStringList> tableLines(const QString &name);

/// A photo with something in every directory, values of every type among them.
[[nodiscard]] ExifBuilder fullPhoto(ExifBuilder::Order order);

/// A photo whose second directory is missing.
[[nodiscard]] ExifBuilder plainPhoto(ExifBuilder::Order order);

/// Makes a row for each byte order, in a column "order".
void addOrders();

} // namespace lumi::test

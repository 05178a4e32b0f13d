// SPDX-License-Identifier: MIT
// A temporary folder with the files of a test.
#pragma once

#include "tests/support/ExifBuilder.h"

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

namespace lumi::test {

class PhotoFolder
{
public:
    /// Writes the file and returns its path. The test fails if it cannot be written.
    QString put(const QByteArray &bytes, const QString &name = QStringLiteral("photo.jpg"));
    QString put(const ExifBuilder &photo, const QString &name = QStringLiteral("photo.jpg"));

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Runs a program and returns its output. If it is missing or fails, the test fails and the
    /// output is empty.
    static QByteArray output(const QString &program, const QStringList &arguments);

private:
    QTemporaryDir m_folder;
};

/// The lines of a table among the test resources, split at tabs.
[[nodiscard]] QList<QStringList> tableLines(const QString &name);

/// A photo with tags in every directory and values of every type.
[[nodiscard]] ExifBuilder fullPhoto(ExifBuilder::Order order);

/// A photo without a second directory.
[[nodiscard]] ExifBuilder plainPhoto(ExifBuilder::Order order);

/// Adds a column "order" and a row for each byte order.
void addOrders();

} // namespace lumi::test

// SPDX-License-Identifier: MIT
// Base of the tests that rewrite photos. Each test function has its own folder.
#pragma once

#include "tests/exif/RewriteFolder.h"

#include <QObject>

#include <memory>

class RewriteTest : public QObject
{
    Q_OBJECT

protected:
    QString put(const lumi::test::ExifBuilder &photo) { return m_folder->put(photo); }

    std::unique_ptr<lumi::test::RewriteFolder> m_folder;

private Q_SLOTS:

    void init() { m_folder = std::make_unique<lumi::test::RewriteFolder>(); }

    void cleanup() { m_folder.reset(); }
};

// SPDX-License-Identifier: MIT
#include "tests/items/ThumbnailTest.h"

#include "tests/items/LibraryFaults.h"

#include <QTest>

void lumi::test::ThumbnailTest::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    m_fixture->machine->upright = true;
    m_fixture->start();
}

void lumi::test::ThumbnailTest::cleanup()
{
    QCOMPARE(liveDecompressors(), 0);
    m_fixture.reset();
}

QString lumi::test::ThumbnailTest::photo(const JpegKind &kind, const QString &name) const
{
    return writeJpeg(m_fixture->addPhoto(name), kind);
}

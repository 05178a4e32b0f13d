// SPDX-License-Identifier: MIT
#include "tests/items/DecodeTest.h"

#include "tests/items/LibraryFaults.h"
#include "tests/swap/SwapFixture.h"

#include <QFile>
#include <QTest>

lumi::test::Watched::Watched(const QString &path)
    : item(std::make_unique<FPVItemJpeg>(path, QString(), false))
    , updates(item.get(), &FPVItemImage::decodeUpdate)
    , completes(item.get(), &FPVItemImage::decodeComplete)
{ }

bool lumi::test::Watched::waitForTheEnd() const
{
    return QTest::qWaitFor([this] {
        return completes.count() == 1;
    });
}

bool lumi::test::start(FPVItemJpeg *item, QSize *request, int depth)
{
    return item->startDecode(depth, nullptr, request);
}

void lumi::test::decodeOn(FPVItemJpeg *item)
{
    constexpr int kMost = 20000;
    for (int i = 0; i < kMost && liveDecompressors() > 0; ++i) {
        item->decodeScreenImage();
    }
}

void lumi::test::waitForSlices()
{
    QTest::qWait(120);
}

void lumi::test::DecodeTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_machine = FakeMachine::install();
}

void lumi::test::DecodeTest::cleanup()
{
    QCOMPARE(liveDecompressors(), 0);
    Machine::install(nullptr);
}

QString lumi::test::DecodeTest::photo(const JpegKind &kind) const
{
    return writeJpeg(m_folder->filePath(QStringLiteral("a.jpg")), kind);
}

QString lumi::test::DecodeTest::file(const QByteArray &bytes) const
{
    QString path = m_folder->filePath(QStringLiteral("a.jpg"));
    QFile::remove(path); // much faster than overwriting it
    writeFile(path, bytes);
    return path;
}

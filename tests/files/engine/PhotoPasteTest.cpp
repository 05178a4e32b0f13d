// SPDX-License-Identifier: MIT
#include "tests/files/engine/PhotoPasteTest.h"

#include "tests/support/FakeMachine.h"
#include "tests/support/nameList.h"

#include <QFile>
#include <QTest>

using lumi::PasteResult;
using lumi::test::FileFixture;
using lumi::test::list;

void PhotoPasteTest::init()
{
    m_files = std::make_unique<FileFixture>();
    m_photo = FileFixture::noise(kBlocks * kBlock - 100);
    m_files->make(QStringLiteral("a.jpg"), m_photo);
    QVERIFY(QFile::setPermissions(m_files->makeFolder(QStringLiteral("to")),
                                  QFile::Permissions(0x7777)));
    m_items = std::make_unique<FPVItemList>(m_files->path(QStringLiteral("to")), m_files->path());
    lumi::test::FakeMachine::install();
}

void PhotoPasteTest::cleanup()
{
    Machine::install(nullptr);
    m_files.reset();
}

PasteResult PhotoPasteTest::paste(bool cut)
{
    m_clipboard.take({m_files->path(QStringLiteral("a.jpg"))}, cut);
    const PasteResult result
        = m_clipboard.paste(m_files->path(QStringLiteral("to")), m_items.get());
    // A cut clipboard is empty afterwards, even after a failure.
    if (m_clipboard.paths().isEmpty() != cut) {
        qFatal("the clipboard is wrong");
    }
    return result;
}

void PhotoPasteTest::isUntouched() const
{
    QCOMPARE(m_files->entries(), list("a.jpg to/"));
    QCOMPARE(m_files->content(QStringLiteral("a.jpg")), m_photo);
    QCOMPARE(m_items->count(), 0);
}

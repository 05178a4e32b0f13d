// SPDX-License-Identifier: MIT
#include "tests/files/engine/CopyTest.h"

#include "files/engine/copyFile.h"

using lumi::test::FileFixture;

int CopyTest::s_askedTimes = 0;
int CopyTest::s_stopAfter = 0;

void CopyTest::init()
{
    m_files = std::make_unique<FileFixture>();
    m_photo = FileFixture::noise(kBlocks * kBlock);
    s_askedTimes = 0;
    s_stopAfter = 0;
    setCopyCancelled(false);
}

void CopyTest::cleanup()
{
    m_files.reset();
    setCopyCancelled(false);
}

int CopyTest::copy(const QString &from, const QString &to, bool failIfExists) const
{
    return copyFile(m_files->path(from), m_files->path(to), false, failIfExists, nullptr, kBlock);
}

bool CopyTest::stopLater()
{
    ++s_askedTimes;
    return s_askedTimes < s_stopAfter;
}

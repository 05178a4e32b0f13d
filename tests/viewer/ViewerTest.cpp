// SPDX-License-Identifier: MIT
#include "tests/viewer/ViewerTest.h"

#include "platform/screen/FrameBuffer.h"
#include "viewer/zoomSteps.h"

#include <QLabel>
#include <QTest>

void lumi::test::ViewerTest::init()
{
    m_it = std::make_unique<ViewerFixture>();
}

void lumi::test::ViewerTest::cleanup()
{
    m_it.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

lumi::test::ScriptedImage *lumi::test::ViewerTest::openOne(QSize size, int denominator)
{
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), size, denominator);
    m_it->open(image);
    return image;
}

lumi::test::ScriptedImage *lumi::test::ViewerTest::showOne(QSize size, int denominator)
{
    ScriptedImage *image = openOne(size, denominator);
    image->finish();
    if (!m_it->waitForLook()) {
        qFatal("the picture doesn't come");
    }
    return image;
}

int lumi::test::ViewerTest::fit(QSize photo) const
{
    return *fitPercent(m_it->room(), photo);
}

QString lumi::test::ViewerTest::shownPercent() const
{
    return m_it->percent()->text();
}

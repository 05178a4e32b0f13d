// SPDX-License-Identifier: MIT
#include "tests/platform/PainterTest.h"

#include "platform/screen/FrameBuffer.h"

#include <QTest>

void PainterTest::init()
{
    m_machine = lumi::test::FakeMachine::install();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void PainterTest::cleanup()
{
    QVERIFY(!FrameBuffer::instance().isAllocated());
    Machine::install(nullptr);
}

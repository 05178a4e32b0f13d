// SPDX-License-Identifier: MIT
// The base of tests of direct painting: a machine whose depth a test can set, and no frame buffer
// memory before and after each test.
#pragma once

#include "tests/support/FakeMachine.h"

#include <QObject>

class PainterTest : public QObject
{
    Q_OBJECT

protected:
    lumi::test::FakeMachine *m_machine = nullptr;

private Q_SLOTS:
    void init();
    void cleanup();
};

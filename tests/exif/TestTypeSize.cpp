// SPDX-License-Identifier: MIT
#include "exif/tag/exifFormat.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

class TestTypeSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data();
    void sizes();
};

void TestTypeSize::sizes_data()
{
    lumi::test::columns<int, int>();
    const int sizes[] = {0, 1, 1, 2, 4, 8, 0, 1, 0, 4, 8};
    for (int type = 0; type <= 10; ++type) {
        QTest::addRow("type %d", type) << type << sizes[type];
    }
    QTest::newRow("the first type behind the table has no size") << 11 << 0;
    QTest::newRow("the float type has no size") << 12 << 0;
    QTest::newRow("the largest type has no size") << 65535 << 0;
    QTest::newRow("a negative type has no size") << -1 << 0;
}

void TestTypeSize::sizes()
{
    const auto [type, size] = lumi::test::row<int, int>();
    QCOMPARE(typeSize(type), size);
}

LUMI_TEST(TestTypeSize)
#include "TestTypeSize.moc"

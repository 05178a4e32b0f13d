// SPDX-License-Identifier: MIT
#include "app/common/Settings.h"
#include "platform/Config.h"
#include "platform/Machine.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTest>

using lumi::Settings;

namespace {

struct Row
{
    const char *group;
    const char *key;
    int defaultValue;
    int (*get)();
    void (*set)(int);
};

constexpr Row kRows[] = {
    {"Slideshow", "Operation", 0, Settings::operation, Settings::setOperation},
    {"Slideshow", "DispOrder", 0, Settings::dispOrder, Settings::setDispOrder},
    {"Slideshow", "DispTime", 1, Settings::dispTime, Settings::setDispTime},
    {"Slideshow", "DispCount", 1, Settings::dispCount, Settings::setDispCount},
    {"Common", "FontSize", 2, Settings::fontSize, Settings::setFontSize},
};

QString settingsFile()
{
    return Machine::instance().settingsFile(QStringLiteral("lumivault"));
}

int valueInFile(const Row &row)
{
    Config config(QStringLiteral("lumivault"), Config::User);
    config.setGroup(QLatin1String(row.group));
    return config.readNumEntry(QLatin1String(row.key), -99);
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void unsetKeysHaveTheirDefaults();
    void eachKeyHasItsPlace();
    void rowsAreStoredAsTheyAre();
};

void TestSettings::init()
{
    QFile::remove(settingsFile());
}

void TestSettings::unsetKeysHaveTheirDefaults()
{
    for (const Row &row : kRows) {
        QCOMPARE(row.get(), row.defaultValue);
    }
    QVERIFY(!QFile::exists(settingsFile())); // reading makes no file
}

void TestSettings::eachKeyHasItsPlace()
{
    int value = 3;
    for (const Row &row : kRows) {
        row.set(++value);
    }
    value = 3;
    for (const Row &row : kRows) {
        ++value;
        QCOMPARE(row.get(), value);
        QCOMPARE(valueInFile(row), value);
    }
}

void TestSettings::rowsAreStoredAsTheyAre()
{
    // The settings return the value of the file; the caller clamps it.
    Settings::setFontSize(4711);
    QCOMPARE(Settings::fontSize(), 4711);
    Settings::setFontSize(-3);
    QCOMPARE(Settings::fontSize(), -3);
}

LUMI_TEST(TestSettings)
#include "TestSettings.moc"

// SPDX-License-Identifier: MIT
#include "app/common/Settings.h"

#include "platform/Config.h"

namespace {

int readEntry(const QString &group, const QString &key, int defaultValue)
{
    Config config(QStringLiteral("lumivault"), Config::User);
    config.setGroup(group);
    return config.readNumEntry(key, defaultValue);
}

void writeEntry(const QString &group, const QString &key, int value)
{
    Config config(QStringLiteral("lumivault"), Config::User);
    config.setGroup(group);
    config.writeEntry(key, value);
}

int slideshowEntry(const QString &key, int defaultValue)
{
    return readEntry(QStringLiteral("Slideshow"), key, defaultValue);
}

void setSlideshowEntry(const QString &key, int value)
{
    writeEntry(QStringLiteral("Slideshow"), key, value);
}

int commonEntry(const QString &key, int defaultValue)
{
    return readEntry(QStringLiteral("Common"), key, defaultValue);
}

void setCommonEntry(const QString &key, int value)
{
    writeEntry(QStringLiteral("Common"), key, value);
}

constexpr int kFirstRow = 0;
constexpr int kDefaultTimeRow = 1;  // 3 seconds
constexpr int kDefaultCountRow = 1; // twice
constexpr int kDefaultFontIndex = 2;

} // namespace

namespace lumi {

int Settings::operation()
{
    return slideshowEntry(QStringLiteral("Operation"), kFirstRow);
}

void Settings::setOperation(int row)
{
    setSlideshowEntry(QStringLiteral("Operation"), row);
}

int Settings::dispOrder()
{
    return slideshowEntry(QStringLiteral("DispOrder"), kFirstRow);
}

void Settings::setDispOrder(int row)
{
    setSlideshowEntry(QStringLiteral("DispOrder"), row);
}

int Settings::dispTime()
{
    return slideshowEntry(QStringLiteral("DispTime"), kDefaultTimeRow);
}

void Settings::setDispTime(int row)
{
    setSlideshowEntry(QStringLiteral("DispTime"), row);
}

int Settings::dispCount()
{
    return slideshowEntry(QStringLiteral("DispCount"), kDefaultCountRow);
}

void Settings::setDispCount(int row)
{
    setSlideshowEntry(QStringLiteral("DispCount"), row);
}

int Settings::fontSize()
{
    return commonEntry(QStringLiteral("FontSize"), kDefaultFontIndex);
}

void Settings::setFontSize(int index)
{
    setCommonEntry(QStringLiteral("FontSize"), index);
}

} // namespace lumi

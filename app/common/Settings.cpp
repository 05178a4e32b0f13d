// SPDX-License-Identifier: MIT
#include "app/common/Settings.h"

#include "platform/Config.h"

namespace {

constexpr int kFirstRow = 0;
constexpr int kDefaultTimeRow = 1;  // 3 seconds
constexpr int kDefaultCountRow = 1; // twice
constexpr int kDefaultFontIndex = 2;

Config slideshow()
{
    Config config(QStringLiteral("lumivault"));
    config.setGroup(QStringLiteral("Slideshow"));
    return config;
}

Config common()
{
    Config config(QStringLiteral("lumivault"));
    config.setGroup(QStringLiteral("Common"));
    return config;
}

} // namespace

int lumi::Settings::operation()
{
    return slideshow().readNumEntry(QStringLiteral("Operation"), kFirstRow);
}

void lumi::Settings::setOperation(int row)
{
    slideshow().writeEntry(QStringLiteral("Operation"), row);
}

int lumi::Settings::dispOrder()
{
    return slideshow().readNumEntry(QStringLiteral("DispOrder"), kFirstRow);
}

void lumi::Settings::setDispOrder(int row)
{
    slideshow().writeEntry(QStringLiteral("DispOrder"), row);
}

int lumi::Settings::dispTime()
{
    return slideshow().readNumEntry(QStringLiteral("DispTime"), kDefaultTimeRow);
}

void lumi::Settings::setDispTime(int row)
{
    slideshow().writeEntry(QStringLiteral("DispTime"), row);
}

int lumi::Settings::dispCount()
{
    return slideshow().readNumEntry(QStringLiteral("DispCount"), kDefaultCountRow);
}

void lumi::Settings::setDispCount(int row)
{
    slideshow().writeEntry(QStringLiteral("DispCount"), row);
}

int lumi::Settings::fontSize()
{
    return common().readNumEntry(QStringLiteral("FontSize"), kDefaultFontIndex);
}

void lumi::Settings::setFontSize(int index)
{
    common().writeEntry(QStringLiteral("FontSize"), index);
}

// SPDX-License-Identifier: MIT
// The base of tests of the viewer with scripted pictures.
#pragma once

#include "tests/viewer/ViewerFixture.h"

#include <memory>

namespace lumi::test {

inline constexpr QSize kPhoto(1600, 1200);
inline const QString kMemoryBox = QStringLiteral("Error: Memory full.\nProcessing cancelled (OK)");
inline const QString kOpenBox = QStringLiteral("Error: You did not open this file (OK)");
inline const QString kStartFull = QStringLiteral("start full");

/// Makes a viewer for each test and checks that none of it is left.
class ViewerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    ScriptedImage *openOne(QSize size = kPhoto, int denominator = 2);
    /// Waits for the viewing look.
    ScriptedImage *showOne(QSize size = kPhoto, int denominator = 2);
    [[nodiscard]] int fit(QSize photo) const;
    [[nodiscard]] QString shownPercent() const;

    std::unique_ptr<ViewerFixture> m_it;
};

} // namespace lumi::test

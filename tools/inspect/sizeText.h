// SPDX-License-Identifier: MIT
// Sizes as arguments and as output: "640x480".
#pragma once

#include <QSize>
#include <QString>

#include <optional>

/// Empty if the text is no size. Each side has at most five digits.
[[nodiscard]] std::optional<QSize> sizeFromText(const QString &text);
[[nodiscard]] QString textOfSize(QSize size);

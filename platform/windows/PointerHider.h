// SPDX-License-Identifier: MIT
// Hides the pointer over a widget that shows a picture. The pointer appears when it is moved, and
// hides after a second.
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace lumi {

class PointerHider : public QObject
{
    Q_OBJECT

public:
    static constexpr int kDelayMs = 1000;

    /// The widget becomes the parent. Mouse moves without a pressed button do not reach it.
    explicit PointerHider(QWidget *widget);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTimer m_delay;
};

} // namespace lumi

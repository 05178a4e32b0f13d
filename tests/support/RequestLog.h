// SPDX-License-Identifier: MIT
// Notes which forms a window is asked for, and whether each request has a null text.
#pragma once

#include "app/common/FormEvent.h"

#include <QList>
#include <QObject>

namespace lumi::test {

class RequestLog : public QObject
{
public:
    explicit RequestLog(QObject *window) { window->installEventFilter(this); }

    QList<int> forms;
    QList<bool> nullTexts;

protected:
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (const auto *request = dynamic_cast<const ChangeFormEvent *>(event)) {
            forms.append(request->formId());
            nullTexts.append(request->text().isNull());
        }
        return false;
    }
};

} // namespace lumi::test

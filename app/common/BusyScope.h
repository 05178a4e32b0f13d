// SPDX-License-Identifier: MIT
// Holds a form busy for the length of a block: nothing can reload or replace the form while
// a nested event loop runs inside the block.
#pragma once

#include "app/common/FormBase.h"

#include <QPointer>

namespace lumi {

class BusyScope
{
public:
    explicit BusyScope(FormBase *form)
        : m_form(form)
    {
        m_form->enterBusy();
    }

    ~BusyScope()
    {
        if (m_form) {
            m_form->leaveBusy();
        }
    }

    Q_DISABLE_COPY_MOVE(BusyScope)

private:
    QPointer<FormBase> m_form; // the process may end inside the block
};

} // namespace lumi

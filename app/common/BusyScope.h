// SPDX-License-Identifier: MIT
// Holds a form busy for the length of a block. The block may run nested event loops: the form is
// neither reloaded nor replaced meanwhile.
// A busy form outlives its dialogs. The destructor of FormBase asserts it, so that code inside the
// block needs no guards for the form, its widgets or its list. Items may be deleted.
#pragma once

#include "app/common/FormBase.h"

namespace lumi {

class BusyScope
{
public:
    explicit BusyScope(FormBase *form)
        : m_form(form)
    {
        m_form->enterBusy();
    }

    ~BusyScope() { m_form->leaveBusy(); }

    Q_DISABLE_COPY_MOVE(BusyScope)

private:
    FormBase *m_form;
};

} // namespace lumi

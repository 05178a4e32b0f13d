// SPDX-License-Identifier: MIT
// A request to end the program that does not come from its window: SIGTERM, SIGINT, SIGHUP, or the
// end of the desktop's session. It is only noted. Long work asks isPending() and ends early.
// While a request is pending, open menus and dialogs are closed as by Escape, the topmost first.
// Code that opens a dialog without a request of the user checks isPending() first.
// A signal that was ignored at the start stays ignored, so that nohup works.
// Owns: the signal handlers. The destructor restores the old ones.
#pragma once

#include "platform/files/fileCalls.h"

#include <QObject>
#include <QTimer>

namespace lumi {

class QuitRequest : public QObject
{
    Q_OBJECT

public:
    /// Only one object may exist at a time.
    explicit QuitRequest(QObject *parent = nullptr);
    /// Forgets the request.
    ~QuitRequest() override;

    /// True from the moment of the signal on, even if no event loop runs.
    [[nodiscard]] static bool isPending();

Q_SIGNALS:
    /// A request is pending and no menu or dialog is open. Repeated until the program ends.
    void idle();

private:
    void wake();
    void closeTop();

    Descriptor m_wakeUp; ///< readable after a request
    QTimer m_timer;
};

} // namespace lumi

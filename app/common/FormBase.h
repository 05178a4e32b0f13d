// SPDX-License-Identifier: MIT
// The base of forms: a form is a screen that fills the main window and is destroyed when the next
// one takes its place. It asks for another form by a posted event, is notified of card changes, and
// says whether the window may close.
//
// Message boxes, wait dialogs and processEvents let events in while a slot of the form still
// runs. A form holds a BusyScope over such a stretch. Card changes are then only noted and
// delivered once afterwards, from the event loop. The main window keeps requests for another
// form until the release.
// Owns: its menu bar in the shared tool bar.
#pragma once

#include "platform/session/QCopChannel.h"

#include <QWidget>

class QPEMenuBar;
class QPEToolBar;
class QPopupMenu;

class FormBase : public QWidget
{
    Q_OBJECT

public:
    /// @param mainWindow the window the form lives in, its parent; the form becomes an event
    ///        filter of it and posts its requests to it
    /// @param toolBar lent; outlives the form
    /// The form is hidden; it is shown by formStarted().
    FormBase(QWidget *mainWindow, QPEToolBar *toolBar, int formId);
    /// A busy form must not be destroyed: the process is aborted.
    ~FormBase() override;

    [[nodiscard]] int formId() const { return m_formId; }

    /// The form that was replaced by this one, or -1.
    [[nodiscard]] int previousForm() const { return m_previousForm; }

    void setPreviousForm(int formId) { m_previousForm = formId; }

    virtual void acceptForm();
    /// Whether the main window may close now.
    [[nodiscard]] virtual bool canClose();
    /// The form is in place. Shows it and its menu bar.
    virtual void formStarted();
    /// Cards were inserted or removed. The form must check itself which cards are there.
    virtual void mtabChanged();

    void allowClose();
    void forbidClose();

    /// Asks for another form. Nothing changes before the event loop runs.
    void requestForm(int formId, const QString &text);
    /// Asks for the previous form. Only the first call has an effect.
    void returnToPrevious();

    /// Nested calls count; see lumi::BusyScope.
    void enterBusy();
    void leaveBusy();

    [[nodiscard]] bool isBusy() const { return m_busyDepth > 0; }

Q_SIGNALS:
    /// The last busy stretch has ended.
    void busyReleased();

public Q_SLOTS:
    void cardChannel(const QCString &message, const QByteArray &data);

protected:
    [[nodiscard]] QWidget *mainWindow() const { return m_mainWindow; }

    /// A new menu in the form's menu bar.
    [[nodiscard]] QPopupMenu *addMenu(const QString &title);

    bool event(QEvent *event) override;

private:
    void deliverCardChange();

    QWidget *m_mainWindow;
    QPEToolBar *m_toolBar;
    QPEMenuBar *m_menuBar = nullptr;
    int m_formId;
    int m_previousForm = -1;
    bool m_closeAllowed = true;
    int m_busyDepth = 0;
    bool m_cardChangeNoted = false;
};

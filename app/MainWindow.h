// SPDX-License-Identifier: MIT
// The one window of the program. It holds one form at a time and replaces it on request; the
// old form is destroyed after the new one is in place. Requests come as posted events, and
// wait while the current form is busy. A form that is larger than the window can be scrolled.
// Owns: the tool bar, which outlives all forms, and the current form.
#pragma once

#include "app/common/FormBase.h"

#include <QMainWindow>

#include <deque>

class ChangeFormEvent;
class QPEToolBar;
class QScrollArea;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Starts with the top menu.
    explicit MainWindow(QWidget *parent = nullptr, const char *name = nullptr,
                        Qt::WindowFlags flags = {});
    ~MainWindow() override;

    [[nodiscard]] FormBase *currentForm() const { return m_form; }

    [[nodiscard]] QPEToolBar *toolBar() const { return m_toolBar; }

    /// Closes the window unless the form is busy or being replaced.
    void closeIfIdle();

public Q_SLOTS:
    void accept();
    /// An unknown id is reported, and the old form stays.
    void changeForm(int id, const QString &text);

protected:
    using FormMaker = FormBase *(*)(QWidget *window, QPEToolBar *toolBar);

    /// Puts the form that `make` makes in the place of the current one.
    void replaceForm(FormMaker make);

    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Request
    {
        int formId;
        QString text;
    };

    [[nodiscard]] bool mustWait() const;
    void handleRequest(const ChangeFormEvent &event);
    void runWaiting();

    FormBase *m_form = nullptr;
    QPEToolBar *m_toolBar;
    QScrollArea *m_area;           ///< shows the form
    std::deque<Request> m_waiting; ///< oldest first
    bool m_changing = false;
};

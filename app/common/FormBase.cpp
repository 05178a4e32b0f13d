// SPDX-License-Identifier: MIT
#include "app/common/FormBase.h"

#include "app/common/FormEvent.h"
#include "platform/toolkit/QPopupMenu.h"
#include "platform/windows/QPEMenuBar.h"

#include <QCoreApplication>

FormBase::FormBase(QWidget *mainWindow, QPEToolBar *toolBar, int formId)
    : QWidget(mainWindow)
    , m_mainWindow(mainWindow)
    , m_toolBar(toolBar)
    , m_formId(formId)
{
    // A layout shows every child that was not hidden explicitly.
    hide();
    auto *channel = new QCopChannel(QByteArrayLiteral("QPE/Card"), this);
    connect(channel, &QCopChannel::received, this, &FormBase::cardChannel);
    mainWindow->installEventFilter(this);
}

FormBase::~FormBase()
{
    if (isBusy()) {
        qFatal("Form %d is destroyed while it is busy", m_formId);
    }
    if (m_menuBar != nullptr) {
        m_menuBar->hide();
        delete m_menuBar;
    }
}

QPopupMenu *FormBase::addMenu(const QString &title)
{
    if (m_menuBar == nullptr) {
        m_menuBar = new QPEMenuBar(m_toolBar);
        m_menuBar->hide();
    }
    auto *menu = new QPopupMenu(m_menuBar);
    menu->setTitle(title);
    m_menuBar->addMenu(menu);
    return menu;
}

void FormBase::acceptForm() { }

bool FormBase::canClose()
{
    return m_closeAllowed;
}

void FormBase::formStarted()
{
    if (m_menuBar != nullptr) {
        m_menuBar->show();
    }
    show();
}

void FormBase::mtabChanged() { }

void FormBase::allowClose()
{
    m_closeAllowed = true;
}

void FormBase::forbidClose()
{
    m_closeAllowed = false;
}

void FormBase::requestForm(int formId, const QString &text)
{
    QCoreApplication::postEvent(m_mainWindow, new ChangeFormEvent(formId, text));
}

void FormBase::returnToPrevious()
{
    if (m_previousForm >= 0) {
        requestForm(m_previousForm, QString());
    }
    m_previousForm = -1;
}

void FormBase::enterBusy()
{
    ++m_busyDepth;
}

void FormBase::leaveBusy()
{
    Q_ASSERT(m_busyDepth > 0);
    if (--m_busyDepth > 0) {
        return;
    }
    if (m_cardChangeNoted) {
        // Not called directly: the slot that held the guard still uses its pointers.
        QMetaObject::invokeMethod(this, &FormBase::deliverCardChange, Qt::QueuedConnection);
    }
    Q_EMIT busyReleased();
}

void FormBase::cardChannel(const QCString &message, const QByteArray & /*data*/)
{
    if (message != "mtabChanged()") {
        return;
    }
    if (isBusy()) {
        m_cardChangeNoted = true;
    } else {
        mtabChanged();
    }
}

void FormBase::deliverCardChange()
{
    // Busy again, or already delivered after an earlier release.
    if (isBusy() || !m_cardChangeNoted) {
        return;
    }
    m_cardChangeNoted = false;
    mtabChanged();
}

bool FormBase::event(QEvent *event)
{
    if (event->type() == FormEvent::kType) {
        const auto *formEvent = dynamic_cast<const FormEvent *>(event);
        if (formEvent != nullptr && formEvent->kind() == FormEvent::FormStart) {
            formStarted();
        }
    }
    return QWidget::event(event);
}

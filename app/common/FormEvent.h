// SPDX-License-Identifier: MIT
// The events by which forms are switched. They are always posted, never sent, so that a slot of a
// form may ask for the form to be replaced.
// All have the one type 1000; the kind tells them apart. Receivers must check with a
// dynamic_cast, because other code may use the same type number.
#pragma once

#include <QEvent>
#include <QString>

class FormEvent : public QEvent
{
public:
    static constexpr QEvent::Type kType = QEvent::Type(1000);

    enum Kind : int { ChangeForm = 0, FormStart = 1 };

    explicit FormEvent(int kind)
        : QEvent(kType)
        , m_kind(kind)
    { }

    [[nodiscard]] int kind() const { return m_kind; }

private:
    int m_kind;
};

/// Posted to the main window: replace the current form by the one with this id.
class ChangeFormEvent : public FormEvent
{
public:
    ChangeFormEvent(int formId, const QString &text)
        : FormEvent(ChangeForm)
        , m_formId(formId)
        , m_text(text)
    { }

    [[nodiscard]] int formId() const { return m_formId; }

    /// Part of every request, but not used.
    [[nodiscard]] QString text() const { return m_text; }

private:
    int m_formId;
    QString m_text;
};

/// Posted to a new form once it is the central widget of the main window.
class FormStartEvent : public FormEvent
{
public:
    FormStartEvent()
        : FormEvent(FormStart)
    { }
};

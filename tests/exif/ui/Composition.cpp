// SPDX-License-Identifier: MIT
#include "tests/exif/ui/Composition.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>

#include <utility>

namespace {

QString composed;

void tellFocus(const QString &preedit, const QString &commit)
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    if (QObject *focus = QGuiApplication::focusObject()) {
        QCoreApplication::sendEvent(focus, &event);
    }
}

} // namespace

void QInputMethod::commit()
{
    const QString text = std::exchange(composed, QString());
    if (!text.isEmpty()) {
        tellFocus(QString(), text);
    }
}

lumi::test::Composition::Composition(const QString &text)
{
    composed = text;
    tellFocus(text, QString());
}

lumi::test::Composition::~Composition()
{
    composed.clear();
}

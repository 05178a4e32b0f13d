// SPDX-License-Identifier: MIT
#include "platform/debugLog.h"

#include <QLoggingCategory>
#include <QString>

#include <cstdarg>

Q_LOGGING_CATEGORY(traceLog, "lumivault.trace", QtWarningMsg)

void debugLog(const char *format, ...)
{
    if (!traceLog().isDebugEnabled()) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::vasprintf(format, arguments);
    va_end(arguments);
    qCDebug(traceLog).noquote() << text;
}

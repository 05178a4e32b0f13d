// SPDX-License-Identifier: MIT
// The signatures of the slots or signals that a class declares, in their order.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMetaMethod>

namespace lumi::test {

[[nodiscard]] inline QList<QByteArray> methodNames(const QMetaObject &meta,
                                                   QMetaMethod::MethodType type)
{
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type) {
            names.append(meta.method(i).methodSignature());
        }
    }
    return names;
}

} // namespace lumi::test

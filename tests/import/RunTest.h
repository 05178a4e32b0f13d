// SPDX-License-Identifier: MIT
// The base of tests of an import without a window: a card in its slot, a photo store, and the results
// of a run.
#pragma once

#include "import/ImportRun.h"
#include "tests/views/BrowserWorld.h"

#include <QObject>

#include <functional>
#include <memory>

Q_DECLARE_METATYPE(lumi::ImportKind)

class RunTest : public QObject
{
    Q_OBJECT

protected:
    struct Failure
    {
        QString path;
        lumi::ImportKind kind;
    };

    lumi::ImportKind importCard(const QString &name = QStringLiteral("new"));

    [[nodiscard]] QString target(const QString &name = QStringLiteral("new")) const
    {
        return m_world->store + QLatin1Char('/') + name;
    }

    std::unique_ptr<lumi::test::BrowserWorld> m_world;
    QString m_card;
    QString m_folderName;
    int m_copied = 0;
    bool m_isCardPresent = true;
    QList<int> m_steps;
    QList<Failure> m_failures;
    std::function<void(int)> m_atStep;

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
};

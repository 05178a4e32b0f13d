// SPDX-License-Identifier: MIT
// The base of tests of a whole import, from the press on a button to its last box. After every
// test: the form is at rest, all dialogs that were expected came, and the cards are as they
// were before the last press.
#pragma once

#include "tests/import/ImportFixture.h"
#include "tests/import/cardTree.h"

#include <QObject>
#include <QStringList>

#include <array>
#include <memory>
#include <optional>

class FlowTest : public QObject
{
    Q_OBJECT

protected:
    // Captions and texts of dialogs.
    static const QString kError;
    static const QString kStop;
    static const QString kDone;
    static const QString kResult;
    static const QString kFolder;
    static const QString kDetails;
    static const QString kStopped;
    static const QString kThereWasAnError;
    static const QString kAccess;

    static const QStringList kThreePhotos;

    /// Starts the form, if there is none, and presses the card's button.
    void press(Slot slot);
    /// After a test has changed a card itself.
    void noteCards();
    [[nodiscard]] bool areCardsUntouched() const;
    /// The dialogs so far, all of them the form's own, the words of the last ones, and nothing
    /// changed on the cards.
    void compareFailedRun(const QStringList &captions, const QStringList &texts);
    /// Presses the SD button. The report's plain text, if it tells of so many failures.
    QString reportText(int failures);

    std::unique_ptr<lumi::test::ImportFixture> m_form;

private Q_SLOTS:
    void init();
    void cleanup();

private:
    using Cards = std::array<lumi::test::Tree, 2>;

    [[nodiscard]] Cards cards() const;

    std::optional<Cards> m_cards; // before the last press
};

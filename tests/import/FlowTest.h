// SPDX-License-Identifier: MIT
// The base of tests of a whole import, from the press on a button to its last box. After every test
// it checks that the form is idle, that all expected dialogs appeared, and that the cards are
// unchanged since the last press.
#pragma once

#include "platform/session/QCopChannel.h"
#include "tests/import/ImportFixture.h"
#include "tests/import/cardTree.h"

#include <QObject>
#include <QSignalSpy>
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

    /// Starts the form if necessary, and presses the card's button.
    void press(Slot slot);
    /// To be called when a test has changed a card itself.
    void noteCards();
    [[nodiscard]] bool areCardsUntouched() const;
    /// Checks the captions of all dialogs so far, their parent, the last texts, and that the cards
    /// are unchanged.
    void compareFailedRun(const QStringList &captions, const QStringList &texts);
    /// The notices for the desktop since the start of the test.
    [[nodiscard]] QStringList notices() const;
    /// Presses the SD button. Returns the report's plain text if it has this many failures.
    QString reportText(int failures);

    std::unique_ptr<lumi::test::ImportFixture> m_form;

private Q_SLOTS:
    void init();
    void cleanup();

private:
    using Cards = std::array<lumi::test::Tree, 2>;

    [[nodiscard]] Cards cards() const;

    std::optional<Cards> m_cards; // as before the last press
    std::unique_ptr<QCopChannel> m_notices;
    std::unique_ptr<QSignalSpy> m_noticeSpy;
};

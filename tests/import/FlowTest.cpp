// SPDX-License-Identifier: MIT
#include "tests/import/FlowTest.h"

#include "tests/support/oneDay.h"
#include "widgets/MyImageButton.h"

#include <QApplication>
#include <QTest>
#include <QTextBrowser>

#include <filesystem>
#include <system_error>
#include <utility>

using lumi::test::ImportFixture;
using lumi::test::stateOf;

const QString FlowTest::kError = QStringLiteral("Error");
const QString FlowTest::kStop = QStringLiteral("Stop");
const QString FlowTest::kDone = QStringLiteral("Done");
const QString FlowTest::kResult = QStringLiteral("Search Result");
const QString FlowTest::kFolder = QStringLiteral("New Folder");
const QString FlowTest::kDetails = QStringLiteral("Error Details");
const QString FlowTest::kStopped = QStringLiteral("Processing stopped");
const QString FlowTest::kThereWasAnError
    = QStringLiteral("There was an error. Processing is stopped.");
const QString FlowTest::kAccess
    = QStringLiteral("Due to access errors, processing is cancelled. Please do "
                     "not remove the card while processing.");

const QStringList FlowTest::kThreePhotos{QStringLiteral("dcim/a.jpg"), QStringLiteral("dcim/b.jpg"),
                                         QStringLiteral("dcim/c.jpg")};

void FlowTest::init()
{
    lumi::test::waitForOneDay();
    m_form.reset(); // a failed test may have left one, and two would disturb each other
    m_form = std::make_unique<ImportFixture>();
    m_cards.reset();
    m_notices = std::make_unique<QCopChannel>("LumiVault/Notice");
    m_noticeSpy = std::make_unique<QSignalSpy>(m_notices.get(), &QCopChannel::received);
}

QStringList FlowTest::notices() const
{
    QStringList texts;
    for (const QList<QVariant> &arguments : std::as_const(*m_noticeSpy)) {
        texts.append(QString::fromUtf8(arguments.at(1).toByteArray()));
    }
    return texts;
}

void FlowTest::cleanup()
{
    if (m_form->form) {
        QVERIFY(!m_form->form->isBusy());
        QVERIFY(m_form->form->canClose());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QCOMPARE(m_form->driver.unused(), 0);
    }
    // An import only reads cards, even if it fails.
    QVERIFY(areCardsUntouched());
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        // The toolkit can't remove files whose names are not text.
        std::error_code error;
        std::filesystem::remove_all(m_form->card(slot).toStdString(), error);
    }
    m_form.reset();
}

FlowTest::Cards FlowTest::cards() const
{
    return {stateOf(m_form->card(Slot::CF)), stateOf(m_form->card(Slot::SD))};
}

bool FlowTest::areCardsUntouched() const
{
    return !m_cards || *m_cards == cards();
}

void FlowTest::noteCards()
{
    m_cards = cards();
}

void FlowTest::press(Slot slot)
{
    if (!m_form->form) {
        m_form->start();
    }
    noteCards();
    QTest::mouseClick(slot == Slot::CF ? m_form->cf : m_form->sd, Qt::LeftButton);
}

void FlowTest::compareFailedRun(const QStringList &captions, const QStringList &texts)
{
    QCOMPARE(m_form->driver.captions(), captions);
    QVERIFY(!texts.isEmpty());
    QCOMPARE(m_form->driver.texts().mid(captions.size() - texts.size()), texts);
    QVERIFY(m_cards && areCardsUntouched());
    QVERIFY(!m_form->form->isBusy() && m_form->form->canClose());
    for (const lumi::test::SeenDialog &dialog : std::as_const(m_form->driver.seen)) {
        QCOMPARE(dialog.parent.data(), m_form->form.get());
    }
}

QString FlowTest::reportText(int failures)
{
    QString text;
    m_form->driver.expect(kDetails, [&text](QDialog *dialog) {
        text = dialog->findChild<QTextBrowser *>()->toPlainText();
        dialog->reject();
    });
    m_form->driver.press(kDone, kDetails);
    m_form->driver.press(kDone, QStringLiteral("Exit"));
    press(Slot::SD);
    if (text.count(QStringLiteral("CopyError")) != failures) {
        return QStringLiteral("not %1 failures: ").arg(failures) + text;
    }
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
}

// SPDX-License-Identifier: MIT
// Pictures that cannot be decoded: when the failure is reported, and what works until then.
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

#include <QAbstractButton>
#include <QFile>
#include <QTest>
#include <QTimer>

using lumi::DecodeError;
using lumi::SlideMenu;
using lumi::test::kLong;
using lumi::test::ShowFixture;
using lumi::test::SlowPicture;

namespace {

const QString kFailure = QStringLiteral("You did not open this file");
const QStringList kQuestionAndFailure{QStringLiteral("a will be deleted. Are you sure?"), kFailure};

void answer(QMessageBox::StandardButton button)
{
    ShowFixture::box()->button(button)->click();
}

/// Records the text of each box and answers it: questions as given, others with OK.
class BoxReader : public QTimer
{
public:
    explicit BoxReader(QMessageBox::StandardButton toQuestions)
    {
        connect(this, &QTimer::timeout, this, [this, toQuestions] {
            if (const QMessageBox *box = ShowFixture::box()) {
                const bool asks = box->standardButtons().testFlag(toQuestions);
                texts.append(box->text());
                answer(asks ? toQuestions : QMessageBox::Ok);
            }
        });
        start(5);
    }

    QStringList texts;
};

} // namespace

class TestSlideShowFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void aBadPictureEndsIt_data();
    void aBadPictureEndsIt();
    void thePictureBeforeABadOneKeepsItsTime();
    void aFailureOfTheFirstPictureIsReportedSoon();
    void anotherApplicationClosesTheFailureBox();
    void aKeyReportsAFailureAtOnce();
    void aFailureWaitsForTheMenu_data();
    void aFailureWaitsForTheMenu();
    void theMenuDoesNotOpenAfterAFailure();
    void aFailureWaitsForTheDeletion_data();
    void aFailureWaitsForTheDeletion();
    void deletingAFailedPictureForgetsTheFailure();
    void aPictureCanBeDeletedBeforeAFailureIsReported_data();
    void aPictureCanBeDeletedBeforeAFailureIsReported();

private:
    bool exists(const char *name) const { return QFile::exists(m_show->path(name)); }

    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowFailures::aBadPictureEndsIt_data()
{
    QTest::addColumn<QString>("bad");
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<bool>("inItsMiddle");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("last");
    const QString full = QStringLiteral("Memory full.\nProcessing cancelled");
    const QString other = QStringLiteral("You did not open this file");
    QTest::newRow("the first, no memory, automatic, at its start")
        << "a" << true << false << 2 << full << "";
    QTest::newRow("the first, undecodable, manual, in its middle")
        << "a" << false << true << 3 << other << "a";
    QTest::newRow("the second, no memory, manual, at its start")
        << "b" << false << false << 2 << full << "a";
    QTest::newRow("the second, undecodable, automatic, in its middle")
        << "b" << true << true << 3 << other << "b";
    QTest::newRow("the second, undecodable, manual, at its start")
        << "b" << false << false << 3 << other << "b";
    QTest::newRow("the second, of a wrong depth, automatic, at its start")
        << "b" << true << false << 0 << other << "b";
}

void TestSlideShowFailures::aBadPictureEndsIt()
{
    QFETCH(QString, bad);
    QFETCH(bool, autoMode);
    QFETCH(bool, inItsMiddle);
    QFETCH(int, error);
    m_show->addPictures(3);
    SlowPicture *picture = m_show->picture(qPrintable(bad));
    (inItsMiddle ? picture->breaksOff : picture->refuses) = DecodeError(error);
    QString title;
    QString text;
    bool isParentless = false;
    SlideShow *show = m_show->make({autoMode, true, 80, 0, 0});
    QTimer reader;
    QObject::connect(&reader, &QTimer::timeout, show, [&] {
        if (QMessageBox *box = ShowFixture::box()) {
            title = box->windowTitle();
            text = box->text();
            isParentless = box->parentWidget() == nullptr;
            box->button(QMessageBox::Ok)->click();
        }
    });
    reader.start(20);
    QTimer stepper; // a timer of its own: the box opens inside the key
    QObject::connect(&stepper, &QTimer::timeout, show, [&] {
        if (!autoMode && !m_show->shown().isEmpty()) {
            m_show->key(Qt::Key_Right);
        }
    });
    stepper.start(20);
    QCOMPARE(m_show->run(), 0);
    QCOMPARE(title, QStringLiteral("Error"));
    QTEST(text, "text");
    QVERIFY(isParentless);
    QTEST(m_show->shown(), "last");
    QVERIFY(!show->isVisible());
}

void TestSlideShowFailures::thePictureBeforeABadOneKeepsItsTime()
{
    m_show->addPictures(2);
    m_show->picture("b")->refuses = DecodeError::Undecodable;
    m_show->make({});
    m_show->run([this] {
        QTimer *report = m_show->timer("redrawTimer");
        QVERIFY(report->isActive());
        QCOMPARE(report->interval(), kLong);
        const auto waitForIt = [this, report] {
            report->start(0);
            QVERIFY(m_show->ends());
        };
        ShowFixture::inBox(waitForIt, [] {
            ShowFixture::box()->button(QMessageBox::Ok)->click();
        });
        QVERIFY(m_show->isOver());
    });
}

void TestSlideShowFailures::aFailureOfTheFirstPictureIsReportedSoon()
{
    m_show->addPictures(2);
    m_show->picture("a")->refuses = DecodeError::Undecodable;
    m_show->make({});
    QVERIFY(m_show->timer("redrawTimer")->isActive());
    QCOMPARE(m_show->timer("redrawTimer")->interval(), 10);
}

void TestSlideShowFailures::anotherApplicationClosesTheFailureBox()
{
    m_show->addPictures(1);
    m_show->picture("a")->refuses = DecodeError::OutOfMemory;
    SlideShow *show = m_show->make({});
    QTimer::singleShot(300, show, [] {
        QTRY_VERIFY(ShowFixture::box() != nullptr);
        ShowFixture::tell("appForeground(QString)");
    });
    QCOMPARE(m_show->run(), 0);
    QVERIFY(ShowFixture::box() == nullptr);
    QVERIFY(!show->isVisible());
}

void TestSlideShowFailures::aKeyReportsAFailureAtOnce()
{
    m_show->addPictures(3);
    m_show->picture("b")->refuses = lumi::DecodeError::Undecodable;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        // b has failed, but the failure is reported only after the delay.
        bool told = false;
        ShowFixture::inBox(
            [this] {
                m_show->key(Qt::Key_Right);
            },
            [&told] {
                told = true;
                QTest::keyClick(ShowFixture::box(), Qt::Key_Return);
            });
        QVERIFY(told);
        QVERIFY(!m_show->show->isVisible());
    });
}

void TestSlideShowFailures::aFailureWaitsForTheMenu_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<int>("entry");
    QTest::newRow("automatic, Cont.") << true << int(SlideMenu::Continue);
    QTest::newRow("manual, Delete") << false << int(SlideMenu::Delete);
}

void TestSlideShowFailures::aFailureWaitsForTheMenu()
{
    QFETCH(bool, autoMode);
    QFETCH(int, entry);
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->picture("b")->breaksOff = DecodeError::Undecodable;
    m_show->make({autoMode, true, kLong, 0, 0});
    const BoxReader reader(QMessageBox::Yes);
    m_show->run([&] {
        if (!autoMode) {
            m_show->key(Qt::Key_Right);
        }
        m_show->inMenu([&] {
            QTimer *report = m_show->timer("redrawTimer");
            m_show->picture("b")->finish();
            QVERIFY(report->isActive());
            report->start(0);
            QTRY_VERIFY(!report->isActive());
            QVERIFY(reader.texts.isEmpty());
            m_show->menu()->setActiveAction(m_show->menu()->findItem(entry));
            QTest::keyClick(m_show->menu(), Qt::Key_Return);
        });
        QVERIFY(m_show->ends());
    });
    const bool deletes = entry == SlideMenu::Delete;
    QCOMPARE(reader.texts, deletes ? kQuestionAndFailure : QStringList{kFailure});
    QCOMPARE(exists("a"), !deletes);
    QVERIFY(exists("b"));
}

void TestSlideShowFailures::theMenuDoesNotOpenAfterAFailure()
{
    m_show->addPictures(2);
    m_show->picture("b")->refuses = DecodeError::Undecodable;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        QTest::mousePress(m_show->show.get(), Qt::LeftButton);
        QVERIFY(m_show->menu() == nullptr);
    });
}

void TestSlideShowFailures::aFailureWaitsForTheDeletion_data()
{
    QTest::addColumn<bool>("deletes");
    QTest::newRow("Yes") << true;
    QTest::newRow("No") << false;
}

void TestSlideShowFailures::aFailureWaitsForTheDeletion()
{
    QFETCH(bool, deletes);
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->picture("b")->breaksOff = DecodeError::Undecodable;
    m_show->make({});
    QString text;
    m_show->run([&] {
        const auto press = [this] {
            m_show->key(Qt::Key_Delete);
        };
        ShowFixture::inBox(press, [&] {
            QTimer *report = m_show->timer("redrawTimer");
            m_show->picture("b")->finish();
            report->start(0);
            QTRY_VERIFY(!report->isActive());
            QVERIFY(ShowFixture::box()->standardButtons().testFlag(QMessageBox::Yes));
            // The key that opened this box opens the next one before it returns.
            QTimer::singleShot(0, m_show->show.get(), [&text] {
                QTRY_VERIFY(ShowFixture::box() != nullptr);
                text = ShowFixture::box()->text();
                ShowFixture::box()->accept();
            });
            answer(deletes ? QMessageBox::Yes : QMessageBox::No);
        });
        QVERIFY(m_show->isOver());
    });
    QCOMPARE(text, QStringLiteral("You did not open this file"));
    QCOMPARE(exists("a"), !deletes);
    QVERIFY(exists("b"));
    QCOMPARE(m_show->shown(), QStringLiteral("b"));
}

void TestSlideShowFailures::deletingAFailedPictureForgetsTheFailure()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->picture("a")->decodeMs = -1;
    m_show->picture("a")->breaksOff = DecodeError::Undecodable;
    for (const char *name : {"b", "c"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->run([this] {
        // Back to a, which stays on the screen.
        for (int i = 0; i < 3; ++i) {
            m_show->key(Qt::Key_Right);
        }
        QVERIFY(m_show->picture("a")->isDecoding());
        const auto press = [this] {
            m_show->key(Qt::Key_Delete);
        };
        ShowFixture::inBox(press, [this] {
            m_show->picture("a")->finish();
            answer(QMessageBox::Yes);
        });
        QVERIFY(!exists("a"));
        QTRY_VERIFY(m_show->picture("b")->isDecoding());
        m_show->picture("b")->finish();
        QVERIFY(m_show->sees("b"));
    });
}

void TestSlideShowFailures::aPictureCanBeDeletedBeforeAFailureIsReported_data()
{
    QTest::addColumn<bool>("deletes");
    QTest::newRow("Yes") << true;
    QTest::newRow("No") << false;
}

void TestSlideShowFailures::aPictureCanBeDeletedBeforeAFailureIsReported()
{
    QFETCH(bool, deletes);
    m_show->addPictures(3);
    m_show->picture("b")->refuses = DecodeError::Undecodable;
    m_show->make({});
    const BoxReader reader(deletes ? QMessageBox::Yes : QMessageBox::No);
    m_show->run([&] {
        // b has failed already, but a is on the screen.
        QVERIFY(m_show->timer("redrawTimer")->isActive());
        m_show->key(Qt::Key_Delete);
        QVERIFY(m_show->isOver());
    });
    QCOMPARE(reader.texts, kQuestionAndFailure);
    QCOMPARE(exists("a"), !deletes);
    QVERIFY(exists("b"));
    QCOMPARE(m_show->source.count(), deletes ? 2 : 3);
}

LUMI_TEST(TestSlideShowFailures)
#include "TestSlideShowFailures.moc"

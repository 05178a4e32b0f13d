// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "widgets/MyDialogProgressBar.h"

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

class TestMyDialogProgressBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looks();
    void secondTextIsOptional();
    void barFollows();
    void nothingToDoIsNoEndlessBar();
    void cancelIsReportedAndHides_data();
    void cancelIsReportedAndHides();
    void deletionReportsNothing();
};

void TestMyDialogProgressBar::looks()
{
    MyDialogProgressBar dialog(nullptr, QStringLiteral("Copying..."), QStringLiteral("<b>2</b>"));
    QVERIFY(dialog.isModal());
    QCOMPARE(dialog.layout()->contentsMargins(), QMargins(4, 4, 4, 4));
    QCOMPARE(dialog.layout()->spacing(), 4);
    const auto labels = dialog.findChildren<QLabel *>();
    QCOMPARE(labels.size(), qsizetype(2));
    for (const QLabel *label : labels) {
        QVERIFY(label->alignment().testFlag(Qt::AlignHCenter));
        QCOMPARE(label->textFormat(), Qt::PlainText);
    }
    auto *frame = qobject_cast<QFrame *>(labels.first()->parentWidget());
    QVERIFY(frame != nullptr);
    QCOMPARE(frame->frameStyle(), int(QFrame::Box) | int(QFrame::Raised));
    QCOMPARE(frame->lineWidth(), 2);
    QCOMPARE(frame->midLineWidth(), 2);
    QCOMPARE(frame->layout()->contentsMargins(), QMargins(8, 8, 8, 8));
    QCOMPARE(frame->layout()->spacing(), 4);

    auto *bar = dialog.findChild<QProgressBar *>();
    auto *barFrame = qobject_cast<QFrame *>(bar->parentWidget());
    QVERIFY(barFrame != nullptr && barFrame != frame);
    QCOMPARE(barFrame->frameStyle(), int(QFrame::Box) | int(QFrame::Raised));
    QCOMPARE(bar->minimumWidth(), 400);
    QVERIFY(bar->isTextVisible());
    QCOMPARE(bar->alignment(), Qt::AlignCenter);
    auto *cancel = dialog.findChild<QPushButton *>();
    QCOMPARE(cancel->text(), QStringLiteral("Cancel"));
    QCOMPARE(cancel->maximumWidth(), cancel->fontMetrics().horizontalAdvance(cancel->text()) + 16);

    dialog.start(3);
    const auto top = [&dialog](const QWidget *widget) {
        return widget->mapTo(&dialog, QPoint()).y();
    };
    QVERIFY(top(labels.first()) < top(bar));
    QVERIFY(top(bar) < top(labels.last()));
    QVERIFY(top(labels.last()) < top(cancel));
    QVERIFY(bar->width() >= 400);
}

void TestMyDialogProgressBar::secondTextIsOptional()
{
    const MyDialogProgressBar without(nullptr, QStringLiteral("Copying..."));
    QCOMPARE(without.findChildren<QLabel *>().size(), qsizetype(1));
    const MyDialogProgressBar empty(nullptr, QStringLiteral("Copying..."), QStringLiteral(""));
    QCOMPARE(empty.findChildren<QLabel *>().size(), qsizetype(2));
}

void TestMyDialogProgressBar::barFollows()
{
    MyDialogProgressBar dialog(nullptr, QStringLiteral("Copying..."));
    auto *bar = dialog.findChild<QProgressBar *>();
    dialog.start(20);
    QVERIFY(dialog.isVisible());
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 20);
    dialog.progress(7);
    QCOMPARE(bar->value(), 7);
    dialog.progress(20);
    QCOMPARE(bar->value(), 20);
    dialog.progress(21); // beyond the end: the bar stays
    QCOMPARE(bar->value(), 20);
}

void TestMyDialogProgressBar::nothingToDoIsNoEndlessBar()
{
    MyDialogProgressBar dialog(nullptr, QStringLiteral("Copying..."));
    dialog.start(0);
    QCOMPARE(dialog.findChild<QProgressBar *>()->maximum(), 1);
}

void TestMyDialogProgressBar::cancelIsReportedAndHides_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("the button") << QStringLiteral("button");
    QTest::newRow("Escape") << QStringLiteral("key");
    QTest::newRow("the window manager") << QStringLiteral("close");
}

void TestMyDialogProgressBar::cancelIsReportedAndHides()
{
    QFETCH(QString, way);
    MyDialogProgressBar dialog(nullptr, QStringLiteral("Copying..."));
    QList<bool> visibleWhenTold;
    connect(&dialog, &MyDialogProgressBar::btn_cancel_clicked, this, [&] {
        visibleWhenTold.append(dialog.isVisible());
    });
    const QSignalSpy rejected(&dialog, &QDialog::rejected);
    dialog.start(20);
    if (way == QLatin1String("button")) {
        QTest::mouseClick(dialog.findChild<QPushButton *>(), Qt::LeftButton);
    } else if (way == QLatin1String("key")) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
    } else {
        dialog.close();
    }
    QCOMPARE(visibleWhenTold.size(), qsizetype(1));
    QVERIFY(visibleWhenTold.first() || way == QLatin1String("close"));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(rejected.size(), 1);
    dialog.progress(9); // the work goes on and may still report
    QCOMPARE(dialog.findChild<QProgressBar *>()->value(), 9);
}

void TestMyDialogProgressBar::deletionReportsNothing()
{
    auto dialog = std::make_unique<MyDialogProgressBar>(nullptr, QStringLiteral("Copying..."));
    const QSignalSpy spy(dialog.get(), &MyDialogProgressBar::btn_cancel_clicked);
    dialog->start(20);
    dialog.reset();
    QCOMPARE(spy.size(), 0);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

LUMI_TEST(TestMyDialogProgressBar)
#include "TestMyDialogProgressBar.moc"

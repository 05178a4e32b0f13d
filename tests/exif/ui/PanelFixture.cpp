// SPDX-License-Identifier: MIT
#include "tests/exif/ui/PanelFixture.h"

#include "app/common/Settings.h"
#include "tests/support/FakeMachine.h"
#include "widgets/MyDialogWait.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QTest>
#include <QVBoxLayout>

lumi::test::WaitVisitor::WaitVisitor()
{
    qApp->installEventFilter(this);
}

bool lumi::test::WaitVisitor::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = qobject_cast<MyDialogWait *>(watched);
    if (event->type() == QEvent::Show && dialog != nullptr) {
        texts.append(dialog->findChild<QLabel *>()->text());
        visit();
    }
    return QObject::eventFilter(watched, event);
}

lumi::test::ExifBuilder lumi::test::describedPhoto()
{
    using enum ExifListKind;
    ExifBuilder builder;
    builder.photo(ExifBuilder::jpeg(80, 60, 0x4080C0))
        .ascii(Ifd0, 0x010F, "Anvil <Works> Ltd")
        .ascii(Ifd0, 0x8298, "Ann")
        .shorts(Exif, 0x9209, {0x19})
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'))
        .rationals(Gps, 0x0006, {{1050, 100}});
    return builder;
}

lumi::test::PanelFixture::PanelFixture()
{
    FakeMachine::install();
    lumi::Settings::setFontSize(2);
    item = put(describedPhoto(), QStringLiteral("a.jpg"));
    makePanel();
}

lumi::test::PanelFixture::~PanelFixture()
{
    window.reset();
    item.reset();
    Machine::install(nullptr);
}

std::unique_ptr<FPVItemJpeg> lumi::test::PanelFixture::put(const ExifBuilder &builder,
                                                           const QString &name)
{
    return std::make_unique<FPVItemJpeg>(folder.put(builder, name), QString(), false);
}

void lumi::test::PanelFixture::makePanel()
{
    window = std::make_unique<QWidget>();
    window->resize(548, 300);
    panel = new MyImageWidget(window.get());
    auto *column = new QVBoxLayout(window.get());
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(panel);
    column->addStretch();
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    combo = panel->findChild<QComboBox *>();
    button = panel->findChild<QPushButton *>();
    browser = panel->findChild<QTextBrowser *>();
}

QStringList lumi::test::PanelFixture::lines() const
{
    QStringList result;
    const auto all = browser->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : all) {
        result.append(line.trimmed());
    }
    result.removeAll(QString());
    return result;
}

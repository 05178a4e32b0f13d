// SPDX-License-Identifier: MIT
// A plugin that stands in for the user of the real program, where no pointer and no window
// manager are at hand. It writes a line for each window that appears to standard output,
// answers message boxes with their default button, and ends the program in the way that
// $LUMI_DRIVER_END names: "close" closes the main window as a window manager would, "exit:N"
// leaves the event loop with N, anything else lets the program run on.
#include <QApplication>
#include <QGenericPlugin>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QShowEvent>
#include <QThread>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kLookMs = 50;

class Driver : public QObject
{
public:
    Driver() { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow()) {
            appeared(widget);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static void report(const QString &line)
    {
        std::printf("%s\n", qPrintable(line));
        std::fflush(stdout);
    }

    void appeared(QWidget *window)
    {
        if (auto *box = qobject_cast<QMessageBox *>(window)) {
            QString text = box->text();
            text.replace(QLatin1Char('\n'), QLatin1Char('|'));
            report(QStringLiteral("box: %1: %2").arg(box->windowTitle(), text));
            QTimer::singleShot(kLookMs, box, [box] {
                box->buttons().constFirst()->click();
            });
        } else if (auto *main = qobject_cast<QMainWindow *>(window)) {
            report(QStringLiteral("window: %1").arg(main->windowTitle()));
            endLater(main);
        }
    }

    static QString wayOut() { return qEnvironmentVariable("LUMI_DRIVER_END"); }

    static void endLater(QMainWindow *main)
    {
        QTimer::singleShot(kLookMs, main, [main] {
            end(main);
        });
    }

    static void end(QMainWindow *main)
    {
        const QString way = wayOut();
        if (QThread::currentThread()->loopLevel() == 0) {
            endLater(main); // not in its event loop yet
        } else if (way == QLatin1String("close")) {
            main->close();
        } else if (way.startsWith(QLatin1String("exit:"))) {
            QCoreApplication::exit(way.mid(5).toInt());
        } else {
            report(QStringLiteral("running"));
        }
    }
};

} // namespace

class DriverPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    QObject *create(const QString & /*key*/, const QString & /*arguments*/) override
    {
        return new Driver;
    }
};

#include "DriverPlugin.moc"

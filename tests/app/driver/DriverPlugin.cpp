// SPDX-License-Identifier: MIT
// A plugin that acts as the user of the real program, in tests without a pointer and without a
// window manager. It writes a line for each window that appears to standard output and answers
// message boxes with their default button. $LUMI_DRIVER_END says how it ends the program:
// "close" closes the main window as a window manager would, "exit:N"
// leaves the event loop with N, "visit" first opens the slideshow and the full view of the
// browser's first photo and closes them after a second, "browse" opens the browser and lets
// the program run on. Any other value only lets the program run. With $LUMI_DRIVER_PICTURES it
// also writes the sizes of the pictures in the main window.
#include "app/common/FormId.h"

#include <QApplication>
#include <QEventLoop>
#include <QGenericPlugin>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QShowEvent>
#include <QThread>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kLookMs = 50;
constexpr int kVisitMs = 1000;

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
        auto *box = qobject_cast<QMessageBox *>(window);
        if (box != nullptr && !box->buttons().isEmpty()) { // the full view has none
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

    static void reportPictures(const QMainWindow *main)
    {
        const auto labels = main->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            const QSize size = label->pixmap(Qt::ReturnByValue).size();
            if (!size.isEmpty()) {
                report(QStringLiteral("picture: %1x%2").arg(size.width()).arg(size.height()));
            }
        }
    }

    static void visit(QMainWindow *main)
    {
        QMetaObject::invokeMethod(main, "changeForm", Q_ARG(int, lumi::FileForm),
                                  Q_ARG(QString, QString()));
        QEventLoop loop;
        QTimer::singleShot(kVisitMs, &loop, &QEventLoop::quit);
        loop.exec();
        // The slideshow leaves the cursor on the photo, which the full view needs.
        for (const char *slot : {"menu_disp_Slideshow_Execution", "menu_disp_DispAll"}) {
            QTimer::singleShot(kVisitMs, main, &Driver::leaveModalWindow);
            QMetaObject::invokeMethod(main->centralWidget(), slot); // returns when it is closed
        }
        main->close();
    }

    static void leaveModalWindow()
    {
        QWidget *window = QApplication::activeModalWidget();
        if (window != nullptr) {
            report(QStringLiteral("visited: %1 %2x%3")
                       .arg(QLatin1String(window->metaObject()->className()))
                       .arg(window->width())
                       .arg(window->height()));
            window->close();
        }
    }

    static void end(QMainWindow *main)
    {
        const QString way = wayOut();
        if (QThread::currentThread()->loopLevel() == 0) {
            endLater(main); // not in its event loop yet
            return;
        }
        if (qEnvironmentVariableIsSet("LUMI_DRIVER_PICTURES")) {
            reportPictures(main);
        }
        if (way == QLatin1String("visit")) {
            visit(main);
        } else if (way == QLatin1String("close")) {
            main->close();
        } else if (way.startsWith(QLatin1String("exit:"))) {
            QCoreApplication::exit(way.mid(5).toInt());
        } else {
            report(QStringLiteral("running"));
            if (way == QLatin1String("browse")) {
                QMetaObject::invokeMethod(main->centralWidget(), "btn_look_clicked");
            }
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

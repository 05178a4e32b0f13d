// SPDX-License-Identifier: MIT
// A plugin that acts as the user of the real program, in tests without a pointer and without a
// window manager. It writes a line for each window that appears to standard output, answers
// message boxes with their default button and accepts dialogs that ask for a text.
// $LUMI_DRIVER_END says how it ends the program: "close" closes the main window as a window manager
// would, "exit:N" leaves the event loop with N, "lost" calls exit() as Qt does when the X server is
// gone, "visit" first opens the slideshow and the full view of the browser's first photo and closes
// them after a second, "screen" writes the size of the screen in logical pixels and closes the main
// window. Other values let the program run: "browse" opens the browser, "open:A,B" also calls its
// slots A and B and leaves open what the last one opens, "import" imports the SD card, "behind"
// covers the main window by another one and writes a line when the main window is active again.
// With $LUMI_DRIVER_PICTURES it also writes the sizes of the pictures in the main window, with
// $LUMI_DRIVER_CHANGE it changes an option of the slideshow.
#include "app/common/FormId.h"

#include <QApplication>
#include <QEventLoop>
#include <QGenericPlugin>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShowEvent>
#include <QThread>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

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
        } else if (event->type() == QEvent::WindowActivate && m_cover != nullptr
                   && qobject_cast<QMainWindow *>(widget) != nullptr) {
            report(QStringLiteral("front: %1").arg(widget->windowTitle()));
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
        } else if (window->isModal()) {
            report(
                QStringLiteral("modal: %1").arg(QLatin1String(window->metaObject()->className())));
            acceptText(window);
            if (qEnvironmentVariableIsSet("LUMI_DRIVER_CHANGE")) {
                change(window);
            }
        }
    }

    /// As if an option was chosen.
    static void change(QWidget *window)
    {
        if (QMetaObject::invokeMethod(window, "combo_activated", Q_ARG(int, 0))) {
            report(QStringLiteral("changed"));
        }
    }

    static void acceptText(QWidget *window)
    {
        auto *dialog = qobject_cast<QDialog *>(window);
        if (dialog != nullptr && dialog->findChild<QLineEdit *>() != nullptr) {
            QTimer::singleShot(kLookMs, dialog, &QDialog::accept);
        }
    }

    static QString wayOut() { return qEnvironmentVariable("LUMI_DRIVER_END"); }

    void endLater(QMainWindow *main)
    {
        QTimer::singleShot(kLookMs, main, [this, main] {
            end(main);
        });
    }

    static void reportPictures(const QMainWindow *main)
    {
        const auto labels = main->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            const QSize size = label->pixmap().size();
            if (!size.isEmpty()) {
                report(QStringLiteral("picture: %1x%2").arg(size.width()).arg(size.height()));
            }
        }
    }

    static QWidget *formOf(QMainWindow *main)
    {
        return qobject_cast<QScrollArea *>(main->centralWidget())->widget();
    }

    static void showForm(QMainWindow *main, int id)
    {
        QMetaObject::invokeMethod(main, "changeForm", Q_ARG(int, id), Q_ARG(QString, QString()));
        QEventLoop loop;
        QTimer::singleShot(kVisitMs, &loop, &QEventLoop::quit);
        loop.exec();
    }

    /// Each slot returns when its window is closed. The last one stays open if wanted.
    static void visit(QMainWindow *main, const QStringList &slotNames, bool lastStays)
    {
        showForm(main, lumi::FileForm);
        for (const QString &name : slotNames) {
            if (!lastStays || name != slotNames.constLast()) {
                QTimer::singleShot(kVisitMs, main, &Driver::leaveModalWindow);
            }
            QMetaObject::invokeMethod(formOf(main), name.toLatin1().constData());
        }
    }

    void cover()
    {
        m_cover = new QWidget;
        m_cover->setAttribute(Qt::WA_QuitOnClose, false);
        m_cover->show();
        m_cover->activateWindow();
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

    void end(QMainWindow *main)
    {
        const QString way = wayOut();
        // Not in its event loop yet, or a box is open.
        if (QThread::currentThread()->loopLevel() == 0
            || QApplication::activeModalWidget() != nullptr) {
            endLater(main);
            return;
        }
        if (qEnvironmentVariableIsSet("LUMI_DRIVER_PICTURES")) {
            reportPictures(main);
        }
        if (way == QLatin1String("visit")) {
            // The slideshow leaves the cursor on the photo, which the full view needs.
            visit(main,
                  {QStringLiteral("menu_disp_Slideshow_Execution"),
                   QStringLiteral("menu_disp_DispAll")},
                  false);
            main->close();
        } else if (way == QLatin1String("close")) {
            main->close();
        } else if (way == QLatin1String("screen")) {
            const QSize size = main->screen()->size();
            report(QStringLiteral("screen: %1x%2").arg(size.width()).arg(size.height()));
            main->close();
        } else if (way.startsWith(QLatin1String("exit:"))) {
            QCoreApplication::exit(way.mid(5).toInt());
        } else if (way == QLatin1String("lost")) {
            std::exit(EXIT_FAILURE);
        } else {
            runOn(main, way);
        }
    }

    void runOn(QMainWindow *main, const QString &way)
    {
        if (way == QLatin1String("behind")) {
            cover();
        }
        report(QStringLiteral("running"));
        if (way == QLatin1String("browse")) {
            QMetaObject::invokeMethod(formOf(main), "btn_look_clicked");
        } else if (way.startsWith(QLatin1String("open:"))) {
            visit(main, way.mid(5).split(QLatin1Char(',')), true);
        } else if (way == QLatin1String("import")) {
            showForm(main, lumi::ImportForm);
            QMetaObject::invokeMethod(formOf(main), "btn_sd_clicked");
        }
    }

    QWidget *m_cover = nullptr;
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

// SPDX-License-Identifier: MIT
// Actions of a user in the windows that the browser opens, one after the other, and predicates on
// these windows.
#pragma once

#include "items/FPVItemImage.h"
#include "viewer/SlideMenu.h"
#include "viewer/SlideShow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <functional>

namespace lumi::test {

template <class Window> [[nodiscard]] Window *openWindow()
{
    auto *window = qobject_cast<Window *>(QApplication::activeModalWidget());
    return window != nullptr && window->isVisible() ? window : nullptr;
}

/// Performs actions in windows that open over the form, each as soon as possible. If one stays
/// impossible, all windows are closed, so that the test fails instead of hanging.
class Deeds
{
public:
    using Deed = std::function<bool()>; ///< false: not possible yet

    explicit Deeds(QList<Deed> deeds)
        : m_deeds(std::move(deeds))
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            if (!m_deeds.isEmpty() && !m_isBusy) {
                m_isBusy = true;
                const bool isDone = m_deeds.first()();
                m_isBusy = false;
                if (isDone) {
                    m_deeds.removeFirst();
                    m_patience.start();
                }
            }
        });
        m_timer.start(10);
        m_patience.setSingleShot(true);
        m_patience.setInterval(kPatienceMs);
        QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] {
            giveUp();
        });
        m_patience.start();
    }

    [[nodiscard]] bool allDone() const { return m_deeds.isEmpty() && !m_hasGivenUp; }

private:
    void giveUp()
    {
        m_hasGivenUp = true;
        m_deeds = {[] {
            QWidget *window = QApplication::activePopupWidget();
            window = window != nullptr ? window : QApplication::activeModalWidget();
            if (window != nullptr) {
                window->close();
            }
            return false;
        }};
    }

    static constexpr int kPatienceMs = 20000;

    QTimer m_timer;
    QTimer m_patience;
    QList<Deed> m_deeds;
    bool m_isBusy = false;
    bool m_hasGivenUp = false;
};

[[nodiscard]] inline Deeds::Deed seesPhoto(const QString &name)
{
    return [name] {
        const auto *show = openWindow<SlideShow>();
        return show != nullptr && show->lastItem() != nullptr
            && show->lastItem()->fileName() == name;
    };
}

[[nodiscard]] inline Deeds::Deed presses(Qt::Key key)
{
    return [key] {
        // Boxes and menus run nested loops, in which the next actions must be performed.
        QTimer::singleShot(0, qApp, [key] {
            QTest::keyClick(QApplication::activeModalWidget(), key);
        });
        return true;
    };
}

[[nodiscard]] inline Deeds::Deed chooses(int entry)
{
    return [entry] {
        auto *menu = qobject_cast<lumi::SlideMenu *>(QApplication::activePopupWidget());
        if (menu == nullptr) {
            return false;
        }
        menu->setActiveAction(menu->findItem(entry));
        QTest::keyClick(menu, Qt::Key_Return);
        return true;
    };
}

/// The photo was deleted, and the next one is still being decoded.
[[nodiscard]] inline Deeds::Deed seesNothing()
{
    return [] {
        const auto *show = openWindow<SlideShow>();
        return show != nullptr && show->lastItem() == nullptr;
    };
}

[[nodiscard]] inline Deeds::Deed opensMenu()
{
    return presses(Qt::Key_Menu);
}

template <class Window> [[nodiscard]] Deeds::Deed closes()
{
    return [] {
        auto *window = openWindow<Window>();
        return window != nullptr && window->close();
    };
}

[[nodiscard]] inline Deeds::Deed answers(QMessageBox::StandardButton button)
{
    return [button] {
        auto *box = openWindow<QMessageBox>();
        if (box == nullptr || box->button(button) == nullptr) {
            return false;
        }
        box->button(button)->click();
        return true;
    };
}

/// Records which windows appear, and whether the wait dialog was shown at that moment.
class WindowLog : public QObject
{
public:
    WindowLog() { qApp->installEventFilter(this); }

    QStringList shown;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow()) {
            shown.append(QLatin1String(widget->metaObject()->className()));
        } else if (event->type() == QEvent::Hide && watched->inherits("MyDialogWait")) {
            shown.append(QStringLiteral("wait is gone"));
        }
        return false;
    }
};

} // namespace lumi::test

// SPDX-License-Identifier: MIT
#include "items/FPVItemFolder.h"
#include "items/FPVItemJpeg.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/BrowserWorld.h"
#include "views/FPVPictureView.h"

#include <QAccessible>
#include <QMetaMethod>
#include <QResizeEvent>
#include <QSignalSpy>
#include <QTest>

using lumi::test::BrowserWorld;

namespace {

constexpr QSize kPlace(245, 185);

/// A picture of 400 x 300 that counts how often it is decoded.
class CountedImage : public FPVItemImage
{
public:
    CountedImage()
        : FPVItemImage(QStringLiteral("/nowhere/p.jpg"), QString(), false)
    { }

    QSize fitSize(QSize box) override
    {
        boxes.append(box);
        return {box.width() / 2, box.height() / 2};
    }

    QPixmap *decodedPixmap(int w, int h) override
    {
        decoded.append(QSize(w, h));
        if (fails) {
            return nullptr;
        }
        auto *pixmap = new QPixmap(w, h);
        pixmap->fill(Qt::red);
        return pixmap;
    }

    QList<QSize> boxes;
    QList<QSize> decoded;
    bool fails = false;
};

/// Makes event handlers public.
class OpenView : public FPVPictureView
{
public:
    using FPVPictureView::FPVPictureView;
    using FPVPictureView::resizeEvent;

    [[nodiscard]] QSize shown() const { return pixmap().size(); }
};

void release(QWidget *widget, QPoint at)
{
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(10, 10),
                      widget->mapToGlobal(QPoint(10, 10)), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(widget, &press);
    QMouseEvent event(QEvent::MouseButtonRelease, QPointF(at), widget->mapToGlobal(at),
                      Qt::LeftButton, {}, {});
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

class TestFPVPictureView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isALabelOfItsName();
    void screenReadersCanPressIt();
    void refreshShowsThePictureInItsPlace();
    void withoutRefreshTheNextSizeShowsIt();
    void anEqualSizeDecodesNothing();
    void noItemBlanksIt();
    void aFolderCountsAsNoItem();
    void anotherSizeShowsTheSamePixmap();
    void theSameItemAgainIsDecodedAnew();
    void aPictureThatCannotBeDecodedLeavesItEmpty();
    void aPhotoIsFittedIntoThePlace_data();
    void aPhotoIsFittedIntoThePlace();
    void aTapDecides_data();
    void aTapDecides();
    void theTapIsJudgedByItsLocalPosition();
    void aTapWithoutAnItemIsNothing();
    void theTapIsAccepted();
    void aDeletedItemCountsAsNone();
};

void TestFPVPictureView::isALabelOfItsName()
{
    const FPVPictureView view;
    QCOMPARE(view.objectName(), QStringLiteral("PictureView"));
    const QMetaObject *meta = view.metaObject();
    QCOMPARE(meta->superClass(), &QLabel::staticMetaObject);
    QList<QByteArray> names;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        names.append(meta->method(i).methodSignature());
    }
    QCOMPARE(names, (QList<QByteArray>{"clicked(QMouseEvent*)", "decided(FPVItemObject*)"}));
}

void TestFPVPictureView::screenReadersCanPressIt()
{
    CountedImage image;
    FPVPictureView view;
    view.resize(kPlace);
    view.show();
    QList<FPVItemObject *> opened;
    connect(&view, &FPVPictureView::decided, this, [&opened](FPVItemObject *item) {
        opened.append(item);
    });
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&view);
    const auto press = [seen] {
        seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
    };
    QCOMPARE(seen->role(), QAccessible::Button);
    QVERIFY(seen->state().disabled);
    press();
    QVERIFY(opened.isEmpty());
    view.setItem(&image, true);
    QVERIFY(!seen->state().disabled);
    press();
    QCOMPARE(opened, QList<FPVItemObject *>{&image});
}

void TestFPVPictureView::refreshShowsThePictureInItsPlace()
{
    CountedImage item;
    OpenView view;
    view.setFixedSize(kPlace);
    QVERIFY(view.setItem(&item, true));
    QCOMPARE(item.boxes, QList<QSize>{kPlace});
    QCOMPARE(item.decoded, (QList<QSize>{QSize(122, 92)}));
    QCOMPARE(view.shown(), QSize(122, 92));
    QCOMPARE(view.item(), &item);
}

void TestFPVPictureView::withoutRefreshTheNextSizeShowsIt()
{
    CountedImage item;
    OpenView view;
    view.resize(100, 100);
    view.show();
    QVERIFY(view.setItem(&item, false));
    QVERIFY(item.decoded.isEmpty());
    view.resize(60, 40);
    QCOMPARE(item.decoded, (QList<QSize>{QSize(30, 20)}));
    QCOMPARE(view.shown(), QSize(30, 20));
}

void TestFPVPictureView::anEqualSizeDecodesNothing()
{
    CountedImage item;
    OpenView view;
    view.resize(100, 100);
    view.setItem(&item, false);
    QResizeEvent event(QSize(100, 100), QSize(100, 100));
    view.resizeEvent(&event);
    QVERIFY(item.decoded.isEmpty());
    QVERIFY(view.shown().isEmpty());
}

void TestFPVPictureView::noItemBlanksIt()
{
    CountedImage item;
    OpenView view;
    view.resize(100, 100);
    view.setItem(&item, true);
    QVERIFY(!view.shown().isEmpty());
    QVERIFY(view.setItem(nullptr, true));
    QVERIFY(view.shown().isEmpty());
    QCOMPARE(view.item(), nullptr);
}

void TestFPVPictureView::aFolderCountsAsNoItem()
{
    CountedImage item;
    FPVItemFolder folder(QStringLiteral("/nowhere/f"), QString(), false);
    OpenView view;
    view.resize(100, 100);
    view.setItem(&item, true);
    view.setItem(&folder, true);
    QVERIFY(view.shown().isEmpty());
    QCOMPARE(view.item(), nullptr);
}

void TestFPVPictureView::anotherSizeShowsTheSamePixmap()
{
    CountedImage item;
    OpenView view;
    view.resize(100, 100);
    view.show();
    view.setItem(&item, true);
    const qint64 key = view.pixmap().cacheKey();
    view.resize(300, 200);
    QCOMPARE(item.decoded.size(), 1);
    QCOMPARE(view.shown(), QSize(50, 50));
    QCOMPARE(view.pixmap().cacheKey(), key);
    QVERIFY(!view.hasScaledContents());
}

void TestFPVPictureView::theSameItemAgainIsDecodedAnew()
{
    CountedImage item;
    OpenView view;
    view.resize(100, 100);
    view.setItem(&item, true);
    view.resize(200, 100);
    view.setItem(&item, true);
    QCOMPARE(item.decoded, (QList<QSize>{QSize(50, 50), QSize(100, 50)}));
}

void TestFPVPictureView::aPictureThatCannotBeDecodedLeavesItEmpty()
{
    CountedImage item;
    item.fails = true;
    OpenView view;
    view.resize(100, 100);
    view.show();
    view.setItem(&item, true);
    QVERIFY(view.shown().isEmpty());
    // The item is kept and decoded again at another size.
    QCOMPARE(view.item(), &item);
    item.fails = false;
    view.resize(200, 200);
    QCOMPARE(view.shown(), QSize(100, 100));
}

void TestFPVPictureView::aPhotoIsFittedIntoThePlace_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("a wide one takes the width") << QSize(490, 200) << QSize(245, 100);
    QTest::newRow("a high one takes the height") << QSize(200, 370) << QSize(100, 185);
    QTest::newRow("a small one keeps within the place") << QSize(49, 37) << QSize(245, 185);
}

void TestFPVPictureView::aPhotoIsFittedIntoThePlace()
{
    const auto [photo, shown] = lumi::test::row<QSize, QSize>();
    BrowserWorld world;
    FPVItemJpeg item(world.makePhoto(QStringLiteral("p.jpg"), photo, Qt::red), QString(), false);
    OpenView view;
    view.setFixedSize(kPlace);
    view.setItem(&item, true);
    QCOMPARE(view.shown(), shown);
    const QColor middle = view.grab().toImage().pixelColor(kPlace.width() / 2, kPlace.height() / 2);
    QVERIFY(middle.red() > 240 && middle.green() < 15 && middle.blue() < 15);
}

void TestFPVPictureView::aTapDecides_data()
{
    lumi::test::columns<QPoint, int>();
    QTest::newRow("in the middle") << QPoint(50, 50) << 1;
    QTest::newRow("on the first point inside") << QPoint(1, 1) << 1;
    QTest::newRow("on the last point") << QPoint(99, 99) << 1;
    QTest::newRow("on the left edge") << QPoint(0, 50) << 0;
    QTest::newRow("on the upper edge") << QPoint(50, 0) << 0;
    QTest::newRow("right of it") << QPoint(100, 50) << 0;
    QTest::newRow("below it") << QPoint(50, 100) << 0;
    QTest::newRow("left of it") << QPoint(-3, 50) << 0;
}

void TestFPVPictureView::aTapDecides()
{
    const auto [at, times] = lumi::test::row<QPoint, int>();
    CountedImage item;
    FPVPictureView view;
    view.resize(100, 100);
    view.setItem(&item, true);
    const QSignalSpy decided(&view, &FPVPictureView::decided);
    const QSignalSpy clicked(&view, &FPVPictureView::clicked);
    release(&view, at);
    QCOMPARE(int(decided.size()), times);
    if (!decided.isEmpty()) {
        QCOMPARE(decided.first().first().value<FPVItemObject *>(), &item);
    }
    QCOMPARE(clicked.size(), 0);
}

void TestFPVPictureView::theTapIsJudgedByItsLocalPosition()
{
    CountedImage item;
    QWidget window;
    FPVPictureView view(&window);
    view.setGeometry(150, 30, 100, 100);
    view.setItem(&item, true);
    const QSignalSpy decided(&view, &FPVPictureView::decided);
    release(&view, QPoint(50, 50));
    QCOMPARE(decided.size(), 1);
    // Left of the view, but inside its window.
    release(&view, QPoint(-80, 50));
    QCOMPARE(decided.size(), 1);
}

void TestFPVPictureView::aTapWithoutAnItemIsNothing()
{
    FPVPictureView view;
    view.resize(100, 100);
    const QSignalSpy decided(&view, &FPVPictureView::decided);
    release(&view, QPoint(50, 50));
    QCOMPARE(decided.size(), 0);
}

void TestFPVPictureView::theTapIsAccepted()
{
    struct Listener : QObject
    {
        int releases = 0;

        bool eventFilter(QObject * /*watched*/, QEvent *event) override
        {
            releases += event->type() == QEvent::MouseButtonRelease ? 1 : 0;
            return false;
        }
    } listener;

    CountedImage item;
    QWidget place;
    FPVPictureView view(&place);
    place.installEventFilter(&listener);
    view.resize(100, 100);
    view.setItem(&item, true);
    release(&view, QPoint(50, 50));
    QCOMPARE(listener.releases, 0);
}

void TestFPVPictureView::aDeletedItemCountsAsNone()
{
    auto item = std::make_unique<CountedImage>();
    OpenView view;
    view.resize(100, 100);
    view.show();
    view.setItem(item.get(), true);
    const QSignalSpy decided(&view, &FPVPictureView::decided);
    item.reset();
    QCOMPARE(view.item(), nullptr);
    release(&view, QPoint(50, 50));
    QCOMPARE(decided.size(), 0);
    view.resize(200, 200);
    QVERIFY(view.shown().isEmpty());
}

LUMI_TEST(TestFPVPictureView)
#include "TestFPVPictureView.moc"

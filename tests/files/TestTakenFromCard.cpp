// SPDX-License-Identifier: MIT
// Photos are cut or copied on a card, and the card is removed before the paste. Photos of another
// card with the same names must not be pasted. If the same card is inserted again, its photos are.
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/TestMain.h"
#include "tests/support/fileAge.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QTest>

using namespace lumi::test;

namespace {

/// Older than the photos of the second card, which have the same sizes.
constexpr std::time_t kLongAgo = 1'000'000'000;

void makeOld(const QString &folder)
{
    setChangedAt(folder, kLongAgo);
    QDirIterator walk(folder, QDir::AllEntries | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        setChangedAt(walk.next(), kLongAgo);
    }
}

} // namespace

class TestTakenFromCard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anotherCardKeepsItsPhotos_data() { addEntries(); }

    void anotherCardKeepsItsPhotos();

    void theSameCardGivesItsPhotos_data() { addEntries(); }

    void theSameCardGivesItsPhotos();

private:
    static void addEntries();
    /// Shows the card, cuts or copies, and removes the card.
    void takeAndTakeOut(int entry, const QString &item);
    void makePhotos(QColor colour);
    void putIn();
    /// Shows the store and pastes there. Returns the lines of the dialogs.
    [[nodiscard]] QStringList paste();
    /// Names and contents of all files of the card.
    [[nodiscard]] QMap<QString, QByteArray> card() const;

    std::unique_ptr<FormFixture> m_form;
    QString m_card;
};

void TestTakenFromCard::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->world.makePhoto(QStringLiteral("mine.jpg"));
    m_card = m_form->world.machine->sd;
    makePhotos(Qt::red);
    makeOld(m_card + QStringLiteral("/dcim"));
    m_form->world.machine->insertCard(Slot::SD);
}

void TestTakenFromCard::cleanup()
{
    m_form.reset();
}

void TestTakenFromCard::addEntries()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QStringList>("pasted");
    QTest::newRow("a photo that was cut") << kCut << "a00.jpg" << list("a00.jpg mine.jpg");
    QTest::newRow("a photo that was copied") << kCopy << "a00.jpg" << list("a00.jpg mine.jpg");
    QTest::newRow("a folder that was copied")
        << kCopy << "trip" << list("mine.jpg trip trip/a00.jpg");
    QTest::newRow("marked photos that were cut")
        << kCutChecked << "a00.jpg" << list("a00.jpg a01.jpg mine.jpg");
    QTest::newRow("marked photos that were copied")
        << kCopyChecked << "a00.jpg" << list("a00.jpg a01.jpg mine.jpg");
}

void TestTakenFromCard::makePhotos(QColor colour)
{
    for (const char *name : {"/dcim/a00.jpg", "/dcim/a01.jpg", "/dcim/trip/a00.jpg"}) {
        m_form->world.makePhoto(m_card + QLatin1String(name), QSize(80, 60), colour);
    }
}

void TestTakenFromCard::takeAndTakeOut(int entry, const QString &item)
{
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
    m_form->choose(QStringLiteral("SD Card"));
    QTRY_COMPARE(m_form->names(), list("trip a00.jpg a01.jpg"));
    m_form->select(qPrintable(item));
    m_form->view->checkAll();
    QTRY_COMPARE(m_form->names(), list("trip a00.jpg a01.jpg"));
    QVERIFY(m_form->play(entry).isEmpty());
    QVERIFY(!m_form->view->clipboardPaths().isEmpty());
    const QString away = m_form->world.machine->folder.filePath(QStringLiteral("away"));
    QVERIFY(QDir().rename(m_card + QStringLiteral("/dcim"), away));
    m_form->world.machine->removeCard(Slot::SD);
    m_form->tellCardChange();
    QTRY_COMPARE(m_form->names(), list("mine.jpg"));
}

void TestTakenFromCard::putIn()
{
    m_form->world.machine->insertCard(Slot::SD);
    m_form->tellCardChange();
}

QStringList TestTakenFromCard::paste()
{
    m_form->choose(QStringLiteral("Photo_Files"));
    if (!QTest::qWaitFor([this] {
            return m_form->names() == list("mine.jpg");
        })) {
        return {QStringLiteral("the store is not on show")};
    }
    return m_form->play(kPaste, {ok()});
}

QMap<QString, QByteArray> TestTakenFromCard::card() const
{
    QMap<QString, QByteArray> found;
    QDirIterator walk(m_card, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        found.insert(file.fileName().mid(m_card.size()),
                     file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
    return found;
}

void TestTakenFromCard::anotherCardKeepsItsPhotos()
{
    QFETCH(int, entry);
    QFETCH(QString, item);
    takeAndTakeOut(entry, item);
    makePhotos(Qt::blue);
    putIn();
    const auto before = card();
    QCOMPARE(before.size(), 3);
    QCOMPARE(paste(), (QStringList{kWorking, kNotPasted}));
    QVERIFY(card() == before);
    QCOMPARE(m_form->storeTree(), list("mine.jpg"));
}

void TestTakenFromCard::theSameCardGivesItsPhotos()
{
    QFETCH(int, entry);
    QFETCH(QString, item);
    const auto before = card();
    takeAndTakeOut(entry, item);
    const QString away = m_form->world.machine->folder.filePath(QStringLiteral("away"));
    QVERIFY(QDir().rename(away, m_card + QStringLiteral("/dcim")));
    putIn();
    QCOMPARE(paste(), QStringList{kWorking});
    QTEST(m_form->storeTree(), "pasted");
    const QStringList cut = entry == kCut ? list("/dcim/a00.jpg")
        : entry == kCutChecked            ? list("/dcim/a00.jpg /dcim/a01.jpg")
                                          : QStringList();
    auto left = before;
    for (const QString &name : cut) {
        left.remove(name);
    }
    QVERIFY(card() == left);
    QFile pasted(m_form->world.path(item == QLatin1String("trip") ? QStringLiteral("trip/a00.jpg")
                                                                  : QStringLiteral("a00.jpg")));
    QVERIFY(pasted.open(QIODevice::ReadOnly));
    QCOMPARE(pasted.readAll(), before.value(QStringLiteral("/dcim/a00.jpg")));
}

LUMI_TEST(TestTakenFromCard)
#include "TestTakenFromCard.moc"

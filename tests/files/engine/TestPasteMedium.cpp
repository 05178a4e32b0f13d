// SPDX-License-Identifier: MIT
// A medium that is removed before or during a paste into one of its folders. A link whose target
// changes stands in for the mount point.
#include "app/common/Medium.h"
#include "items/FPVItemList.h"
#include "platform/cards/CardSlots.h"
#include "tests/files/engine/PasteTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/fileAge.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <memory>

using lumi::PasteResult;
using lumi::test::FileFaults;
using lumi::test::FileFixture;
using lumi::test::list;

namespace {

constexpr int kPhotoBytes = 30000;

} // namespace

class TestPasteMedium : public PasteTest
{
    Q_OBJECT

private Q_SLOTS:
    void aMediumRemovedBetweenTwoPhotos_data();
    void aMediumRemovedBetweenTwoPhotos();
    void aMediumRemovedWhileAFolderIsRead();
    void aCardThatIsExchangedWhileItsFolderIsRead();
    void aMediumRemovedAfterTheListing_data();
    void aMediumRemovedAfterTheListing();

private:
    /// Makes a photo, and a listing of the folder on the medium.
    void prepare();

    QByteArray m_photo;
    std::unique_ptr<FPVItemList> m_items;
};

void TestPasteMedium::prepare()
{
    m_photo = FileFixture::noise(kPhotoBytes);
    m_files->make(QStringLiteral("a.jpg"), m_photo);
    m_items = std::make_unique<FPVItemList>(m_files->path(QStringLiteral("to")), m_files->path());
}

void TestPasteMedium::aMediumRemovedBetweenTwoPhotos_data()
{
    QTest::addColumn<QString>("rest");
    QTest::newRow("its folder is on another disk now") << "/proc";
    QTest::newRow("its folder is gone") << "";
}

/// As after unmounting a card: nothing may be written into the remaining folder.
void TestPasteMedium::aMediumRemovedBetweenTwoPhotos()
{
    QFETCH(QString, rest);
    prepare();
    const QString card = m_files->makeLink(QStringLiteral("card"), QStringLiteral("to"));
    const QString second = m_files->make(QStringLiteral("b.jpg"), m_photo);
    FileFaults faults(m_files->path());
    faults.doBefore(FileFaults::Remove, 1, [this, card, rest] {
        QVERIFY(QFile::remove(card));
        if (!rest.isEmpty()) {
            m_files->makeLink(QStringLiteral("card"), rest);
        }
    });
    m_clipboard.take({m_files->path(QStringLiteral("a.jpg")), second}, true);
    QCOMPARE(m_clipboard.paste(card, m_items.get()), PasteResult::Missing);
    QCOMPARE(faults.count(FileFaults::OpenToRead), 1);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), m_photo);
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")), m_photo);
    QCOMPARE(m_items->count(), 1);
}

void TestPasteMedium::aMediumRemovedWhileAFolderIsRead()
{
    prepare();
    m_files->make(QStringLiteral("trip/a.jpg"), m_photo);
    const QString card = m_files->makeLink(QStringLiteral("card"), QStringLiteral("to"));
    QTimer::singleShot(0, this, [this, card] {
        QVERIFY(QFile::remove(card));
        m_files->makeLink(QStringLiteral("card"), QStringLiteral("/proc"));
    });
    FileFaults faults(m_files->path());
    m_clipboard.take({m_files->path(QStringLiteral("trip"))}, false);
    QCOMPARE(m_clipboard.paste(card, m_items.get()), PasteResult::Missing);
    QCOMPARE(faults.count(FileFaults::MakeFolder), 0);
    QVERIFY(m_files->entries(QStringLiteral("to")).isEmpty());
    QCOMPARE(m_items->count(), 0);
}

/// The names were read from the first card.
void TestPasteMedium::aCardThatIsExchangedWhileItsFolderIsRead()
{
    prepare();
    m_machine->sd = m_files->path(QStringLiteral("card"));
    m_machine->insertCard(Slot::SD);
    m_files->make(QStringLiteral("card/trip/a.jpg"), m_photo);
    const QString trip = m_files->path(QStringLiteral("card/trip"));
    lumi::test::setChangedAt(trip, 1);
    QTimer::singleShot(0, this, [this, trip] {
        QVERIFY(QDir(trip).removeRecursively());
        m_machine->removeCard(Slot::SD);
        lumi::CardSlots::look();
        m_machine->insertCard(Slot::SD);
        m_files->make(QStringLiteral("card/trip/a.jpg"), "another photo");
    });
    m_clipboard.take({trip}, false);
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), m_items.get()),
             PasteResult::Missing);
    QCOMPARE(m_files->content(QStringLiteral("card/trip/a.jpg")), QByteArray("another photo"));
    QVERIFY(m_files->entries(QStringLiteral("to")).isEmpty());
    QCOMPARE(m_items->count(), 0);
}

void TestPasteMedium::aMediumRemovedAfterTheListing_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("a photo, the folder is on show") << "a.jpg" << true;
    QTest::newRow("a folder, the folder is on show") << "trip" << true;
    // Its former medium is not known.
    QTest::newRow("a photo, the folder is not on show") << "a.jpg" << false;
}

/// The target is the folder that was listed, not another one that has its name now.
void TestPasteMedium::aMediumRemovedAfterTheListing()
{
    const auto [source, isListed] = lumi::test::row<QString, bool>();
    prepare();
    m_files->make(QStringLiteral("trip/a.jpg"), m_photo);
    const QString card = m_files->makeLink(QStringLiteral("card"), QStringLiteral("to"));
    if (isListed) {
        QCOMPARE(m_items->load(card, QString()), lumi::ListResult::Listed);
    }
    QVERIFY(QFile::remove(card));
    m_files->makeLink(QStringLiteral("card"), QStringLiteral("/proc"));
    FileFaults faults(m_files->path());
    m_clipboard.take({m_files->path(source)}, source == QLatin1String("a.jpg"));
    const PasteResult result = m_clipboard.paste(card, m_items.get());
    QCOMPARE(result == PasteResult::Missing, isListed);
    QVERIFY(result != PasteResult::Done);
    QCOMPARE(faults.count(FileFaults::Open | FileFaults::Remove) == 0, isListed);
    QCOMPARE(m_files->content(QStringLiteral("a.jpg")), m_photo);
    QCOMPARE(m_items->count(), 0);
}

LUMI_TEST(TestPasteMedium)
#include "TestPasteMedium.moc"

// SPDX-License-Identifier: MIT
#include "tests/exif/ui/EditorFixture.h"

#include "exif/tag/FPVExifTagBytes.h"
#include "platform/QPEMenuBar.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

constexpr int kPatienceMs = 20000;
/// The part of the segment's length before the block: length field and "Exif" with two NULs.
constexpr int kLengthBeforeBlock = 8;

} // namespace

QString lumi::test::shownText(const QAction *action)
{
    const QString twice = QStringLiteral("&&");
    return action->text()
        .split(twice)
        .replaceInStrings(QStringLiteral("&"), QString())
        .join(QLatin1Char('&'));
}

lumi::test::ExifBuilder lumi::test::editablePhoto()
{
    using enum ExifListKind;
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .ascii(Ifd0, 0x013B, "Jane Doe")
        .ascii(Ifd0, 0x010E, "Harbour")
        .ascii(Ifd0, 0x8298, QByteArray("Ann\0Trip", 8))
        .undefined(Exif, 0x9000, "0220")
        .ascii(Exif, 0xA004, QByteArray("DSC00001.WAV", 12))
        .undefined(Exif, 0x9286, QByteArray("UNICODE\0", 8) + "at noon")
        .value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .ascii(Gps, 0x0001, "S")
        .rationals(Gps, 0x0002, {{12, 1}, {34, 1}, {56789, 1000}})
        .ascii(Gps, 0x0003, "W")
        .rationals(Gps, 0x0004, {{77, 1}, {2, 1}, {3, 1}})
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'))
        .rationals(Gps, 0x0006, {{1050, 100}})
        .thumbnail(ExifBuilder::jpeg(40, 30, 0xC08040));
    return photo;
}

lumi::test::ExifBuilder lumi::test::crampedPhoto(int length, Filling filling,
                                                 const QByteArray &thumbnail)
{
    const auto photoWith = [&](int size) {
        ExifBuilder photo;
        photo.ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works");
        const QByteArray bytes(size, 'f');
        if (filling == Filling::Thumbnail) {
            photo.thumbnail(thumbnail + bytes);
        } else {
            photo.makerNote(bytes);
            if (!thumbnail.isEmpty()) {
                photo.thumbnail(thumbnail + QByteArray(thumbnail.size() % 2, 'e'));
            }
        }
        return photo.photo(ExifBuilder::jpeg(64, 48, 0x345678));
    };
    constexpr int kAtFirst = 1000;
    const auto first = int(photoWith(kAtFirst).block().size());
    return photoWith(kAtFirst + length - kLengthBeforeBlock - first);
}

lumi::test::EditorFixture::EditorFixture()
    : machine(FakeMachine::install())
{
    fillClipboard(QString());
}

lumi::test::EditorFixture::~EditorFixture()
{
    form.reset();
    Machine::install(nullptr);
}

void lumi::test::EditorFixture::open(const ExifBuilder &photo, const QString &name)
{
    path = folder.put(photo, name);
    reopen();
}

void lumi::test::EditorFixture::reopen()
{
    form = std::make_unique<FormExif>(&browser, path);
    form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    tabs = form->findChild<QTabWidget *>();
}

int lumi::test::EditorFixture::run(const std::function<void()> &steps)
{
    QTimer::singleShot(0, form.get(), steps);
    QTimer tooLong;
    tooLong.setSingleShot(true);
    QObject::connect(&tooLong, &QTimer::timeout, form.get(), [this] {
        QTest::qFail("the editor stays open", __FILE__, __LINE__);
        form->hide();
    });
    tooLong.start(kPatienceMs);
    return form->exec();
}

MyMultiLineEdit *lumi::test::EditorFixture::edit(EditField field) const
{
    QList<MyMultiLineEdit *> edits;
    for (int page = 0; page < tabs->count(); ++page) {
        edits += tabs->widget(page)->findChildren<MyMultiLineEdit *>();
    }
    return edits.at(field);
}

void lumi::test::EditorFixture::enter(EditField field)
{
    for (int page = 0; page < tabs->count(); ++page) {
        if (tabs->widget(page)->isAncestorOf(edit(field))) {
            tabs->setCurrentIndex(page);
        }
    }
    edit(field)->setFocus();
    QVERIFY(edit(field)->hasFocus());
}

void lumi::test::EditorFixture::type(EditField field, const QString &text)
{
    enter(field);
    edit(field)->selectAll();
    QTest::keyClick(edit(field), Qt::Key_Delete);
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, edit(field), Qt::Key_unknown, QString(character), {});
    }
}

void lumi::test::EditorFixture::control(EditField field, Qt::Key key)
{
    QTest::keyClick(edit(field), key, Qt::ControlModifier);
}

void lumi::test::EditorFixture::fillClipboard(const QString &text)
{
    QApplication::clipboard()->setText(text);
}

QAction *lumi::test::EditorFixture::entry(const QString &text) const
{
    const auto menus = form->findChild<QPEMenuBar *>()->actions();
    for (const QAction *menu : menus) {
        const auto entries = menu->menu()->actions();
        for (QAction *candidate : entries) {
            if (shownText(candidate) == text) {
                return candidate;
            }
        }
    }
    return nullptr;
}

std::unique_ptr<FPVExifDocument> lumi::test::EditorFixture::document() const
{
    return std::make_unique<FPVExifDocument>(path);
}

QByteArray lumi::test::EditorFixture::value(int tag, ExifListKind list) const
{
    const auto block = document();
    const auto *found = dynamic_cast<FPVExifTagBytes *>(block->find(tag, list));
    return found != nullptr ? QByteArray(found->data(), found->size()) : QByteArray();
}

QByteArray lumi::test::EditorFixture::fileBytes() const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

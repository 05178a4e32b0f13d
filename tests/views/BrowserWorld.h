// SPDX-License-Identifier: MIT
// The environment of browser tests: a photo store in a private home, a machine with two card slots,
// and pixmaps of one colour each, which identify the frame of a cell.
#pragma once

#include "items/FPVItemImage.h"
#include "tests/support/FakeMachine.h"

#include <QColor>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

namespace lumi::test {

class BrowserWorld
{
public:
    BrowserWorld();
    ~BrowserWorld();

    /// Relative paths are in the photo store. Parent folders are made.
    [[nodiscard]] QString path(const QString &name) const;
    QString makeFolder(const QString &name);
    QString makePhoto(const QString &name, QSize size = QSize(80, 60), QColor colour = Qt::green);
    /// Photos a00.jpg, a01.jpg and so on.
    void makePhotos(int count, const QString &folder = QString());
    QString makeFile(const QString &name, const QByteArray &content);

    /// The colour of a pixmap such as "frame_pic_l_on".
    [[nodiscard]] static QColor frameColour(const QString &name);
    /// The colour of a pixmap such as "copy_cf_push".
    [[nodiscard]] static QColor cardButtonColour(const QString &name);

    FakeMachine *machine; ///< lent
    QString store;

private:
    void makePixmaps();

    QTemporaryDir m_resources;
};

/// A picture that records the calls of the view.
class NotingImage : public FPVItemImage
{
    Q_OBJECT

public:
    explicit NotingImage(const QString &path)
        : FPVItemImage(path, QString(), false)
    { }

    [[nodiscard]] QString path() const override
    {
        ++pathCalls;
        return FPVItemImage::path();
    }

    [[nodiscard]] QPixmap *thumbnail(int w, int h) override;

    QList<QSize> asked;
    qint64 askedAt = -1; ///< of the last time, in milliseconds of a steady clock
    bool fails = false;
    QSize answer{40, 30};
    mutable int pathCalls = 0;
};

} // namespace lumi::test

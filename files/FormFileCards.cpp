// SPDX-License-Identifier: MIT
// The three media: which are present, the last folder of each, and what happens when one is removed.
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "items/FPVItemList.h"
#include "platform/cards/CardSlots.h"
#include "views/folderRoots.h"

#include <QComboBox>

#include <algorithm>

QString FormFile::cardStartPath(Slot slot)
{
    // Cameras keep their photos here.
    return lumi::CardSlots::mountPoint(slot) + QLatin1String("/dcim");
}

lumi::Medium FormFile::cardIn(Slot slot)
{
    return lumi::Medium(lumi::CardSlots::mountPoint(slot));
}

void FormFile::fillDeviceCombo()
{
    m_deviceCombo->clear();
    m_deviceCombo->addItem(msg(lumi::MsgPhotoFiles));
    if (lumi::CardSlots::isPresent(Slot::SD)) {
        m_deviceCombo->addItem(msg(lumi::MsgSdCard));
    }
    if (lumi::CardSlots::isPresent(Slot::CF)) {
        m_deviceCombo->addItem(msg(lumi::MsgCfCard));
    }
}

bool FormFile::goTo(const QString &path, const QString &root)
{
    return m_rootItem->load(path, root) == lumi::ListResult::Listed;
}

bool FormFile::goToCard(Slot slot, QString *remembered)
{
    const QString root = lumi::CardSlots::mountPoint(slot);
    m_currentPath = remembered;
    if (goTo(*remembered, root)) {
        return true;
    }
    *remembered = root;
    return goTo(*remembered, root);
}

void FormFile::combo_device_activated(const QString &name)
{
    if (m_rootItem == nullptr) {
        return;
    }
    const QString store = lumi::photoStorePath();
    bool isThere = false;
    if (name == msg(lumi::MsgSdCard)) {
        isThere = goToCard(Slot::SD, &m_sdPath);
    } else if (name == msg(lumi::MsgCfCard)) {
        isThere = goToCard(Slot::CF, &m_cfPath);
    } else {
        m_currentPath = &m_photoFilesPath;
        isThere = goTo(m_photoFilesPath, store);
    }
    if (!isThere) {
        // m_currentPath stays: folders entered from now on are remembered for the medium asked for.
        m_deviceCombo->setCurrentIndex(0);
        static_cast<void>(goTo(store, store));
    }
    enterFolder(QString());
}

lumi::Medium FormFile::mediumOnShow() const
{
    return m_rootItem == nullptr ? lumi::Medium() : m_rootItem->medium();
}

void FormFile::mtabChanged()
{
    const QString shown = m_deviceCombo->currentText();
    const bool showsSd = shown == msg(lumi::MsgSdCard);
    const bool showsCf = shown == msg(lumi::MsgCfCard);
    // If the card was exchanged, nothing is known about the new one.
    bool isLost = !mediumOnShow().isThere();
    if (!m_sdCard.isThere() || (showsSd && isLost)) {
        m_sdPath = cardStartPath(Slot::SD);
        isLost = isLost || showsSd;
    }
    if (!m_cfCard.isThere() || (showsCf && isLost)) {
        m_cfPath = cardStartPath(Slot::CF);
        isLost = isLost || showsCf;
    }
    m_sdCard = cardIn(Slot::SD);
    m_cfCard = cardIn(Slot::CF);
    m_deviceCombo->hidePopup();
    fillDeviceCombo();
    const int index = m_deviceCombo->findText(shown);
    m_deviceCombo->setCurrentIndex(std::max(index, 0));
    if (index < 0) {
        combo_device_activated(msg(lumi::MsgPhotoFiles));
    } else if (isLost) {
        combo_device_activated(shown);
    }
}

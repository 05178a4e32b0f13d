// SPDX-License-Identifier: MIT
// The three media: which are there, where each was left, and what happens when one goes.
#include "app/common/Medium.h"
#include "app/common/messages.h"
#include "files/FormFile.h"
#include "items/FPVItemList.h"
#include "views/folderRoots.h"

#include <QComboBox>

QString FormFile::cardStartPath(Slot slot)
{
    // Cameras keep their photos here.
    return Machine::instance().configuredMountPoint(slot) + QLatin1String("/dcim");
}

void FormFile::fillDeviceCombo()
{
    m_deviceCombo->clear();
    m_deviceCombo->addItem(msg(lumi::MsgPhotoFiles));
    if (lumi::isCardInSlot(Slot::SD)) {
        m_deviceCombo->addItem(msg(lumi::MsgSdCard));
    }
    if (lumi::isCardInSlot(Slot::CF)) {
        m_deviceCombo->addItem(msg(lumi::MsgCfCard));
    }
}

bool FormFile::goTo(const QString &path, const QString &root)
{
    return m_rootItem->load(path, root) == lumi::ListResult::Listed;
}

bool FormFile::goToCard(Slot slot, QString *remembered)
{
    const QString root = Machine::instance().mountPoint(slot);
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
        // The current path pointer stays: what follows is remembered for the medium asked for.
        m_deviceCombo->setCurrentIndex(0);
        static_cast<void>(goTo(store, store));
    }
    enterFolder(QString());
}

void FormFile::mtabChanged()
{
    const QString shown = m_deviceCombo->currentText();
    const bool hasSd = lumi::isCardInSlot(Slot::SD);
    const bool hasCf = lumi::isCardInSlot(Slot::CF);
    if (!hasSd) {
        m_sdPath = cardStartPath(Slot::SD);
    }
    if (!hasCf) {
        m_cfPath = cardStartPath(Slot::CF);
    }
    m_deviceCombo->hidePopup();
    fillDeviceCombo();
    const bool isGone
        = (shown == msg(lumi::MsgSdCard) && !hasSd) || (shown == msg(lumi::MsgCfCard) && !hasCf);
    if (isGone) {
        m_deviceCombo->setCurrentIndex(0);
        combo_device_activated(msg(lumi::MsgPhotoFiles));
    } else {
        m_deviceCombo->setCurrentIndex(m_deviceCombo->findText(shown));
        // It may have gone and come again meanwhile, on another device: no paste would trust it.
        if (m_rootItem && !m_rootItem->medium().isThere()) {
            enterFolder(QString());
        }
    }
}

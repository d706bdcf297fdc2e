#include "platform/linux/DistributionUpdater.h"

#include <QCoreApplication>

namespace orvella {

using namespace Qt::StringLiterals;

DistributionUpdater::~DistributionUpdater()
{
    delete m_notice;
}

void DistributionUpdater::checkForUpdates()
{
    if (!m_notice) {
        m_notice = new QMessageBox(QMessageBox::Information, u"Orvella"_s,
            QCoreApplication::translate("DistributionUpdater",
                "Orvella is updated together with your system. Look for updates in your software centre."),
            QMessageBox::Ok);
        m_notice->setObjectName(u"updateNotice"_s);
        m_notice->setAttribute(Qt::WA_DeleteOnClose);
        m_notice->setModal(false);
    }
    m_notice->show();
    m_notice->raise();
    m_notice->activateWindow();
}

} // namespace orvella

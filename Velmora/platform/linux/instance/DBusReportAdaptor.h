#pragma once

#include "platform/linux/bus/SealedAdaptor.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <functional>

namespace orvella {

/// What a program that is started for a report asks the running one on the session bus. It belongs to the object that
/// it is made on.
class DBusReportAdaptor final : public SealedAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "io.orvella.Orvella.Report")

public:
    using Report = std::function<QCoro::Task<QString>()>;

    DBusReportAdaptor(QObject* parent, QDBusConnection bus);

    /// As the class declares it.
    [[nodiscard]] static QString interfaceName();

    void answerWith(Report report) { m_report = std::move(report); }

public Q_SLOTS:
    /// The answer goes out when the report is there. An error where this program has none to give.
    QString Diagnose(const QDBusMessage& message);

private:
    static QCoro::Task<> answer(QDBusConnection bus, QDBusMessage message, Report report);

    QDBusConnection m_bus;
    Report m_report;
};

} // namespace orvella

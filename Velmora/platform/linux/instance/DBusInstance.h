#pragma once

#include "platform/Instance.h"
#include "platform/linux/instance/InstanceLock.h"

#include <QDBusConnection>
#include <QObject>
#include <QProcessEnvironment>
#include <QString>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace orvella {

class DBusReportAdaptor;

/// The program of a session and profile is the one that owns its name on the session bus.
///
/// Without a session bus, or with one that gives nobody the name, it is the one that has locked a file. A later program
/// can tell it nothing then.
class DBusInstance final : public QObject, public Instance {
    Q_OBJECT

public:
    struct Options {
        /// The absolute path of the profile's folder, if there is one.
        std::optional<QString> profile;
        /// Where the launcher of this program has left its right to bring a window to the front. On X11, Qt has taken
        /// the startup id away by then; it is not needed there.
        QProcessEnvironment environment;
        /// Takes such a right that a later program hands over. May be empty.
        std::function<void(QString)> takeActivationToken;
        /// Where it is empty, each program without a bus takes itself for the first.
        QString lockFile = {};
    };

    /// `bus` is a connection of its own: the shared ones hold back what comes in until the main loop runs.
    DBusInstance(QDBusConnection bus, Options options);
    ~DBusInstance() override;

    /// Waits for the first program for two seconds at most.
    ///
    /// Where the bus has started this one in order to activate it, the activation is this very start and is not handed
    /// over once more.
    [[nodiscard]] bool claim(Request request) override;

    /// Requests from before this call are handed over, too.
    void watch(std::function<void(Request)> requested) override;

    void offerReport(std::function<QCoro::Task<QString>()> report) override;
    [[nodiscard]] Running running() const override;

    /// The name on the bus.
    [[nodiscard]] QString name() const { return m_name; }

private:
    /// Nothing where the bus cannot tell.
    [[nodiscard]] std::optional<bool> isFirstOnBus(Request request);
    [[nodiscard]] bool requestName();
    [[nodiscard]] bool hasOwner() const;
    [[nodiscard]] bool tellOwner(Request request) const;
    void takeWhatTheBusHasKept();
    void receive(Request request, const QVariantMap& platformData);
    void handOver();

    QDBusConnection m_bus;
    DBusReportAdaptor* m_report;
    Options m_options;
    InstanceLock m_lock;
    QString m_name;
    QString m_path;
    bool m_isOwner = false;
    bool m_isStarting = false;
    std::vector<Request> m_requests;
    std::function<void(Request)> m_requested;
};

} // namespace orvella

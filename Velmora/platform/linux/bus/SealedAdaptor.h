#pragma once

#include <QDBusAbstractAdaptor>
#include <QVariant>

namespace orvella {

/// An interface on a bus that has the properties it declares and no others.
///
/// Qt lets every caller read and write the property `objectName`, which adaptors have from QObject. Here it is one that
/// cannot be written and has no value, which Qt answers as one that is not there, and leaves out where it lists them.
class SealedAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_PROPERTY(QVariant objectName READ nothing)

public:
    using QDBusAbstractAdaptor::QDBusAbstractAdaptor;

    [[nodiscard]] QVariant nothing() const { return {}; }
};

} // namespace orvella

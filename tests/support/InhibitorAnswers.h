#pragma once

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QString>
#include <QStringList>

#include <concepts>

/// What services answer that are asked who keeps the session awake, as D-Bus carries it.
namespace orvella::InhibitorAnswers {

using namespace Qt::Literals::StringLiterals;

struct PlasmaInhibition {
    QString who;
    QString why;
};

struct LoginInhibitor {
    QString what;
    QString who;
    QString why;
    QString mode = u"block"_s;
    uint user = 1000;
    uint process = 1;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const PlasmaInhibition& inhibition)
{
    argument.beginStructure();
    argument << inhibition.who << inhibition.why;
    argument.endStructure();
    return argument;
}

inline QDBusArgument& operator<<(QDBusArgument& argument, const LoginInhibitor& inhibitor)
{
    argument.beginStructure();
    argument << inhibitor.what << inhibitor.who << inhibitor.why << inhibitor.mode << inhibitor.user
             << inhibitor.process;
    argument.endStructure();
    return argument;
}

// Nothing reads them here, but their registration needs it.
template <class Type>
const QDBusArgument& operator>>(const QDBusArgument& argument, Type& /*value*/)
    requires std::same_as<Type, PlasmaInhibition> || std::same_as<Type, LoginInhibitor>
{
    return argument;
}

/// Before any of them is sent.
inline void registerTypes()
{
    qDBusRegisterMetaType<PlasmaInhibition>();
    qDBusRegisterMetaType<QList<PlasmaInhibition>>();
    qDBusRegisterMetaType<LoginInhibitor>();
    qDBusRegisterMetaType<QList<LoginInhibitor>>();
    qDBusRegisterMetaType<QList<QStringList>>();
}

} // namespace orvella::InhibitorAnswers

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariantList>

namespace orvella {

/// A call of a method on the session bus that no panel and no launcher makes like this, from a program that tries what
/// Orvella makes of it.
struct HostileCall {
    /// What it is, as the name of a row.
    QByteArray name;
    QString path;
    QString interface;
    QString member;
    QVariantList arguments;
    /// The error that answers it; empty for a reply.
    QString error = {};

    /// They are refused.
    [[nodiscard]] static QList<HostileCall> wrong();
    /// They are answered, and nothing else comes of them.
    [[nodiscard]] static QList<HostileCall> idle();
    /// They open one window, as the right call does.
    [[nodiscard]] static QList<HostileCall> effective();
};

} // namespace orvella

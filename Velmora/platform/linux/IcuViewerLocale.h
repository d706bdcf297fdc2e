#pragma once

#include "platform/ViewerLocale.h"

#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace orvella {

/// The viewer's locale by the POSIX variables, its texts by ICU where Qt's data are not enough. A running program keeps
/// the variables it was started with, so there is nothing to follow.
///
/// The first of the variables that is set and not empty counts. A name that is no locale's reads as "C". LANGUAGE has
/// no say: it orders the translations of a program's texts, and often keeps an installer's value where the viewer has
/// changed the locale.
class IcuViewerLocale final : public ViewerLocale {
public:
    explicit IcuViewerLocale(const QProcessEnvironment& environment);
    ~IcuViewerLocale() override;

    /// Of LC_ALL, LC_MESSAGES or LANG; nothing for "C" and "POSIX".
    [[nodiscard]] std::optional<QString> languageCode() const override;

    /// By the conventions of LC_ALL, LC_MONETARY or LANG; "C" and "POSIX" read "$1234.50".
    [[nodiscard]] QString usDollars(qint64 cents) const override;

private:
    class Formatter;

    std::optional<QString> m_languageCode;
    QString m_monetaryName;
    // Made at the first use: loading the locale's data takes longer than the rest of the program's start.
    mutable std::unique_ptr<Formatter> m_formatter;
};

} // namespace orvella

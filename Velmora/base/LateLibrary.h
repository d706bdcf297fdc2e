#pragma once

#include <QLibrary>
#include <QString>

namespace orvella {

/// A library of the system that is loaded when it is first needed, for which no start is to wait. It stays loaded when
/// this goes: what it has made may still be there.
class LateLibrary final {
public:
    /// The name without what the system puts around it, and the version of the library's binary interface.
    LateLibrary(const QString& name, int version)
        : m_library(name, version)
    {
    }

    /// Sets the function to the one of that name; to none where that or an earlier one is missing.
    template <class Function> void find(Function& function, const char* name)
    {
        function = m_isWhole ? reinterpret_cast<Function>(m_library.resolve(name)) : nullptr;
        if (m_isWhole && function == nullptr)
            m_missing = m_library.isLoaded() ? QString::fromLatin1(name) : m_library.errorString();
        m_isWhole = function != nullptr;
    }

    /// Whether every function so far was found.
    [[nodiscard]] bool isWhole() const { return m_isWhole; }

    /// The first function that is missing, or why there is no library; for a log.
    [[nodiscard]] QString missing() const { return m_missing; }

private:
    QLibrary m_library;
    bool m_isWhole = true;
    QString m_missing;
};

} // namespace orvella

#pragma once

#include "base/Json.h"

#include <QNetworkAccessManager>
#include <QProcess>
#include <QTemporaryDir>

namespace orvella::sandbox {

/// A headless Chromium, driven over WebDriver (https://www.w3.org/TR/webdriver2/) through chromedriver.
///
/// What cannot be done stops the test program with a sentence: a browser that is missing is a failure.
class Browser final {
public:
    enum class Scheme { light, dark };

    explicit Browser(Scheme scheme);
    ~Browser();

    void open(const QString& address);
    [[nodiscard]] QString address();

    // The first element that a CSS selector finds.
    [[nodiscard]] QString text(const QString& selector);
    [[nodiscard]] QString property(const QString& selector, const QString& name);
    [[nodiscard]] QString style(const QString& selector, const QString& name);
    void type(const QString& selector, const QString& keys);
    /// Clicks on what leads to a page, and waits until that is there: the driver may answer before the browser leaves.
    void follow(const QString& selector);

    /// How many elements a CSS selector finds.
    [[nodiscard]] std::size_t count(const QString& selector);

    /// The value of an expression in the page, as text.
    [[nodiscard]] QString evaluate(const QString& expression);
    void resize(int width, int height);

private:
    Json command(const QByteArray& method, const QString& path, const Json::Object& body = {});
    QString element(const QString& selector);

    QTemporaryDir m_home;
    QProcess m_driver;
    QNetworkAccessManager m_network;
    QString m_base;
};

} // namespace orvella::sandbox

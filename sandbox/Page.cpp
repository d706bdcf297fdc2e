#include "sandbox/Page.h"

#include "sandbox/Printable.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

Reply Page::reply(int status) const
{
    const auto html = uR"(<!doctype html>
<html lang="%1">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>%2</title>
<link rel="icon" href="/mark.svg" type="image/svg+xml">
<link rel="stylesheet" href="/style.css">
</head>
<body>
<nav lang="en"><a class="brand" href="/viewer"><img src="/mark.svg" width="24" height="24" alt="">Orvella</a>
<a href="/viewer">Dashboard</a> <a href="/activate">Activate a device</a></nav>
<main>
%3
</main>
<footer lang="en">Orvella sandbox: a local service for development. No real money changes hands.</footer>
</body>
</html>
)"_s.arg(htmlText(language), htmlText(title), content);
    return {status, "text/html; charset=utf-8", html.toUtf8(),
        {
            {"content-security-policy",
                "default-src 'none'; style-src 'self'; img-src 'self'; form-action 'self'; base-uri 'none';"
                " frame-ancestors 'none'"},
            {"x-frame-options", "DENY"},
            // Without any referrer browsers would not say either that a form is our own.
            {"referrer-policy", "same-origin"},
            {"cross-origin-opener-policy", "same-origin"},
            {"cross-origin-resource-policy", "same-origin"},
        }};
}

} // namespace orvella::sandbox

#pragma once

namespace orvella {

/// While it lives, the test has no more rights than an ordinary user: file permissions count, also in a root container.
class OrdinaryUser final {
public:
    OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser();

private:
    bool m_wasRoot;
};

} // namespace orvella

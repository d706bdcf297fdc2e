#include "support/OrdinaryUser.h"

#include <QtGlobal>

#include <unistd.h>

namespace orvella {

namespace {

constexpr uid_t kNobody = 65534;

void become(uid_t user)
{
    if (::seteuid(user) != 0)
        qFatal("The test cannot change its user.");
}

} // namespace

OrdinaryUser::OrdinaryUser()
    : m_wasRoot(::geteuid() == 0)
{
    if (m_wasRoot)
        become(kNobody);
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_wasRoot)
        become(0);
}

} // namespace orvella

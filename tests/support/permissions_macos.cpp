#include <unistd.h>

#include "tests/support/permissions.h"

// There root cannot give up its rights over files alone: it becomes nobody.
ObeyPermissions::ObeyPermissions() : m_before(geteuid()) {
    constexpr uid_t nobody = 65534;
    if (m_before == 0) (void)seteuid(nobody);
}

ObeyPermissions::~ObeyPermissions() {
    (void)seteuid(m_before);
}

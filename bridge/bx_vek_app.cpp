#include "bridge/bx_vek_app.h"

void BXVekApp::clear() {
    *this = BXVekApp();
}

#include "foundation/bx_log_bloc.h"

#include "foundation/bx_log_server.h"

BXLogBloc::~BXLogBloc() {
    try {
        end();
    } catch (...) {
        // No memory for the blanks of the level to go back to: the log stays indented.
    }
}

void BXLogBloc::start(int margin) {
    if (m_active) return;
    BXLogServer::incrMarginOffset(margin);
    m_active = true;
    m_margin = margin;
    m_title = BXString();
}

void BXLogBloc::start(const BXString& /*header*/, const BXString& title, int margin) {
    if (m_active) return;
    // Required(R10): always 2, while end() takes back `margin`: with another margin the level
    // stays changed for good.
    BXLogServer::incrMarginOffset(2);
    m_active = true;
    m_margin = margin;
    m_title = title;
}

void BXLogBloc::end() {
    if (!m_active) return;
    BXLogServer::decrMarginOffset(m_margin);
    m_active = false;
    m_margin = 0;
    m_title = BXString();
}

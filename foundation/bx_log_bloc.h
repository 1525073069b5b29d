#pragma once

#include "foundation/bx_string.h"

// Indents the log from start() to end() or to the end of the scope it is declared in.
class BXLogBloc {
public:
    BXLogBloc() = default;
    BXLogBloc(const BXLogBloc&) = delete;
    BXLogBloc& operator=(const BXLogBloc&) = delete;
    ~BXLogBloc();

    // Both do nothing to a bloc that is active. The plain one indents by `margin` and drops any
    // title. The titled one indents by 2 whatever `margin` says, and keeps a copy of `title`;
    // `header` is not used.
    void start(int margin);
    void start(const BXString& header, const BXString& title, int margin);
    // Takes back the `margin` that start was given. Does nothing to a bloc that is not active.
    void end();

    bool active() const noexcept { return m_active; }
    int margin() const noexcept { return m_margin; }  // what end() takes back
    const BXString& title() const noexcept { return m_title; }

private:
    bool m_active = false;
    int m_margin = 0;
    BXString m_title;
};

// Shows one function less: DeclareMacroActivated is left out of its list.
#include "tests/validate/control.h"

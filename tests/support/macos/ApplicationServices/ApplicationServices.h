#pragma once

#include "tests/support/macos/fake_macos.h"

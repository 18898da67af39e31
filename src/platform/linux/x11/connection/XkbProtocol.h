#pragma once

// The header has a parameter named "explicit", which C++ keeps for itself.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

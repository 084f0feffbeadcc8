#pragma once

// The system's headers. The first one has to come first, and must not define macros of the names
// "min" and "max".

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif

// clang-format off
#include <windows.h>
#include <objbase.h>
#include <shellapi.h>
#include <winioctl.h>
#include <winnetwk.h>
// clang-format on

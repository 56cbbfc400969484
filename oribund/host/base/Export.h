#pragma once

// Marks what the shared library offers; everything else is hidden by the compiler settings.
#if defined(_WIN32)
#ifdef ORIBUND_BUILDING
#define ORIBUND_API __declspec(dllexport)
#else
#define ORIBUND_API __declspec(dllimport)
#endif
#else
#define ORIBUND_API __attribute__((visibility("default")))
#endif

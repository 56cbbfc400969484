#pragma once

// Marks what liboribund-qt offers; everything else is hidden by the compiler settings.
#if defined(_WIN32)
#ifdef ORIBUND_QT_BUILDING
#define ORIBUND_QT_API __declspec(dllexport)
#else
#define ORIBUND_QT_API __declspec(dllimport)
#endif
#else
#define ORIBUND_QT_API __attribute__((visibility("default")))
#endif

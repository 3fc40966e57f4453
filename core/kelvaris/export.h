#pragma once

/// Marks what a library of the host offers to others. Everything else is built hidden, so that the plug-in,
/// which offers nothing, can be unloaded again.
#if defined(_WIN32)
#define KELVARIS_EXPORT __declspec(dllexport)
#define KELVARIS_IMPORT __declspec(dllimport)
#else
#define KELVARIS_EXPORT __attribute__((visibility("default")))
#define KELVARIS_IMPORT __attribute__((visibility("default")))
#endif

#if defined(KELVARIS_BUILD_CORE)
#define KELVARIS_CORE_API KELVARIS_EXPORT
#else
#define KELVARIS_CORE_API KELVARIS_IMPORT
#endif

#if defined(KELVARIS_BUILD_QTCORE)
#define KELVARIS_QTCORE_API KELVARIS_EXPORT
#else
#define KELVARIS_QTCORE_API KELVARIS_IMPORT
#endif

#if defined(KELVARIS_BUILD_SUPPORT)
#define KELVARIS_SUPPORT_API KELVARIS_EXPORT
#else
#define KELVARIS_SUPPORT_API KELVARIS_IMPORT
#endif

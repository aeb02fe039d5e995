// tRec_Version: the version of the headers, and that of the library that is loaded.
//
// This is the one place for the number; the build, the packages and the tool take it from here.

#ifndef ZARVEN_TREC_VERSION_H
#define ZARVEN_TREC_VERSION_H

/// Version of these headers: the number before the first dot.
#define RECALCULO_VERSION_MAJOR 0
/// The number between the dots.
#define RECALCULO_VERSION_MINOR 2
/// The number behind the second dot.
#define RECALCULO_VERSION_PATCH 0

/// Version of these headers as one number, for `#if`: 0.2.0 is 200, 1.2.3 is 10203.
#define RECALCULO_VERSION_NUMBER                                                                             \
    (RECALCULO_VERSION_MAJOR * 10000 + RECALCULO_VERSION_MINOR * 100 + RECALCULO_VERSION_PATCH)

/// Version of these headers as text, for instance "0.2.0".
#define RECALCULO_VERSION                                                                                    \
    RECALCULO_VERSION_JOIN(RECALCULO_VERSION_MAJOR, RECALCULO_VERSION_MINOR, RECALCULO_VERSION_PATCH)
/// How `RECALCULO_VERSION` comes about.
#define RECALCULO_VERSION_JOIN(major, minor, patch) RECALCULO_VERSION_TEXT(major, minor, patch)
/// How `RECALCULO_VERSION` comes about.
#define RECALCULO_VERSION_TEXT(major, minor, patch) #major "." #minor "." #patch

/// Marks what the shared library exports; a build that hides nothing needs to know nothing of it.
#ifndef RECALCULO_API
#if defined(__GNUC__)
#define RECALCULO_API __attribute__((visibility("default")))
#else
#define RECALCULO_API
#endif
#endif

namespace zarven {

/// Version of the library that is loaded, as one number; see `RECALCULO_VERSION_NUMBER`. A program that was
/// built with other headers may have been started with it.
RECALCULO_API int versionNumero();

/// Version of the library that is loaded, as text; good for the whole run of the program.
RECALCULO_API const char* versionTexto();

} // namespace zarven

#endif

#pragma once

/// Marks what a host's modules export: every contract class and every class's type record.
/// A host that builds the modules as Windows libraries defines ZN_HOST_BUILD while it compiles them.
#if defined(_WIN32)
#    if defined(ZN_HOST_BUILD)
#        define ZN_HOST_EXPORT __declspec(dllexport)
#    else
#        define ZN_HOST_EXPORT __declspec(dllimport)
#    endif
#else
#    define ZN_HOST_EXPORT __attribute__((visibility("default")))
#endif

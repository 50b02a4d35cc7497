#pragma once

/// Marks what the import library exports. Whoever builds it as a Windows library defines ZN_IMPORT_BUILD meanwhile.
#if defined(_WIN32)
#    if defined(ZN_IMPORT_BUILD)
#        define ZN_IMPORT_EXPORT __declspec(dllexport)
#    else
#        define ZN_IMPORT_EXPORT __declspec(dllimport)
#    endif
#else
#    define ZN_IMPORT_EXPORT __attribute__((visibility("default")))
#endif

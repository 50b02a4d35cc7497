#pragma once

// Read by the leak checker of the address sanitizer, and linked only with it.

// NOLINTBEGIN(bugprone-reserved-identifier): the checker, a library of its own, asks for these names

/// What is lost on purpose, in the words of the checker.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
/// The checker's own options.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options();

// NOLINTEND(bugprone-reserved-identifier)

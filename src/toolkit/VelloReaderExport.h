#pragma once

/// Marks the classes and functions that others than the library itself may use. Everything else stays inside.
/// A class that gets this mark also needs a place in the list that CMakeLists.txt gives the linker.
#define VELLOREADER_API __attribute__((visibility("default")))

/// Marks what stays inside although it belongs to a class that doesn't.
#define VELLOREADER_INNER __attribute__((visibility("hidden")))

#pragma once

/// Marks the classes and functions that a host may use. Everything else stays inside the library.
#define VELLOREADER_API __attribute__((visibility("default")))

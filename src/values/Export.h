#pragma once

/// What the shared library shows to its clients.
#ifdef _WIN32
#define BUKORVAL_API
#else
#define BUKORVAL_API __attribute__((visibility("default")))
#endif

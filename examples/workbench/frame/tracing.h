// What the program tells its developers: traces by category, and assertions that failed.
#pragma once

#include "toolbox/diagnostics.h"
#include "toolbox/strings.h"

/// Categories of traces.
enum TraceCategory : unsigned long { TraceCommands = 1, TraceFiles = 2, TraceComputing = 4 };

/// Writes every trace to a file from now on.
void startTracing(const CString& file);

/// From now on an assertion that fails is in the log of errors before it is explained to the user
/// and ends the program.
void logFailedAssertions();

#pragma once

/// Writes what an instrumented build has counted so far, for processes that end without the C
/// library's doing; _exit() does it by itself. Nothing in any other build.
void write_coverage_counts();

#pragma once

/// How many test functions have run in this process.
inline int samplesRun = 0;

// x11perf, the public measurement of X servers.
#pragma once

// Operations per second of its test, as in "seg500", run for a second on the display; 0, with a
// line on standard error, where the program or the test is missing.
double X11PerfRate(const char* test);

// Tips for controls, known by the names of their views. The application gives and switches them;
// windows put them on. A tip that a window has given a view of another name stays: it is no help
// but something to read.
#pragma once

class BView;
class BWindow;
class LibHelp;

// Where the tips come from from now on; null: there are none. help must live as long.
void LibSetToolTips(const LibHelp* help);
// Switches tips on or off, also in the windows that have theirs already.
void LibShowToolTips(bool show);
// Puts their tips on all views of a window, which must be locked or not shown yet.
void LibApplyToolTips(BWindow* window);

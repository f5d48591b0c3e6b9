// tarvex-run-windows, which tarvex-run starts where it needs windows: all of it is linked in.
#include "console/Program.h"

#include <OS.h>

int main(int argc, char** argv)
{
    // Lists of processes go on showing what the user has started.
    rename_thread(find_thread(nullptr), "tarvex-run");
    return RunProgram(argc, argv);
}

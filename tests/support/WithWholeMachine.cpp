// with-whole-machine COMMAND [ARGUMENT...]: the same for a command; ends with its status.
#include "tests/support/Child.h"
#include "tests/support/WholeMachine.h"

int main(int argc, char** argv)
{
    if (argc < 2 || !TakeWholeMachine())
        return 2;
    const int status = InChild([argv] { return execvp(argv[1], argv + 1); });
    return status < 0 ? 128 - status : status;
}

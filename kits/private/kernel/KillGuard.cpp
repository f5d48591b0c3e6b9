#include "KillGuard.h"

#include <pthread.h>
#include <unwind.h>

#if defined(__SANITIZE_ADDRESS__)
// The marks that AddressSanitizer puts around a frame's variables stay behind when a kill unwinds
// the frame, and the next user of that stack is reported for them. With this they are not on the
// stack.
extern "C" const char* __asan_default_options()
{
    return "detect_stack_use_after_return=1";
}
#endif

// Why a kill must look at the stack: a kill point may lie below a destructor, a noexcept function
// or a catch (...), and unwinding through one of those ends the program. Which kit calls do is not
// known beforehand: ~LibThread kills a thread and waits for it, ~ShownWindow waits for a looper's
// lock, and each of those asks find_thread() who is calling. std::uncaught_exceptions() does not
// tell: it is 0 in a destructor at the end of a block. Without this check a thread that is killed
// in a destructor's snooze(), kill_thread() or wait for a looper's lock ends the program by
// std::terminate(), as the tests of Kill and LooperLock show. A KillGuard in every such destructor
// would do, but one that is forgotten shows only where a kill hits that very moment.

// What C++ functions are unwound by, asked here as by an exception that looks for its handler: that
// changes nothing. Interface: "Itanium C++ ABI: Exception Handling", 2.5.
extern "C" _Unwind_Reason_Code __gxx_personality_v0(
    int, _Unwind_Action, _Unwind_Exception_Class, _Unwind_Exception*, _Unwind_Context*);

namespace {
_Unwind_Reason_Code LookAtFrame(_Unwind_Context* context, void* canBeUnwound)
{
    _Unwind_Exception foreign {}; // of no language: only what stops everything handles it
    const _Unwind_Reason_Code answer =
        __gxx_personality_v0(1, _UA_SEARCH_PHASE, foreign.exception_class, &foreign, context);
    if (answer == _URC_CONTINUE_UNWIND)
        return _URC_NO_REASON;
    *static_cast<bool*>(canBeUnwound) = false;
    return _URC_END_OF_STACK;
}

// Whether the calling thread's stack can be unwound down to its first function.
bool StackCanBeUnwound()
{
    bool canBeUnwound = true;
    _Unwind_Backtrace(LookAtFrame, &canBeUnwound);
    return canBeUnwound;
}

constinit thread_local int tGuards = 0;
} // namespace

KillGuard::KillGuard()
{
    tGuards++;
}

KillGuard::~KillGuard()
{
    tGuards--;
}

namespace kernel {
constinit thread_local const std::atomic<bool>* tKillRequest = nullptr;

bool CanEndHere()
{
    return tGuards == 0 && StackCanBeUnwound();
}

void EndIfPossible()
{
    if (!CanEndHere())
        return;
    tKillRequest = nullptr; // the destructors that run now must not get here again
    pthread_exit(nullptr);
}

// In a thread that the kit does not know nobody cancels, but for reasons of its own.
KillableWait::KillableWait()
{
    if (tKillRequest && CanEndHere())
        pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
}

KillableWait::~KillableWait()
{
    if (tKillRequest)
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
}
} // namespace kernel

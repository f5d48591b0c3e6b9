// Why a kill must look at the stack: a kill point may lie below a destructor, a noexcept function
// or a catch (...), and unwinding through one of those ends the program. Which kit calls do is not
// known beforehand: ~LibThread kills a thread and waits for it, ~ShownWindow waits for a looper's
// lock, and each of those asks find_thread() who is calling. std::uncaught_exceptions() does not
// tell: it is 0 in a destructor at the end of a block. Without this check a thread that is killed
// in a destructor's snooze(), kill_thread() or wait for a looper's lock ends the program by
// std::terminate(), as the tests of Kill and LooperLock show. A KillGuard in every such destructor
// would do, but one that is forgotten shows only where a kill hits that very moment.
#include "UnwindCheck.h"

#include "KillGuard.h"
#include <unwind.h>

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
} // namespace

namespace kernel {
bool StackCanBeUnwound()
{
    bool canBeUnwound = true;
    _Unwind_Backtrace(LookAtFrame, &canBeUnwound);
    return canBeUnwound;
}
} // namespace kernel

// The guards of static local variables, which the compiler calls around their first initialisation.
#include <limits.h>
#include <windows.h>

extern "C" {

// The compiler skips the call while a guard is at most the thread's epoch.
__declspec(thread) int _Init_thread_epoch = INT_MIN;

static constexpr int notStarted = 0;
static constexpr int running = -1;
static int globalEpoch = INT_MIN;
static SRWLOCK lock = SRWLOCK_INIT;
static CONDITION_VARIABLE ended = CONDITION_VARIABLE_INIT;

// Returns with the guard at `running` if the caller is to initialise the variable.
void __cdecl _Init_thread_header(int* guard)
{
    AcquireSRWLockExclusive(&lock);
    while (*guard == running)
        SleepConditionVariableSRW(&ended, &lock, INFINITE, 0);
    if (*guard == notStarted)
        *guard = running;
    else
        _Init_thread_epoch = globalEpoch;
    ReleaseSRWLockExclusive(&lock);
}

void __cdecl _Init_thread_footer(int* guard)
{
    AcquireSRWLockExclusive(&lock);
    *guard = ++globalEpoch;
    _Init_thread_epoch = globalEpoch;
    ReleaseSRWLockExclusive(&lock);
    WakeAllConditionVariable(&ended);
}

void __cdecl _Init_thread_abort(int* guard)
{
    AcquireSRWLockExclusive(&lock);
    *guard = notStarted;
    ReleaseSRWLockExclusive(&lock);
    WakeAllConditionVariable(&ended);
}

} // extern "C"

// The classic Whetstone benchmark in double precision: its modules 2 to 4, 6 to 9 and 11, with a
// loop multiplier of 1. Names are those of the published text.
// Source: Curnow and Wichmann, "A synthetic benchmark", The Computer Journal 19 (1976), p. 43.
#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <cstddef>

class Whetstone {
public:
    virtual ~Whetstone() = default;

    // Does all modules, in the order below, iterations times; nothing for 0 or less. A thousand
    // iterations are a hundred million Whetstone instructions.
    void Run(const long& iterations);

    void SetConstants();
    void ArrayElements();
    void ArrayAsParameter();
    void ConditionalJumps();
    // Leaves j, k and l at 1, 2 and 3.
    void IntegerArithmetic();
    // Returns x, and Sink()s y.
    double TrigonometricFunctions();
    // Returns z.
    double ProcedureCalls();
    void ArrayReferences();
    // Returns x.
    double StandardFunctions();

    // PA: six times the statements of ArrayElements() on e[0] to e[3], the last one with a
    // division.
    void Parameter(double* e);
    // P3: x, y and the constants give z.
    void Procedure(const double& x, const double& y, double& z);
    // P0: passes the element l on to k, and k to j, and j back to l. These are 1 to 4.
    void ArrayReference();

    int32 loops = 100000; // the published text's number of rounds; Run() is told its own
    double t = 0;
    double t1 = 0;
    double t2 = 0;
    double e1[4] = {}; // E1(1) to E1(4)
    int32 j = 0;
    int32 k = 0;
    int32 l = 0;

private:
    // E1(number). Written so that the 1 costs no instruction.
    double& Element(ptrdiff_t number)
    {
        double* const elements = e1;
        return elements[number - 1];
    }
};

// A Whetstone on a thread of its own.
class WhetstoneThread {
public:
    WhetstoneThread() = default;
    // Ends the thread and waits for that: it works on this object.
    virtual ~WhetstoneThread();
    WhetstoneThread(const WhetstoneThread&) = delete;
    WhetstoneThread& operator=(const WhetstoneThread&) = delete;

    // Once only. Makes the thread "WhetstoneThread_NUMBER", which will do that many iterations; it
    // waits for resume_thread(). Returns its id, or the kernel's error with a line on standard
    // error.
    thread_id Go(const long& newIterations, const long& number);

    static int32 DoStaticWhetstone(void* self);
    // The thread's work. Returns 0.
    int32 DoWhetstone();

    int32 iterations = 0;
    thread_id thread = 0;
    Whetstone done; // a copy of the one that the thread ran
};

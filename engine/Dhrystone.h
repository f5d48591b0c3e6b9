// Dhrystone 2.1 with its globals as members, as this benchmark has always run it: with a count of
// 16 bits, three nested loops, and the small departures noted at the functions. Source: Weicker,
// "Dhrystone benchmark: rationale for version 2", SIGPLAN Notices 23 (1988), p. 49.
#pragma once

#include <SupportDefs.h>

#include <memory>

enum Enumeration : int32 { kIdent1, kIdent2, kIdent3, kIdent4, kIdent5 };

// The names are those of the published text.
// NOLINTBEGIN(readability-identifier-naming)
struct record {
    record* ptr_comp = nullptr;
    Enumeration discr = kIdent1;
    Enumeration enum_comp = kIdent1;
    int32 int_comp = 0;
    char str_comp[31] = "";
};

class Dhrystone {
public:
    Dhrystone();
    virtual ~Dhrystone() = default;
    Dhrystone(const Dhrystone&) = delete;
    Dhrystone& operator=(const Dhrystone&) = delete;

    // With n the low 16 bits of newIterations: n / 32000 outer rounds, none below 32000. A round
    // does inner + (inner - 1) + ... + 1 bodies, inner being n less 32000 for each round that is
    // left, itself included: up to half a billion. Announces the counts and prints the results on
    // standard error.
    void Run(const long& newIterations);
    // What the globals hold and should hold, on standard error.
    void PrintResults() const;

    void Procedure_1(record* value);
    void Procedure_2(int& value);
    void Procedure_3(record* reference); // does not write through it
    void Procedure_4();
    void Procedure_5();
    void Procedure_6(const Enumeration& value, Enumeration& reference);
    void Procedure_7(const int& value1, const int& value2, int& reference);
    // value1: -5 to 14. Writes array_2[i][i] where the published text has [i + 20][i].
    void Procedure_8(int* array1, int (*array2)[50], const int& value1, const int& value2);
    Enumeration Function_1(const char& value1, const char& value2);
    // Texts of four characters and more; value1[2] must not be value2[3]. Compares them only: has
    // no test of the letters.
    bool Function_2(const char* value1, const char* value2);
    bool Function_3(const Enumeration& value);

    int32 outer = 0;
    uint16 inner = 0;
    uint16 iterations = 0;
    std::unique_ptr<record> ptr_glob;
    std::unique_ptr<record> next_ptr_glob;
    int32 int_glob = 0;
    bool bool_glob = false;
    char char_1 = ' '; // printed, so never the NUL that would end a line in some tools
    char char_2 = ' ';
    int32 array_1[50] = {};
    int32 array_2[50][50] = {};
    int32 run_index = 0;

private:
    void SetInner();
    void MiddleRound(const char* text1);
    void Body(const char* text1);
};
// NOLINTEND(readability-identifier-naming)

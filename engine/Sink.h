// Keeps a kernel's work in the program. None of these costs an instruction of its own.
#pragma once

// The compiler must have computed value, and written all memory that it may point to, before this.
template <typename T>
inline void Sink(const T& value)
{
    asm volatile("" : : "r"(value) : "memory");
}

// After this the compiler no longer knows what value is, nor what it points to.
template <typename T>
inline void Opaque(T& value)
{
    asm volatile("" : "+r"(value) : : "memory");
}
inline void Opaque(double& value)
{
    asm volatile("" : "+m"(value) : : "memory"); // it would be moved to an integer's register
}
